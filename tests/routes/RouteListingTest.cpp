// "Print Listing" of "Order Stops within Routes": what the screen hands to
// the printer is the set as the grid shows it, with the retrieved route's
// heading, whatever the lists show by then.

#include "OrderRoutesFixture.h"

#include "MessageError.h"
#include "RouteListing.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class RouteListingTest : public OrderRoutesFixture
{
};

TEST_P(RouteListingTest, TheListingIsTheGridWithItsPendingEditAndTheRetrievedHeading)
{
    addClient(1, {{QStringLiteral("Household_ID"), 40}});
    addClient(2, {{QStringLiteral("Cross_Street"), QStringLiteral("Elm")}});
    addClient(3, {{QStringLiteral("Mon_Rte"), QStringLiteral("R1")},
                  {QStringLiteral("Mon_Stop"), 0.5},
                  {QStringLiteral("Def_Rte"), QStringLiteral("R2")}});
    addClient(4, {{QStringLiteral("Status"), QStringLiteral("I")}});

    std::vector<RouteListing> printed;
    form().setListingPrinter([&](const RouteListing& listing) { printed.push_back(listing); });
    retrieve(QStringLiteral("R1"), 1);
    // A stop typed into the grid and not yet posted is on the listing, in its place.
    form().editField(positionOf(1), QStringLiteral("Stop"), 7.25);
    // Lists changed after Retrieve do not change the heading.
    form().setRoute(QStringLiteral("R2"));
    form().setDayIndex(0);
    form().ActionPrintListing();

    ASSERT_EQ(printed.size(), 1u);
    const RouteListing& l = printed.front();
    EXPECT_EQ(l.route, "R1");
    EXPECT_EQ(l.routeDescription, "Route R1");
    EXPECT_EQ(l.dayText, "Monday then Default");
    EXPECT_TRUE(l.activeOnly);
    EXPECT_EQ(l.printed, QDate(2024, 3, 6));
    const ResultSet& rows = l.rows;
    ASSERT_EQ(rows.rowCount(), 3); // the inactive client is not retrieved
    QList<qint64> persons;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        persons << rows.value(r, u"Person_ID").toLongLong();
    // The edited row keeps its place until the edit is posted, as in the grid.
    EXPECT_EQ(persons, (QList<qint64>{3, 1, 2}));
    EXPECT_EQ(rows.value(0, u"Route_Day").toString(), "MON");
    EXPECT_EQ(rows.value(0, u"Stop").toDouble(), 0.5);
    EXPECT_EQ(rows.value(0, u"RouteStop").toString(), "Rte: R1 Stop: 0.5");
    EXPECT_EQ(rows.value(2, u"Cross_Street").toString(), "Elm");
    EXPECT_EQ(rows.value(1, u"Stop").toDouble(), 7.25);
    EXPECT_EQ(rows.value(1, u"RouteStop").toString(), "Rte: R1 Stop: 7.25");
    EXPECT_EQ(rows.value(1, u"Household_ID").toInt(), 40);
    EXPECT_EQ(rows.value(1, u"Client_ID").toString(), "C001");
    EXPECT_EQ(rows.value(1, u"Name").toString(), "First1 L");

    bool hasHeading = false;
    for (const auto& [name, value] : l.parameters())
        if (name == QLatin1String("Heading")) hasHeading = value.toString() == "Client Listing for Route";
    EXPECT_TRUE(hasHeading);
    EXPECT_TRUE(ui.texts(Kind::Error).isEmpty());
}

TEST_P(RouteListingTest, APrinterFailureOrNoPrinterIsToldAndTheSetStays)
{
    addClient(1);
    retrieve(QStringLiteral("R1"));
    form().ActionPrintListing();
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"The route listing cannot be printed from here."});

    ui.clear();
    form().setListingPrinter(
        [](const RouteListing&) { throw MessageError(QStringLiteral("The printer is out of paper.")); });
    form().ActionPrintListing();
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"The printer is out of paper."});
    EXPECT_EQ(persons(), QList<int>{1});
}

INSTANTIATE_TEST_SUITE_P(Stores, RouteListingTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
