#include "TFormReassignScheduledAndEpisodicRoutes.h"

#include "store/Database.h"

namespace kb {

TFormReassignScheduledAndEpisodicRoutes::TFormReassignScheduledAndEpisodicRoutes(Database& db, qint64 personId,
                                                                                 QString clientDeliveryType)
    : m_db(db),
      m_personId(personId),
      // An ongoing client's extra dates are scheduled; everyone else's episodic.
      m_scheduleType(clientDeliveryType.trimmed() == QLatin1String("O") ? QStringLiteral("S") : QStringLiteral("E"))
{
    const ResultSet routes = db.execute(QStringLiteral("Select Route_ID, Route_Desc from Routes order by Route_ID"));
    for (qsizetype r = 0; r < routes.rowCount(); ++r)
        m_routes << routes.value(r, 0).toString().trimmed() + QStringLiteral(" - ") + routes.value(r, 1).toString().trimmed();
    const ResultSet client = db.execute(
        QStringLiteral(
            "Select First_Name, Last_Name, Def_Rte, Mon_Rte, Tue_Rte, Wed_Rte, Thu_Rte, Fri_Rte, Sat_Rte, "
            "Sun_Rte from Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (!client.isEmpty()) {
        m_clientName = (client.value(0, 0).toString().trimmed() + QLatin1Char(' ') +
                        client.value(0, 1).toString().trimmed())
                           .trimmed();
        m_defaultRoute = client.value(0, 2).toString().trimmed();
        for (int d = 0; d < 7; ++d)
            m_dayRoutes[size_t(d)] = client.value(0, 3 + d).toString().trimmed();
    }
    const QString& defaultRoute = m_defaultRoute;
    for (const QString& entry : m_routes)
        if (entry.section(QLatin1Char('-'), 0, 0).trimmed() == defaultRoute)
            m_routeEntry = entry;
}

void TFormReassignScheduledAndEpisodicRoutes::uncheckAllDays() { m_days.fill(false); }
void TFormReassignScheduledAndEpisodicRoutes::checkAllDays() { m_days.fill(true); }

void TFormReassignScheduledAndEpisodicRoutes::checkAllWeekdays()
{
    for (int d = 0; d < 5; ++d)
        m_days[size_t(d)] = true;
}

void TFormReassignScheduledAndEpisodicRoutes::checkWeekendDays() { m_days[5] = m_days[6] = true; }

void TFormReassignScheduledAndEpisodicRoutes::reverseCheckmarks()
{
    for (bool& d : m_days)
        d = !d;
}

bool TFormReassignScheduledAndEpisodicRoutes::okEnabled() const
{
    return !m_routeEntry.trimmed().isEmpty() && std::find(m_days.begin(), m_days.end(), true) != m_days.end();
}

QString TFormReassignScheduledAndEpisodicRoutes::statement() const
{
    QStringList terms;
    for (int d = 0; d < 7; ++d)
        if (m_days[size_t(d)])
            terms << QStringLiteral("EXTRACT(DAYOFWEEK FROM Deliv_Date) = %1").arg(d + 1);
    return QStringLiteral("Update EpisodicDeliveries set Route = :Route where Person_ID = :Person_ID and Deliv_Date >= "
                          "Current_Date and Schedule_Type = :Schedule_Type and ( ") +
           terms.join(QStringLiteral(" or ")) + QStringLiteral(" )");
}

qint64 TFormReassignScheduledAndEpisodicRoutes::apply()
{
    if (!okEnabled())
        return 0;
    return m_db.query(statement())
        .bind({{QStringLiteral("Route"), m_routeEntry.section(QLatin1Char('-'), 0, 0).trimmed()},
               {QStringLiteral("Person_ID"), m_personId},
               {QStringLiteral("Schedule_Type"), m_scheduleType}})
        .execCommand();
}

} // namespace kb
