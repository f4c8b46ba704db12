#pragma once

#include "suspensions/StoppedClientsUtility.h"

#include <QStringList>

namespace kb {

// The list that "View Clients" of a status utility opens: its clients,
// each with a status the user may set to one of two choices ("Active" or
// "Stopped" for stopping, "Stopped" or "Inactive" for inactivating). OK
// writes the statuses the rows show (only "S" and "I" are written), Cancel
// leaves everything as it was.
class TFormStoppedClients
{
public:
    struct Choice
    {
        QString code;
        QString word;
    };

    explicit TFormStoppedClients(StoppedClientsUtility& utility);

    QString caption() const { return m_utility.listTitle(); }
    static QStringList columnTitles();
    const std::vector<Choice>& choices() const { return m_choices; }

    const std::vector<StoppedClientsUtility::Row>& rows() const { return m_rows; }
    // Sets a row's status to one of the choices; false for any other code.
    bool setStatus(int row, const QString& code);

    bool okEnabled() const { return !m_rows.empty(); }
    // Writes the statuses; false (in silence) when it failed and nothing changed.
    bool ActionOk();
    // The data of "Print Report": client number, first name, last name, stop date, stop reason.
    static QStringList reportColumns();
    // Those columns' values for the rows of the list.
    ResultSet reportRows() const;
    // "Print Report" is offered where the window can print.
    bool printEnabled() const { return bool(m_utility.reportPrinter()) && !m_rows.empty(); }
    // Prints the list to the screen, or to the printer.
    void ActionPrintReport(bool toPrinter);

private:
    StoppedClientsUtility& m_utility;
    std::vector<Choice> m_choices;
    std::vector<StoppedClientsUtility::Row> m_rows;
};

} // namespace kb
