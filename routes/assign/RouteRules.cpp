#include "RouteRules.h"

#include "store/Database.h"
#include "UserInterface.h"

namespace kb {

namespace {

bool blank(const QVariant& v) { return v.isNull() || v.toString().trimmed().isEmpty(); }

bool inUseByClients(Database& db, const QString& routeId)
{
    return !db.execute(QStringLiteral("Select Person_ID from Clients where (Def_Rte = :Route_ID) or (Mon_Rte = :Route_ID) "
                                      "or (Tue_Rte = :Route_ID) or (Wed_Rte = :Route_ID) or (Thu_Rte = :Route_ID) or "
                                      "(Fri_Rte = :Route_ID) or (Sat_Rte = :Route_ID) or (Sun_Rte = :Route_ID) Top 1"),
                       {{QStringLiteral("Route_ID"), routeId}})
                .isEmpty();
}

bool inUseByDeliveries(Database& db, const QString& routeId)
{
    return !db.execute(QStringLiteral("Select Person_ID from EpisodicDeliveries where Route = :Route_ID Top 1"),
                       {{QStringLiteral("Route_ID"), routeId}})
                .isEmpty();
}

} // namespace

bool RouteRules::beforePost(Database& db, UserInterface& ui, const Read& row, const Write& write, const Read& original)
{
    write(QStringLiteral("LAST_UPDATED"), db.clock().now());
    const QVariant code = row(QStringLiteral("ROUTE_ID"));
    if (blank(code)) {
        ui.warning(QStringLiteral("You must enter a value for the Route Code."));
        return false;
    }
    const QVariant oldCode = original ? original(QStringLiteral("ROUTE_ID")) : QVariant();
    if (blank(oldCode) || oldCode.toString() == code.toString())
        return true;
    if (!db.execute(QStringLiteral("Select * from Routes where Route_ID = :NewRouteID"),
                    {{QStringLiteral("NewRouteID"), code}})
             .isEmpty()) {
        ui.warning(QStringLiteral("Not able to save this change- it creates a duplicated Code."));
        return false;
    }
    const QString oldRoute = oldCode.toString();
    const ResultSet users = db.execute(
        QStringLiteral("Select Person_ID from Clients where (Def_Rte = :Route_ID) or (Mon_Rte = :Route_ID) or (Tue_Rte = "
                       ":Route_ID) or (Wed_Rte = :Route_ID) or (Thu_Rte = :Route_ID) or (Fri_Rte = :Route_ID) or "
                       "(Sat_Rte = :Route_ID) or (Sun_Rte = :Route_ID) union Select Person_ID from EpisodicDeliveries "
                       "where Route = :Route_ID"),
        {{QStringLiteral("Route_ID"), oldRoute}});
    if (users.isEmpty())
        return true;
    if (ui.question(QStringLiteral("The Route Code you are changing is in use by at least one client.\r\nThe current "
                                   "data must be updated to reflect this change. \r\nThis could take a while. Proceed "
                                   "with the change?"),
                    Buttons::YesNo) != Answer::Yes)
        return false;
    // One statement each, in this order; alternate addresses keep the old code.
    const Params codes = {{QStringLiteral("NewRouteID"), code}, {QStringLiteral("OldRouteID"), oldRoute}};
    for (const char* column : {"Def_Rte", "Mon_Rte", "Tue_Rte", "Wed_Rte", "Thu_Rte", "Fri_Rte", "Sat_Rte", "Sun_Rte"})
        db.execute(QStringLiteral("Update Clients set %1 = :NewRouteID where %1 = :OldRouteID").arg(QLatin1String(column)),
                   codes);
    db.execute(QStringLiteral("Update Deliveri set Route_ID = :NewRouteID where Route_ID = :OldRouteID"), codes);
    db.execute(QStringLiteral("Update EpisodicDeliveries set Route = :NewRouteID where Route = :OldRouteID"), codes);
    return true;
}

QString RouteRules::deleteRefusal(Database& db, const QString& routeId)
{
    const bool clients = inUseByClients(db, routeId);
    const bool deliveries = inUseByDeliveries(db, routeId);
    if (clients && deliveries)
        return QStringLiteral("The Route you are deleting is in use by at least one Client and one or more "
                              "Scheduled/Episodic Deliveries.\r\nAs long as any Clients and Deliveries are assigned to "
                              "this Route you can not delete it.");
    if (clients)
        return QStringLiteral("The Route you are deleting is in use by at least one Client.\r\nAs long as any Clients "
                              "are assigned to this Route you can not delete it.");
    if (deliveries)
        return QStringLiteral("The Route you are deleting is in use by at least one Scheduled or Episodic "
                              "Delivery.\r\nAs long as any Deliveries are assigned to this Route you can not delete it.");
    return {};
}

void RouteRules::updateDistributionCenterCodes(Database& db)
{
    db.execute(QStringLiteral("Update Routes set Dist_Center_Cd = (Select Location_CD from Locatns where "
                              "Locatns.Location_ID = Routes.Dist_Center_ID) where Dist_Center_ID is not Null"));
    db.execute(QStringLiteral("Update Routes set Routes.Dist_Center_Cd = '' where Routes.Dist_Center_ID is Null"));
}

} // namespace kb
