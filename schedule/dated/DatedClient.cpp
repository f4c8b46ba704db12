#include "dated/DatedClient.h"

#include "store/Database.h"

namespace kb {

namespace {

const char* const dayPrefixes[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};

QDate setDate(const QVariant& value)
{
    const QDate date = value.toDate();
    return date.isValid() && date.year() >= 1901 ? date : QDate();
}

std::optional<DatedClient> readClient(Database& db, const QString& where, const Params& params)
{
    QString columns =
        QStringLiteral("Person_ID, Client_ID, First_Name, Last_Name, Start_Dte, Stop_Dte, Svcs_Used, "
                       "Delivery_Type, Def_Rte, Def_Stop");
    for (const char* day : dayPrefixes)
        columns += QStringLiteral(", %1_Rte, %1_Stop").arg(QLatin1String(day));
    const ResultSet rows = db.execute(
        QStringLiteral("Select ") + columns + QStringLiteral(" from Clients where ") + where, params);
    if (rows.isEmpty()) return std::nullopt;
    DatedClient c;
    c.personId = rows.value(0, 0).toLongLong();
    c.clientId = rows.value(0, 1).toString();
    c.firstName = rows.value(0, 2).toString().trimmed();
    c.lastName = rows.value(0, 3).toString().trimmed();
    c.startDate = setDate(rows.value(0, 4));
    c.stopDate = setDate(rows.value(0, 5));
    c.service = rows.value(0, 6).toLongLong();
    c.deliveryType = rows.value(0, 7).toString().trimmed();
    c.defaultRoute = rows.value(0, 8).toString();
    c.defaultStop = rows.value(0, 9);
    for (int d = 0; d < 7; ++d) {
        c.dayRoutes[size_t(d)] = rows.value(0, 10 + 2 * d).toString();
        c.dayStops[size_t(d)] = rows.value(0, 11 + 2 * d);
    }
    return c;
}

} // namespace

QString DatedClient::name() const
{
    return (firstName + QLatin1Char(' ') + lastName).trimmed();
}

std::optional<DatedClient> DatedClient::byPersonId(Database& db, qint64 personId)
{
    return readClient(db, QStringLiteral("Person_ID = :Person_ID"),
                      {{QStringLiteral("Person_ID"), personId}});
}

std::optional<DatedClient> DatedClient::byClientId(Database& db, const QString& clientId)
{
    return readClient(db, QStringLiteral("Client_ID = :Client_ID"),
                      {{QStringLiteral("Client_ID"), clientId}});
}

QDate DatedClient::lowestDate(const QDate& today) const
{
    return startDate.isValid() ? startDate : today.addDays(-1095);
}

QDate DatedClient::highestDate(const QDate& today) const
{
    return stopDate.isValid() ? stopDate : today.addDays(1095);
}

} // namespace kb
