// The routing screens' print-outs and the routes' code table, offscreen:
// "Print Listing" hands the grid to the printer, the delivery directions'
// dialog, the address override screen's directions command, and "Add and
// Edit Routes" in the generic editor.

#include "WidgetApplication.h"

#include "EditBaseView.h"
#include "InsertRow.h"
#include "OrderRoutesView.h"
#include "ScriptedUserInterface.h"
#include "TFormOrderRoutes.h"
#include "TempDataDir.h"
#include "assign/TFormEditRoutes.h"
#include "dataset/QueryDataSet.h"
#include "deliveryreports/DeliveryDirectionsPrint.h"
#include "overrides/TFormAddressOverride.h"
#include "records/RecordServices.h"
#include "routes/AddressOverrideView.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class RoutePrintoutsView : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }

    void SetUp() override
    {
        session.cAppDataFolder = appData.path() + QLatin1Char('/');
        insertRow(data.db(), QStringLiteral("Routes"),
                  {{QStringLiteral("Route_ID"), QStringLiteral("R1")},
                   {QStringLiteral("Route_Desc"), QStringLiteral("Riverside")}});
        for (int person : {1, 2, 3})
            insertRow(data.db(), QStringLiteral("Clients"),
                      {{QStringLiteral("Person_ID"), person},
                       {QStringLiteral("Client_ID"), QString::number(100 + person)},
                       {QStringLiteral("Last_Name"), QStringLiteral("Client%1").arg(person)},
                       {QStringLiteral("Status"), QStringLiteral("A")},
                       {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                       {QStringLiteral("Def_Stop"), double(4 - person)}});
    }

    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    SessionState session;
};

TEST_F(RoutePrintoutsView, PrintListingHandsTheGridToThePrinter)
{
    TFormOrderRoutes presenter(data.db(), session, ui);
    std::vector<RouteListing> printed;
    presenter.setListingPrinter([&](const RouteListing& listing) { printed.push_back(listing); });
    ui::OrderRoutesView view(presenter, data.db(), session, ui);
    EXPECT_FALSE(view.button(OrderRoutesAction::PrintListing)->isEnabled());
    view.routeList()->setCurrentIndex(view.routeList()->findText(QStringLiteral("R1"), Qt::MatchStartsWith));
    view.button(OrderRoutesAction::Retrieve)->click();
    ASSERT_EQ(view.grid()->model()->rowCount(), 3);
    ASSERT_TRUE(view.button(OrderRoutesAction::PrintListing)->isEnabled());
    view.button(OrderRoutesAction::PrintListing)->click();
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].routeDescription, "Riverside");
    ASSERT_EQ(printed[0].rows.rowCount(), 3);
    EXPECT_EQ(printed[0].rows.value(0, u"Client_ID").toString(), "103"); // stop 1 first
}

TEST_F(RoutePrintoutsView, TheDirectionsDialogAsksADateAndADestination)
{
    ui::DeliveryDirectionsDialog dialog(QDate(2024, 3, 7));
    EXPECT_EQ(dialog.windowTitle(), "Delivery Directions");
    EXPECT_EQ(dialog.date(), QDate(2024, 3, 7));
    EXPECT_EQ(dialog.destination(), reports::ReportDestination::Screen);
    keepScreenshot(dialog, QStringLiteral("DeliveryDirections"));
    dialog.calendar()->setSelectedDate(QDate(2024, 3, 12));
    // A double click on a day counts as OK.
    emit dialog.calendar()->activated(QDate(2024, 3, 12));
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.date(), QDate(2024, 3, 12));
}

TEST_F(RoutePrintoutsView, TheOverrideScreenPrintsDirectionsToTheAddressShown)
{
    insertRow(data.db(), QStringLiteral("Address_Overrides"),
              {{QStringLiteral("Person_ID"), 2},
               {QStringLiteral("Override_Type"), QStringLiteral("T")},
               {QStringLiteral("Effective_Date"), QDate(2024, 3, 1)},
               {QStringLiteral("Address1"), QStringLiteral("5 Quay")},
               {QStringLiteral("Route"), QStringLiteral("R1")}});
    RecordServices services(data.db(), ui);
    TFormAddressOverride presenter(services, session, {2, QStringLiteral("102"), 0});
    std::vector<qint64> printed;
    presenter.setDirectionsPrinter([&](qint64, qint64 recordId) { printed.push_back(recordId); });
    SettingsFile settings(appData.path());
    ui::AddressOverrideView view(presenter, services, settings);
    keepScreenshot(view, QStringLiteral("AddressOverrides"));
    QPushButton* print = view.button(QStringLiteral("Print Delivery Directions"));
    ASSERT_TRUE(print);
    ASSERT_TRUE(print->isEnabled());
    // The agency has no web map: nothing to locate on one.
    EXPECT_FALSE(view.button(QStringLiteral("Locate address on map"))->isEnabled());
    print->click();
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0], presenter.dataSet().fieldValue(u"RecordID").toLongLong());
}

TEST_F(RoutePrintoutsView, TheRoutesCodeTableOpensInTheGenericEditor)
{
    RecordServices services(data.db(), ui);
    TFormEditRoutes presenter(services);
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Add and Edit Routes");
    presenter.openRow(0);
    keepScreenshot(view, QStringLiteral("EditRoutes"));
    EXPECT_TRUE(view.editor(QStringLiteral("ROUTE_TYPE")));
    EXPECT_TRUE(qobject_cast<QComboBox*>(view.editor(QStringLiteral("DIST_CENTER_ID"))));
}

} // namespace
