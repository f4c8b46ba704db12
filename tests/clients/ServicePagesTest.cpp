// The rules of the "Client Services" and "Funding/Billing" pages on both
// stores: application templates, status history, the on-save statement and
// deleting in one transaction; the weekday overlap of funding uses, their
// required fields and time checks, client rates and resulting rates; and the
// weekday commands of the schedule.

#include "ClientWindowFixture.h"

#include "applications/ApplicationHistory.h"
#include "applications/ServiceApplications.h"
#include "applications/TFormAppComments.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/RecordLocks.h"
#include "funding/FundingTerms.h"
#include "funding/FundingUses.h"
#include "window/ClientFieldLayout.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/PageGridEditing.h"

using namespace kb;
using namespace kb::test;

namespace {

namespace cmd = client_command;

class ServicePages : public ClientWindowFixture
{
protected:
    void SetUp() override
    {
        ClientWindowFixture::SetUp();
        if (!data) return;
        for (const auto& [id, desc] : {std::pair{1, "Home Meals"}, std::pair{2, "Frozen"}})
            insertRow(db(), QStringLiteral("Services"),
                      {{QStringLiteral("Service_ID"), id},
                       {QStringLiteral("Service_Desc"), QString::fromLatin1(desc)},
                       {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        db().execute(QStringLiteral("Update Clients set Svcs_Used = 1 where Person_ID = 1"));
        for (int doc = 1; doc <= 3; ++doc) {
            insertRow(db(), QStringLiteral("ServiceDocs"),
                      {{QStringLiteral("Service_ID"), doc == 3 ? 2 : 1},
                       {QStringLiteral("Doc_ID"), doc},
                       {QStringLiteral("Requirement_Level"), QStringLiteral("R")},
                       {QStringLiteral("Sort_Order"), doc}});
            insertRow(db(), QStringLiteral("ServiceConditions"),
                      {{QStringLiteral("Service_ID"), 1},
                       {QStringLiteral("Condition_ID"), doc},
                       {QStringLiteral("Requirement_Level"), QStringLiteral("O")},
                       {QStringLiteral("Sort_Order"), 4 - doc}});
        }
        for (const auto& [id, code] : {std::pair{1, "MOW"}, std::pair{2, "T3"}})
            insertRow(db(), QStringLiteral("Fundsrcs"),
                      {{QStringLiteral("Fund_ID"), id},
                       {QStringLiteral("Fund_CD"), QString::fromLatin1(code)},
                       {QStringLiteral("Fund_Srce"), QStringLiteral("Source ") + QString::fromLatin1(code)}});
    }

    qint64 count(const QString& sql) { return db().execute(sql).value(0, 0).toLongLong(); }
    QStringList events(int person)
    {
        const ResultSet rows =
            db().execute(QStringLiteral("select Event from History where Person_ID = :P order by RecordID"),
                         {{QStringLiteral("P"), person}});
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append(rows.value(r, 0).toString());
        return list;
    }
    QueryDataSet& page(const QString& name) { return form->pageData().query(name); }
    // The window on the first client's "Funding/Billing" page.
    TFormClients& openFunding()
    {
        TFormClients& f = open(QStringLiteral("userW"));
        moveToPerson(1);
        f.changePage(client_page::FundingBilling);
        return f;
    }
    // A funding use of a person on one weekday: paid by items, or by the day at `rate`.
    void addFundUse(int person, int service, const char* fund, const char* day, double rate = 0)
    {
        Params values{
            {QStringLiteral("Person_ID"), person},
            {QStringLiteral("Service_ID"), service},
            {QStringLiteral("Fund_CD"), QString::fromLatin1(fund)},
            {QString::fromLatin1(day), true},
            {QStringLiteral("Reimbursement_Method"), rate > 0 ? QStringLiteral("T") : QStringLiteral("I")}};
        if (rate > 0) {
            values.emplace_back(QStringLiteral("Reimbursement_Rate"), rate);
            values.emplace_back(QStringLiteral("Reimbursement_Period"), QStringLiteral("D"));
        }
        insertRow(db(), QStringLiteral("FundUses"), values);
    }
    void set(DataSet& s, const QString& field, const QVariant& value)
    {
        if (s.state() == DataSet::State::Browse) s.edit();
        s.setFieldValue(field, value);
    }
};

TEST(ApplicationHistory, StatusTexts)
{
    EXPECT_EQ(applicationStatusEvent(QString(), QStringLiteral("P")),
              "Service App created with status of Pending.");
    EXPECT_EQ(applicationStatusEvent(QStringLiteral("I"), QStringLiteral("A")),
              "App status changed from In Process to Approved.");
    EXPECT_EQ(applicationStatusEvent(QStringLiteral("W"), QStringLiteral("C")),
              "App status changed from Wait-Listed to Cancelled.");
    EXPECT_EQ(applicationStatusEvent(QStringLiteral("D"), QString()), "Service App created.");
    EXPECT_EQ(fundingRateItemName(QStringLiteral("L"), QString()), "Lunches");
    EXPECT_EQ(fundingRateItemName(QStringLiteral("SM"), QString()), "Specialized Medical Food");
    EXPECT_EQ(fundingRateItemName(QStringLiteral("X"), QString()), "Other");
    EXPECT_EQ(fundingRateItemName(QStringLiteral("4"), QStringLiteral("Soup")), "Soup");
    EXPECT_FALSE(fundingSheets(QStringLiteral("2")).pledges);
    EXPECT_TRUE(fundingSheets(QStringLiteral("3")).pledgesFirst);
    EXPECT_FALSE(fundingSheets(QStringLiteral("4")).funding);
}

TEST_P(ServicePages, AnApplicationGetsItsServicesDocumentsAndConditionsAndAHistory)
{
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    f.changePage(client_page::ClientServices);
    insertRow(
        db(), QStringLiteral("Queries"),
        {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_SAVE_APPLICATION")},
         {QStringLiteral("Query_Lines"),
          QStringLiteral("Update ServiceApps set User_Def1 = 'Seen by ' || Cast(:Staff_ID as VarChar(5)) "
                         "where App_ID = :App_ID and Person_ID = :Person_ID")}});
    ASSERT_TRUE(f.run(cmd::AddApplication));
    QueryDataSet& apps = page(QStringLiteral("QueryServiceApps"));
    ASSERT_EQ(apps.recordCount(), 1);
    EXPECT_EQ(apps.fieldValue(u"App_Date").toDate(), QDate(2024, 3, 6));
    const qint64 app = apps.fieldValue(u"App_ID").toLongLong();
    set(apps, QStringLiteral("Service_ID"), 1);
    set(apps, QStringLiteral("App_Status"), QStringLiteral("P"));
    apps.post();
    const QString ofApp = QStringLiteral(" where App_ID = %1").arg(app);
    EXPECT_EQ(count(QStringLiteral("select count(*) from DocUses") + ofApp), 2);
    EXPECT_EQ(count(QStringLiteral("select count(*) from ConditionUses") + ofApp), 3);
    EXPECT_EQ(count(QStringLiteral(
                  "select count(*) from DocUses where Person_ID = 1 and Requirement_Level = 'R' and "
                  "Create_Date = Current_Date")),
              2);
    EXPECT_EQ(events(1), QStringList{"Service App created with status of Pending."});
    EXPECT_EQ(module->clients().fieldValue(u"EDIT_DTE").toDate(), QDate(2024, 3, 6));
    EXPECT_TRUE(apps.fieldValue(u"User_Def1").toString().startsWith(QStringLiteral("Seen by ")));

    // Another service, answered No: the old documents stay and the new come on top.
    set(apps, QStringLiteral("Service_ID"), 2);
    apps.post();
    EXPECT_EQ(count(QStringLiteral("select count(*) from DocUses") + ofApp), 3);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Question)
                    .contains(ServiceApplications::existingDocumentsQuestion()));
    // Back to the first, answered Yes: only the first service's remain.
    ui.answerNext(Answer::Yes);
    set(apps, QStringLiteral("Service_ID"), 1);
    set(apps, QStringLiteral("App_Status"), QStringLiteral("A"));
    apps.post();
    EXPECT_EQ(count(QStringLiteral("select count(*) from DocUses") + ofApp), 2);
    EXPECT_EQ(events(1).last(), "App status changed from Pending to Approved.");

    // The comment screen saves through the same rules.
    TFormAppComments comments(apps, module->services());
    comments.setText(QStringLiteral("Called the daughter"));
    EXPECT_TRUE(comments.ok());
    EXPECT_EQ(count(QStringLiteral(
                  "select count(*) from ServiceApps where Status_Comments = 'Called the daughter'")),
              1);
}

TEST_P(ServicePages, DeletingAnApplicationTakesItsPaperworkInOneTransaction)
{
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    f.changePage(client_page::ClientServices);
    ASSERT_TRUE(f.run(cmd::AddApplication));
    QueryDataSet& apps = page(QStringLiteral("QueryServiceApps"));
    set(apps, QStringLiteral("Service_ID"), 1);
    apps.post();
    ASSERT_EQ(count(QStringLiteral("select count(*) from DocUses")), 2);

    ASSERT_TRUE(f.run(cmd::DeleteApplication)); // No
    EXPECT_EQ(count(QStringLiteral("select count(*) from ServiceApps")), 1);
    // A failure half way leaves everything: another workstation holds a
    // document of the application, so its delete fails after the
    // application's own.
    std::unique_ptr<Database> other = data->openAnother();
    const qint64 row =
        other->execute(QStringLiteral("Select KB_ROWID from DocUses")).value(0, 0).toLongLong();
    int owner = 0;
    other->recordLocks().lock(&owner, QStringLiteral("DocUses"), row);
    db().recordLocks().setRetries(1, 10);
    ui.answerNext(Answer::Yes);
    EXPECT_FALSE(f.run(cmd::DeleteApplication));
    EXPECT_EQ(count(QStringLiteral("select count(*) from ServiceApps")), 1);
    EXPECT_EQ(count(QStringLiteral("select count(*) from DocUses")), 2);
    EXPECT_EQ(count(QStringLiteral("select count(*) from ConditionUses")), 3);
    EXPECT_FALSE(events(1).contains(ServiceApplications::deletedEvent()));
    other->recordLocks().unlock(&owner, QStringLiteral("DocUses"), row);

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(f.run(cmd::DeleteApplication));
    EXPECT_EQ(count(QStringLiteral("select count(*) from ServiceApps")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from DocUses")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from ConditionUses")), 0);
    EXPECT_EQ(events(1).last(), ServiceApplications::deletedEvent());
}

TEST_P(ServicePages, FundingUsesMayNotShareAWeekdayOfOneService)
{
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    f.changePage(client_page::FundingBilling);
    QueryDataSet& uses = page(QStringLiteral("QueryFundUses"));
    const auto add = [&](int service, const char* fund, std::initializer_list<const char*> days) {
        ui.clear();
        f.run(cmd::AddFunding);
        EXPECT_EQ(uses.fieldValue(u"Service_ID").toInt(), 1); // the client's service
        EXPECT_TRUE(uses.fieldValue(u"Sunday").toBool());
        set(uses, QStringLiteral("Service_ID"), service);
        set(uses, QStringLiteral("Fund_CD"), QString::fromLatin1(fund));
        for (const Weekday& d : weekdays()) {
            bool on = false;
            for (const char* day : days)
                on = on || d.column == QLatin1String(day);
            set(uses, d.column, on);
        }
        try {
            uses.post();
            return true;
        } catch (const Abort&) {
            uses.cancel();
            return false;
        }
    };
    EXPECT_TRUE(add(0, "MOW", {"Monday"})); // all services on Monday
    EXPECT_EQ(uses.fieldValue(u"Service_Description").toString(), "All Services");
    EXPECT_FALSE(add(2, "T3", {"Monday", "Tuesday"})); // blocked by the All Services row
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});
    EXPECT_TRUE(add(2, "T3", {"Tuesday"}));
    EXPECT_EQ(uses.fieldValue(u"Service_Description").toString(), "Frozen");
    EXPECT_TRUE(add(1, "MOW", {"Tuesday", "Wednesday"})); // another service on Tuesday: allowed
    EXPECT_FALSE(add(1, "T3", {"Wednesday"}));            // the same service and day
    EXPECT_TRUE(add(1, "T3", {}));                        // no weekday passes
    EXPECT_FALSE(add(0, "T3", {"Tuesday"}));              // All Services meets every service
    EXPECT_FALSE(add(1, "", {"Friday"}));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::incompleteText()});

    // Time reimbursement needs a period and a rate.
    f.run(cmd::AddFunding);
    set(uses, QStringLiteral("Service_ID"), 2);
    set(uses, QStringLiteral("Fund_CD"), QStringLiteral("MOW"));
    for (const Weekday& d : weekdays())
        set(uses, d.column, d.column == QLatin1String("Saturday"));
    set(uses, QStringLiteral("Reimbursement_Method"), QStringLiteral("T"));
    ui.clear();
    EXPECT_THROW(uses.post(), Abort);
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).front().contains(QStringLiteral("Period blank")));
    set(uses, QStringLiteral("Reimbursement_Period"), QStringLiteral("D"));
    ui.clear();
    EXPECT_THROW(uses.post(), Abort);
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).front().contains(QStringLiteral("Rate at zero")));
    set(uses, QStringLiteral("Reimbursement_Rate"), 4.5);
    uses.post();
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Person_ID = 1")), 5);
    EXPECT_FALSE(uses.fieldValue(u"Last_Updated").isNull());

    // The weekday pop-up of the grid inverts the row's boxes one by one.
    f.run(cmd::ReverseWeekends);
    EXPECT_FALSE(uses.fieldValue(u"Saturday").toBool());
    EXPECT_TRUE(uses.fieldValue(u"Sunday").toBool());
    uses.cancel();
}

TEST_P(ServicePages, ClientRatesHideTheFundersAndTheFundersHideTheItemsOwnPrice)
{
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 4},
               {QStringLiteral("Meal_Item"), QStringLiteral("Soup")},
               {QStringLiteral("Billed_Amount"), 2.0}});
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 5},
               {QStringLiteral("Meal_Item"), QStringLiteral("Bread")},
               {QStringLiteral("Billed_Amount"), 1.0}});
    const auto price = [&](int person, const char* unit, const QVariant& item, double amount) {
        insertRow(db(), QStringLiteral("Pricing"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Method"), QStringLiteral("F")},
                   {QStringLiteral("Unit"), QString::fromLatin1(unit)},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Amount"), amount}});
    };
    price(0, "L", {}, 5.0);
    price(0, "D", {}, 6.0);
    price(0, "4", 4, 3.0);
    insertRow(db(), QStringLiteral("FundUses"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
               {QStringLiteral("Monday"), true}});
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    f.changePage(client_page::FundingBilling);
    QueryDataSet& rates = page(QStringLiteral("QueryClientSpecificFundingRates"));

    // A client's rate for lunches; "L" leaves Item_ID empty, a number fills it.
    ASSERT_TRUE(f.run(cmd::AddItemRate));
    EXPECT_EQ(rates.fieldValue(u"Fund_CD").toString(), "MOW");
    EXPECT_EQ(rates.fieldValue(u"Method").toString(), "F");
    set(rates, QStringLiteral("Unit"), QStringLiteral("L"));
    EXPECT_THROW(rates.post(), Abort); // amount 0
    set(rates, QStringLiteral("Amount"), 4.0);
    rates.post();
    EXPECT_TRUE(rates.fieldValue(u"Item_ID").isNull());
    f.run(cmd::AddItemRate);
    set(rates, QStringLiteral("Amount"), 1.5);
    EXPECT_THROW(rates.post(), Abort); // no unit
    set(rates, QStringLiteral("Unit"), QStringLiteral("5"));
    rates.post();
    EXPECT_EQ(rates.fieldValue(u"Item_ID").toInt(), 5);

    f.run(cmd::ResultingRates);
    QueryDataSet& resulting = page(QStringLiteral("QueryServiceFundingRates"));
    QStringList shown;
    for (resulting.first(); !resulting.eof(); resulting.next())
        shown.append(QStringLiteral("%1 %2 %3 %4")
                         .arg(resulting.fieldValue(u"Reason").toString(),
                              resulting.fieldValue(u"Unit").toString().trimmed(),
                              resulting.fieldValue(u"Rate_Item").toString())
                         .arg(resulting.fieldValue(u"Amount").toDouble()));
    EXPECT_EQ(shown, (QStringList{"E 5 Bread 1.5", "E L Lunches 4", "I 4 Soup 3", "I D Dinners 6"}));

    // Deleting the funding use takes the client's rates of it.
    ui.answerNext(Answer::Yes);
    f.run(cmd::DeleteFunding);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Pricing where Person_ID = 1")), 0);
    EXPECT_EQ(count(QStringLiteral("select count(*) from Pricing where Person_ID = 0")), 3);
}

TEST_P(ServicePages, WeekdayCommandsInvertEachBoxOfTheClient)
{
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    db().execute(
        QStringLiteral("Update Clients set Monday = True, Tuesday = False, Saturday = True, Sunday = False"));
    module->clients().refresh();
    ASSERT_TRUE(f.run(cmd::InvertWeekdays));
    EXPECT_TRUE(f.isEditing());
    EXPECT_FALSE(f.value(QStringLiteral("MONDAY")).toBool());
    EXPECT_TRUE(f.value(QStringLiteral("TUESDAY")).toBool());
    EXPECT_TRUE(f.value(QStringLiteral("SATURDAY")).toBool());
    ASSERT_TRUE(f.run(cmd::InvertAllDays));
    EXPECT_TRUE(f.value(QStringLiteral("MONDAY")).toBool());
    EXPECT_FALSE(f.value(QStringLiteral("SATURDAY")).toBool());
    EXPECT_TRUE(f.value(QStringLiteral("SUNDAY")).toBool());
    f.cancel();
}

TEST_P(ServicePages, TheFundingUsesMethodBringsUpItsRateGroupsAsTheRowMoves)
{
    addFundUse(1, 1, "MOW", "Monday");
    addFundUse(1, 2, "T3", "Tuesday", 5.5);
    TFormClients& f = open(QStringLiteral("userW"));
    int redraws = 0;
    QObject::connect(&f, &TFormClients::pageGroupsChanged, [&] { ++redraws; });
    moveToPerson(1);
    EXPECT_FALSE(f.controls().isVisible(ClientRatesGroup)); // no funding shown yet
    f.changePage(client_page::FundingBilling);
    f.SetControlsState(true);
    PageGridEditing& grids = f.pageGrids();
    const QString uses = QStringLiteral("QueryFundUses");
    const int items = page(uses).fieldValue(u"Fund_CD").toString() == QLatin1String("MOW") ? 0 : 1;
    const int time = 1 - items;
    const auto itemsShown = [&] {
        EXPECT_EQ(f.controls().isVisible(ClientRatesGroup), f.controls().isVisible(ResultingRatesGroup));
        return f.controls().isVisible(ClientRatesGroup);
    };
    const auto timeShown = [&] { return f.controls().isVisible(TimeRatesGroup); };

    ASSERT_TRUE(grids.moveTo(uses, items));
    EXPECT_TRUE(itemsShown());
    EXPECT_FALSE(timeShown());
    EXPECT_FALSE(f.funding().rateGroups().timeRates);
    EXPECT_FALSE(grids.isEditable(uses, items, QStringLiteral("Reimbursement_Rate")));
    EXPECT_TRUE(grids.isEditable(uses, time, QStringLiteral("Reimbursement_Rate")));
    EXPECT_TRUE(grids.isEditable(uses, items, QStringLiteral("Method_Text")));
    // The service is shown by its name and chosen by its number.
    EXPECT_EQ(grids.cell(uses, QStringLiteral("Service_Description")).field, "Service_ID");
    EXPECT_EQ(grids.editValue(uses, items, QStringLiteral("Service_Description")).toInt(), 1);
    EXPECT_EQ(grids.shownValue(uses, items, QStringLiteral("Service_Description")).toString(), "Home Meals");
    const int before = redraws;
    ASSERT_TRUE(grids.moveTo(uses, time));
    EXPECT_GT(redraws, before);
    EXPECT_FALSE(itemsShown());
    EXPECT_TRUE(timeShown());
    EXPECT_TRUE(f.funding().rateGroups().timeRates);
    // The client's rates follow the row: none for this source.
    EXPECT_EQ(page(QStringLiteral("QueryClientSpecificFundingRates")).recordCount(), 0);

    // A method typed into the row brings its group up before the row is saved.
    ASSERT_TRUE(grids.setCell(uses, time, QStringLiteral("Method_Text"), QStringLiteral("I")));
    EXPECT_EQ(page(uses).state(), DataSet::State::Edit);
    EXPECT_TRUE(itemsShown());
    EXPECT_FALSE(timeShown());
    EXPECT_EQ(grids.editValue(uses, time, QStringLiteral("Method_Text")).toString(), "I");
    grids.cancelRow(uses);
    EXPECT_FALSE(itemsShown());
    EXPECT_TRUE(timeShown());
    EXPECT_EQ(page(uses).fieldValue(u"Method_Text").toString(), "Time Period");

    // A row with no method shows neither.
    ASSERT_TRUE(f.run(cmd::AddFunding));
    EXPECT_FALSE(itemsShown());
    EXPECT_FALSE(timeShown());
    EXPECT_FALSE(f.funding().rateGroups().timeRates);
    grids.cancelRow(uses);

    // Another client's funding rows: the groups follow his row, and a client
    // without funding shows none.
    addFundUse(3, 1, "T3", "Friday", 2.0);
    moveToPerson(3);
    EXPECT_TRUE(timeShown());
    EXPECT_FALSE(itemsShown());
    EXPECT_DOUBLE_EQ(
        grids.editValue(uses, grids.currentRow(uses), QStringLiteral("Reimbursement_Rate")).toDouble(), 2.0);
    moveToPerson(4);
    EXPECT_FALSE(timeShown());
    EXPECT_FALSE(itemsShown());
}

TEST_P(ServicePages, TheTimeRateTypedBesideTheGridIsSavedThroughTheFundingUseRules)
{
    addFundUse(1, 1, "MOW", "Monday");
    TFormClients& f = openFunding();
    PageGridEditing& grids = f.pageGrids();
    const QString uses = QStringLiteral("QueryFundUses");
    QueryDataSet& set = page(uses);

    // The group's fields are cells of the funding row, as its grid names them.
    const ClientFieldGroup* group = nullptr;
    for (const ClientFieldGroup& g : clientFieldGroups())
        if (g.caption == TimeRatesGroup) group = &g;
    ASSERT_NE(group, nullptr);
    EXPECT_EQ(group->row, uses);
    ASSERT_EQ(group->fields.size(), 2u);
    EXPECT_EQ(grids.cell(uses, group->fields[0].field).field, "Reimbursement_Rate");
    EXPECT_EQ(grids.cell(uses, group->fields[1].field).field, "Reimbursement_Period");
    EXPECT_FALSE(clientEditedFields().contains(group->fields[0].field));
    const QString rate = group->fields[0].field;
    const QString period = group->fields[1].field;

    // Paid by items, the row takes no time rate.
    const int row = grids.currentRow(uses);
    ASSERT_EQ(row, 0);
    EXPECT_FALSE(grids.isEditable(uses, row, rate));
    EXPECT_FALSE(grids.setCell(uses, row, rate, 4.0));
    EXPECT_EQ(set.state(), DataSet::State::Browse);

    // Switched to time: a zero rate is refused with the rule's words and the
    // row stays in edit; a rate and a period save it.
    ASSERT_TRUE(grids.setCell(uses, row, QStringLiteral("Method_Text"), QStringLiteral("T")));
    EXPECT_TRUE(f.controls().isVisible(TimeRatesGroup));
    ASSERT_TRUE(grids.setCell(uses, row, period, QStringLiteral("D")));
    ASSERT_TRUE(grids.setCell(uses, row, rate, 0.0));
    ui.clear();
    EXPECT_FALSE(grids.postRow(uses));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{timeMethodProblem(QStringLiteral("T"), QStringLiteral("D"), 0)});
    EXPECT_EQ(set.state(), DataSet::State::Edit);
    ASSERT_TRUE(grids.setCell(uses, row, rate, 8.5));
    ASSERT_TRUE(grids.postRow(uses));
    EXPECT_EQ(
        count(QStringLiteral("select count(*) from FundUses where Person_ID = 1 and Reimbursement_Method = "
                             "'T' and Reimbursement_Period = 'D' and Reimbursement_Rate = 8.5")),
        1);
    EXPECT_EQ(grids.shownValue(uses, row, period).toString(), "Day");

    // Cleared, the period is refused again when the row is saved.
    ASSERT_TRUE(grids.setCell(uses, row, period, QVariant()));
    ui.clear();
    EXPECT_FALSE(grids.postRow(uses));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).size(), 1);
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).front().contains(QStringLiteral("Period blank")));
    grids.cancelRow(uses);
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Reimbursement_Period = 'D'")), 1);
}

TEST_P(ServicePages, ThePledgeMethodBringsUpItsPledgeGroupAsClientsMove)
{
    db().execute(QStringLiteral("Update Clients set Pledge_Method = 'I' where Person_ID = 1"));
    db().execute(QStringLiteral("Update Clients set Pledge_Method = 'T' where Person_ID = 3"));
    TFormClients& f = open(QStringLiteral("userW"));
    const auto amountShown = [&] {
        EXPECT_NE(f.controls().isVisible(PledgedAmountGroup), f.controls().isVisible(PledgeItemsGroup));
        return f.controls().isVisible(PledgedAmountGroup);
    };
    moveToPerson(1);
    EXPECT_FALSE(amountShown());
    moveToPerson(3);
    EXPECT_TRUE(amountShown());
    // Chosen in the record, the method brings its group up before the save.
    ASSERT_TRUE(f.setValue(QStringLiteral("PLEDGE_METHOD"), QStringLiteral("I")));
    EXPECT_FALSE(amountShown());
    f.cancel();
    EXPECT_TRUE(amountShown());
    moveToPerson(1);
    EXPECT_FALSE(amountShown());
}

TEST_P(ServicePages, CellsTypedIntoAFundingUseGoThroughItsRulesWhenTheRowIsLeft)
{
    TFormClients& f = openFunding();
    PageGridEditing& grids = f.pageGrids();
    const QString uses = QStringLiteral("QueryFundUses");
    QueryDataSet& set = page(uses);

    // The coded columns offer their captions and store their codes.
    QStringList methods;
    for (const ClientListEntry& e : grids.choices(uses, QStringLiteral("Method_Text")))
        methods.append(e.text);
    EXPECT_EQ(methods, (QStringList{QString(), "Time Period", "Meals or Meal Items"}));
    const QList<ClientListEntry> sources = grids.choices(uses, QStringLiteral("Funding_Source"));
    ASSERT_EQ(sources.size(), 3);
    EXPECT_EQ(sources[1].value.toString(), "MOW");
    EXPECT_EQ(sources[1].text, "Source MOW (MOW)");

    ASSERT_TRUE(f.run(cmd::AddFunding));
    const int first = grids.currentRow(uses);
    ASSERT_TRUE(grids.setCell(uses, first, QStringLiteral("Funding_Source"), QStringLiteral("MOW")));
    ASSERT_TRUE(grids.setCell(uses, first, QStringLiteral("Sunday"), false));
    EXPECT_EQ(set.fieldValue(u"Funding_Source").toString(), "Source MOW");
    ASSERT_TRUE(grids.postRow(uses));
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Fund_CD = 'MOW' and Person_ID = 1 "
                                   "and Sunday = False and Monday = True")),
              1);

    // A second source on the same days: leaving the row is refused with the
    // rule's words, and the row stays current with what was typed.
    ui.clear();
    ASSERT_TRUE(f.run(cmd::AddFunding));
    const int second = grids.currentRow(uses);
    ASSERT_NE(second, first);
    ASSERT_TRUE(grids.setCell(uses, second, QStringLiteral("Funding_Source"), QStringLiteral("T3")));
    EXPECT_FALSE(grids.moveTo(uses, first));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});
    EXPECT_EQ(grids.currentRow(uses), second);
    EXPECT_EQ(set.state(), DataSet::State::Insert);
    EXPECT_EQ(set.fieldValue(u"Fund_CD").toString(), "T3");
    // Typing into another row is refused the same way.
    ui.clear();
    EXPECT_FALSE(grids.setCell(uses, first, QStringLiteral("Monday"), false));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});

    // Sunday alone is free; the time method then wants its rate and period.
    for (const Weekday& d : weekdays())
        ASSERT_TRUE(grids.setCell(uses, second, d.column, d.column == QLatin1String("Sunday")));
    ASSERT_TRUE(grids.setCell(uses, second, QStringLiteral("Method_Text"), QStringLiteral("T")));
    ASSERT_TRUE(grids.isEditable(uses, second, QStringLiteral("Reimbursement_Rate")));
    ui.clear();
    EXPECT_FALSE(grids.postRow(uses));
    ASSERT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).size(), 1);
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning).front().contains(QStringLiteral("Period blank")));
    ASSERT_TRUE(grids.setCell(uses, second, QStringLiteral("Period_Text"), QStringLiteral("D")));
    ASSERT_TRUE(grids.setCell(uses, second, QStringLiteral("Reimbursement_Rate"), 7.25));
    ASSERT_TRUE(grids.moveTo(uses, first));
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Fund_CD = 'T3' and Sunday = True and "
                                   "Reimbursement_Method = 'T' and Reimbursement_Period = 'D' and "
                                   "Reimbursement_Rate = 7.25")),
              1);
    EXPECT_EQ(set.state(), DataSet::State::Browse);

    // The client's own rate: a zero amount is refused and keeps the row.
    ASSERT_TRUE(f.run(cmd::AddItemRate));
    const QString rates = QStringLiteral("QueryClientSpecificFundingRates");
    const int rate = grids.currentRow(rates);
    ASSERT_GE(rate, 0);
    EXPECT_FALSE(grids.isEditable(rates, rate, QStringLiteral("Created_By")));
    ASSERT_TRUE(grids.setCell(rates, rate, QStringLiteral("Unit"), QStringLiteral("L")));
    ui.clear();
    EXPECT_FALSE(grids.postRow(rates));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::zeroRateText()});
    ASSERT_TRUE(grids.setCell(rates, rate, QStringLiteral("Amount"), 3.5));
    ASSERT_TRUE(grids.postRow(rates));
    EXPECT_EQ(count(QStringLiteral("select count(*) from Pricing where Person_ID = 1 and Unit = 'L' and "
                                   "Amount = 3.5 and Method = 'F'")),
              1);
    EXPECT_EQ(grids.shownValue(rates, grids.currentRow(rates), QStringLiteral("Unit")).toString(), "Lunches");
}

TEST_P(ServicePages, AnApplicationsStatusTypedInItsCellWritesItsHistory)
{
    TFormClients& f = open(QStringLiteral("userW"));
    moveToPerson(1);
    f.changePage(client_page::ClientServices);
    ASSERT_TRUE(f.run(cmd::AddApplication));
    PageGridEditing& grids = f.pageGrids();
    const QString apps = QStringLiteral("QueryServiceApps");
    QStringList statuses;
    for (const ClientListEntry& e : grids.choices(apps, QStringLiteral("Status_Text")))
        statuses.append(e.text);
    EXPECT_EQ(statuses, (QStringList{QString(), "In Process", "Pending", "Accepted", "Denied", "Cancelled",
                                     "Wait-Listed"}));
    const int row = grids.currentRow(apps);
    ASSERT_TRUE(grids.setCell(apps, row, QStringLiteral("Service"), 1));
    ASSERT_TRUE(grids.setCell(apps, row, QStringLiteral("Status_Text"), QStringLiteral("A")));
    ASSERT_TRUE(grids.setCell(apps, row, QStringLiteral("App_Date"), QDate(2024, 3, 4)));
    EXPECT_EQ(page(apps).fieldValue(u"Status_Text").toString(), "Accepted");
    ASSERT_TRUE(grids.postRow(apps));
    EXPECT_EQ(count(QStringLiteral("select count(*) from ServiceApps where Person_ID = 1 and App_Status = "
                                   "'A' and Service_ID = 1 and App_Date = '2024-03-04'")),
              1);
    EXPECT_EQ(events(1).last(), "Service App created with status of Approved.");
    ASSERT_TRUE(grids.setCell(apps, row, QStringLiteral("Status_Text"), QStringLiteral("D")));
    ASSERT_TRUE(grids.postRow(apps));
    EXPECT_EQ(events(1).last(), "App status changed from Approved to Denied.");
}

TEST_P(ServicePages, AReadOnlyUserTypesIntoNoCell)
{
    insertRow(db(), QStringLiteral("FundUses"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
               {QStringLiteral("Reimbursement_Method"), QStringLiteral("I")}});
    TFormClients& f = open(QStringLiteral("userR"));
    moveToPerson(1);
    f.changePage(client_page::FundingBilling);
    PageGridEditing& grids = f.pageGrids();
    const QString uses = QStringLiteral("QueryFundUses");
    ASSERT_EQ(page(uses).recordCount(), 1);
    EXPECT_FALSE(grids.isEditable(uses, 0, QStringLiteral("Monday")));
    EXPECT_FALSE(grids.setCell(uses, 0, QStringLiteral("Monday"), true));
    EXPECT_EQ(count(QStringLiteral("select count(*) from FundUses where Monday = True")), 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, ServicePages, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
