// The optimiser and the map server on a route of the working set: households
// keep their whole stop number, clients without coordinates keep their place,
// and the map's order is read back into the stops.

#include "OrderRoutesFixture.h"

#include "PushpinLabels.h"
#include "StopNumbering.h"
#include "WaypointName.h"
#include "geocode/AgencyGeocoder.h"
#include "map/LocalMapServer.h"
#include "map/MapServerError.h"

#include <QFile>
#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class OrderRoutesOptimise : public OrderRoutesFixture
{
protected:
    // Clients on a line to the north, 1 to 6 in that order, stored out of
    // order; 7 has no coordinates; 8 and 9 are one household between 3 and 4.
    void addScrambledRoute()
    {
        const std::pair<int, double> stops[] = {{1, 1}, {5, 2}, {7, 3}, {2, 4}, {4, 5}, {3, 6}, {6, 7}};
        for (const auto& [person, stop] : stops)
            addClient(person, {{QStringLiteral("Def_Stop"), stop}});
        db().execute(QStringLiteral("Update Clients set Latitude = Null, Longitude = Null where Person_ID = 7"));
        for (int person : {8, 9})
            addClient(person, {{QStringLiteral("Def_Stop"), person == 8 ? 8.1 : 8.2},
                               {QStringLiteral("Latitude"), 40.035},
                               {QStringLiteral("Address1"), QStringLiteral("35 Main St")}});
    }
};

// Mapping with the order read back, from the kitchen at 1 Main St.
MapPointOptions optimisedFromTheKitchen(int labelOption)
{
    MapPointOptions options;
    options.includeStarting = true;
    options.location = {QStringLiteral("Kitchen"), QStringLiteral("1 Main St"), QStringLiteral("Springfield"),
                        QStringLiteral("PA"), QStringLiteral("19000")};
    options.optimizeAndRetrieve = true;
    options.labelOption = labelOption;
    return options;
}

TEST(StopNumbering, KeepsTheDecimalsOfTheOldStopAsText)
{
    EXPECT_EQ(StopNumbering::atPosition(7, 12.5), 7.5);
    EXPECT_EQ(StopNumbering::atPosition(7, 12), 7.0);
    EXPECT_EQ(StopNumbering::atPosition(3, 5.2), 3.2);
    EXPECT_EQ(StopNumbering::atPosition(3, 5.12345), 3.123);
    EXPECT_EQ(StopNumbering::wholePart(12.9), 12);
}

TEST(PushpinLabels, TheClientNumberIsFoundInEitherPlace)
{
    EXPECT_EQ(PushpinLabels::label(2, "John", "Smith", "1011.0"), "John S 1011.0");
    EXPECT_EQ(PushpinLabels::clientNumber(2, "John S 1011.0"), "1011.0");
    EXPECT_EQ(PushpinLabels::clientNumber(5, "Smith, J 12345.0"), "12345.0");
    EXPECT_EQ(PushpinLabels::clientNumber(2, "John S C001"), "C001");
    EXPECT_EQ(PushpinLabels::clientNumber(7, "12345.0 Smith, J"), "12345.0");
    EXPECT_EQ(PushpinLabels::clientNumber(8, "12345.0"), "12345.0");
    EXPECT_FALSE(PushpinLabels::holdsClientNumber(0));
    EXPECT_TRUE(PushpinLabels::holdsClientNumber(6));
    const WaypointName w = WaypointName::parse("John S 1011.0 / Rte: R12 Stop: 12.1255");
    EXPECT_EQ(w.label, "John S 1011.0");
    EXPECT_EQ(w.route, "R12");
    EXPECT_EQ(w.stop, 12.12); // a stop with more than three decimals loses the rest
}

TEST_P(OrderRoutesOptimise, HouseholdsStayTogetherAndClientsWithoutCoordinatesKeepTheirPlace)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    ui.answerNext(Answer::Yes);
    const std::optional<RouteOptimisation> result = form().ActionOptimise({.fixFirst = true});
    ASSERT_TRUE(result);
    EXPECT_TRUE(result->improved);
    EXPECT_LT(result->length, result->previousLength);
    EXPECT_GE(result->length, result->lowerBound);
    EXPECT_TRUE(result->provenOptimal);
    EXPECT_EQ(result->placed, 8);
    ASSERT_EQ(result->withoutCoordinates.size(), 1u);
    EXPECT_EQ(form().rows().row(result->withoutCoordinates[0]).personId, 7);

    const QStringList questions = ui.texts(Kind::Question);
    ASSERT_EQ(questions.size(), 1);
    EXPECT_TRUE(questions[0].contains("These clients have no coordinates and keep their place:"));
    EXPECT_TRUE(questions[0].contains("C007 First7 Last7, 7 Main St, stop 3"));
    EXPECT_TRUE(questions[0].contains("No order of these stops is shorter."));

    EXPECT_EQ(persons(), (QList<int>{1, 2, 7, 3, 8, 9, 4, 5, 6}));
    EXPECT_EQ(stopOf(7), 3.0);
    EXPECT_EQ(stopOf(8), 5.1);
    EXPECT_EQ(stopOf(9), 5.2);
    EXPECT_EQ(stopOf(6), 8.0);
    EXPECT_TRUE(form().hasChanges());

    // Ordered once more, nothing gets shorter and nothing changes.
    const std::optional<RouteOptimisation> again = form().ActionOptimise({.fixFirst = true});
    ASSERT_TRUE(again);
    EXPECT_FALSE(again->improved);
    EXPECT_EQ(again->length, result->length);
    EXPECT_TRUE(again->newStops.empty());
}

TEST_P(OrderRoutesOptimise, AFixedLastStopStaysLastAndNoMeansNothingChanges)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    ui.answerNext(Answer::No);
    form().ActionOptimise({.fixFirst = true, .fixLast = true});
    EXPECT_FALSE(form().hasChanges());

    ui.answerNext(Answer::Yes);
    form().ActionOptimise({.fixLast = true});
    // The household at 8.1 and 8.2 was last and stays last, together.
    EXPECT_EQ(persons().mid(7), (QList<int>{8, 9}));
    EXPECT_EQ(stopOf(8), 8.1);
    EXPECT_EQ(stopOf(9), 8.2);
    EXPECT_TRUE(form().hasChanges());
}

TEST_P(OrderRoutesOptimise, TheMapServersOrderIsReadBackFromAStartLocation)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    MapPointOptions options = optimisedFromTheKitchen(6);
    form().setMapServerFactory(
        [&]() -> std::unique_ptr<map::MapServer> { return std::make_unique<map::LocalMapServer>(agencyGeocoder(db())); });
    form().ActionSendToMapping(options);
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{"Click OK when ready to retrieve the optimization from MapPoint."});
    // Client 7 has no coordinates and his street is not among the known
    // addresses: he is pinned at the centre of his postal code, with a warning.
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"MapPoint had trouble mapping this location:\r\nRoute: R1 Stop: 3\r\n"
                                                 "First7 Last7\r\n7 Main St\r\nSpringfield, PA 19000"});
    // The start shifts every position by one.
    EXPECT_EQ(stopOf(1), 1.0);
    EXPECT_EQ(stopOf(2), 2.0);
    EXPECT_EQ(StopNumbering::wholePart(stopOf(8)), StopNumbering::wholePart(stopOf(9)));
    EXPECT_NEAR(stopOf(9) - stopOf(8), 0.1, 1e-9);
    EXPECT_FALSE(db().memoryTable(QStringLiteral("MemMappingData")));
}

// The route as the map shows it while the read-back waits: the pins' labels
// without their route and stop.
QStringList waypointLabels(const map::LocalMapServer& server)
{
    QStringList labels;
    for (int i = 1; i <= server.waypointCount(); ++i)
        labels << WaypointName::parse(server.waypointName(i)).label;
    return labels;
}

TEST_P(OrderRoutesOptimise, TheOrderTheUserGaveOnTheMapIsReadBack)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    MapPointOptions options = optimisedFromTheKitchen(8); // the client number alone
    const auto server = std::make_shared<map::LocalMapServer>(agencyGeocoder(db()));
    form().setMapServerFactory([&] { return server; });

    QStringList shown;
    ui.whileInformed([&](const QString& text) {
        if (!text.startsWith("Click OK when ready")) return;
        // The start stays first: nothing moves it or passes it.
        ASSERT_EQ(server->waypointCount(), 10);
        EXPECT_EQ(waypointLabels(*server).value(0), "Kitchen");
        EXPECT_TRUE(server->isFixedWaypoint(1));
        EXPECT_FALSE(server->canMoveWaypoint(1, 2));
        EXPECT_FALSE(server->canMoveWaypoint(2, 1));
        EXPECT_THROW(server->moveWaypoint(3, 1), map::MapServerError);
        const double optimised = server->routeSummary()->straightLineMetres;
        // The user drives to client 6 first and to client 1 last.
        server->moveWaypoint(int(waypointLabels(*server).indexOf("C006")) + 1, 2);
        server->moveWaypoint(int(waypointLabels(*server).indexOf("C001")) + 1, 10);
        shown = waypointLabels(*server);
        // The route line and its length follow the new order at once.
        ASSERT_TRUE(server->routeSummary());
        EXPECT_GT(server->routeSummary()->straightLineMetres, optimised);
    });
    form().ActionSendToMapping(options);
    ASSERT_EQ(shown.size(), 10);
    EXPECT_EQ(shown.value(1), "C006");
    EXPECT_EQ(shown.value(9), "C001");
    EXPECT_EQ(stopOf(6), 1.0);
    EXPECT_EQ(stopOf(1), 9.0);
    // Every client between them has the whole stop of his place on the
    // route behind the start (list index = stop); a household shares one.
    for (int index = 2; index < 9; ++index) {
        const int person = shown[index].mid(1).toInt();
        if (person == 8 || person == 9) continue;
        EXPECT_EQ(StopNumbering::wholePart(stopOf(person)), index) << person;
    }
    EXPECT_EQ(StopNumbering::wholePart(stopOf(8)), StopNumbering::wholePart(stopOf(9)));
    EXPECT_EQ(persons().first(), 6);
    EXPECT_EQ(persons().last(), 1);
    EXPECT_TRUE(form().hasChanges());
}

// Finds every address but the agency's kitchen.
class WithoutTheKitchen final : public map::Geocoder
{
public:
    explicit WithoutTheKitchen(std::shared_ptr<const map::Geocoder> others) : m_others(std::move(others)) {}
    map::AddressMatches find(const map::AddressQuery& query) const override
    {
        if (query.street == "1 Nowhere Rd") return {map::MatchQuality::NotFound, {}};
        return m_others->find(query);
    }

private:
    std::shared_ptr<const map::Geocoder> m_others;
};

TEST_P(OrderRoutesOptimise, AStartOrEndThatIsNotFoundLosesNoClient)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    MapPointOptions options;
    options.includeStarting = options.includeEnding = true;
    options.location = {QStringLiteral("Kitchen"), QStringLiteral("1 Nowhere Rd"), QStringLiteral("Nowhere"),
                        QStringLiteral("PA"), QStringLiteral("99999")};
    options.optimizeAndRetrieve = true;
    options.labelOption = 6;
    const auto server =
        std::make_shared<map::LocalMapServer>(std::make_shared<WithoutTheKitchen>(agencyGeocoder(db())));
    form().setMapServerFactory([&] { return server; });
    QStringList shown;
    ui.whileInformed([&](const QString&) {
        shown = waypointLabels(*server);
        // No end of the route is held in place: neither is on it.
        EXPECT_FALSE(server->isFixedWaypoint(1));
        EXPECT_FALSE(server->isFixedWaypoint(server->waypointCount()));
    });
    form().ActionSendToMapping(options);
    // Neither the start nor the end is on the route: all nine clients are.
    ASSERT_EQ(shown.size(), 9);
    EXPECT_FALSE(shown.contains("Kitchen"));
    EXPECT_TRUE(ui.texts(Kind::Error).filter("Route optimization was not retrieved").isEmpty());
    // Every client has the whole stop of his place on the route, from 1:
    // nothing is skipped for an end that is not there.
    for (int position = 1; position <= 9; ++position) {
        const int person = PushpinLabels::clientNumber(6, shown[position - 1]).mid(1).toInt();
        if (person == 9 || person == 8) continue;
        EXPECT_EQ(StopNumbering::wholePart(stopOf(person)), position) << person;
    }
    EXPECT_EQ(StopNumbering::wholePart(stopOf(8)), StopNumbering::wholePart(stopOf(9)));
    EXPECT_EQ(persons().size(), 9);
}

TEST_P(OrderRoutesOptimise, MappingOnlyTheSelectionReadsNothingBack)
{
    addScrambledRoute();
    retrieve(QStringLiteral("R1"));
    form().setSelection({positionOf(2), positionOf(3)});
    MapPointOptions options;
    options.optimizeAndRetrieve = true;
    options.labelOption = 6;
    ui.answerNext(Answer::Yes);
    form().ActionSendToMapping(options);
    EXPECT_EQ(ui.texts(Kind::Question).value(0),
              "Optimization is set to be retrieved, and there are records \r\nselected in the grid. If you wish to map "
              "only the selected records \r\nthen optimization retrieval will be turned off. Do you want to map "
              "\r\nonly the selected records?");
    EXPECT_FALSE(form().hasChanges());
}

TEST_P(OrderRoutesOptimise, TheExportFileHoldsTheRowsBetweenStartAndEnd)
{
    addClient(1, {{QStringLiteral("First_Name"), QStringLiteral("Ann")}, {QStringLiteral("Last_Name"), QStringLiteral("Lee")}});
    addClient(2, {{QStringLiteral("Def_Stop"), QVariant()}});
    retrieve(QStringLiteral("R1"));
    QTemporaryDir dir;
    MapPointOptions options;
    options.action = MappingAction::Export;
    options.exportFile = dir.filePath(QStringLiteral("route.csv"));
    options.includeStarting = options.includeEnding = true;
    options.location = {QStringLiteral("Kitchen"), QStringLiteral("9 Elm St"), QStringLiteral("Springfield"),
                        QStringLiteral("PA"), QStringLiteral("19000")};
    options.labelOption = 2;
    form().ActionSendToMapping(options);
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{"Finished exporting the route."});
    QFile file(options.exportFile);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
    const QStringList lines = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0], "Route,Stop,RouteStop,Name,Address1,City,State,Zip,Latitude,Longitude,Person_ID");
    EXPECT_EQ(lines[1], "\"\",-1,\"\",\"Kitchen\",\"9 Elm St\",\"Springfield\",\"PA\",\"19000\",,,");
    // A stop that was empty is 0 and comes first.
    EXPECT_EQ(lines[2], "\"R1\",0,\"Rte: R1 Stop: 0\",\"First2 L C002\",\"2 Main St\",\"Springfield\",\"PA\",\"19000\","
                        "40.02,-75,2");
    EXPECT_EQ(lines[3], "\"R1\",1,\"Rte: R1 Stop: 1\",\"Ann L C001\",\"1 Main St\",\"Springfield\",\"PA\",\"19000\","
                        "40.01,-75,1");
    EXPECT_TRUE(lines[4].startsWith("\"\",10000,\"\",\"Kitchen\""));
    EXPECT_FALSE(db().memoryTable(QStringLiteral("MemMappingData")));
}

INSTANTIATE_TEST_SUITE_P(Stores, OrderRoutesOptimise, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
