// Our own map behind "Send to Mapping" on the routes of a demo agency: the
// optimised route keeps its start and end, is never longer than the order the
// stops had, and the order read back gives each client the stop of his
// waypoint's position, households sharing one.

#include "DemoAgency.h"
#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "StopNumbering.h"
#include "TFormMapPointOptionsOrderRoutes.h"
#include "TFormOrderRoutes.h"
#include "TempDataDir.h"
#include "WaypointName.h"
#include "geocode/AgencyGeocoder.h"
#include "map/ClientOnMap.h"
#include "map/LocalMapServer.h"
#include "map/MapProjection.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class MapOnDemoRoute : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        DemoOptions options;
        options.clients = 300;
        generateDemoAgency(db(), options);
        session.cUserName = QStringLiteral("pat");
        session.userFullName = QStringLiteral("Pat Tester");
        session.cAppDataFolder = appData.path() + QLatin1Char('/');
    }

    Database& db() { return data->db(); }

    // The default routes with the most active clients that all have coordinates.
    QStringList busiestRoutes(int count)
    {
        const ResultSet r = db().execute(QStringLiteral(
            "Select Def_Rte, count(*) as N from Clients where Status = 'A' and Def_Rte is not Null and "
            "Latitude <> 0 and Longitude <> 0 group by Def_Rte order by N desc, Def_Rte"));
        QStringList routes;
        for (qsizetype i = 0; i < r.rowCount() && routes.size() < count; ++i)
            if (r.value(i, 1).toInt() >= 5) routes << r.value(i, 0).toString().trimmed();
        return routes;
    }

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
    SessionState session;
    QTemporaryDir appData;
};

TEST_P(MapOnDemoRoute, OptimizeKeepsTheEndsNeverLengthensTheRouteAndReadsTheOrderBack)
{
    const QStringList routes = busiestRoutes(3);
    ASSERT_FALSE(routes.isEmpty());
    for (const QString& route : routes) {
        SCOPED_TRACE(route.toStdString());
        TFormOrderRoutes form(db(), session, ui);
        ASSERT_TRUE(form.setRoute(route));
        form.ActionRetrieve();
        ASSERT_GE(form.rows().count(), 5);
        // Start and end at the kitchen: the address of a client of another
        // route, which the agency's own addresses know exactly.
        const ResultSet kitchen = db().execute(
            QStringLiteral("Select Address1, City, State, Zip from Clients where Def_Rte <> :Route and "
                           "Latitude <> 0 order by Person_ID"),
            {{QStringLiteral("Route"), route}});
        ASSERT_FALSE(kitchen.isEmpty());
        MapPointOptions options;
        options.includeStarting = options.includeEnding = true;
        options.location = {QStringLiteral("Kitchen"), kitchen.value(0, 0).toString(),
                            kitchen.value(0, 1).toString(), kitchen.value(0, 2).toString(),
                            kitchen.value(0, 3).toString()};
        options.labelOption = 6; // the client number first

        const auto server = std::make_shared<map::LocalMapServer>(
            agencyGeocoder(db()), map::DrivingEstimate{}, std::chrono::milliseconds(300));
        form.setMapServerFactory([server] { return server; });

        // The route as it stands, shown and measured.
        form.ActionSendToMapping(options);
        ASSERT_TRUE(server->routeSummary());
        ASSERT_EQ(server->waypointCount(), form.rows().count() + 2);
        EXPECT_TRUE(server->isShowingRoute());
        EXPECT_EQ(server->paneState(), map::PaneState::RoutePlanner);
        EXPECT_TRUE(server->isSaved());
        const double asItStands = server->routeSummary()->straightLineMetres;
        std::map<QString, double> oldStops; // by client number
        for (int key = 0; key < form.rows().count(); ++key)
            oldStops[form.rows().row(key).clientId.trimmed()] = form.rows().row(key).stop;
        EXPECT_FALSE(form.hasChanges());

        // Optimised and read back.
        options.optimizeAndRetrieve = true;
        form.ActionSendToMapping(options);
        const int count = server->waypointCount();
        ASSERT_EQ(count, form.rows().count() + 2);
        EXPECT_TRUE(server->waypointName(1).startsWith(QStringLiteral("Kitchen")));
        EXPECT_TRUE(server->waypointName(count).startsWith(QStringLiteral("Kitchen")));
        EXPECT_LE(server->routeSummary()->straightLineMetres, asItStands + 1e-6);
        EXPECT_TRUE(
            ui.texts(Kind::Information)
                .contains(QStringLiteral("Click OK when ready to retrieve the optimization from MapPoint.")));

        // Position i (after the start) gives stop i - 1, with the decimals of
        // the old stop; a client whose whole stop an earlier one shared goes
        // with that one.
        std::map<int, int> placedWhole; // old whole stop -> new whole stop
        for (int i = 2; i < count; ++i) {
            const WaypointName w = WaypointName::parse(server->waypointName(i));
            const QString client = w.label.section(QLatin1Char(' '), 0, 0);
            ASSERT_TRUE(oldStops.count(client)) << client.toStdString();
            const double old = oldStops[client];
            const int whole = int(StopNumbering::wholePart(old));
            const bool shared = old > 0 && placedWhole.count(whole);
            const int n = shared ? placedWhole[whole] : i - 1;
            if (!shared && old > 0) placedWhole[whole] = n;
            double now = -1;
            for (int key = 0; key < form.rows().count(); ++key)
                if (form.rows().row(key).clientId.trimmed() == client) now = form.rows().row(key).stop;
            EXPECT_DOUBLE_EQ(now, StopNumbering::atPosition(n, old)) << client.toStdString() << " at " << i;
        }
        EXPECT_FALSE(db().memoryTable(QStringLiteral("MemMappingData")));
        if (form.hasChanges()) ui.answerNext(Answer::No);
        form.FormClose();
    }
    EXPECT_TRUE(ui.texts(Kind::Error).isEmpty()) << ui.texts(Kind::Error).join('\n').toStdString();
}

TEST_P(MapOnDemoRoute, MappingIsIntegratedOnlyWhenTheAgencyMapsWithIt)
{
    db().execute(QStringLiteral("Update Config set Mapping = ''"));
    {
        TFormMapPointOptionsOrderRoutes options(db(), session, ui);
        EXPECT_FALSE(options.integrateOffered());
        ASSERT_EQ(options.offeredActions().size(), 1u);
        EXPECT_EQ(options.offeredActions()[0], MappingAction::Export);
        EXPECT_EQ(options.options().action, MappingAction::Export);
        options.setAction(MappingAction::Integrate);
        EXPECT_EQ(options.options().action, MappingAction::Export);
        EXPECT_FALSE(options.okEnabled()); // no file named yet
    }
    db().execute(QStringLiteral("Update Config set Mapping = 'M'"));
    TFormMapPointOptionsOrderRoutes options(db(), session, ui);
    EXPECT_TRUE(options.integrateOffered());
    EXPECT_EQ(options.offeredActions().size(), 2u);
    options.setAction(MappingAction::Integrate);
    EXPECT_EQ(options.options().action, MappingAction::Integrate);
    EXPECT_EQ(TFormMapPointOptionsOrderRoutes::actionText(MappingAction::Integrate),
              "Integrate with MapPoint");
}

TEST_P(MapOnDemoRoute, OneClientIsPinnedByCoordinatesOrRefusedAsAPostOfficeBox)
{
    const ResultSet c = db().execute(QStringLiteral(
        "Select First_Name, Last_Name, Address1, City, State, Zip, Latitude, Longitude from Clients where "
        "Latitude <> 0 order by Person_ID"));
    ASSERT_FALSE(c.isEmpty());
    map::ClientOnMap::Client client{c.value(0, 0).toString(),
                                    c.value(0, 1).toString(),
                                    c.value(0, 2).toString(),
                                    c.value(0, 3).toString(),
                                    c.value(0, 4).toString(),
                                    c.value(0, 5).toString(),
                                    c.value(0, 6),
                                    c.value(0, 7)};
    map::LocalMapServer server(agencyGeocoder(db()));
    ASSERT_TRUE(map::ClientOnMap::show(server, ui, client, QStringLiteral("USA")));
    ASSERT_EQ(server.pushpins().size(), 1u);
    EXPECT_EQ(server.pushpins()[0]->name(), client.firstName.trimmed() + ' ' + client.lastName.trimmed());
    EXPECT_EQ(server.pushpins()[0]->symbol(), 1);
    EXPECT_DOUBLE_EQ(server.pushpins()[0]->location().latitude, client.latitude.toDouble());
    EXPECT_EQ(server.paneState(), map::PaneState::None);
    EXPECT_TRUE(server.isVisible());

    // Mapped again, the earlier pin goes; without coordinates a post office box is refused.
    client.latitude = client.longitude = 0.0;
    client.address1 = QStringLiteral("P.O. Box 12");
    EXPECT_FALSE(map::ClientOnMap::show(server, ui, client, QStringLiteral("USA")));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{"Post office boxes can't be mapped!"});
    EXPECT_EQ(map::ClientOnMap::pinName({{}, {}, QStringLiteral("1 Elm St")}), "1 Elm St");
    EXPECT_EQ(map::ClientOnMap::pinName({}), "Client Address");
    EXPECT_EQ(map::ClientOnMap::pinSymbol(QStringLiteral("14.0")), 292);
}

INSTANTIATE_TEST_SUITE_P(Stores, MapOnDemoRoute, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

TEST(MapProjection, PlacesRoundTripAndTheScaleBarIsARoundLength)
{
    const map::Location kingston{44.2312, -76.4860};
    const map::Location back = map::MapProjection::unproject(map::MapProjection::project(kingston));
    EXPECT_NEAR(back.latitude, kingston.latitude, 1e-9);
    EXPECT_NEAR(back.longitude, kingston.longitude, 1e-9);
    // North is up: a place further north has a smaller y.
    EXPECT_LT(map::MapProjection::project({45, 0}).y(), map::MapProjection::project({44, 0}).y());
    EXPECT_NEAR(map::MapProjection::metresPerUnit(0), 40075016.7, 1.0);
    EXPECT_EQ(map::MapProjection::scaleBarMetres(740), 500);
    EXPECT_EQ(map::MapProjection::scaleBarMetres(2100), 2000);
    EXPECT_EQ(map::MapProjection::scaleBarMetres(1000), 1000);
    EXPECT_EQ(map::MapProjection::scaleBarText(2000), "2 km");
    EXPECT_EQ(map::MapProjection::scaleBarText(200), "200 m");
    EXPECT_TRUE(map::MapProjection::bounds({}).isNull());
}

} // namespace
