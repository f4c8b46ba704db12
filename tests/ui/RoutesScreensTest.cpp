// The routing screens over a demo agency, offscreen: "Order Stops within
// Routes" retrieving and reordering a route, and "Find Coordinates for
// Addresses". With KB_SCREENSHOTS set to a folder, each screen is saved there
// as a picture for a person to look at.

#include "DemoAgency.h"
#include "GeocodingView.h"
#include "MappingOptionsDialog.h"
#include "OrderRoutesView.h"
#include "PushpinLabels.h"
#include "ScriptedUserInterface.h"
#include "StopNumbering.h"
#include "TFormGeocodeAddresses.h"
#include "TFormMapPointOptionsOrderRoutes.h"
#include "TFormOrderRoutes.h"
#include "TempDataDir.h"
#include "WaypointName.h"
#include "WidgetApplication.h"
#include "geocode/AgencyGeocoder.h"
#include "map/LocalMapServer.h"
#include "routes/MapCanvas.h"
#include "routes/MapWindow.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class RoutesScreens : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static int argc = 1;
        static char name[] = "ui_tests";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance())
            new QApplication(argc, argv);
    }

    void SetUp() override
    {
        DemoOptions options;
        options.clients = 300;
        generateDemoAgency(data.db(), options);
        session.userFullName = QStringLiteral("Pat Tester");
        session.cAppDataFolder = appData.path() + QLatin1Char('/');
    }

    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    SessionState session;
};

TEST_F(RoutesScreens, OrderStopsRetrievesAndMovesARow)
{
    TFormOrderRoutes presenter(data.db(), session, ui);
    ui::OrderRoutesView view(presenter, data.db(), session, ui);
    EXPECT_EQ(view.windowTitle(), "Order Stops within Routes");
    EXPECT_FALSE(view.button(OrderRoutesAction::MoveUp)->isEnabled());
    view.routeList()->setCurrentIndex(view.routeList()->findText(QStringLiteral("R01"), Qt::MatchStartsWith));
    view.button(OrderRoutesAction::Retrieve)->click();
    ASSERT_GT(view.grid()->model()->rowCount(), 2);
    EXPECT_TRUE(view.button(OrderRoutesAction::MoveUp)->isEnabled());
    EXPECT_EQ(view.grid()->model()->headerData(0, Qt::Horizontal).toString(), "Route");

    const QVariant firstStop = view.grid()->model()->index(0, 1).data();
    const QVariant secondClient = view.grid()->model()->index(1, 3).data();
    view.grid()->selectRow(1);
    view.button(OrderRoutesAction::MoveUp)->click();
    EXPECT_EQ(view.grid()->model()->index(0, 3).data(), secondClient);
    EXPECT_EQ(view.grid()->model()->index(0, 1).data(), firstStop);
    EXPECT_EQ(view.grid()->currentIndex().row(), 0);
    EXPECT_TRUE(presenter.hasChanges());
    keepScreenshot(view, QStringLiteral("order-stops"));
    // Closing asks about the changes; the script says No.
    view.reject();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Question),
              QStringList{"Make all of the changes to this Route permanent?"});
}

TEST_F(RoutesScreens, GeocodingShowsWhatWasFound)
{
    data.db().execute(QStringLiteral("Update Clients set Latitude = Null where Person_ID in (Select Person_ID from "
                                     "Clients where Status = 'A' order by Person_ID Top 3)"));
    TFormGeocodeAddresses presenter(data.db(), session, ui);
    ui::GeocodingView view(presenter, session, ui);
    presenter.ActionLookUpMissing();
    EXPECT_EQ(view.grid()->rowCount(), 3);
    EXPECT_EQ(view.grid()->horizontalHeaderItem(6)->text(), "Match");
    keepScreenshot(view, QStringLiteral("geocoding"));
}

TEST_F(RoutesScreens, TheMapWindowShowsARouteSentToMapping)
{
    TFormOrderRoutes presenter(data.db(), session, ui);
    ASSERT_TRUE(presenter.setRoute(QStringLiteral("R01")));
    presenter.ActionRetrieve();
    ASSERT_GT(presenter.rows().count(), 2);
    ui::MapWindow window(std::make_shared<map::LocalMapServer>(
        agencyGeocoder(data.db()), map::DrivingEstimate{}, std::chrono::milliseconds(300)));
    EXPECT_EQ(window.windowTitle(), "Kettlebrook Map");
    EXPECT_FALSE(window.isVisible());
    presenter.setMapServerFactory([&window] {
        return std::shared_ptr<map::MapServer>(std::shared_ptr<void>(), &window.server());
    });
    MapPointOptions options;
    options.labelOption = 6;
    options.optimizeAndRetrieve = true;
    presenter.ActionSendToMapping(options);

    // The map came up with the route planner beside it and the route measured.
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.waypointList()->count(), presenter.rows().count());
    EXPECT_TRUE(window.waypointList()->item(0)->text().startsWith(QStringLiteral("1. ")));
    EXPECT_TRUE(window.status()->text().contains(QStringLiteral("km by road")))
        << window.status()->text().toStdString();
    EXPECT_TRUE(presenter.hasChanges());

    // The wheel zooms in about the pointer; the map stays where the user put it.
    const double before = window.canvas()->scale();
    QWheelEvent wheel(QPointF(100, 100), window.canvas()->mapToGlobal(QPointF(100, 100)), QPoint(),
                      QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(window.canvas(), &wheel);
    EXPECT_GT(window.canvas()->scale(), before);
    EXPECT_TRUE(window.canvas()->userMoved());
    EXPECT_TRUE(window.canvas()->zoomToRoute());
    keepScreenshot(window, QStringLiteral("map-window"));

    // Closing only hides it: the server is left as it was.
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.server().waypointCount(), presenter.rows().count());
    ui.answerNext(Answer::No);
    presenter.FormClose();
}

TEST_F(RoutesScreens, TheDesktopsMapOutlivesTheScreenThatOpenedIt)
{
    SettingsFile settings(appData.path());
    QWidget main;
    auto* screen = new QDialog(&main);
    const std::shared_ptr<map::MapServer> server = ui::MapWindow::desktopServer(data.db(), settings, screen);
    ui::MapWindow* window = ui::MapWindow::desktopWindow();
    ASSERT_NE(window, nullptr);
    // A window of the modal screen, so it takes input beside it.
    EXPECT_EQ(window->parentWidget(), screen);
    EXPECT_TRUE(window->isWindow());
    server->connect(map::MapRegion::NorthAmerica);
    server->setVisible(true);
    server->addPushpin(server->locationFromCoordinates(40.0, -83.4), QStringLiteral("Client Address"));
    EXPECT_TRUE(window->isVisible());

    screen->done(QDialog::Accepted);
    delete screen;
    ASSERT_EQ(ui::MapWindow::desktopWindow(), window);
    EXPECT_EQ(window->parentWidget(), &main);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->server().pushpins().size(), 1u);
    // The next run finds the same map.
    EXPECT_EQ(ui::MapWindow::desktopServer(data.db(), settings, &main), server);
}

TEST_F(RoutesScreens, TheRoutesOrderIsChangedOnTheMapWhileTheReadBackWaits)
{
    SettingsFile settings(appData.path());
    TFormOrderRoutes presenter(data.db(), session, ui);
    ui::OrderRoutesView view(presenter, data.db(), session, ui);
    presenter.setMapServerFactory([&] { return ui::MapWindow::desktopServer(data.db(), settings, &view); });
    ASSERT_TRUE(presenter.setRoute(QStringLiteral("R01")));
    presenter.ActionRetrieve();
    ASSERT_GT(presenter.rows().count(), 3);
    MapPointOptions options;
    options.labelOption = 6;
    options.optimizeAndRetrieve = true;

    QStringList shownWhileWaiting;
    bool waited = false;
    QTimer::singleShot(0, [&] {
        ui::MapWindow* window = ui::MapWindow::desktopWindow();
        QMessageBox* message = window ? window->waitingMessage() : nullptr;
        if (!message) {
            // Not the wait this test is about: end whatever holds the run.
            if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
            return;
        }
        waited = true;
        EXPECT_EQ(message->text(), "Click OK when ready to retrieve the optimization from MapPoint.");
        // The screen is held, the map is not.
        EXPECT_FALSE(view.isEnabled());
        EXPECT_TRUE(window->isEnabled());
        EXPECT_TRUE(window->isVisible());
        map::LocalMapServer& server = window->server();
        const QString first = server.waypointName(1);
        const QString fourth = server.waypointName(4);
        const double optimised = server.routeSummary()->straightLineMetres;

        // Move Down takes the first stop to the second place.
        window->waypointList()->setCurrentRow(0);
        EXPECT_FALSE(window->moveUpButton()->isEnabled());
        ASSERT_TRUE(window->moveDownButton()->isEnabled());
        window->moveDownButton()->click();
        EXPECT_EQ(server.waypointName(2), first);
        EXPECT_EQ(window->waypointList()->currentRow(), 1);
        EXPECT_TRUE(window->moveUpButton()->isEnabled());
        // Dragging the fourth stop to the top of the list makes it the first.
        window->waypointList()->model()->moveRow(QModelIndex(), 3, QModelIndex(), 0);
        QApplication::processEvents();
        EXPECT_EQ(server.waypointName(1), fourth);
        EXPECT_TRUE(window->waypointList()->item(0)->text().startsWith("1. "));
        EXPECT_TRUE(window->waypointList()->item(0)->text().contains(fourth));
        ASSERT_TRUE(server.routeSummary());
        EXPECT_NE(server.routeSummary()->straightLineMetres, optimised);
        EXPECT_TRUE(window->status()->text().contains("km by road"));
        for (int i = 1; i <= server.waypointCount(); ++i)
            shownWhileWaiting << server.waypointName(i);
        keepScreenshot(*window, QStringLiteral("map-window-reorder"));
        message->button(QMessageBox::Ok)->click();
    });
    presenter.ActionSendToMapping(options);
    ASSERT_TRUE(waited);
    EXPECT_TRUE(view.isEnabled());
    ASSERT_EQ(shownWhileWaiting.size(), presenter.rows().count());

    // The user's first stop is stop 1, and the one moved down follows it.
    const auto rowOf = [&](const QString& waypoint) {
        const QString client = PushpinLabels::clientNumber(6, WaypointName::parse(waypoint).label);
        for (int p = 0; p < presenter.rows().count(); ++p)
            if (presenter.rows().rowAt(p).clientId.trimmed() == client) return presenter.rows().rowAt(p);
        ADD_FAILURE() << client.toStdString();
        return OrderRoutesRow();
    };
    EXPECT_EQ(StopNumbering::wholePart(rowOf(shownWhileWaiting[0]).stop), 1);
    EXPECT_LE(StopNumbering::wholePart(rowOf(shownWhileWaiting[1]).stop), 2);
    EXPECT_TRUE(presenter.hasChanges());
    ui.answerNext(Answer::No);
    presenter.FormClose();
}

TEST_F(RoutesScreens, MappingOptionsOfferTheMapOnlyWhenTheAgencyMapsWithIt)
{
    data.db().execute(QStringLiteral("Update Config set Mapping = 'Q'"));
    {
        TFormMapPointOptionsOrderRoutes options(data.db(), session, ui);
        ui::MappingOptionsDialog dialog(options);
        ASSERT_EQ(dialog.actionList()->count(), 1);
        EXPECT_EQ(dialog.actionList()->itemText(0), "Export to mapping software");
    }
    data.db().execute(QStringLiteral("Update Config set Mapping = 'M'"));
    TFormMapPointOptionsOrderRoutes options(data.db(), session, ui);
    ui::MappingOptionsDialog dialog(options);
    ASSERT_EQ(dialog.actionList()->count(), 2);
    EXPECT_EQ(dialog.actionList()->itemText(0), "Integrate with MapPoint");
    dialog.actionList()->setCurrentIndex(1);
    EXPECT_EQ(options.options().action, MappingAction::Export);
    keepScreenshot(dialog, QStringLiteral("mapping-options"));
}

} // namespace
