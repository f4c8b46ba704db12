// The limit clauses the delivery reports append: their text, their named
// values and the words they leave in the report parameters.

#include "ReportAgency.h"

#include "TempDataDir.h"
#include "delivery/ReportLimits.h"
#include "template/ExpressionParser.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::reports;
using namespace kb::test;

TEST(ReportLimits, ClausesNameTheirValuesAndSayWhatTheyLimit)
{
    TempDataDir data;
    makeReportAgency(data.db());
    DeliveryReportChoices choices = choicesFor(data.db(), 5, wednesday, wednesday);
    ReportParameterRow row;
    ReportLimits limits(data.db(), choices, row);

    // Nothing checked: nothing added.
    ReportStatement none;
    limits.AddServiceLimitation(none, QStringLiteral("Deliveri.Svcs_Used"));
    limits.AddRouteLimitation(none, QStringLiteral("deliveri.route_id"));
    EXPECT_TRUE(none.text.isEmpty());

    choices.services.setChecked(0, true);
    choices.routes.setChecked(0, true);
    choices.routes.setChecked(3, true);
    ReportStatement s;
    limits.AddServiceLimitation(s, QStringLiteral("Deliveri.Svcs_Used"));
    limits.AddRouteLimitation(s, QStringLiteral("deliveri.route_id"));
    EXPECT_EQ(s.text, " and (  (Deliveri.Svcs_Used = :Service1) ) "
                      " and (  (deliveri.route_id = :Route1) or  (deliveri.route_id = :Route2) ) ");
    EXPECT_EQ(s.params, (Params{{"Service1", 1}, {"Route1", "N1"}, {"Route2", "O'B1"}}));
    EXPECT_EQ(row.restrictions1, "Home Delivered Meals [1]");
    EXPECT_EQ(row.restrictions2, "Routes: N1,OB1");

    // Centers without routes select nothing, also when excluded.
    choices.routeKind = RouteListKind::DistributionCenters;
    choices.routes.setEntries({QStringLiteral("NORTH"), QStringLiteral("WEST")});
    choices.routes.setChecked(1, true);
    choices.excludeRoutes = true;
    ReportLimits centers(data.db(), choices, row);
    ReportStatement c;
    centers.AddRouteLimitation(c, QStringLiteral("Deliveri.Route_ID"));
    EXPECT_EQ(c.text, " and (Deliveri.Route_ID = :Route1)");
    EXPECT_EQ(c.params, (Params{{"Route1", "^%$#@"}}));
    EXPECT_EQ(row.restrictions2, "Excl. Centers: WEST");

    // The meals of Config, and one item.
    data.db().execute(QStringLiteral("Update Config set MEALS_LINE_ITEMS = 98"));
    ReportStatement m;
    limits.AddMealItemLimitation(m, QStringLiteral("Items.Meal"));
    EXPECT_EQ(m.text, " and (  (Items.Meal = :Meal1) or  (Items.Meal = :Meal2) or  (Items.Meal = :Meal3) ) ");
    EXPECT_EQ(m.params, (Params{{"Meal1", "L"}, {"Meal2", "MF"}, {"Meal3", "SM"}}));
    ReportStatement i;
    ReportLimits::AddItemLimitation(i, QStringLiteral("Items.Item_ID"), std::nullopt);
    EXPECT_TRUE(i.text.isEmpty());
    ReportLimits::AddItemLimitation(i, QStringLiteral("Items.Item_ID"), 13);
    EXPECT_EQ(i.text, " and Items.Item_ID = :Item_ID1");

    EXPECT_EQ(ReportLimits::ExtractServiceID(QStringLiteral("Frozen Meals [ 12 ]")), 12);
    EXPECT_EQ(ReportLimits::ExtractServiceID(QStringLiteral("Odd [x3] [4]")), 0);
    EXPECT_EQ(ReportLimits::ExtractServiceID(QStringLiteral("No number")), 0);
    EXPECT_EQ(ReportLimits::ExtractServiceID(QStringLiteral("Open [7")), 7);
}

TEST(ReportLimits, BracketsNameFieldsWithBlanks)
{
    const ExprPtr e =
        ExpressionParser::parse(u"trim([Special One]) + [DBPipelineKitchenSchedule.Special Two]");
    ASSERT_TRUE(e);
    EXPECT_THROW(ExpressionParser::parse(u"[Special One"), ExpressionError);
    EXPECT_THROW(ExpressionParser::parse(u"[ ]"), ExpressionError);
}
