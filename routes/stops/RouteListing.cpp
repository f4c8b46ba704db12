#include "RouteListing.h"

namespace kb {

std::vector<std::pair<QString, QVariant>> RouteListing::parameters() const
{
    return {{QStringLiteral("Heading"), heading()},           {QStringLiteral("Route"), route},
            {QStringLiteral("Route_Desc"), routeDescription}, {QStringLiteral("Route_Day"), dayText},
            {QStringLiteral("Active_Only"), activeOnly},      {QStringLiteral("Printed"), printed}};
}

ResultSet routeListingRows(const std::vector<OrderRoutesRow>& rows)
{
    const auto column = [](const char* name, FieldType type, int width = 0) {
        return sql::OutputColumn{QString::fromLatin1(name), type, width};
    };
    ResultSet set({column("Route", FieldType::String, 5), column("Stop", FieldType::Float),
                   column("RouteStop", FieldType::String, 30), column("Route_Day", FieldType::String, 3),
                   column("Client_ID", FieldType::String, 7), column("Household_ID", FieldType::Int),
                   column("Status", FieldType::String, 1), column("First_Name", FieldType::String, 30),
                   column("Last_Name", FieldType::String, 30), column("Name", FieldType::String, 50),
                   column("Address1", FieldType::String, 60), column("Cross_Street", FieldType::String, 60),
                   column("City", FieldType::String, 30), column("State", FieldType::String, 10),
                   column("Zip", FieldType::String, 10), column("Latitude", FieldType::Float),
                   column("Longitude", FieldType::Float), column("Person_ID", FieldType::Int)});
    set.setHasRows(true);
    for (const OrderRoutesRow& r : rows)
        set.appendRow({r.route, r.stop, r.routeStop(), r.routeDay, r.clientId, r.householdId, r.status,
                       r.firstName, r.lastName, r.name, r.address1, r.crossStreet, r.city, r.state, r.zip,
                       r.latitude, r.longitude, r.personId});
    return set;
}

} // namespace kb
