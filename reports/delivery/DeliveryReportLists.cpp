#include "delivery/DeliveryReportLists.h"

#include "store/Database.h"

namespace kb::reports {

QStringList serviceEntries(Database& db)
{
    const ResultSet services =
        db.execute(QStringLiteral("Select * from Services where Service_Type = 'D' order by Service_ID"));
    const int desc = services.columnIndex(u"Service_Desc");
    const int id = services.columnIndex(u"Service_ID");
    QStringList entries;
    for (qsizetype r = 0; r < services.rowCount(); ++r)
        entries << services.value(r, desc).toString() + QStringLiteral(" [") +
                       services.value(r, id).toString() + u']';
    return entries;
}

QStringList routeEntries(Database& db, RouteListKind kind)
{
    const ResultSet rows =
        kind == RouteListKind::Routes
            ? db.execute(QStringLiteral("Select Route_ID from Routes order by RecordID"))
            : db.execute(QStringLiteral("Select Location_Cd, Location from Locatns where Distribution_Center "
                                        "= True Order by Location_Cd"));
    QStringList entries;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        entries << rows.value(r, 0).toString();
    return entries;
}

} // namespace kb::reports
