// The routing screens over a demo agency, offscreen: "Order Stops within
// Routes" retrieving and reordering a route, and "Find Coordinates for
// Addresses". With KB_SCREENSHOTS set to a folder, each screen is saved there
// as a picture for a person to look at.

#include "DemoAgency.h"
#include "GeocodingView.h"
#include "OrderRoutesView.h"
#include "ScriptedUserInterface.h"
#include "session/SessionState.h"
#include "TempDataDir.h"
#include "TFormGeocodeAddresses.h"
#include "TFormOrderRoutes.h"
#include "WidgetApplication.h"

#include <QApplication>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>

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

} // namespace
