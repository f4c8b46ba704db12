#include "OrderRoutesGrid.h"

namespace kb {

const QList<OrderRoutesColumn>& orderRoutesGridColumns()
{
    static const QList<OrderRoutesColumn> columns = {
        {QStringLiteral("Route"), QStringLiteral("Route")},
        {QStringLiteral("Stop"), QStringLiteral("Stop")},
        {QStringLiteral("Route_Day"), QStringLiteral("By Day")},
        {QStringLiteral("Client_ID"), QStringLiteral("Client ID")},
        {QStringLiteral("First_Name"), QStringLiteral("First Name")},
        {QStringLiteral("Last_Name"), QStringLiteral("Last Name")},
        {QStringLiteral("Household_ID"), QStringLiteral("Household")},
        {QStringLiteral("Status"), QStringLiteral("Status")},
        {QStringLiteral("Address1"), QStringLiteral("Address")},
        {QStringLiteral("Cross_Street"), QStringLiteral("Cross Street")},
        {QStringLiteral("City"), QStringLiteral("City")},
        {QStringLiteral("State"), QStringLiteral("State")},
        {QStringLiteral("Zip"), QStringLiteral("ZIP")},
        {QStringLiteral("Latitude"), QStringLiteral("Latitude")},
        {QStringLiteral("Longitude"), QStringLiteral("Longitude")},
    };
    return columns;
}

QStringList orderRoutesGridTitles()
{
    QStringList titles;
    for (const OrderRoutesColumn& c : orderRoutesGridColumns())
        titles << c.title;
    return titles;
}

QVariantList orderRoutesGridValues(const OrderRoutesRow& r)
{
    return {r.route,
            r.stop,
            r.routeDay.trimmed(),
            r.clientId.trimmed(),
            r.firstName.trimmed(),
            r.lastName.trimmed(),
            r.householdId.isNull() || r.householdId.toLongLong() <= 0 ? QVariant() : r.householdId,
            r.status,
            r.address1.trimmed(),
            r.crossStreet.trimmed(),
            r.city.trimmed(),
            r.state.trimmed(),
            r.zip.trimmed(),
            r.latitude,
            r.longitude};
}

} // namespace kb
