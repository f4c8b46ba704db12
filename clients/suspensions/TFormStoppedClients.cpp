#include "suspensions/TFormStoppedClients.h"

#include "rules/ClientStatus.h"

namespace kb {

TFormStoppedClients::TFormStoppedClients(StoppedClientsUtility& utility)
    : m_utility(utility), m_rows(utility.selection())
{
    for (const QString& code : {utility.fromStatus(), utility.toStatus()})
        m_choices.push_back({code, client_status::word(code)});
}

QStringList TFormStoppedClients::columnTitles()
{
    return {QStringLiteral("Client ID"), QStringLiteral("First Name"), QStringLiteral("Last Name"),
            QStringLiteral("Status"),    QStringLiteral("Stopped"),    QStringLiteral("Stop Reason"),
            QStringLiteral("Comment")};
}

QStringList TFormStoppedClients::reportColumns()
{
    return {QStringLiteral("Client ID"), QStringLiteral("First Name"), QStringLiteral("Last Name"),
            QStringLiteral("Stop Date"), QStringLiteral("Stop Reason")};
}

ResultSet TFormStoppedClients::reportRows() const
{
    ResultSet rows({sql::OutputColumn{QStringLiteral("Client_ID"), FieldType::String, 7},
                    sql::OutputColumn{QStringLiteral("First_Name"), FieldType::String, 0},
                    sql::OutputColumn{QStringLiteral("Last_Name"), FieldType::String, 0},
                    sql::OutputColumn{QStringLiteral("Stop_Dte"), FieldType::Date, 0},
                    sql::OutputColumn{QStringLiteral("Stop_Reason"), FieldType::String, 0}});
    for (const StoppedClientsUtility::Row& row : m_rows)
        rows.appendRow({row.clientId, row.firstName, row.lastName,
                        row.stopDate.isValid() ? QVariant(row.stopDate) : QVariant(), row.stopReason});
    rows.setHasRows(true);
    return rows;
}

void TFormStoppedClients::ActionPrintReport(bool toPrinter)
{
    if (printEnabled()) m_utility.reportPrinter()(reportRows(), caption(), toPrinter);
}

bool TFormStoppedClients::setStatus(int row, const QString& code)
{
    if (row < 0 || size_t(row) >= m_rows.size()) return false;
    for (const Choice& choice : m_choices)
        if (choice.code == code) {
            m_rows[size_t(row)].status = code;
            return true;
        }
    return false;
}

bool TFormStoppedClients::ActionOk()
{
    if (!okEnabled()) return false;
    return m_utility.applyStatuses(m_rows);
}

} // namespace kb
