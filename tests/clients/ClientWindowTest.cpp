// The client window's logic over real data on both stores: what each access
// level sees and may do, the pages a user starts on, the questions of a
// page change, the status filter, the state of the controls for client,
// organization and inactive rows, the search, the first activation, and the
// map and mail addresses.

#include "ClientWindowFixture.h"

#include "dataset/QueryDataSet.h"
#include "settings/UserPreferences.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/ClientTabs.h"
#include "window/TFilterForm.h"

using namespace kb;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;
namespace cmd = client_command;

namespace {

class ClientWindow : public ClientWindowFixture
{
};

TEST_P(ClientWindow, EachAccessLevelSeesAndChangesWhatItMay)
{
    {
        TFormClients& w = open(QStringLiteral("userW"));
        moveToPerson(1);
        EXPECT_TRUE(w.clientAreaVisible());
        EXPECT_FALSE(w.fieldsReadOnly());
        EXPECT_TRUE(w.isMenuVisible(QStringLiteral("Utilities")));
        EXPECT_TRUE(w.isMenuEnabled(QStringLiteral("Edit/Table Maintenance")));
        EXPECT_TRUE(w.commandState(cmd::EditRoutesStops).enabled);
        EXPECT_TRUE(w.commandState(cmd::AddNewPerson).visible);
        EXPECT_EQ(w.commandState(cmd::ModifyItems).text, "Modify Items");
        EXPECT_TRUE(w.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("Anne")));
        EXPECT_TRUE(w.setValue(QStringLiteral("DEF_STOP"), -3));
        EXPECT_EQ(w.value(QStringLiteral("DEF_STOP")).toDouble(), 0.0) << "a negative stop is no stop";
        EXPECT_TRUE(w.post());
        EXPECT_EQ(
            db().execute(QStringLiteral("select First_Name from Clients where Person_ID = 1")).value(0, 0),
            "Anne");
        TearDown();
    }
    {
        // "A" is full use without the route editor.
        TFormClients& a = open(QStringLiteral("userA"));
        moveToPerson(1);
        EXPECT_FALSE(a.commandState(cmd::EditRoutesStops).enabled);
        EXPECT_TRUE(a.commandState(cmd::AlternateAddresses).visible);
        EXPECT_FALSE(a.fieldsReadOnly());
        TearDown();
    }
    {
        TFormClients& r = open(QStringLiteral("userR"));
        moveToPerson(1);
        EXPECT_TRUE(r.clientAreaVisible());
        EXPECT_TRUE(r.fieldsReadOnly());
        EXPECT_FALSE(r.isMenuEnabled(QStringLiteral("Utilities")));
        EXPECT_FALSE(r.isMenuEnabled(QStringLiteral("Reports/Process")));
        EXPECT_FALSE(r.isMenuEnabled(QStringLiteral("Edit/Table Maintenance")));
        EXPECT_TRUE(r.isMenuVisible(QStringLiteral("Utilities")));
        EXPECT_FALSE(r.commandState(cmd::AddNewPerson).visible);
        EXPECT_FALSE(r.commandState(cmd::AlternateAddresses).visible);
        EXPECT_FALSE(r.commandState(cmd::EditRoutesStops).visible);
        EXPECT_FALSE(r.commandState(cmd::AddSuspension).visible);
        EXPECT_FALSE(r.commandState(QStringLiteral("ActionSpecialMeals")).enabled);
        EXPECT_TRUE(r.commandState(QStringLiteral("ActionSpecialMeals")).visible);
        const TFormClients::CommandState items = r.commandState(cmd::ModifyItems);
        EXPECT_EQ(items.text, "View Meal Items");
        EXPECT_TRUE(items.visible && items.enabled);
        EXPECT_FALSE(r.edit());
        EXPECT_FALSE(r.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("Zed")));
        r.changePage(client_page::Suspensions);
        EXPECT_FALSE(r.pageData().query(QStringLiteral("QuerySuspends")).canModify());
        EXPECT_EQ(
            db().execute(QStringLiteral("select First_Name from Clients where Person_ID = 1")).value(0, 0),
            "Anne");
        TearDown();
    }
    {
        TFormClients& o = open(QStringLiteral("userO"));
        EXPECT_FALSE(o.clientAreaVisible());
        EXPECT_TRUE(o.fieldsReadOnly());
        for (const char* menu :
             {"Edit", "View", "Utilities", "File/Print", "Reports/Process", "Reports/Analyze"})
            EXPECT_FALSE(o.isMenuVisible(QString::fromLatin1(menu))) << menu;
        for (const char* menu : {"File", "Reports", "Reports/Print", "Reports/Mail Merge", "Help"})
            EXPECT_TRUE(o.isMenuVisible(QString::fromLatin1(menu))) << menu;
        for (const QString& id :
             {cmd::RefreshLists, cmd::EditPreferences, cmd::EditCuisine, cmd::EditRoutesStops,
              cmd::AlternateAddresses, cmd::HouseholdMembers, cmd::Households, cmd::ModifyItems,
              cmd::ItemsWizard, QStringLiteral("ActionEditNotes"), QStringLiteral("ActionListMembership")})
            EXPECT_FALSE(o.commandState(id).visible) << id.toStdString();
        EXPECT_TRUE(o.commandState(QStringLiteral("ActionDeliveryReports")).visible);
        EXPECT_TRUE(o.commandState(cmd::Exit).enabled);
    }
}

TEST(ClientTabs, TheUserSeesTheCheckedPagesAndStartsOnTheRightOne)
{
    const ClientTabs none = ClientTabs::make(false, 0, 5, true);
    EXPECT_EQ(none.shown.size(), 11);
    EXPECT_EQ(none.startPage, client_page::BiographicInfo);
    EXPECT_FALSE(none.conserveResources);
    EXPECT_EQ(none.captions.value(0), "&1. Map             ");
    EXPECT_EQ(none.captions.value(10), "&11. Client Services");

    // No tab checked shows them all, and DTab is honoured.
    const ClientTabs unchecked = ClientTabs::make(true, 0, 3, false);
    EXPECT_EQ(unchecked.shown.size(), 11);
    EXPECT_EQ(unchecked.startPage, 3);

    // The list's items run from Client Services (bit 0) to Map (bit 10).
    const QList<UserPreferences::TabPage>& items = UserPreferences::tabPages();
    qint64 mask = 0;
    for (qsizetype bit = 0; bit < items.size(); ++bit)
        if (items[bit].pageNumber == 1 || items[bit].pageNumber == 3 || items[bit].pageNumber == 10)
            mask |= qint64(1) << bit;
    const ClientTabs some = ClientTabs::make(true, mask, 3, true);
    EXPECT_EQ(some.shown, (QList<int>{1, 3, 10}));
    EXPECT_EQ(some.captions.value(1), "&1. Health/Nutrition");
    EXPECT_EQ(some.captions.value(3), "&2. Delivery/Route  ");
    EXPECT_EQ(some.captions.value(10), "&3. Client Services ");
    EXPECT_EQ(some.startPage, 3);
    EXPECT_TRUE(some.conserveResources);
    // DTab on a hidden page: page 8 when shown, else the highest shown page.
    EXPECT_EQ(ClientTabs::make(true, mask, 5, false).startPage, 10);
    EXPECT_EQ(ClientTabs::startPageOf({2, 8, 9}, 5), 8);
    EXPECT_EQ(ClientTabs::startPageOf({2, 8, 9}, 0), 8);
    EXPECT_EQ(ClientTabs::startPageOf({2, 4}, 0), 4);
}

TEST_P(ClientWindow, TheUsersPagesAndStartPageComeFromTheStaffRow)
{
    db().execute(QStringLiteral("update Staff set Visible_Tabs = 5, DTab = 10 where User_ID = 'userW'"));
    TFormClients& w = open(QStringLiteral("userW"));
    // Bits 0 and 2: Client Services and Biographic Info.
    EXPECT_EQ(w.tabs().shown, (QList<int>{8, 10}));
    EXPECT_EQ(w.currentPage(), 10);
    EXPECT_TRUE(w.pageData().isOpen(QStringLiteral("QueryServiceApps")));
}

TEST_P(ClientWindow, EveryPageOpensItsDataAndAPageChangeAsksAboutUnsavedRows)
{
    db().execute(QStringLiteral("update Config set Enable_Alternate_Addresses = True"));
    insertRow(db(), QStringLiteral("Address_Overrides"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Client_ID"), QStringLiteral("101.0")},
               {QStringLiteral("Override_Type"), QStringLiteral("T")},
               {QStringLiteral("Effective_Date"), QDate(2024, 3, 1)},
               {QStringLiteral("Address1"), QStringLiteral("9 Oak Rd")},
               {QStringLiteral("Addr_Desc"), QStringLiteral("Daughter's")},
               {QStringLiteral("Route"), QStringLiteral("R7")}});
    insertRow(db(), QStringLiteral("Suspends"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Client_ID"), QStringLiteral("101.0")},
               {QStringLiteral("Stop_Dt"), QDate(2024, 1, 1)},
               {QStringLiteral("Resume_Dt"), QDate(2024, 1, 9)},
               {QStringLiteral("Reason"), QStringLiteral("Hospital")}});
    TFormClients& w = open(QStringLiteral("userW"));
    moveToPerson(1);
    for (int page = 0; page < client_page::Count; ++page) {
        w.changePage(page);
        for (const QString& query : clientPage(page).queries)
            EXPECT_TRUE(w.pageData().isOpen(query)) << query.toStdString();
    }
    EXPECT_TRUE(ui.texts(Kind::Error).isEmpty())
        << ui.texts(Kind::Error).join(QLatin1Char('\n')).toStdString();

    // The alternate address of today is shown, with its directions caption.
    ASSERT_TRUE(w.alternateAddressShown());
    EXPECT_EQ(w.alternateValue(QStringLiteral("Address1")), "9 Oak Rd");
    EXPECT_EQ(w.controls().alternateDirectionsCaption, "Alternate Directions: Daughter's, Route: R7");

    w.changePage(client_page::Suspensions);
    QueryDataSet& suspends = w.pageData().query(QStringLiteral("QuerySuspends"));
    ASSERT_EQ(suspends.recordCount(), 1);
    suspends.edit();
    suspends.setFieldValue(u"Reason", QStringLiteral("Travel"));
    ASSERT_TRUE(w.setAlternateValue(QStringLiteral("Address2"), QStringLiteral("Apt 2")));
    ui.clear();
    ui.answerNext(Answer::Yes); // the alternate address
    ui.answerNext(Answer::Yes); // the suspension
    w.changePage(client_page::BiographicInfo);
    EXPECT_EQ(ui.texts(Kind::Question),
              (QStringList{"Save your changes to the alternate address before changing tabs?",
                           "Save your changes to the Suspension before changing tabs?"}));
    EXPECT_FALSE(suspends.isActive());
    EXPECT_NE(w.alternateAddress(), nullptr) << "the alternate address stays open";
    EXPECT_EQ(db().execute(QStringLiteral("select Reason from Suspends where Person_ID = 1")).value(0, 0),
              "Travel");
    EXPECT_EQ(db().execute(QStringLiteral("select Address2 from Address_Overrides")).value(0, 0), "Apt 2");

    // No cancels, and the data set is closed all the same.
    w.changePage(client_page::Suspensions);
    suspends.edit();
    suspends.setFieldValue(u"Reason", QStringLiteral("Lost"));
    ui.clear();
    w.changePage(client_page::StatusDates);
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{"Save your changes to the Suspension before changing tabs?"});
    EXPECT_FALSE(suspends.isActive());
    EXPECT_EQ(db().execute(QStringLiteral("select Reason from Suspends where Person_ID = 1")).value(0, 0),
              "Travel");
}

TEST(TFilterForm, TheStatusBarTellsTheChoicesAndSuspensionFollowsActive)
{
    TFilterForm form;
    EXPECT_EQ(form.statusText(), "Filter: Off");
    form.setStatus(TFilterForm::Status::Active);
    EXPECT_EQ(form.statusText(), "Filter: Active Status");
    form.setSuspension(TFilterForm::Suspension::NotSuspended);
    EXPECT_EQ(form.statusText(), "Filter: Active/Not Suspended");
    form.setSuspension(TFilterForm::Suspension::Suspended);
    EXPECT_EQ(form.statusText(), "Filter: Active/Suspended");
    form.setStatus(TFilterForm::Status::Stopped);
    EXPECT_EQ(form.suspension(), TFilterForm::Suspension::AllRegardless) << "forced back";
    EXPECT_FALSE(form.suspensionEnabled());
    EXPECT_EQ(form.statusText(), "Filter: Stopped Status");
    form.setStatus(TFilterForm::Status::Inactive);
    EXPECT_EQ(form.statusText(), "Filter: Inactive Status");
    form.setStatus(TFilterForm::Status::WaitList);
    EXPECT_EQ(form.statusText(), "Filter: Wait List");
    form.setSuspension(TFilterForm::Suspension::Suspended);
    EXPECT_EQ(form.suspension(), TFilterForm::Suspension::AllRegardless) << "disabled, so ignored";
    form.setStatus(TFilterForm::Status::Active);
    form.setInternet(true);
    EXPECT_FALSE(form.suspensionEnabled());
    EXPECT_EQ(TFilterForm::caption(), "Limit Clients View");
    EXPECT_EQ(TFilterForm::statusChoices().size(), 5);
}

TEST_P(ClientWindow, TheStatusFilterKeepsTheChosenClients)
{
    TFormClients& w = open(QStringLiteral("userW"));
    EXPECT_EQ(w.rowCount(), 6);
    TFilterForm& filter = w.filterForm();
    filter.setStatus(TFilterForm::Status::Active);
    filter.setSuspension(TFilterForm::Suspension::NotSuspended);
    w.statusFilterClosed(true);
    EXPECT_EQ(w.filterText(), "Filter: Active/Not Suspended");
    EXPECT_EQ(w.rowCount(), 2); // Ames and Bay Center; Eddy is suspended today
    filter.setSuspension(TFilterForm::Suspension::Suspended);
    w.statusFilterClosed(true);
    EXPECT_EQ(w.rowCount(), 1);
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Eddy");
    filter.setStatus(TFilterForm::Status::Stopped);
    w.statusFilterClosed(true);
    EXPECT_EQ(w.filterText(), "Filter: Stopped Status");
    EXPECT_EQ(w.rowCount(), 1);
    // An edit takes the filter off until the post, and the row stays in view.
    EXPECT_TRUE(w.setValue(QStringLiteral("FIRST_NAME"), QStringLiteral("Fay")));
    EXPECT_FALSE(w.isFiltered());
    EXPECT_TRUE(w.post());
    EXPECT_TRUE(w.isFiltered());
    EXPECT_EQ(w.rowCount(), 1);
    w.statusFilterClosed(false);
    EXPECT_EQ(w.filterText(), "Filter: Off");
    EXPECT_EQ(w.rowCount(), 6);

    w.customFilter().setConditions(
        {{QStringLiteral("LAST_NAME"), ClientCustomFilter::Operator::StartsWith, "c"},
         {QStringLiteral("STATUS"), ClientCustomFilter::Operator::Equals, "I"}});
    w.customFilterClosed();
    EXPECT_EQ(w.filterText(), "Filter: Custom");
    EXPECT_EQ(w.rowCount(), 1);
    w.customFilter().setConditions({});
    w.customFilterClosed();
    EXPECT_EQ(w.filterText(), "Filter: Off");
}

TEST_P(ClientWindow, TheControlsFollowClientOrganizationAndInactiveRows)
{
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Deliv_Date"), QDate(2024, 3, 9)},
               {QStringLiteral("Schedule_Type"), QStringLiteral("S")}});
    insertRow(db(), QStringLiteral("Alerts"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Client_PopUp"), true},
               {QStringLiteral("Note"), QStringLiteral("Knock loudly")}});
    TFormClients& w = open(QStringLiteral("userW"));

    moveToPerson(1); // an active client
    const ClientControls& c = w.controls();
    for (const char* id : {"DELIVERY_TYPE", "START_DTE", "DEF_RTE", "DOB", "SEX", "MONDAY", "FRIDAY",
                           "CUISINE_ID", "DIET_RESTR", "CONTRACTUAL_START_DTE"})
        EXPECT_TRUE(c.isEnabled(QString::fromLatin1(id))) << id;
    EXPECT_FALSE(c.isEnabled(QStringLiteral("SATURDAY"))) << "the agency does not deliver on Saturdays";
    EXPECT_FALSE(c.isEnabled(QStringLiteral("STOP_CODE"))) << "no stop date";
    for (const QString& id : {cmd::AddSuspension, cmd::RecordMissed, cmd::HouseholdWizard, cmd::AddAssessment,
                              cmd::EditRoutesStops, cmd::ClearRoutes})
        EXPECT_TRUE(w.commandState(id).enabled) << id.toStdString();
    EXPECT_FALSE(w.commandState(cmd::AlternateAddresses).enabled) << "alternate addresses are off";
    EXPECT_TRUE(w.commandState(cmd::ScheduledDeliveries).bold);
    EXPECT_FALSE(w.commandState(cmd::ModifyItems).bold);
    EXPECT_TRUE(c.popUpShown);
    EXPECT_EQ(c.popUpNote, "Knock loudly");
    EXPECT_EQ(w.commandState(cmd::ClientPopUp).text, "Edit Client Pop-Up");
    EXPECT_TRUE(w.commandState(cmd::DeleteClientPopUp).enabled);
    EXPECT_EQ(c.ageText, "(73)");
    EXPECT_TRUE(c.isVisible(QStringLiteral("Service Days")));
    EXPECT_FALSE(c.isVisible(QStringLiteral("Scheduled Deliveries")));

    moveToPerson(2); // an organization client in a household
    for (const char* id : {"DOB", "SEX", "RACE", "SOCIAL_SECURITY_NUMBER", "INCOME_CATEGORY", "HIV_STATUS"})
        EXPECT_FALSE(w.controls().isEnabled(QString::fromLatin1(id))) << id;
    EXPECT_TRUE(w.controls().isEnabled(QStringLiteral("DELIVERY_TYPE")));
    EXPECT_FALSE(w.commandState(cmd::AddAssessment).enabled);
    EXPECT_FALSE(w.commandState(cmd::HouseholdWizard).enabled);
    EXPECT_FALSE(w.controls().popUpShown);
    EXPECT_EQ(w.commandState(cmd::ClientPopUp).text, "Add Client Pop-Up");
    EXPECT_FALSE(w.commandState(cmd::DeleteClientPopUp).enabled);

    moveToPerson(3); // an inactive client
    for (const char* id : {"START_DTE", "DEF_RTE", "MONDAY", "CUISINE_ID", "DIET_RESTR"})
        EXPECT_FALSE(w.controls().isEnabled(QString::fromLatin1(id))) << id;
    EXPECT_TRUE(w.controls().isEnabled(QStringLiteral("DELIVERY_TYPE")));
    EXPECT_TRUE(w.controls().isEnabled(QStringLiteral("DOB")));
    for (const QString& id : {cmd::AddSuspension, cmd::RecordMissed, cmd::EditRoutesStops, cmd::ModifyItems})
        EXPECT_FALSE(w.commandState(id).enabled) << id.toStdString();
    QStringList choices;
    for (const ClientListEntry& e : w.controls().statusChoices)
        choices << e.text;
    EXPECT_EQ(choices, (QStringList{"Active", "Inactive", "Stopped", "Wait List"}));

    moveToPerson(4); // a wait-listed person who is no client
    EXPECT_FALSE(w.controls().isEnabled(QStringLiteral("DELIVERY_TYPE")));
    EXPECT_TRUE(w.controls().isEnabled(QStringLiteral("DEF_RTE")));
    choices.clear();
    for (const ClientListEntry& e : w.controls().statusChoices)
        choices << e.text;
    EXPECT_EQ(choices, (QStringList{"Wait List", "No Status"}));

    moveToPerson(5); // an episodic client
    EXPECT_FALSE(w.controls().isVisible(QStringLiteral("Service Days")));
    EXPECT_TRUE(w.controls().isVisible(QStringLiteral("Scheduled Deliveries")));
    EXPECT_FALSE(w.commandState(cmd::EditRoutesStops).visible);
    EXPECT_FALSE(w.commandState(cmd::AddSuspension).visible);

    moveToPerson(6); // stopped: missed deliveries can still be recorded
    EXPECT_TRUE(w.commandState(cmd::RecordMissed).enabled);
    EXPECT_FALSE(w.commandState(cmd::AddSuspension).enabled);

    // Without force nothing is worked out again for the same row.
    db().execute(QStringLiteral("update Clients set Org_Client = 'Y' where Person_ID = 6"));
    module->clients().refreshRecord();
    w.SetControlsState(false);
    EXPECT_TRUE(w.controls().isEnabled(QStringLiteral("DOB")));
    w.SetControlsState(true);
    EXPECT_FALSE(w.controls().isEnabled(QStringLiteral("DOB")));
}

TEST_P(ClientWindow, TheSearchFindsByNameOrNumberInTheChosenOrder)
{
    TFormClients& w = open(QStringLiteral("userW"));
    EXPECT_TRUE(w.indexNames().contains(QStringLiteral("LAST_FIRST")));
    w.setIndexName(QStringLiteral("LAST_FIRST"));
    EXPECT_TRUE(w.search(QStringLiteral("co")));
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Cole");
    EXPECT_TRUE(w.search(QStringLiteral("ames, a")));
    EXPECT_EQ(w.value(QStringLiteral("PERSON_ID")).toInt(), 1);
    EXPECT_TRUE(w.search(QStringLiteral("Dz"))) << "the nearest after the text";
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Eddy");
    w.setIndexName(QStringLiteral("CLIENT_ID"));
    EXPECT_EQ(w.indexName(), "CLIENT_ID");
    EXPECT_TRUE(w.search(QStringLiteral("106")));
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Ford");
    w.setIndexName(QStringLiteral("PERSON_ID"));
    EXPECT_TRUE(w.search(QStringLiteral("3")));
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Cole");
    w.last();
    EXPECT_EQ(w.position(), 5);
    w.prior();
    EXPECT_EQ(w.value(QStringLiteral("LAST_NAME")), "Eddy");
    w.first();
    EXPECT_EQ(w.position(), 0);
    EXPECT_TRUE(w.run(cmd::NextClient));
    EXPECT_EQ(w.value(QStringLiteral("PERSON_ID")).toInt(), 2);
}

TEST_P(ClientWindow, TheFirstActivationRunsTheOpeningStatementAndTellsOfAlertsDue)
{
    insertRow(db(), QStringLiteral("Queries"),
              {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_OPEN")},
               {QStringLiteral("Query_Lines"),
                QStringLiteral("update Clients set Urn = 'OPENED' where Person_ID = 3")}});
    db().execute(QStringLiteral("update Staff set Execute_OnOpen_Query = True where User_ID = 'userW'"));
    insertRow(db(), QStringLiteral("Notes"),
              {{QStringLiteral("Record_ID"), 40},
               {QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Subject"), QStringLiteral("Call back")},
               {QStringLiteral("Status"), QStringLiteral("O")},
               {QStringLiteral("Alert_DateTime"), QDateTime(QDate(2024, 3, 4), QTime(9, 0))}});
    insertRow(db(), QStringLiteral("Alert_Recipients"),
              {{QStringLiteral("Alert_ID"), 40},
               {QStringLiteral("Recipient_ID"), 20},
               {QStringLiteral("Responsibility_Code"), QStringLiteral("O")}});
    TFormClients& w = open(QStringLiteral("userW"));
    w.firstActivation();
    w.firstActivation(); // once per run
    EXPECT_EQ(db().execute(QStringLiteral("select Urn from Clients where Person_ID = 3")).value(0, 0),
              "OPENED");
    EXPECT_EQ(
        ui.texts(Kind::Information),
        QStringList{"You may have an Alert or Follow-Up due!\r\nYour list of Alerts will now be displayed."});
    EXPECT_TRUE(w.alertsShown());
    EXPECT_EQ(ran, QStringList{"ActionEditAlerts"});
    TearDown();

    // Another user has no alert due, and no opening statement.
    ui.clear();
    TFormClients& a = open(QStringLiteral("userA"));
    a.firstActivation();
    EXPECT_TRUE(ui.texts(Kind::Information).isEmpty());
    EXPECT_FALSE(a.alertsShown());
}

TEST_P(ClientWindow, TheMapAndMailAddressesCarryTheClient)
{
    db().execute(
        QStringLiteral("update Config set Mapping = 'Q', Mapping_Url = "
                       "'https://maps.example.org/?addr=AXXX&city=CXXX&st=SXXX&zip=ZXXX', Organizatn = "
                       "'Meals Agency'"));
    TFormClients& w = open(QStringLiteral("userW"));
    moveToPerson(1);
    EXPECT_TRUE(w.lists().getMapEnabled);
    EXPECT_FALSE(w.lists().mapPointShown);
    EXPECT_FALSE(w.commandState(client_command::MapPointMap).visible);
    EXPECT_TRUE(w.commandState(client_command::GetMap).visible);
    EXPECT_EQ(w.mapUrl().toString(),
              "https://maps.example.org/?addr=12+Elm+St&city=Cedar+Falls&st=OH&zip=45115");
    EXPECT_EQ(w.mailUrl().toString(), "mailto:ann@example.org?subject=Meals Agency");
    moveToPerson(3);
    EXPECT_TRUE(w.mailUrl().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientWindow, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
