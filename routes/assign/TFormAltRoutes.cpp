#include "TFormAltRoutes.h"

#include "dataset/DataSet.h"
#include "store/Database.h"

#include <algorithm>

namespace kb {

namespace {

const char* const days[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};

QString routeColumn(int day) { return QString::fromLatin1(days[day]) + QStringLiteral("_RTE"); }
QString stopColumn(int day) { return QString::fromLatin1(days[day]) + QStringLiteral("_STOP"); }

void editing(DataSet& set)
{
    if (set.state() == DataSet::State::Browse)
        set.edit();
}

} // namespace

TFormAltRoutes::TFormAltRoutes(DataSet& client) : m_client(client)
{
    for (int d = 0; d < 7; ++d)
        m_copied << m_client.fieldValue(routeColumn(d)).toString();
    for (int d = 0; d < 7; ++d) {
        const QVariant stop = m_client.fieldValue(stopColumn(d));
        m_copied << (stop.isNull() ? QString() : QString::number(stop.toDouble(), 'g', 15));
    }
    editing(m_client);
    const ResultSet config = m_client.database().execute(
        QStringLiteral("Select DMon, DTue, DWed, DThu, DFri, DSat, DSun from Config"));
    for (int d = 0; d < 7; ++d)
        m_servedDay[size_t(d)] = !config.isEmpty() && config.value(0, d).toBool();
    refreshOverrides();
}

QStringList TFormAltRoutes::routeChoices() const
{
    const ResultSet routes =
        m_client.database().execute(QStringLiteral("Select Route_ID, Route_Desc, Route_Type from Routes order by Route_ID"));
    QStringList choices;
    for (qsizetype r = 0; r < routes.rowCount(); ++r)
        choices << QStringLiteral("%1 - %2 (%3)").arg(routes.value(r, 0).toString().trimmed(),
                                                     routes.value(r, 1).toString().trimmed(),
                                                     routes.value(r, 2).toString().trimmed());
    return choices;
}

void TFormAltRoutes::refreshOverrides()
{
    Query live = m_client.database().query(
        QStringLiteral("select * from address_overrides where client_id = :Client_ID and DOW = :DOW and (Expire_Date >= "
                       "Current_Date or Expire_Date is Null)"));
    for (int d = 0; d < 7; ++d)
        m_overridden[size_t(d)] = !live.bind(QStringLiteral("Client_ID"), m_client.fieldValue(u"Client_ID"))
                                       .bind(QStringLiteral("DOW"), QString::fromLatin1(days[d]))
                                       .exec()
                                       .isEmpty();
}

QString TFormAltRoutes::route(int day) const { return m_client.fieldValue(routeColumn(day)).toString(); }

QVariant TFormAltRoutes::stop(int day) const { return m_client.fieldValue(stopColumn(day)); }

void TFormAltRoutes::setRoute(int day, const QString& routeEntry)
{
    editing(m_client);
    const QString code = routeEntry.section(QLatin1Char('-'), 0, 0).trimmed();
    m_client.setFieldValue(routeColumn(day), code.isEmpty() ? QVariant() : QVariant(code));
}

void TFormAltRoutes::setStop(int day, const QVariant& stop)
{
    editing(m_client);
    m_client.setFieldValue(stopColumn(day), stop.isNull() ? QVariant() : QVariant(std::max(0.0, stop.toDouble())));
}

void TFormAltRoutes::close(bool ok)
{
    editing(m_client);
    // A stop means nothing without the route beside it.
    for (int d = 0; d < 7; ++d)
        if (route(d).trimmed().isEmpty())
            m_client.setFieldValue(stopColumn(d), QVariant());
    // Cancel puts every one of the fourteen back as it was, emptied stops too.
    if (!ok)
        for (int d = 0; d < 7; ++d) {
            const QString r = m_copied[d];
            const QString s = m_copied[7 + d];
            m_client.setFieldValue(routeColumn(d), r.isEmpty() ? QVariant() : QVariant(r));
            m_client.setFieldValue(stopColumn(d), s.isEmpty() ? QVariant() : QVariant(s.toDouble()));
        }
}

void clearWeekdayRoutes(DataSet& client)
{
    editing(client);
    for (int d = 0; d < 7; ++d)
        client.setFieldValue(routeColumn(d), QVariant());
}

void clearWeekdayStops(DataSet& client)
{
    editing(client);
    for (int d = 0; d < 7; ++d)
        client.setFieldValue(stopColumn(d), QVariant());
}

} // namespace kb
