#pragma once

#include "records/History.h"
#include "rules/ClientConfig.h"
#include "rules/ClientValues.h"
#include "store/Database.h"

#include <QDate>
#include <QList>
#include <QStringList>

namespace kb {

class ClientRules;
class DataSet;
class Database;

// What one save of a client sets off, in order: the stored on-post
// statement, the History rows of what changed, the dated deliveries of a
// client who became inactive or stopped, and the dates that the save
// itself maintains (inactivation, stop and start dates, the edit date, the
// first meal), with the reactivation screen. Run by the rules after the
// post with the set's edit and post hooks off.
//
// History rows that only describe the saved change are written as each
// step runs. The changes of the row the steps make themselves are gathered
// and posted once at the end, together with the History rows that tell of
// them, in one transaction: a failure before or during that post leaves
// neither.
class ClientSaveSteps
{
public:
    ClientSaveSteps(ClientRules& rules, DataSet& clients, const ClientValues& before,
                    const ClientValues& saved);

    void run();

private:
    void runOnPostStatement();
    void statusHistory();
    void reactivationNotice();
    void deleteDatedDeliveriesOfInactivated();
    void offerToDeleteFutureDeliveriesOfStopped();
    void serviceHistory();
    void dietHistory();
    void deliveryTypeHistory();
    void defaultRouteHistory();
    void addressHistory();
    void phoneHistory();
    void daysHistory();
    void stopDateHistory();
    void startDateHistory();
    void recertificationHistory();
    void inactivationDate();
    void activation();
    void contractStop();
    void startAfterStop();
    void resetStartDateScreen();
    void editAndFirstMealDates();
    void postOwnChanges();

    void writeHistory(const QString& event, const QDate& eventDate = {});
    HistoryEntry entry(const QString& event, const QDate& eventDate) const;
    bool ask(const QString& question);
    // Changes the row as the steps will post it.
    void change(const QString& column, const QVariant& value);
    void clearStopDate(const QString& event);
    // Runs work in a transaction of its own unless the caller's is open.
    template <typename Work> void inTransaction(Work&& work);
    // The client's dated deliveries that match a condition on :Person_ID
    // and, when one is given, :Schedule_Type.
    Params datedParams(const QString& scheduleType) const;
    bool hasDatedDeliveries(const QString& condition, const QString& scheduleType);
    // Deletes them with their item lines and writes the event, in one transaction.
    void deleteDatedDeliveries(const QString& condition, const QString& scheduleType, const QString& event);
    QString datedScheduleType() const;

    QString oldText(const char* column) const { return m_before.text(QLatin1String(column)); }
    QString newText(const char* column) const { return m_saved.text(QLatin1String(column)); }

    ClientRules& m_rules;
    DataSet& m_clients;
    Database& m_db;
    const ClientValues& m_before;
    const ClientValues& m_saved;
    ClientValues m_working; // the row as the steps leave it
    QStringList m_changed;  // columns the steps changed
    QList<HistoryEntry> m_pendingHistory;
    ClientConfig m_config;
    QDate m_today;
    QString m_oldStatus;
    QString m_newStatus;
};

} // namespace kb
