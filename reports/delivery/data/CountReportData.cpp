// The count reports of the kitchen and the office: clients by route,
// service and diet, items by center, route, service and diet, and the
// detailed items of one service.

#include "delivery/DeliveryReportList.h"
#include "delivery/data/ReportBuild.h"

namespace kb::reports {

std::optional<ReportData> buildDetailedInfo(ReportBuild& build)
{
    ReportData data = ReportData::forReport(int(DeliveryReport::DetailedInfoForOneService),
                                            QStringLiteral("DBPipelineDetailMealItems"));
    ReportStatement s;
    s << QStringLiteral(
        "select Deliveri.Person_ID, Deliveri.Client_ID, Deliveri.Svcs_Used, Deliveri.Deliv_Dt, "
        "Clients.First_Name, Clients.Last_Name, Clients.Org_Client, ");
    s << QStringLiteral("Services.Service_Desc, MealCrdt.Quantity, MealCrdt.Item_ID, Items.Meal_Item");
    s << QStringLiteral(" from Deliveri join Clients on (Deliveri.Person_ID=Clients.Person_ID)");
    s << QStringLiteral("              join MealCrdt on (Deliveri.Deliv_ID = MealCrdt.Deliv_ID) ");
    s << QStringLiteral("              join Services on (Deliveri.Svcs_Used = Services.Service_ID) ");
    s << QStringLiteral("              join Items on (MealCrdt.Item_ID = Items.Item_ID) ");
    s << QStringLiteral(" where ");
    addDateClause(s, build.choices,
                  {QStringLiteral("Deliveri.Deliv_Dt"), QStringLiteral("MealCrdt.Deliv_Dt")});
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("deliveri.route_id"));
    s << QStringLiteral(" order by Deliv_Dt, Person_ID");
    build.addQuery(data, data.mainPipe, s);
    return data;
}

std::optional<ReportData> buildClientCounts(ReportBuild& build, int report)
{
    struct Shape
    {
        const char* pipe;
        const char* alias; // of Deliveri, Routes, Services
        const char* routes;
        const char* services;
        const char* serviceLimit;
        const char* routeLimit;
        const char* order; // the last key keeps the clients of a group in one order
    };
    static const Shape shapes[] = {
        {"DBPipelineRouteDiet", "deliveri", "routes", "services", "Deliveri.Svcs_Used", "deliveri.route_id",
         "order by deliv_dt, svcs_used, route_id, diet_descr, client_id"},
        {"DBPipelineDietRoute", "deliv", "rtes", "svcs", "Deliv.Svcs_Used", "Deliv.Route_ID",
         "order by deliv_dt, svcs_used, diet_descr, route_id, client_id "},
        {"DBPipelineRSDC", "deliv", "rtes", "svcs", "Deliv.Svcs_Used", "Deliv.route_id",
         "order by deliv_dt, route_id, svcs_used, diet_descr, client_id "},
    };
    const Shape& shape = shapes[report - int(DeliveryReport::ClientCountRouteDiet)];
    const QString d = QString::fromLatin1(shape.alias);
    const QString r = QString::fromLatin1(shape.routes);
    const QString v = QString::fromLatin1(shape.services);
    const bool aliased = d != QLatin1String("deliveri");

    ReportData data = ReportData::forReport(report, QString::fromLatin1(shape.pipe));
    ReportStatement s;
    s << QStringLiteral("select %1.deliv_dt, %1.svcs_used, %3.service_desc, %1.diet_restr, %1.diet_descr, "
                        "%1.route_id, %2.route_desc, %1.client_id ")
             .arg(d, r, v);
    s << (aliased ? QStringLiteral("from deliveri deliv, routes rtes, services svcs ")
                  : QStringLiteral("from deliveri, routes, services "));
    s << QStringLiteral("where ( %1.route_id = %2.route_id) and ( %1.svcs_used = %3.service_id ) and ")
             .arg(d, r, v);
    addDateClause(s, build.choices, d + QStringLiteral(".Deliv_Dt"));
    build.limits.AddServiceLimitation(s, QString::fromLatin1(shape.serviceLimit));
    build.limits.AddRouteLimitation(s, QString::fromLatin1(shape.routeLimit));
    s << u' ' + QString::fromLatin1(shape.order);
    build.addQuery(data, data.mainPipe, s);
    return data;
}

std::optional<ReportData> buildItemCounts(ReportBuild& build, int report)
{
    const auto index = DeliveryReport(report);
    const bool withServices = index != DeliveryReport::ItemCountCenterRouteDiet;
    const bool byItem = report >= int(DeliveryReport::ItemCountItemDietCenterRouteService);
    QString columns, groupBy, order;
    switch (index) {
    case DeliveryReport::ItemCountCenterRouteDiet:
        columns = QStringLiteral(
            "Deliveri.DELIV_DT, Locatns.LOCATION, Routes.ROUTE_ID, Routes.Route_Desc, "
            "Items.MEAL_ITEM, Items.Meal, Deliveri.DIET_DESCR, SUM( MealCrdt.QUANTITY) Quantity");
        groupBy = QStringLiteral(
            "Deliveri.DELIV_DT, Locatns.LOCATION, Routes.ROUTE_ID, Items.MEAL_ITEM, Deliveri.DIET_DESCR");
        order = QStringLiteral(
            "Deliveri.Deliv_Dt ASC, Locatns.LOCATION ASC, Routes.ROUTE_ID ASC, Items.MEAL_ITEM ASC, "
            "Deliveri.DIET_DESCR ASC NOCASE NoJoinOptimize ");
        break;
    case DeliveryReport::ItemCountCenterRouteServiceDiet:
    case DeliveryReport::ItemCountCenterRouteServiceDietCrosstab: {
        const bool crosstab = index == DeliveryReport::ItemCountCenterRouteServiceDietCrosstab;
        columns = crosstab
                      ? QStringLiteral("Deliveri.DELIV_DT, Locatns.LOCATION_CD, Routes.ROUTE_ID, "
                                       "Services.Service_Desc, Deliveri.Cuisine_ID, Items.MEAL_ITEM, "
                                       "Deliveri.DIET_DESCR, MealCrdt.QUANTITY")
                      : QStringLiteral(
                            "Deliveri.DELIV_DT, Locatns.LOCATION_CD, Routes.ROUTE_ID, Routes.Route_Desc, "
                            "Services.Service_Desc, Deliveri.Cuisine_ID, Items.MEAL_ITEM, "
                            "Deliveri.DIET_DESCR, SUM( MealCrdt.QUANTITY) Quantity");
        if (!crosstab)
            groupBy = QStringLiteral(
                "Deliveri.DELIV_DT, Locatns.LOCATION_CD, Routes.ROUTE_ID, Services.Service_Desc, "
                "Deliveri.Cuisine_ID, Items.MEAL_ITEM, Deliveri.DIET_DESCR");
        order = QStringLiteral("Deliveri.Deliv_Dt ASC, Locatns.LOCATION_CD ASC, Routes.ROUTE_ID ASC, "
                               "Services.Service_Desc, Deliveri.Cuisine_ID, Items.MEAL_ITEM ASC, "
                               "Deliveri.DIET_DESCR ASC NOCASE ");
        break;
    }
    case DeliveryReport::ItemCountItemDietCenterRouteServiceCrosstab:
        columns =
            QStringLiteral("Deliveri.DELIV_DT, Locatns.LOCATION_CD, Routes.ROUTE_ID, Services.Service_Desc, "
                           "Items.MEAL_ITEM, Deliveri.DIET_DESCR, SUM( MealCrdt.QUANTITY) Quantity");
        groupBy =
            QStringLiteral("Deliveri.DELIV_DT, Items.MEAL_ITEM, Deliveri.Diet_Descr, Locatns.LOCATION_CD, "
                           "Routes.ROUTE_ID, Services.Service_Desc");
        order = QStringLiteral("Deliveri.DELIV_DT, Items.MEAL_ITEM ASC, Deliveri.DIET_DESCR ASC NOCASE, "
                               "Locatns.LOCATION_CD ASC, Routes.ROUTE_ID ASC, Services.Service_Desc ");
        break;
    default: // by item, diet, center, route and service, also by route, item, cuisine and diet
        columns =
            QStringLiteral("Deliveri.DELIV_DT, Locatns.LOCATION_CD, Routes.ROUTE_ID, Routes.Route_Desc, "
                           "Services.Service_Desc, Items.MEAL_ITEM, Deliveri.DIET_DESCR, "
                           "SUM( MealCrdt.QUANTITY) Quantity");
        groupBy =
            QStringLiteral("Deliveri.DELIV_DT, Items.MEAL_ITEM, Deliveri.Diet_Descr, Locatns.LOCATION_CD, "
                           "Routes.ROUTE_ID, Services.Service_Desc");
        order = QStringLiteral("Deliveri.DELIV_DT, Items.MEAL_ITEM ASC, Deliveri.DIET_DESCR ASC, "
                               "Locatns.LOCATION_CD ASC, Routes.ROUTE_ID ASC, Services.Service_Desc NoCase ");
        break;
    }

    ReportData data = ReportData::forReport(report, byItem ? QStringLiteral("DBPipelineDCRS")
                                                           : QStringLiteral("DBPipelineItemDRSDC"));
    ReportStatement s;
    s << QStringLiteral("SELECT ") << columns;
    s << QStringLiteral(
        " FROM Locatns RIGHT OUTER JOIN Routes ON Locatns.LOCATION_ID = Routes.DIST_CENTER_ID "
        "INNER JOIN Deliveri ON Deliveri.ROUTE_ID = Routes.ROUTE_ID INNER JOIN MealCrdt ON "
        "(Deliveri.DELIV_ID = MealCrdt.DELIV_ID) INNER JOIN Items ON MealCrdt.ITEM_ID = Items.ITEM_ID");
    if (withServices) s << QStringLiteral(" INNER JOIN Services ON Deliveri.Svcs_Used = Services.Service_ID");
    s << QStringLiteral(" WHERE ");
    addDateClause(s, build.choices,
                  {QStringLiteral("Deliveri.Deliv_Dt"), QStringLiteral("MealCrdt.Deliv_Dt")});
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
    if (!groupBy.isEmpty()) s << QStringLiteral(" GROUP BY ") << groupBy;
    s << QStringLiteral(" ORDER BY ") << order;
    build.addQuery(data, data.mainPipe, s);
    return data;
}

} // namespace kb::reports
