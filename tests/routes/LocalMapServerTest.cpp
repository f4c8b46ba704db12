#include "map/LocalMapServer.h"
#include "map/KnownAddressGeocoder.h"
#include "map/MapServerError.h"

#include <gtest/gtest.h>

using namespace kb::map;

namespace {

AddressQuery address(const QString& street, const QString& city, const QString& zip)
{
    return {street, city, QStringLiteral("ON"), zip, Country::Canada};
}

std::shared_ptr<KnownAddressGeocoder> knownAddresses()
{
    auto geocoder = std::make_shared<KnownAddressGeocoder>();
    geocoder->add(address("12 Elm St.", "Kingston", "K7L 1A1"), {44.2300, -76.4800});
    geocoder->add(address("40 Oak Ave", "Kingston", "K7L 1A1"), {44.2320, -76.4860});
    return geocoder;
}

// A connected server with pins and waypoints named like the mapping screens name them.
struct Route
{
    LocalMapServer server{knownAddresses()};
    std::vector<QString> names;

    void add(const QString& name, double lat, double lon)
    {
        auto pin = server.addPushpin(server.locationFromCoordinates(lat, lon), name);
        server.addWaypoint(*pin);
        names.push_back(name);
    }
};

} // namespace

TEST(LocalMapServer, OperationsBeforeConnectFail)
{
    LocalMapServer server(knownAddresses());
    EXPECT_THROW(server.setVisible(true), MapServerError);
    EXPECT_THROW(server.waypointCount(), MapServerError);
    EXPECT_THROW(server.addPushpin({44.0, -76.0}, "x"), MapServerError);
}

TEST(LocalMapServer, ConnectsAndRecordsDisplayRequests)
{
    LocalMapServer server(knownAddresses());
    server.connect(regionForPostalFormat("UK"));
    EXPECT_EQ(server.region(), MapRegion::Europe);
    server.setVisible(true);
    server.setUserControl(true);
    server.setPaneState(PaneState::RoutePlanner);
    EXPECT_TRUE(server.isVisible());
    EXPECT_TRUE(server.isUnderUserControl());
    EXPECT_EQ(server.paneState(), PaneState::RoutePlanner);
    EXPECT_EQ(server.version().section('.', 0, 0).toInt(), 16);
    server.setSaved(true);
    EXPECT_TRUE(server.isSaved());
    EXPECT_EQ(regionForPostalFormat("USA"), MapRegion::NorthAmerica);
}

TEST(LocalMapServer, PushpinsAndWaypointsKeepTheirNames)
{
    Route r;
    r.server.connect(MapRegion::NorthAmerica);
    r.add("John S 1011 / Rte: 12    Stop: 4.1       ", 44.23, -76.48);
    r.add("Mary K 2044 / Rte: 12    Stop: 5         ", 44.24, -76.49);
    ASSERT_EQ(r.server.pushpins().size(), 2u);
    EXPECT_EQ(r.server.pushpins()[0]->name(), r.names[0]);
    r.server.pushpins()[1]->setSymbol(292);
    EXPECT_EQ(r.server.pushpins()[1]->symbol(), 292);
    ASSERT_EQ(r.server.waypointCount(), 2);
    EXPECT_EQ(r.server.waypointName(1), r.names[0]);
    EXPECT_EQ(r.server.waypointName(2), r.names[1]);
    EXPECT_THROW(r.server.waypointName(0), MapServerError);
    EXPECT_THROW(r.server.waypointName(3), MapServerError);
    r.server.clearRoute();
    r.server.deletePushpins();
    EXPECT_EQ(r.server.waypointCount(), 0);
    EXPECT_TRUE(r.server.pushpins().empty());
}

TEST(LocalMapServer, OptimizeKeepsFixedStartAndEnd)
{
    Route r;
    r.server.connect(MapRegion::NorthAmerica);
    // Start and end are far to the north of the stops, and the stops are added
    // in a zigzag; without fixing them the start would not stay first.
    r.add("Start", 44.30, -76.50);
    const double lons[] = {-76.40, -76.49, -76.42, -76.47, -76.44, -76.45};
    for (int i = 0; i < 6; ++i)
        r.add(QStringLiteral("Client %1 / Rte: 1 Stop: %2").arg(i).arg(i + 1), 44.20, lons[i]);
    r.add("End", 44.30, -76.41);
    r.server.optimizeWaypoints({true, true});
    ASSERT_EQ(r.server.waypointCount(), 8);
    EXPECT_EQ(r.server.waypointName(1), QStringLiteral("Start"));
    EXPECT_EQ(r.server.waypointName(8), QStringLiteral("End"));
    // Between them the clients run west to east, each name unchanged.
    std::vector<QString> seen;
    for (int i = 2; i <= 7; ++i)
        seen.push_back(r.server.waypointName(i));
    EXPECT_EQ(seen,
              (std::vector<QString>{r.names[2], r.names[4], r.names[6], r.names[5], r.names[3], r.names[1]}));
}

TEST(LocalMapServer, OptimizeWithOnlyAStartKeepsItFirst)
{
    Route r;
    r.server.connect(MapRegion::NorthAmerica);
    r.add("Depot", 44.25, -76.45);
    for (int i = 0; i < 5; ++i)
        r.add(QStringLiteral("C%1").arg(i), 44.20 + 0.01 * ((i * 3) % 5), -76.50);
    r.server.optimizeWaypoints({true, false});
    EXPECT_EQ(r.server.waypointName(1), QStringLiteral("Depot"));
    std::vector<QString> all;
    for (int i = 1; i <= r.server.waypointCount(); ++i)
        all.push_back(r.server.waypointName(i));
    std::sort(all.begin(), all.end());
    std::vector<QString> expected = r.names;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(all, expected);
}

TEST(LocalMapServer, CalculateGivesLengthAndDrivingTime)
{
    Route r;
    r.server.connect(MapRegion::NorthAmerica);
    r.add("A", 45.00, -75.0);
    EXPECT_THROW(r.server.calculateRoute(), MapServerError);
    EXPECT_THROW(r.server.goToRoute(), MapServerError);
    r.add("B", 45.01, -75.0); // 0.01 degree of latitude: about 1112 m
    const RouteSummary s = r.server.calculateRoute();
    EXPECT_NEAR(s.straightLineMetres, 1112.0, 2.0);
    EXPECT_NEAR(s.estimatedRoadMetres, 1112.0 * 1.3, 3.0);
    // 1.446 km at 35 km/h is about 149 seconds.
    EXPECT_NEAR(double(s.estimatedDrivingTime.count()), 149.0, 2.0);
    r.server.goToRoute();
    EXPECT_TRUE(r.server.isShowingRoute());
}

TEST(LocalMapServer, AddressLookupRatesWhatItCannotPlace)
{
    LocalMapServer server(knownAddresses());
    server.connect(MapRegion::NorthAmerica);
    const AddressMatches exact = server.findAddress(address("12 ELM ST", "kingston", "K7L1A1"));
    EXPECT_EQ(exact.quality(), MatchQuality::Exact);
    EXPECT_TRUE(exact.isGood());
    EXPECT_DOUBLE_EQ(exact.first().latitude, 44.23);

    // A known postal code but unknown street: its centre, rated poorly.
    const AddressMatches approximate = server.findAddress(address("99 Nowhere Rd", "Kingston", "K7L 1A1"));
    EXPECT_EQ(approximate.quality(), MatchQuality::Approximate);
    EXPECT_FALSE(approximate.isGood());
    EXPECT_NEAR(approximate.first().latitude, 44.231, 1e-9);

    const AddressMatches none = server.findAddress(address("1 Main St", "Elsewhere", "A0A 0A0"));
    EXPECT_EQ(none.quality(), MatchQuality::NotFound);
    EXPECT_NE(int(none.quality()), 1);
    EXPECT_EQ(none.count(), 0);
    EXPECT_THROW(none.first(), MapServerError);
}

TEST(LocalMapServer, BadCoordinatesAreErrors)
{
    LocalMapServer server(knownAddresses());
    server.connect(MapRegion::NorthAmerica);
    EXPECT_THROW(server.locationFromCoordinates(91.0, 0.0), MapServerError);
    EXPECT_THROW(server.addPushpin({0.0, 200.0}, "x"), MapServerError);
    KnownAddressGeocoder geocoder;
    EXPECT_THROW(geocoder.add(address("1 A St", "B", "C"), {100.0, 0.0}), MapServerError);
}
