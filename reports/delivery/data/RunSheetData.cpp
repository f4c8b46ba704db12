// The daily run sheets: the drivers' sheets, one row per delivery in stop
// order, with the client, the items, the alternate address and the counts
// each route needs.

#include "delivery/DeliveryReportList.h"
#include "delivery/data/DeliveryKeys.h"
#include "delivery/data/ReportBuild.h"
#include "delivery/data/ReportPipes.h"

#include "data/StatementPipe.h"
#include "records/RecordServices.h"
#include "settings/ConfigRecord.h"
#include "store/Database.h"

#include <QDate>

namespace kb::reports {

namespace {

// The weekday's route and stop of a client, falling back on the default
// ones: "IfNull( Clients.Mon_Rte then Clients.Def_Rte else Clients.Mon_Rte)".
QString dayRouteExpression(const QString& day)
{
    return QStringLiteral("IfNull( Clients.%1_Rte then Clients.Def_Rte else Clients.%1_Rte) ").arg(day);
}

QString dayStopExpression(const QString& day)
{
    return QStringLiteral("IfNull(Clients.%1_Rte then Clients.Def_Stop else Clients.%1_Stop)").arg(day);
}

// The active and suspended clients without a delivery on the "From" date,
// as rows of their own that show the agency's no-delivery label.
void addClientsWithoutDelivery(ReportBuild& build, ReportStatement& s, const ConfigRecord& config)
{
    const QDate date = build.choices.from;
    static const char* days[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
    const QString day = QString::fromLatin1(days[date.dayOfWeek() - 1]);
    const QString label = config.text(QStringLiteral("No_Delivery_Label"));
    s << QStringLiteral(" Union Select Cast(:Deliv_Date as Date), ");
    s << u' ' + dayRouteExpression(day) + QStringLiteral("as Def_Rte, ") + dayStopExpression(day) +
             QStringLiteral(" as Def_Stop, ");
    s << QStringLiteral(
        " Clients.Person_ID, Clients.Client_ID, Clients.Household_ID, Clients.Cross_Street, ");
    s << u'"' + day.toUpper() + u'"';
    s << QStringLiteral(", False, 999, :No_Delivery_Text, \"\", False, False, False ");
    s << QStringLiteral(
        " from Clients where (Status = \"A\" or Status=\"S\" ) and Start_Dte <= :Deliv_Date ");
    build.limits.AddServiceLimitation(s, QStringLiteral("Clients.Svcs_Used"));
    build.limits.AddRouteLimitation(s, dayRouteExpression(day));
    s << QStringLiteral(
        " and Person_ID not in (Select Person_ID from Deliveri where Deliv_Dt = :Deliv_Date) ");
    s.bind(QStringLiteral("Deliv_Date"), date);
    s.bind(
        QStringLiteral("No_Delivery_Text"),
        QStringLiteral("          *** %1 ***").arg(label.isEmpty() ? QStringLiteral("No Delivery!") : label));
}

ReportStatement deliveriesStatement(ReportBuild& build, const ConfigRecord& config)
{
    const bool separate = build.choices.page == DatePage::NonContiguous;
    ReportStatement s;
    s << QStringLiteral(
        "Select Distinct Deliveri.Deliv_Dt, Deliveri.Route_ID, Deliveri.Stop, Deliveri.Person_ID, "
        "Deliveri.Client_ID, Clients.Household_ID, Clients.Cross_Street, ");
    s << QStringLiteral(
        "       Deliveri.DOW, Deliveri.Address_Overridden, Deliveri.Diet_Restr, Deliveri.Diet_Descr, "
        "Deliveri.Funding_Desc, Deliveri.Label_Created, Deliveri.Label2_Created, "
        "Deliveri.Label3_Created");
    s << QStringLiteral(" from Deliveri join Clients on Deliveri.Person_ID = Clients.Person_ID");
    if (separate) {
        s << QStringLiteral(" where ");
        addSeparateDatesClause(s, build.choices, QStringLiteral("Deliv_Dt"));
    } else {
        s << QStringLiteral(" where ");
        addDateClause(s, build.choices, QStringLiteral("Deliv_Dt"));
    }
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("deliveri.route_id"));
    if (config.flag(QStringLiteral("Include_All_Active_Clients")))
        addClientsWithoutDelivery(build, s, config);
    s << (separate ? QStringLiteral(" order by Route_ID, Stop, Household_ID, Person_ID")
                   : QStringLiteral(" order by Deliv_Dt, Route_ID, Stop, Household_ID"));
    return s;
}

// The items of each delivery, by service and the items' order.
void addDeliveryDetails(ReportBuild& build, ReportData& data, const ConfigRecord& config)
{
    ReportStatement s;
    s << QStringLiteral(" select Distinct MealCrdt.RecordID, MealCrdt.Service_ID, MealCrdt.Sort_Order, "
                        "MealCrdt.Quantity, MealCrdt.Item_ID, Items.Meal_Item, Services.Service_Desc, "
                        "MealCrdt.Deliv_Dt, MealCrdt.Person_ID, Items.Meal ");
    s << QStringLiteral(" from MealCrdt join Items on MealCrdt.Item_ID = Items.Item_ID ");
    s << QStringLiteral("               join Services on MealCrdt.Service_ID = Services.Service_ID ");
    s << QStringLiteral(
        "               join Memory ReportDeliveryKeys Keys on (MealCrdt.Deliv_Dt = Keys.Deliv_Dt "
        "and MealCrdt.Person_ID = Keys.Person_ID) ");
    s << QStringLiteral(" where  MealCrdt.Item_ID is not null ");
    if (config.text(QStringLiteral("DELIV_REPORT_SHOW_ITEMS")) == QLatin1String("M"))
        build.limits.AddMealItemLimitation(s, QStringLiteral("Items.Meal"));
    s << QStringLiteral(" order by MealCrdt.Service_ID, MealCrdt.Sort_Order, MealCrdt.RecordID ");
    build.addQuery(data, QStringLiteral("DBPipelineDeliveryDetails"), s);
    data.link(QStringLiteral("DBPipelineDeliveryDetails"), QStringLiteral("DBPipelineDeliveries"),
              {{QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")},
               {QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});
}

// The agency's own counts of each route, from its stored statements.
void addDeliveryCounts(ReportBuild& build, ReportData& data, const ConfigRecord& config)
{
    const QString show = config.text(QStringLiteral("DELIV_REPORT_SHOW_COUNTS"));
    const QString selection =
        show == QLatin1String("T") || show == QLatin1String("B")
            ? GetSQLStatement(build.db, QStringLiteral("DELIVERY_REPORT_COUNTS_SELECTION"))
            : QString();
    if (selection.trimmed().isEmpty()) {
        // The columns of the selection the templates expect, without rows.
        data.addRows(QStringLiteral("DBPipelineDeliveryCounts"),
                     emptyRows({QStringLiteral("SVCS_USED"), QStringLiteral("SERVICE_DESC"),
                                QStringLiteral("CLIENT_ID"), QStringLiteral("DIET_RESTR"),
                                QStringLiteral("DIET_DESCR"), QStringLiteral("STOP")}));
        return;
    }
    ReportStatement s;
    s << selection << QStringLiteral(" ");
    build.limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    build.limits.AddRouteLimitation(s, QStringLiteral("Deliveri.Route_ID"));
    s << u' ' + GetSQLStatement(build.db, QStringLiteral("DELIVERY_REPORT_COUNTS_SORT"));
    // Read again for each route and date as the sheet reaches it.
    auto pipe = std::make_unique<StatementPipe>(QStringLiteral("DBPipelineDeliveryCounts"), build.db, s.text);
    for (const auto& [name, value] : s.params)
        pipe->setParameter(name, value);
    pipe->follow(data.mainData());
    data.pipes.push_back(std::move(pipe));
}

} // namespace

std::optional<ReportData> buildRunSheets(ReportBuild& build)
{
    const ConfigRecord config = ConfigRecord::read(build.db);
    ReportData data =
        ReportData::forReport(int(DeliveryReport::DailyRunSheets), QStringLiteral("DBPipelineDeliveries"));
    RowsPipe& deliveries = build.addQuery(data, data.mainPipe, deliveriesStatement(build, config));
    DeliveryKeys::fill(build.db, deliveries.allRows());

    addClientDetails(build, data);
    build.addQuery(data, QStringLiteral("DBPipelineRoutes"), QStringLiteral("select * from routes"));
    data.link(QStringLiteral("DBPipelineRoutes"), data.mainPipe,
              {{QStringLiteral("Route_ID"), QStringLiteral("Route_ID")}});
    addDeliveryDetails(build, data, config);
    addDeliveryCounts(build, data, config);

    ReportStatement stops;
    stops << QStringLiteral(
        "Select Distinct Deliv_Dt, Route_ID, Round( Stop ) as Counter from Deliveri where ");
    if (build.choices.page == DatePage::NonContiguous)
        addSeparateDatesClause(stops, build.choices, QStringLiteral("Deliv_Dt"));
    else
        addDateClause(stops, build.choices, QStringLiteral("Deliv_Dt"));
    build.addQuery(data, QStringLiteral("DBPipelineDeliveryStopsCount"), stops);
    data.link(QStringLiteral("DBPipelineDeliveryStopsCount"), data.mainPipe,
              {{QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")},
               {QStringLiteral("Route_ID"), QStringLiteral("Route_ID")}});

    build.addQuery(
        data, QStringLiteral("DBPipelineCustomItemsFlag"),
        QStringLiteral("select Keys.Deliv_Dt, Keys.Person_ID, Count( custom_items ) as CustomCount "
                       "from deliveri join Memory ReportDeliveryKeys Keys on (deliveri.Deliv_Dt = "
                       "Keys.Deliv_Dt and deliveri.Person_ID = Keys.Person_ID) where deliveri.custom_items "
                       "group by Keys.Deliv_Dt, Keys.Person_ID"));
    data.link(QStringLiteral("DBPipelineCustomItemsFlag"), data.mainPipe,
              {{QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")},
               {QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});

    addSpecialDiets(build, data,
                    {{QStringLiteral("Deliv_Dt"), QStringLiteral("Deliv_Dt")},
                     {QStringLiteral("Person_ID"), QStringLiteral("Person_ID")}});

    addAddressOverrides(build, data, config);
    return data;
}

} // namespace kb::reports
