// The data of each delivery report over a saved run of known content, on
// both stores: which rows, in which order, with which groups and limits.

#include "ReportAgency.h"

#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "delivery/DeliveryReportList.h"
#include "delivery/DeliveryReportLists.h"
#include "delivery/data/TDataModule2.h"
#include "delivery/questions/TFormClientItemsSortOrder.h"
#include "delivery/questions/TFormDeliveryDietCriteria.h"
#include "delivery/questions/TFormItemLimitation.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

namespace {

class DeliveryReportData : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        store = std::make_unique<TempDataDir>(GetParam());
        makeReportAgency(db());
    }

    Database& db() { return store->db(); }

    DeliveryReportChoices choices(DeliveryReport report, const QDate& from, const QDate& to = {})
    {
        return choicesFor(db(), int(report), from, to.isValid() ? to : from);
    }

    ReportData run(const DeliveryReportChoices& c)
    {
        TDataModule2 module(db(), store->clock());
        std::optional<ReportData> built = module.build(c, questions, ui, nullptr);
        if (!built) throw std::runtime_error("the report was cancelled");
        return std::move(*built);
    }

    // One column of the report's main data set, as texts.
    static QStringList column(const ReportData& report, const QString& name, const QString& pipe = {})
    {
        DataPipe& p = pipe.isEmpty() ? report.mainData() : *report.pipe(pipe);
        QStringList values;
        for (qsizetype r = 0; r < p.rowCount(); ++r) {
            p.seek(r);
            const QVariant v = p.value(QStringView(name));
            values << (v.typeId() == QMetaType::QDate ? v.toDate().toString(Qt::ISODate) : v.toString());
        }
        return values;
    }

    static QStringList parameters(ReportData& report)
    {
        DataPipe& p = *report.pipe(QStringLiteral("DBPipelineReportParameters"));
        p.seek(0);
        return {p.value(QStringView(u"Period_Beginning")).toString(),
                p.value(QStringView(u"Period_Ending")).toString(),
                p.value(QStringView(u"Restrictions1")).toString(),
                p.value(QStringView(u"Restrictions2")).toString()};
    }

    std::unique_ptr<TempDataDir> store;
    ScriptedUserInterface ui;
    GivenQuestions questions;
};

} // namespace

TEST_P(DeliveryReportData, EveryFixedReportBuildsOnTheSavedRun)
{
    questions.dietCriteria = [](TFormDeliveryDietCriteria& form) {
        form.diets().setChecked(0, true);
        return true;
    };
    for (int index = 0; index < DeliveryReports::fixedCount; ++index) {
        if (DeliveryReports::isLabel(index)) continue;
        SCOPED_TRACE(DeliveryReports::name(index).toStdString());
        ReportData report = run(choicesFor(db(), index, wednesday, thursday));
        EXPECT_EQ(report.templateFile, DeliveryReports::templateFile(index));
        EXPECT_NE(report.pipe(QStringLiteral("DBPipelineConfig")), nullptr);
        EXPECT_EQ(parameters(report)[0], "2024-03-06 00:00:00");
        EXPECT_GT(report.mainData().rowCount(), 0);
    }
}

TEST_P(DeliveryReportData, RunSheetsInStopOrderWithTheirDetails)
{
    ReportData sheet = run(choices(DeliveryReport::DailyRunSheets, wednesday));
    // Routes in order, stops in order, a household together.
    EXPECT_EQ(column(sheet, QStringLiteral("Route_ID")),
              QStringList({"E1", "N1", "N1", "N1", "N2", "S1", "S1"}));
    EXPECT_EQ(column(sheet, QStringLiteral("Person_ID")),
              QStringList({"109", "101", "102", "103", "104", "106", "105"}));
    DataPipe& deliveries = sheet.mainData();
    DataPipe& clients = *sheet.pipe(QStringLiteral("DBPipelineClients"));
    DataPipe& items = *sheet.pipe(QStringLiteral("DBPipelineDeliveryDetails"));
    DataPipe& overrides = *sheet.pipe(QStringLiteral("DBPipeline1"));
    DataPipe& overrideDetails = *sheet.pipe(QStringLiteral("DBPipelineAddressOverRides"));
    DataPipe& special = *sheet.pipe(QStringLiteral("DBPipelineSpecialDiets"));
    DataPipe& custom = *sheet.pipe(QStringLiteral("DBPipelineCustomItemsFlag"));
    DataPipe& stops = *sheet.pipe(QStringLiteral("DBPipelineDeliveryStopsCount"));
    DataPipe& cuisine = *sheet.pipe(QStringLiteral("DBPipelineCuisine"));
    DataPipe& serviceName = *sheet.pipe(QStringLiteral("DBPipelineClientServiceNameFromID"));
    DataPipe& route = *sheet.pipe(QStringLiteral("DBPipelineRoutes"));

    deliveries.seek(2); // Harold Baxter
    EXPECT_EQ(clients.value(QStringView(u"First_Name")).toString(), "Harold");
    EXPECT_EQ(clients.value(QStringView(u"Cross_Street")).toString(), "Maple Ave");
    EXPECT_EQ(serviceName.value(QStringView(u"Service_Desc")).toString(), "Home Delivered Meals");
    EXPECT_EQ(route.value(QStringView(u"Route_Desc")).toString(), "North Loop");
    EXPECT_EQ(column(sheet, QStringLiteral("Meal_Item"), QStringLiteral("DBPipelineDeliveryDetails")),
              QStringList({"Chicken Dinner", "Fruit Cup"}));
    EXPECT_EQ(special.rowCount(), 1);
    EXPECT_EQ(special.value(QStringView(u"Special_Diet_Descr")).toString(), "DIAB");
    EXPECT_EQ(custom.rowCount(), 0);
    EXPECT_EQ(stops.rowCount(), 2); // N1 has stops 1 and 2
    EXPECT_EQ(overrides.rowCount(), 0);

    deliveries.seek(3); // Ruth Baxter, items of her own
    EXPECT_EQ(custom.value(QStringView(u"CustomCount")).toInt(), 1);
    EXPECT_EQ(special.rowCount(), 0);

    deliveries.seek(4); // Dorothy Castellano
    EXPECT_EQ(cuisine.value(QStringView(u"Cuisine")).toString(), "Kosher");
    EXPECT_EQ(serviceName.value(QStringView(u"Service_Desc")).toString(), "Frozen Meals");
    EXPECT_EQ(items.rowCount(), 1);
    EXPECT_EQ(items.value(QStringView(u"Quantity")).toInt(), 5);

    deliveries.seek(6); // Walter Dubois, at his daughter's for the day
    ASSERT_EQ(overrides.rowCount(), 1);
    EXPECT_EQ(overrides.value(QStringView(u"Override_Type")).toString(), "D");
    EXPECT_EQ(overrideDetails.value(QStringView(u"Address1")).toString(), "48 Maple Avenue");
    EXPECT_EQ(overrideDetails.value(QStringView(u"Addr_Desc")).toString(), "Daughter's house");

    // Without alternate addresses the overrides stay empty.
    db().execute(QStringLiteral("Update Config set ENABLE_ALTERNATE_ADDRESSES = False"));
    ReportData plain = run(choices(DeliveryReport::DailyRunSheets, wednesday));
    plain.mainData().seek(6);
    EXPECT_EQ(plain.pipe(QStringLiteral("DBPipeline1"))->rowCount(), 0);

    // "Selected meals" shows only the meals Config names.
    db().execute(QStringLiteral("Update Config set DELIV_REPORT_SHOW_ITEMS = 'M', MEALS_LINE_ITEMS = 16"));
    ReportData others = run(choices(DeliveryReport::DailyRunSheets, wednesday));
    others.mainData().seek(1); // Margaret Abbott: a dinner and milk ("O")
    EXPECT_EQ(column(others, QStringLiteral("Meal_Item"), QStringLiteral("DBPipelineDeliveryDetails")),
              QStringList({"Milk 1%"}));
    // "M" with no meal chosen shows every line.
    db().execute(QStringLiteral("Update Config set MEALS_LINE_ITEMS = 0"));
    ReportData all = run(choices(DeliveryReport::DailyRunSheets, wednesday));
    all.mainData().seek(1);
    EXPECT_EQ(all.pipe(QStringLiteral("DBPipelineDeliveryDetails"))->rowCount(), 2);
}

TEST_P(DeliveryReportData, RunSheetsAddTheActiveClientsWithoutADelivery)
{
    db().execute(QStringLiteral("Update Config set Include_All_Active_Clients = True"));
    // Margaret Abbott gets nothing on Wednesday but her Thursday delivery stands.
    db().execute(QStringLiteral("Delete from Deliveri where Deliv_ID = 1"));
    ReportData sheet = run(choices(DeliveryReport::DailyRunSheets, wednesday, thursday));
    QStringList rows;
    DataPipe& d = sheet.mainData();
    for (qsizetype r = 0; r < d.rowCount(); ++r) {
        d.seek(r);
        rows << QStringLiteral("%1 %2 %3 %4 %5")
                    .arg(d.value(QStringView(u"Deliv_Dt")).toDate().toString(Qt::ISODate),
                         d.value(QStringView(u"Route_ID")).toString(),
                         d.value(QStringView(u"Stop")).toString(),
                         d.value(QStringView(u"Person_ID")).toString(),
                         d.value(QStringView(u"Diet_Restr")).toString());
    }
    EXPECT_EQ(rows, QStringList({"2024-03-06 E1 1 109 0", "2024-03-06 N1 1 101 999", "2024-03-06 N1 2 102 1",
                                 "2024-03-06 N1 2 103 0", "2024-03-06 N2 1 104 3",
                                 "2024-03-06 O'B1 1 108 999", "2024-03-06 S1 1 106 0",
                                 "2024-03-06 S1 2 107 999", "2024-03-06 S1 3 105 4", "2024-03-07 N1 1 101 0",
                                 "2024-03-07 N2 1 104 3", "2024-03-07 N2 2 105 4", "2024-03-07 S1 1 106 0"}));
    d.seek(1);
    EXPECT_EQ(d.value(QStringView(u"Diet_Descr")).toString(), "          *** No Delivery! ***");
    EXPECT_EQ(d.value(QStringView(u"DOW")).toString(), "WED");
    EXPECT_FALSE(d.value(QStringView(u"Address_Overridden")).toBool());
    EXPECT_EQ(sheet.pipe(QStringLiteral("DBPipelineClients"))->value(QStringView(u"Last_Name")).toString(),
              "Abbott");

    // The agency's own label; a route limit tests the weekday's route, and a
    // client who starts later gets no row.
    db().execute(QStringLiteral("Update Config set NO_DELIVERY_LABEL = 'Call first'"));
    db().execute(QStringLiteral("Update Clients set Start_Dte = '2024-03-10' where Person_ID = 108"));
    DeliveryReportChoices c = choices(DeliveryReport::DailyRunSheets, wednesday);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("S1")), true);
    ReportData south = run(c);
    EXPECT_EQ(column(south, QStringLiteral("Person_ID")), QStringList({"106", "107", "105"}));
    EXPECT_EQ(column(south, QStringLiteral("Diet_Descr"))[1], "          *** Call first ***");
    db().execute(QStringLiteral("Update Clients set Start_Dte = '2020-01-06' where Person_ID = 108"));
    c.routes.setAll(false);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("O'B1")), true);
    EXPECT_EQ(column(run(c), QStringLiteral("Person_ID")), QStringList({"108"}));
}

TEST_P(DeliveryReportData, RunSheetsOnSeparateDates)
{
    DeliveryReportChoices c = choices(DeliveryReport::DailyRunSheets, wednesday);
    c.page = DatePage::NonContiguous;
    c.dates = {wednesday, thursday, QDate(), QDate(2024, 3, 8)}; // a date after a cleared one does not count
    ReportData sheet = run(c);
    EXPECT_EQ(column(sheet, QStringLiteral("Person_ID")),
              QStringList({"109", "101", "101", "102", "103", "104", "104", "105", "106", "106", "105"}));
    EXPECT_EQ(column(sheet, QStringLiteral("Deliv_Dt"))[1], "2024-03-06");
    EXPECT_EQ(column(sheet, QStringLiteral("Deliv_Dt"))[2], "2024-03-07");
}

TEST_P(DeliveryReportData, LimitsNarrowTheRowsAndSayWhatTheyDid)
{
    DeliveryReportChoices c = choices(DeliveryReport::ClientCountRouteServiceDiet, wednesday);
    // Everything checked is no limit, as is nothing checked.
    c.services.setAll(true);
    c.routes.setAll(true);
    c.excludeRoutes = true;
    ReportData all = run(c);
    EXPECT_EQ(all.mainData().rowCount(), 7);
    EXPECT_EQ(parameters(all), QStringList({"2024-03-06 00:00:00", "2024-03-06 00:00:00", "", ""}));

    c.services.setAll(false);
    c.services.setChecked(1, true);
    c.routes.setAll(false);
    ReportData frozen = run(c);
    EXPECT_EQ(column(frozen, QStringLiteral("client_id")), QStringList({"104"}));
    EXPECT_EQ(parameters(frozen)[2], "Frozen Meals [2]");

    c.services.setAll(false);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("N1")), true);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("O'B1")), true);
    c.excludeRoutes = false;
    ReportData north = run(c);
    EXPECT_EQ(column(north, QStringLiteral("client_id")), QStringList({"101", "102.1", "102.0"}));
    EXPECT_EQ(parameters(north)[3], "Routes: N1,OB1");
    c.excludeRoutes = true;
    ReportData others = run(c);
    EXPECT_EQ(column(others, QStringLiteral("client_id")), QStringList({"ORG1", "104", "106", "105"}));
    EXPECT_EQ(parameters(others)[3], "Excl. Routes: N1,OB1");

    // Centers stand for their routes; a center without routes selects nothing.
    c.routeKind = RouteListKind::DistributionCenters;
    c.routes.setEntries(routeEntries(db(), RouteListKind::DistributionCenters));
    EXPECT_EQ(c.routes.entries, QStringList({"NORTH", "SOUTH", "WEST"}));
    c.routes.setChecked(1, true);
    c.excludeRoutes = false;
    ReportData south = run(c);
    EXPECT_EQ(column(south, QStringLiteral("client_id")), QStringList({"106", "105"}));
    EXPECT_EQ(parameters(south)[3], "Centers: SOUTH");
    c.excludeRoutes = true;
    EXPECT_EQ(column(run(c), QStringLiteral("client_id")),
              QStringList({"ORG1", "101", "102.1", "102.0", "104"}));
    c.routes.setAll(false);
    c.routes.setChecked(2, true);
    EXPECT_EQ(run(c).mainData().rowCount(), 0);
    c.excludeRoutes = false;
    ReportData west = run(c);
    EXPECT_EQ(west.mainData().rowCount(), 0);
    EXPECT_EQ(parameters(west)[3], "Centers: WEST");
}

TEST_P(DeliveryReportData, ClientCountsInTheirThreeOrders)
{
    const auto rows = [&](DeliveryReport report) {
        ReportData counts = run(choices(report, wednesday));
        QStringList list;
        DataPipe& p = counts.mainData();
        for (qsizetype r = 0; r < p.rowCount(); ++r) {
            p.seek(r);
            list << p.value(QStringView(u"svcs_used")).toString() + u'/' +
                        p.value(QStringView(u"route_id")).toString() + u'/' +
                        p.value(QStringView(u"diet_descr")).toString() + u'/' +
                        p.value(QStringView(u"client_id")).toString();
        }
        return list;
    };
    const QStringList byServiceRouteDiet = rows(DeliveryReport::ClientCountRouteDiet);
    ASSERT_EQ(byServiceRouteDiet.size(), 7);
    EXPECT_EQ(byServiceRouteDiet.mid(0, 4),
              QStringList({"1/E1//ORG1", "1/N1//101", "1/N1//102.1", "1/N1/DIAB/102.0"}));
    EXPECT_EQ(byServiceRouteDiet.last(), "2/N2/DIAB / LS/104");
    const QStringList byServiceDietRoute = rows(DeliveryReport::ClientCountDietRoute);
    EXPECT_EQ(byServiceDietRoute, QStringList({"1/E1//ORG1", "1/N1//101", "1/N1//102.1", "1/S1//106",
                                               "1/N1/DIAB/102.0", "1/S1/REN/105", "2/N2/DIAB / LS/104"}));
    EXPECT_EQ(rows(DeliveryReport::ClientCountRouteServiceDiet),
              QStringList({"1/E1//ORG1", "1/N1//101", "1/N1//102.1", "1/N1/DIAB/102.0", "2/N2/DIAB / LS/104",
                           "1/S1//106", "1/S1/REN/105"}));
}

TEST_P(DeliveryReportData, ItemCountsSumByCenterRouteAndDiet)
{
    ReportData byRoute = run(choices(DeliveryReport::ItemCountCenterRouteDiet, wednesday, thursday));
    QStringList lines;
    DataPipe& p = byRoute.mainData();
    for (qsizetype r = 0; r < p.rowCount(); ++r) {
        p.seek(r);
        lines << QStringLiteral("%1 %2 %3 %4 %5 = %6")
                     .arg(p.value(QStringView(u"DELIV_DT")).toDate().toString(QStringLiteral("ddd")),
                          p.value(QStringView(u"LOCATION")).toString(),
                          p.value(QStringView(u"ROUTE_ID")).toString(),
                          p.value(QStringView(u"MEAL_ITEM")).toString(),
                          p.value(QStringView(u"DIET_DESCR")).toString(),
                          p.value(QStringView(u"Quantity")).toString());
    }
    // A route without a center still counts (its center is empty).
    EXPECT_EQ(lines.mid(0, 6),
              QStringList({"Wed  E1 Chicken Dinner  = 10", "Wed North Kitchen N1 Chicken Dinner  = 1",
                           "Wed North Kitchen N1 Chicken Dinner DIAB = 1",
                           "Wed North Kitchen N1 Fruit Cup DIAB = 1", "Wed North Kitchen N1 Milk 1%  = 2",
                           "Wed North Kitchen N1 Vegetable Lasagna  = 1"}));
    EXPECT_EQ(lines.size(), 13);

    ReportData byItem = run(choices(DeliveryReport::ItemCountItemDietCenterRouteService, wednesday));
    EXPECT_EQ(column(byItem, QStringLiteral("MEAL_ITEM")).mid(0, 4),
              QStringList({"Chicken Dinner", "Chicken Dinner", "Chicken Dinner", "Chicken Dinner"}));
    EXPECT_EQ(column(byItem, QStringLiteral("ROUTE_ID")).mid(0, 4), QStringList({"E1", "N1", "N1", "S1"}));
    // The crosstab form keeps every item line.
    ReportData lines10 = run(choices(DeliveryReport::ItemCountCenterRouteServiceDietCrosstab, wednesday));
    EXPECT_EQ(lines10.mainData().rowCount(), 10);
    EXPECT_EQ(column(run(choices(DeliveryReport::ItemCountRouteItemCuisineDiet, wednesday)),
                     QStringLiteral("Quantity")),
              column(byItem, QStringLiteral("Quantity")));
}

TEST_P(DeliveryReportData, KitchenReportsCountItemsAndSpecialMeals)
{
    ReportData kitchen = run(choices(DeliveryReport::KitchenCountsReport, wednesday));
    EXPECT_EQ(column(kitchen, QStringLiteral("item_id")),
              QStringList({"10", "10", "10", "10", "11", "11", "12", "12", "13", "14"}));
    EXPECT_EQ(run(choices(DeliveryReport::KitchenCountsCrosstab, wednesday)).mainData().rowCount(), 10);

    ReportData special = run(choices(DeliveryReport::KitchenClientCountsStandardOrSpecial, wednesday));
    QStringList one = column(special, QStringLiteral("Special One"));
    one.sort();
    EXPECT_EQ(one.count(QStringLiteral(" Standard")), 8);
    EXPECT_EQ(one.last(), "DIAB");
    EXPECT_TRUE(column(special, QStringLiteral("Special Two")).contains(QStringLiteral("DIAB / LS")));

    // Limited to one item, or to none when the question is cancelled.
    questions.itemLimitation = [](TFormItemLimitation& form) {
        EXPECT_FALSE(form.okEnabled());
        EXPECT_EQ(form.entries().first(), "Chicken Dinner [10]");
        EXPECT_TRUE(form.chooseItem(13));
        return true;
    };
    ReportData frozen = run(choices(DeliveryReport::KitchenItemCountsStandardOrSpecial, wednesday));
    EXPECT_EQ(column(frozen, QStringLiteral("CLIENT_ID")), QStringList({"104"}));
    questions.itemLimitation = [](TFormItemLimitation&) { return false; };
    EXPECT_EQ(
        run(choices(DeliveryReport::KitchenItemCountsStandardOrSpecial, wednesday)).mainData().rowCount(),
        10);

    ReportData detail = run(choices(DeliveryReport::DetailedInfoForOneService, wednesday));
    EXPECT_EQ(column(detail, QStringLiteral("Person_ID")).mid(0, 3), QStringList({"101", "101", "102"}));
}

TEST_P(DeliveryReportData, BirthdaysOfTheMonth)
{
    ReportData march = run(choices(DeliveryReport::Birthdays, QDate(2024, 3, 1), QDate(2024, 3, 31)));
    // Active clients only, by day.
    EXPECT_EQ(column(march, QStringLiteral("Last_Name")),
              QStringList({"Baxter", "Abbott", "Senior Center", "Dubois"}));
    EXPECT_EQ(column(march, QStringLiteral("DD")), QStringList({"6", "10", "15", "20"}));
    EXPECT_TRUE(ui.messages().isEmpty());

    ReportData across = run(choices(DeliveryReport::Birthdays, QDate(2024, 2, 20), QDate(2024, 3, 12)));
    EXPECT_EQ(column(across, QStringLiteral("Last_Name")), QStringList({"Baxter", "Abbott"}));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Information).size(), 1);
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Information)[0],
        "This report can only cover one month. You chose a date range \nthat spans more than one month. The "
        "report will only cover the \nmonth of March");
}

TEST_P(DeliveryReportData, DemographicCounts)
{
    ReportData demog = run(choices(DeliveryReport::SummarizedDemographicMealCount, wednesday));
    // Organisations are left out; HIV status in words.
    EXPECT_EQ(column(demog, QStringLiteral("client_ID")),
              QStringList({"101", "102.0", "102.1", "104", "105", "106"}));
    EXPECT_EQ(column(demog, QStringLiteral("HIV_Status")), QStringList({"HIV-", "", "", "HIV+", "", ""}));

    DeliveryReportChoices c = choices(DeliveryReport::SummarizedDemographicMealCount, wednesday);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("S1")), true);
    EXPECT_EQ(column(run(c), QStringLiteral("client_ID")), QStringList({"105", "106"}));

    ReportData children = run(choices(DeliveryReport::ChildDemographicMealCount, wednesday, thursday));
    EXPECT_EQ(column(children, QStringLiteral("Full_Name")), QStringList({"Evelyn Eriksen"}));
    EXPECT_EQ(column(children, QStringLiteral("Age")), QStringList({"15"}));
    EXPECT_EQ(column(children, QStringLiteral("Meals")), QStringList({"4"}));
    // 18 years at "To" is still a child; a day more is not.
    db().execute(QStringLiteral("Update Clients set DOB = :DOB where Person_ID = 106"),
                 {{QStringLiteral("DOB"), thursday.addDays(-6574)}});
    EXPECT_EQ(
        run(choices(DeliveryReport::ChildDemographicMealCount, wednesday, thursday)).mainData().rowCount(),
        1);
    db().execute(QStringLiteral("Update Clients set DOB = :DOB where Person_ID = 106"),
                 {{QStringLiteral("DOB"), thursday.addDays(-6575)}});
    EXPECT_EQ(
        run(choices(DeliveryReport::ChildDemographicMealCount, wednesday, thursday)).mainData().rowCount(),
        0);
}

TEST_P(DeliveryReportData, SelectedDietRestrictionsMatchAnyOrAll)
{
    questions.dietCriteria = [](TFormDeliveryDietCriteria& form) {
        EXPECT_FALSE(form.okEnabled());
        EXPECT_EQ(form.diets().entries, QStringList({"Diabetic - DIAB", "Low Sodium - LS", "Renal - REN"}));
        form.checkCode(QStringLiteral("diab"));
        form.setMatchAll(true);
        form.setTitle(QStringLiteral("Sugar-free desserts"));
        return true;
    };
    ReportData all = run(choices(DeliveryReport::SelectedDietRestrictions, wednesday));
    EXPECT_EQ(column(all, QStringLiteral("Client_ID")), QStringList({"102.0"}));
    EXPECT_EQ(column(all, QStringLiteral("ReportTitle"), QStringLiteral("JITPipeline1")),
              QStringList({"Diabetic "}));
    EXPECT_EQ(column(all, QStringLiteral("ReportLabel"), QStringLiteral("JITPipeline1")),
              QStringList({"Sugar-free desserts"}));

    questions.dietCriteria = [](TFormDeliveryDietCriteria& form) {
        form.checkCode(QStringLiteral("DIAB"));
        form.checkCode(QStringLiteral("REN"));
        form.setSortOrder(2);
        return true;
    };
    ReportData any = run(choices(DeliveryReport::SelectedDietRestrictions, wednesday));
    EXPECT_EQ(column(any, QStringLiteral("Client_ID")), QStringList({"102.0", "104", "105"}));
    EXPECT_EQ(column(any, QStringLiteral("ReportTitle"), QStringLiteral("JITPipeline1")),
              QStringList({"One or more of: Diabetic Renal "}));

    questions.dietCriteria = [](TFormDeliveryDietCriteria&) { return false; };
    TDataModule2 module(db(), store->clock());
    EXPECT_FALSE(
        module.build(choices(DeliveryReport::SelectedDietRestrictions, wednesday), questions, ui, nullptr));
}

TEST_P(DeliveryReportData, ItemsByClientAndTheBarCodeListing)
{
    questions.sortOrder = [](TFormClientItemsSortOrder& form) {
        form.setSortOrder(1);
        return true;
    };
    ReportData byService = run(choices(DeliveryReport::ItemsAndDeliveryDetailsByClient, wednesday));
    EXPECT_EQ(
        column(byService, QStringLiteral("Last_Name")),
        QStringList({"Abbott", "Baxter", "Baxter", "Dubois", "Eriksen", "Senior Center", "Castellano"}));
    byService.mainData().seek(6);
    EXPECT_EQ(column(byService, QStringLiteral("Meal_Item"), QStringLiteral("DBPipelineQueryLabelitems")),
              QStringList({"Frozen Dinner"}));
    EXPECT_EQ(byService.pipe(QStringLiteral("DBPipelineClients"))->value(QStringView(u"Address1")).toString(),
              "7 Hill Road");
    questions.sortOrder = [](TFormClientItemsSortOrder& form) {
        form.setSortOrder(0);
        return true;
    };
    EXPECT_EQ(column(run(choices(DeliveryReport::ItemsAndDeliveryDetailsByClient, wednesday)),
                     QStringLiteral("Last_Name"))
                  .mid(0, 4),
              QStringList({"Abbott", "Baxter", "Baxter", "Castellano"}));

    ReportData codes = run(choices(DeliveryReport::BarCodeListing, wednesday));
    EXPECT_EQ(column(codes, QStringLiteral("Person_ID")),
              QStringList({"101", "102", "103", "104", "105", "106", "107", "109"}));
    DeliveryReportChoices c = choices(DeliveryReport::BarCodeListing, wednesday);
    c.routes.setChecked(c.routes.entries.indexOf(QStringLiteral("N2")), true);
    EXPECT_EQ(column(run(c), QStringLiteral("Person_ID")), QStringList({"104", "105"}));
}

INSTANTIATE_TEST_SUITE_P(Stores, DeliveryReportData,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });
