// The run screen's presenter: its date, captions, status, commands, the
// working table as a memory table of the session, sorting and editing.

#include "DeliveryTypeEntry.h"
#include "RunFixture.h"

#include <QLocale>

using namespace kb;
using namespace kb::test;

namespace {

using RunPrepareForm = RunFixture;

const QList<RunAction> rowActions = {
    RunAction::ApplyRouteChanges, RunAction::MapRoutes,       RunAction::SaveAs,         RunAction::SaveData,
    RunAction::ExportData,        RunAction::QuickClientsListing, RunAction::ResetRoutes, RunAction::ResetStops,
    RunAction::IncrementStops,    RunAction::RemoveDeliveries, RunAction::RetrieveFromArcLogistics};

TEST_F(RunPrepareForm, StartsOnTodayPlusTheAdvanceDays)
{
    EXPECT_EQ(form().prepareDate(), QDate(2024, 3, 7)); // the new agency's one day ahead
    setConfig(QStringLiteral("Advance_Prep_Days"), 5);
    TFormRunPrepare other(db(), session, ui);
    EXPECT_EQ(other.prepareDate(), QDate(2024, 3, 11));
    EXPECT_EQ(TFormRunPrepare::deliveryTypeTexts(),
              (QStringList{"All Delivery Types", "Ongoing Only", "Episodic Only", "Scheduled Only",
                           "Episodic and Scheduled"}));
    EXPECT_EQ(deliveryTypeIndex(u'b'), 4);
    EXPECT_EQ(form().caption(), "Daily Run Preparation");
    EXPECT_EQ(form().transactionText(), "OK: No Active Transaction");
    EXPECT_EQ(form().userText(), "Pat Tester");
    for (RunAction a : rowActions)
        EXPECT_FALSE(form().isEnabled(a)) << runActionName(a).toStdString();
    EXPECT_TRUE(form().isEnabled(RunAction::Prepare));
}

TEST_F(RunPrepareForm, PrepareSetsCaptionStatusAndCommands)
{
    addClient(1);
    addClient(2);
    prepare(monday, u'O');
    const QLocale locale;
    EXPECT_EQ(form().caption(), QStringLiteral("Daily Run Preparation: ") + locale.dayName(1, QLocale::LongFormat) +
                                    QStringLiteral(", ") + locale.toString(monday, QLocale::LongFormat));
    EXPECT_EQ(form().clientCountText(), "Client Count: 2");
    EXPECT_EQ(form().DOW(), "MON");
    EXPECT_FALSE(form().saved());
    EXPECT_TRUE(form().gridVisible());
    EXPECT_TRUE(form().isEnabled(RunAction::Prepare));
    for (RunAction a : rowActions)
        EXPECT_TRUE(form().isEnabled(a)) << runActionName(a).toStdString();
    EXPECT_EQ(ui.busyDepth(), 0);
    EXPECT_EQ(form().model()->rowCount(), 2);

    // A new date in the picker: no saving until the next Prepare.
    form().SetPrepareDate(monday.addDays(1));
    EXPECT_FALSE(form().isEnabled(RunAction::SaveData));
    EXPECT_FALSE(form().isEnabled(RunAction::SaveAs));
    EXPECT_TRUE(form().isEnabled(RunAction::MapRoutes));
    EXPECT_EQ(form().runDate(), monday);
}

TEST_F(RunPrepareForm, AnEmptyRunHidesTheGridAndDisablesTheCommands)
{
    addClient(1, {{QStringLiteral("Sunday"), false}});
    prepare(QDate(2024, 3, 10));
    EXPECT_EQ(form().clientCountText(), "Client Count: 0");
    EXPECT_FALSE(form().gridVisible());
    for (RunAction a : rowActions)
        EXPECT_FALSE(form().isEnabled(a)) << runActionName(a).toStdString();
    EXPECT_TRUE(form().isEnabled(RunAction::Prepare));
}

TEST_F(RunPrepareForm, AFailedPrepareStillRestoresTheScreen)
{
    addClient(1);
    form();
    db().deleteTable(QStringLiteral("Suspends"));
    EXPECT_ANY_THROW(form().ActionPrepare());
    EXPECT_TRUE(form().isEnabled(RunAction::Prepare));
    EXPECT_EQ(ui.busyDepth(), 0);
    EXPECT_EQ(form().caption(), "Daily Run Preparation");
    EXPECT_FALSE(db().inTransaction());
}

TEST_F(RunPrepareForm, TheWorkingTableIsAMemoryTableOfTheSession)
{
    addClient(1);
    addClient(2);
    prepare(monday);
    EXPECT_EQ(db().execute(QStringLiteral("Update MemTableDeliveries set New_Stop = Stop + 1")).rowsAffected(), 2);
    EXPECT_DOUBLE_EQ(db().execute(QStringLiteral("select New_Stop from Memory MemTableDeliveries where Person_ID = 2"))
                         .value(0, 0)
                         .toDouble(),
                     3.0);
    EXPECT_EQ(db().execute(QStringLiteral("select * from Memory MemTableDeliveries")).columnCount(),
              MemTableDeliveries::columnNames().size());
    // Another workstation does not see it; a new Prepare starts it empty.
    EXPECT_ANY_THROW(data.openAnother()->execute(QStringLiteral("select * from Memory MemTableDeliveries")));
    prepare(monday);
    EXPECT_EQ(form().table().rowCount(), 2);
    form().FormClose();
    EXPECT_FALSE(form().table().exists());
}

TEST_F(RunPrepareForm, ColumnTitlesSwitchTheOrder)
{
    addClient(1, {{QStringLiteral("Last_Name"), QStringLiteral("Zed")}, {QStringLiteral("City"), QStringLiteral("Alpha")}});
    addClient(2, {{QStringLiteral("Last_Name"), QStringLiteral("Young")}, {QStringLiteral("City"), QStringLiteral("Beta")}});
    addClient(3, {{QStringLiteral("Last_Name"), QStringLiteral("Able")}, {QStringLiteral("City"), QStringLiteral("Alpha")},
                  {QStringLiteral("Def_Rte"), QStringLiteral("R2")}});
    prepare(monday);
    MemTableDeliveriesModel& model = *form().model();
    const auto order = [&] {
        QList<int> ids;
        for (int r = 0; r < model.rowCount(); ++r)
            ids.append(model.field(r, QStringLiteral("Person_ID")).toInt());
        return ids;
    };
    EXPECT_EQ(order(), (QList<int>{1, 2, 3}));
    form().sortByTitle(QStringLiteral("Client"));
    EXPECT_EQ(model.currentIndex(), DeliveriesIndex::Last_Name);
    EXPECT_EQ(order(), (QList<int>{3, 2, 1}));
    form().sortByTitle(QStringLiteral("Address")); // no index: nothing changes
    EXPECT_EQ(model.currentIndex(), DeliveriesIndex::Last_Name);
    form().sortByTitle(QStringLiteral("City"));
    EXPECT_EQ(order(), (QList<int>{1, 3, 2}));
    form().sortByTitle(QStringLiteral("Stop"));
    EXPECT_EQ(model.currentIndex(), DeliveriesIndex::RouteStopClient);
    const QStringList titles = {"Route", "Stop", "Alt Addr", "Deliv Type", "Service", "Household", "ID",
                                "Client", "Address", "City", "Diet", "Latitude", "Longitude", "RecordID"};
    for (int c = 0; c < titles.size(); ++c)
        EXPECT_EQ(model.headerData(c, Qt::Horizontal).toString(), titles[c]);
}

TEST_F(RunPrepareForm, EditingRouteAndStopWritesTheWorkingTable)
{
    addClient(1);
    prepare(monday);
    MemTableDeliveriesModel& model = *form().model();
    form().SetPrepareDate(monday); // back to the prepared date
    EXPECT_TRUE(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_TRUE(model.flags(model.index(0, 1)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.flags(model.index(0, 7)) & Qt::ItemIsEditable);
    EXPECT_FALSE(model.setData(model.index(0, 1), 1000)); // beyond 999
    EXPECT_FALSE(model.setData(model.index(0, 7), QStringLiteral("Someone")));
    EXPECT_TRUE(model.setData(model.index(0, 0), QStringLiteral("R2")));
    EXPECT_TRUE(model.setData(model.index(0, 1), 4.25));
    const ResultSet stored = db().execute(QStringLiteral("select Route_ID, Stop from Memory MemTableDeliveries"));
    EXPECT_EQ(stored.value(0, 0).toString(), "R2");
    EXPECT_DOUBLE_EQ(stored.value(0, 1).toDouble(), 4.3);
    EXPECT_EQ(model.data(model.index(0, 0)).toString(), "R2");
    EXPECT_FALSE(form().saved());
    EXPECT_TRUE(form().isEnabled(RunAction::SaveData));
    EXPECT_EQ(form().routeChoices(),
              (QList<std::pair<QString, QString>>{{"R1", "Route R1"}, {"R2", "Route R2"}}));
}

TEST_F(RunPrepareForm, DoubleClickShowsTheClientsDetails)
{
    addClient(1, {{QStringLiteral("Mid_Name"), QStringLiteral("Q")}, {QStringLiteral("Tue_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Tue_Stop"), 8.0}, {QStringLiteral("Phone"), QStringLiteral("555-0101")}});
    prepare(monday);
    form().showClientDetails(0);
    const QStringList shown = ui.texts(ScriptedUserInterface::Kind::Information);
    ASSERT_EQ(shown.size(), 1);
    EXPECT_TRUE(shown[0].startsWith(QStringLiteral("First1 Q Last1\n1 Main St\n"))) << shown[0].toStdString();
    EXPECT_TRUE(shown[0].contains(QStringLiteral("555-0101")));
    EXPECT_TRUE(shown[0].contains(QStringLiteral("Tue: Route R2, Stop 8")));
    EXPECT_TRUE(shown[0].contains(QStringLiteral("Def: Route R1, Stop 1")));
    // Days without a route of their own, and empty details, are left out.
    EXPECT_FALSE(shown[0].contains(QStringLiteral("Mon:"))) << shown[0].toStdString();
    EXPECT_FALSE(shown[0].contains(QStringLiteral("Directions:")));

    ui.clear();
    addClient(2, {{QStringLiteral("Monday"), true}});
    prepare(monday);
    form().showClientDetails(1);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Information).value(0).startsWith(QStringLiteral("First2 Last2\n")))
        << "no double blank without a middle name";
}

} // namespace
