// The rules as hooks of the Clients data set: the household question and
// migrating to a member, the hooks after a failing step, the filter, the
// alternate address, the calculated fields, and two workstations on one
// client.

#include "ClientRulesFixture.h"

#include "MessageError.h"
#include "dataset/Abort.h"
#include "dataset/RecordLocks.h"
#include "rules/AlternateAddressEditor.h"

#include <functional>
#include <stdexcept>
#include <utility>

using namespace kb;
using namespace kb::test;

namespace {

const QString HouseholdQuestion =
    QStringLiteral("A delivery change has been made that may have an impact on \r\nthe other household "
                   "members. You may want to "
                   "compare the \r\nstatus, start/stop dates, delivery days, routes and stops of this "
                   "\r\nclient with the other "
                   "household members.\r\n\r\nDo you want to see the list of other household members?");

class ClientRulesTest : public ClientRulesFixture
{
protected:
    // Household 5 of clients 1, 2 and 3; client 4 lives alone.
    void addHousehold()
    {
        insertRow(
            db(), QStringLiteral("Households"),
            {{QStringLiteral("Household_ID"), 5}, {QStringLiteral("Household_Name"), QStringLiteral("Elm")}});
        for (int person : {1, 2, 3}) {
            addClient(person, {{QStringLiteral("Household_ID"), 5},
                               {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                               {QStringLiteral("Def_Stop"), 10.0 + person / 10.0}});
            insertRow(db(), QStringLiteral("Household_Members"),
                      {{QStringLiteral("Household_ID"), 5}, {QStringLiteral("Person_ID"), person}});
        }
        addClient(4);
    }
    int householdQuestions() const { return int(questions().count(HouseholdQuestion)); }
};

TEST_P(ClientRulesTest, TheHouseholdQuestionComesExactlyWhenADeliveryChangeConcernsTheHousehold)
{
    addHousehold();
    // A change outside the delivery columns asks nothing.
    save(1, {{QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    EXPECT_EQ(householdQuestions(), 0);
    // A delivery change does.
    save(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")}});
    EXPECT_EQ(householdQuestions(), 1);
    EXPECT_EQ(dialogs().householdMembersShown, 0);
    // Editing the next member right after the first asks nothing.
    save(2, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")}});
    EXPECT_EQ(householdQuestions(), 1);
    // A person without a household never sees it.
    save(4, {{QStringLiteral("Def_Rte"), QStringLiteral("R9")}, {QStringLiteral("Friday"), true}});
    EXPECT_EQ(householdQuestions(), 1);
    // Back on the first member of the household, it is asked again.
    save(1, {{QStringLiteral("Def_Stop"), 4.0}});
    EXPECT_EQ(householdQuestions(), 2);
    // And at every save of it while it stays the one edited, as the
    // settings still differ from those its edits began with.
    save(1, {{QStringLiteral("Phone"), QStringLiteral("555-0101")}});
    EXPECT_EQ(householdQuestions(), 3);
    // The third member is left alone: the household was told last about the first.
    save(3, {{QStringLiteral("Def_Rte"), QStringLiteral("R5")}});
    EXPECT_EQ(householdQuestions(), 3);

    // In another household: nothing changed asks nothing, and floats
    // compare exactly, so a stop moved by a hair is a change.
    insertRow(db(), QStringLiteral("Household_Members"),
              {{QStringLiteral("Household_ID"), 6}, {QStringLiteral("Person_ID"), 7}});
    insertRow(db(), QStringLiteral("Household_Members"),
              {{QStringLiteral("Household_ID"), 6}, {QStringLiteral("Person_ID"), 8}});
    addClient(7, {{QStringLiteral("Household_ID"), 6}, {QStringLiteral("Def_Stop"), 2.5}});
    addClient(8, {{QStringLiteral("Household_ID"), 6}});
    save(7, {{QStringLiteral("Phone"), QStringLiteral("555-0700")}});
    EXPECT_EQ(householdQuestions(), 3);
    save(7, {{QStringLiteral("Def_Stop"), 2.5 + 1e-9}});
    EXPECT_EQ(householdQuestions(), 4);
}

TEST_P(ClientRulesTest, YesShowsTheOtherMembersAndMigrateCarriesTheChangeOver)
{
    addHousehold();
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Service_Desc"), QStringLiteral("Hot")},
               {QStringLiteral("Default_Frequency"), QStringLiteral("O")}});
    db().execute(QStringLiteral("update Clients set Svcs_Used = 1, Stop_Dte = :D where Person_ID = 3"),
                 {{QStringLiteral("D"), QDate(2024, 12, 31)}});
    bool migrated = false;
    dialogs().onHouseholdMembers = [&](TFormShowHouseholdMembers& form) {
        ASSERT_EQ(form.members().size(), 2);
        EXPECT_EQ(form.members()[0].name, "First2 Last2");
        EXPECT_EQ(form.members()[1].personId, 3);
        EXPECT_EQ(form.members()[1].service, "Hot");
        EXPECT_EQ(form.members()[1].status, "Active");
        EXPECT_EQ(form.members()[1].days, "MoWe");
        EXPECT_EQ(form.members()[1].frequency, "Every Week");
        form.setCurrent(1);
        ASSERT_TRUE(form.canMigrate());
        ui().answerNext(Answer::Yes); // the delivery days
        migrated = form.ActionMigrate();
        EXPECT_EQ(form.members()[1].days, "TuTh");
        // The list stands on the member, the Clients set back on the client afterwards.
        EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 3);
    };
    ui().answerNext(Answer::Yes);
    save(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R7")},
             {QStringLiteral("Mon_Rte"), QStringLiteral("R8")},
             {QStringLiteral("Def_Stop"), 3.5},
             {QStringLiteral("Monday"), false},
             {QStringLiteral("Wednesday"), false},
             {QStringLiteral("Tuesday"), true},
             {QStringLiteral("Thursday"), true},
             {QStringLiteral("Ongoing_Frequency"), QStringLiteral("O")}});
    EXPECT_TRUE(migrated);
    EXPECT_EQ(dialogs().householdMembersShown, 1);
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 1);
    EXPECT_EQ(ui().texts(ScriptedUserInterface::Kind::Information),
              QStringList{"Successfully migrated the delivery information to First3 Last3"});
    EXPECT_TRUE(questions().contains(QStringLiteral("Should the delivery days be migrated?")));

    // The member now holds the client's settings as saved, an empty stop
    // date included, and its own save went through the rules.
    EXPECT_EQ(stored(3, QStringLiteral("Def_Rte")).toString(), "R7");
    EXPECT_EQ(stored(3, QStringLiteral("Mon_Rte")).toString(), "R8");
    EXPECT_EQ(stored(3, QStringLiteral("Def_Stop")).toDouble(), 3.5);
    EXPECT_EQ(stored(3, QStringLiteral("Ongoing_Frequency")).toString(), "O");
    EXPECT_TRUE(stored(3, QStringLiteral("Tuesday")).toBool());
    EXPECT_FALSE(stored(3, QStringLiteral("Monday")).toBool());
    EXPECT_TRUE(stored(3, QStringLiteral("Stop_Dte")).isNull());
    EXPECT_TRUE(stored(3, QStringLiteral("Svcs_Used")).isNull());
    EXPECT_EQ(history(3),
              (QStringList{"Changed from Hot to unnamed service", "Default rte chgd frm R1 to R7",
                           "Deliv Days chgd frm MoWe to TuTh", "Stop date of 12/31/2024 removed."}));
    EXPECT_EQ(householdQuestions(), 1);
}

TEST_P(ClientRulesTest, AMigrationThatFailsCancelsTheMembersEditAndSaysWhy)
{
    addHousehold();
    db().execute(QStringLiteral("update Clients set DOB = :D where Person_ID = 2"),
                 {{QStringLiteral("D"), QDate(2030, 1, 1)}});
    dialogs().onHouseholdMembers = [&](TFormShowHouseholdMembers& form) {
        form.setCurrent(0);
        EXPECT_FALSE(form.ActionMigrate());
        EXPECT_EQ(clients().state(), DataSet::State::Browse);
        // A member gone from Clients cannot be located.
        db().execute(QStringLiteral("update Clients set Person_ID = 99 where Person_ID = 3"));
        clients().refresh();
        form.setCurrent(1);
        EXPECT_FALSE(form.ActionMigrate());
    };
    ui().answerNext(Answer::Yes);
    save(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R7")}});
    EXPECT_EQ(ui().texts(ScriptedUserInterface::Kind::Warning),
              QStringList{"You have entered a birth date that is in the future!"});
    EXPECT_EQ(
        ui().texts(ScriptedUserInterface::Kind::Error),
        QStringList{
            "For some reason the selected Household member could not be \r\nlocated in the Clients table."});
    EXPECT_EQ(stored(2, QStringLiteral("Def_Rte")).toString(), "R1");
    EXPECT_TRUE(history(2).isEmpty());
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 1);
}

TEST_P(ClientRulesTest, AFailingStepLeavesTheHooksOnAndTheRowAgreeingWithItsHistory)
{
    addClient(1, {{QStringLiteral("Status"), QStringLiteral("I")},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 2, 1)}});
    dialogs().onResetStartDate = [](TFormResetStartDate&) -> bool {
        throw std::runtime_error("The screen broke");
    };
    ui().answerNext(Answer::Yes);
    editClient(1);
    clients().setFieldValue(u"Status", QStringLiteral("A"));
    EXPECT_THROW(clients().post(), std::runtime_error);
    EXPECT_EQ(clients().state(), DataSet::State::Browse);
    for (auto hook : {DataSet::Hook::AfterEdit, DataSet::Hook::BeforePost, DataSet::Hook::AfterPost,
                      DataSet::Hook::BeforeCancel, DataSet::Hook::AfterCancel})
        EXPECT_TRUE(clients().isHookOn(hook));
    // The client is saved; the stop date that the steps would have cleared
    // is still there, and no row says it was cleared.
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "A");
    EXPECT_EQ(stored(1, QStringLiteral("Stop_Dte")).toDate(), QDate(2024, 2, 1));
    EXPECT_EQ(history(1), QStringList{"Status changed from Inactive to Active."});

    // The next save goes through the rules again.
    save(1, {{QStringLiteral("Status"), QStringLiteral("S")}});
    EXPECT_EQ(history(1).last(), "Status changed from Active to Stopped.");
    EXPECT_EQ(stored(1, QStringLiteral("Edit_Dte")).toDate(), today());
}

TEST_P(ClientRulesTest, AFilterIsOffWhileTheRowIsEditedAndBackAfterwards)
{
    addClient(1);
    addClient(2);
    addClient(3, {{QStringLiteral("Status"), QStringLiteral("I")}});
    clients().setFilter(
        [](const DataSet& set) { return set.fieldValue(u"STATUS").toString() == QLatin1String("A"); });
    clients().setFiltered(true);
    clients().open();
    ASSERT_EQ(clients().recordCount(), 2);
    editClient(2);
    EXPECT_FALSE(clients().isFiltered());
    EXPECT_EQ(clients().recordCount(), 3);
    clients().setFieldValue(u"Status", QStringLiteral("W"));
    clients().post();
    EXPECT_TRUE(clients().isFiltered());
    EXPECT_EQ(clients().recordCount(), 1);
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 1);

    editClient(1);
    EXPECT_FALSE(clients().isFiltered());
    clients().cancel();
    EXPECT_TRUE(clients().isFiltered());
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 1);
}

class OneAlternateAddress final : public AlternateAddressEditor
{
public:
    bool editing = false;
    int posted = 0;
    int cancelled = 0;
    bool isEditing() const override { return editing; }
    void post() override { ++posted, editing = false; }
    void cancel() override { ++cancelled, editing = false; }
};

TEST_P(ClientRulesTest, TheAlternateAddressIsSavedCancelledAndAskedAboutWithTheClient)
{
    addClient(1);
    addClient(2);
    OneAlternateAddress address;
    rules().setAlternateAddress(&address);
    editClient(1);
    address.editing = true;
    clients().setFieldValue(u"Phone", QStringLiteral("1"));
    clients().post();
    EXPECT_EQ(address.posted, 1);
    clients().edit();
    address.editing = true;
    clients().cancel();
    EXPECT_EQ(address.cancelled, 1);
    EXPECT_TRUE(questions().isEmpty());
    address.editing = true;
    ui().answerNext(Answer::Yes);
    clients().next();
    EXPECT_EQ(questions(), QStringList{"Save your changes to the Alternate Address?"});
    EXPECT_EQ(address.posted, 2);
    address.editing = true;
    clients().prior();
    EXPECT_EQ(address.cancelled, 2);
    rules().setAlternateAddress(nullptr);
}

TEST_P(ClientRulesTest, SuspendedIsCalculatedForActiveClientsFromTodaysSuspensions)
{
    addClient(1);
    addClient(2, {{QStringLiteral("Status"), QStringLiteral("S")}});
    addClient(3);
    for (int person : {1, 2})
        insertRow(db(), QStringLiteral("Suspends"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Stop_Dt"), QDate(2024, 3, 4)},
                   {QStringLiteral("Resume_Dt"), QDate(2024, 3, 7)}});
    // Resuming today ends the suspension today.
    insertRow(db(), QStringLiteral("Suspends"),
              {{QStringLiteral("Person_ID"), 3},
               {QStringLiteral("Stop_Dt"), QDate(2024, 3, 1)},
               {QStringLiteral("Resume_Dt"), today()}});
    clients().open();
    QStringList texts;
    for (clients().first(); !clients().eof(); clients().next())
        texts.append(clients().fieldValue(u"CalcSuspendedText").toString() + QLatin1Char('/') +
                     (clients().fieldValue(u"CalcSuspended").toBool() ? QStringLiteral("true")
                                                                      : QStringLiteral("false")));
    EXPECT_EQ(texts, (QStringList{"Suspended/true", "/false", "/false"}));
}

TEST_P(ClientRulesTest, DetachingPutsBackTheHooksThatWereThere)
{
    Workstation other(db(), data->clock());
    other.rules.detach();
    int posted = 0;
    other.clients.setHook(DataSet::Hook::AfterPost, [&](DataSet&) { ++posted; });
    other.rules.attach(other.clients);
    addClient(1);
    other.clients.open();
    ASSERT_TRUE(other.clients.locate(QStringLiteral("PERSON_ID"), 1));
    other.clients.edit();
    other.clients.setFieldValue(u"Status", QStringLiteral("W"));
    other.clients.post();
    EXPECT_EQ(posted, 1);
    EXPECT_EQ(history(1), QStringList{"Status changed from Active to Wait List."});
    other.rules.detach();
    other.clients.edit();
    other.clients.setFieldValue(u"Status", QStringLiteral("A"));
    other.clients.post();
    EXPECT_EQ(posted, 2);
    EXPECT_EQ(history(1).size(), 1);
    TableDataSet plain(db(), QStringLiteral("Clients"));
    plain.open();
    EXPECT_THROW(other.rules.attach(plain), MessageError) << "an open set without the calculated fields";
}

// A user at the second workstation who, asked whether to try again, waits
// until the first has saved and says Yes.
class WaitingUser final : public UserInterface
{
public:
    std::function<void()> meanwhile;
    QStringList questions;
    QStringList told;
    void information(const QString& text) override { told.append(text); }
    void warning(const QString& text) override { told.append(text); }
    void error(const QString& text) override { told.append(text); }
    Answer question(const QString& text, Buttons) override
    {
        questions.append(text);
        if (meanwhile) std::exchange(meanwhile, nullptr)();
        return Answer::Yes;
    }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

TEST_P(ClientRulesTest, TheSecondWorkstationIsToldOfTheLockAndLosesNothingOnceTheFirstPosts)
{
    addClient(1, {{QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    auto otherDb = data->openAnother();
    otherDb->recordLocks().setRetries(2, 10);
    WaitingUser user;
    SessionState session;
    session.userFullName = QStringLiteral("Second User");
    RecordServices services(*otherDb, user);
    TableDataSet second(*otherDb, QStringLiteral("Clients"));
    ClientRules rules(services, user, data->clock(), session);
    services.installErrorHooks(second);
    rules.attach(second);
    second.open();

    editClient(1);
    clients().setFieldValue(u"Status", QStringLiteral("S"));
    user.meanwhile = [&] { clients().post(); };

    ASSERT_TRUE(second.locate(QStringLiteral("PERSON_ID"), 1));
    second.edit();
    EXPECT_EQ(user.questions,
              QStringList{"The record you are trying to edit is currently locked, do you want to try "
                          "to edit this record again?"});
    EXPECT_EQ(user.told, QStringList{"The record you are trying to edit has been modified since it was last "
                                     "retrieved, the record will now be refreshed"});
    // The edit starts from the row as the first workstation saved it.
    EXPECT_EQ(second.fieldValue(u"Status").toString(), "S");
    second.setFieldValue(u"Phone", QStringLiteral("555-0199"));
    second.post();
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "S");
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), "555-0199");
    // Each save wrote what it changed, and nothing of the other's.
    EXPECT_EQ(history(1), (QStringList{"Status changed from Active to Stopped.", "Old Phone: 555-0100"}));
    rules.detach();
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientRulesTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace
