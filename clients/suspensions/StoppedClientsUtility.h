#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include "store/ResultSet.h"

#include <functional>
#include <vector>

namespace kb {

class DataSet;
class RecordServices;
class UserInterface;

// What the two status utilities share: a date, the clients whose stop
// date has come by it and whose status is still the one before (Active for
// "Update Stop Status Utility", Stopped for "Inactivate Clients Utility"),
// and the change of all of them, or of those the list says, in one
// transaction. Each client is changed through the Clients set that carries
// the client rules: it is located by Client_ID, put into edit, given the
// status and posted, so the status History row and the rest of the save's
// consequences happen as for a change by hand. A client who is no longer
// found is passed over.
class StoppedClientsUtility
{
public:
    // One client of the selection (QueryStopsOver30Days).
    struct Row
    {
        QString clientId;
        QString firstName;
        QString lastName;
        QString status;
        QDate startDate;
        QDate stopDate;
        QDate editDate;
        QDate firstMealDate;
        QString stopReason;
        QString note; // Clients.Stop_Reason, the free comment
    };
    // A client whose status a run changed.
    struct Change
    {
        QString clientId;
        qint64 personId = 0;
        QString firstName;
        QString lastName;
        QDate stopDate;
        QString oldStatus;
        QString newStatus;
    };
    using TransactionMark = std::function<void(bool)>;
    // Prints the list of the utility: its rows (Client_ID, First_Name,
    // Last_Name, Stop_Dte, Stop_Reason), the list's title, and whether it
    // goes to the printer rather than the screen.
    using ReportPrinter = std::function<void(const ResultSet& rows, const QString& title, bool toPrinter)>;

    virtual ~StoppedClientsUtility() = default;

    virtual QString caption() const = 0;
    virtual QString dateLabel() const = 0;
    // The title of the list that "View Clients" opens.
    virtual QString listTitle() const = 0;
    // The status the clients have now, and the one the run gives them.
    virtual QString fromStatus() const = 0;
    virtual QString toStatus() const = 0;
    // The progress text of the run over all clients, and the start of its error message.
    virtual QString progressText() const = 0;
    virtual QString errorPrefix() const = 0;
    // The selection statement, with :dStopDate.
    virtual QString selectionStatement() const = 0;

    QDate date() const { return m_date; }
    void setDate(const QDate& date) { m_date = date; }
    void setTransactionMark(TransactionMark mark) { m_mark = std::move(mark); }
    void setReportPrinter(ReportPrinter printer) { m_printer = std::move(printer); }
    const ReportPrinter& reportPrinter() const { return m_printer; }

    // The clients of the date, by stop date.
    std::vector<Row> selection() const;

    // "Stop All" / "Inactivate All": every client of the selection gets
    // toStatus(). All or nothing; an error is told with errorPrefix(), and
    // nothing is changed. The buttons are disabled while it runs.
    bool ActionAll();
    bool buttonsEnabled() const { return !m_running; }

    // The list's OK: each row whose status is "S" or "I" sets it on its
    // client; other rows are passed over. All or nothing, an error rolls
    // back in silence.
    bool applyStatuses(const std::vector<Row>& rows);
    static QString listProgressText() { return QStringLiteral("Changing Clients Status..."); }

    // The clients the last run changed, in the order changed.
    const std::vector<Change>& changes() const { return m_changes; }

protected:
    StoppedClientsUtility(RecordServices& services, UserInterface& ui, DataSet& clients, const QDate& date);

    RecordServices& m_services;

private:
    // Sets each (Client_ID, status) in one transaction; throws on error with nothing changed.
    void setStatuses(const std::vector<std::pair<QString, QString>>& statuses, const QString& progress);

    UserInterface& m_ui;
    DataSet& m_clients;
    QDate m_date;
    TransactionMark m_mark;
    ReportPrinter m_printer;
    bool m_running = false;
    std::vector<Change> m_changes;
};

} // namespace kb
