// The household screens' logic: the wizard, the members list with its
// access levels, the households list, and the jump to the head of a
// household, on real stores.

#include "ClientRulesFixture.h"

#include "households/ClientLocator.h"
#include "households/HeadOfHousehold.h"
#include "households/HouseholdActions.h"
#include "households/PendingClientEdit.h"
#include "households/RememberedRoles.h"
#include "households/TFormHouseholdMembers.h"
#include "households/TFormHouseholdWizard.h"
#include "households/TFormHouseholds.h"
#include "settings/SettingsFile.h"

namespace kb::test {

namespace {

using Step = TFormHouseholdWizard::Step;
using Choice = TFormHouseholdWizard::Choice;

class HouseholdScreens : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        for (int person : {1, 2, 3, 4})
            addClient(person);
        clients().open();
    }
    void standOn(int personId) { ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), personId)); }
    // A household with members as Person_ID:head, made by statements.
    qint64 household(const QString& name, const QList<QPair<int, bool>>& members)
    {
        insertRow(db(), QStringLiteral("Households"), {{QStringLiteral("Household_Name"), name}});
        const qint64 id =
            db().execute(QStringLiteral("select Household_ID from Households where Household_Name = :N"),
                         {{QStringLiteral("N"), name}})
                .value(0, 0)
                .toLongLong();
        for (const auto& [person, head] : members) {
            insertRow(db(), QStringLiteral("Household_Members"),
                      {{QStringLiteral("Household_ID"), id},
                       {QStringLiteral("Person_ID"), person},
                       {QStringLiteral("Head_of_Household"), head}});
            db().execute(QStringLiteral("update Clients set Household_ID = :H where Person_ID = :P"),
                         {{QStringLiteral("H"), id}, {QStringLiteral("P"), person}});
        }
        clients().refresh();
        return id;
    }
    qint64 householdOf(int person) { return stored(person, QStringLiteral("Household_ID")).toLongLong(); }
    int count(const QString& table)
    {
        return db().execute(QStringLiteral("select count(*) from ") + table).value(0, 0).toInt();
    }
    ResultSet memberRow(int person)
    {
        return db().execute(
            QStringLiteral("select Household_ID, Role, Head_of_Household, Create_Date, User from "
                           "Household_Members where Person_ID = :P"),
            {{QStringLiteral("P"), person}});
    }
    std::unique_ptr<TFormHouseholdMembers> membersOf(qint64 householdId, int person = 0)
    {
        return std::make_unique<TFormHouseholdMembers>(ws->services, ui(), ws->session, data->clock(),
                                                       clients(), householdId, person);
    }
};

} // namespace

TEST_P(HouseholdScreens, WizardMakesANewHouseholdAfterTheSaveQuestion)
{
    standOn(1);
    TFormHouseholdWizard wizard(ws->services, ui(), ws->session, data->clock(), clients());
    SettingsFile settings;
    settings.writeString(RememberedRoles::section(), QStringLiteral("Item0"), QStringLiteral("Aunt"));
    wizard.setSettings(&settings);
    EXPECT_EQ(wizard.roles(), QStringList{QStringLiteral("Aunt")});
    wizard.FormShow();
    // No household yet: the existing choice is not offered.
    EXPECT_FALSE(wizard.existingOffered());
    wizard.setChoice(Choice::ExistingHousehold);
    EXPECT_EQ(wizard.choice(), Choice::NewHousehold);
    EXPECT_EQ(wizard.name(), QStringLiteral("Last1 12 Elm Street"));
    EXPECT_FALSE(wizard.canFinish());
    wizard.next();
    wizard.next();
    ASSERT_EQ(wizard.step(), Step::Name);
    wizard.setName(QString());
    EXPECT_FALSE(wizard.canNext()); // a household needs a name
    wizard.setName(QStringLiteral("The Last1 home"));
    wizard.next();
    ASSERT_EQ(wizard.step(), Step::Role);
    wizard.setRole(QStringLiteral("Mother"));
    wizard.setHead(true);

    // The client is being edited: No to the question leaves everything as it was.
    clients().edit();
    clients().setFieldValue(u"PHONE", QStringLiteral("555-0101"));
    EXPECT_FALSE(wizard.Finish());
    EXPECT_EQ(questions(), QStringList{TFormHouseholdWizard::saveQuestion()});
    EXPECT_EQ(count(QStringLiteral("Households")), 0);
    EXPECT_EQ(wizard.roles(), QStringList{QStringLiteral("Aunt")}); // nothing joined, nothing kept
    EXPECT_EQ(clients().state(), DataSet::State::Edit);

    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(wizard.Finish());
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), QStringLiteral("555-0101"));
    const qint64 id = wizard.joinedHousehold();
    ASSERT_GT(id, 0);
    EXPECT_EQ(householdOf(1), id);
    EXPECT_EQ(clients().fieldValue(u"HOUSEHOLD_ID").toLongLong(), id);
    const ResultSet row = memberRow(1);
    ASSERT_EQ(row.rowCount(), 1);
    EXPECT_EQ(row.value(0, 0).toLongLong(), id);
    EXPECT_EQ(row.value(0, 1).toString(), QStringLiteral("Mother"));
    EXPECT_TRUE(row.value(0, 2).toBool());
    EXPECT_EQ(row.value(0, 3).toDate(), today());
    EXPECT_EQ(row.value(0, 4).toString(), QStringLiteral("Pat Tester"));
    EXPECT_EQ(
        db().execute(QStringLiteral("select Household_Name, User from Households")).value(0, 0).toString(),
        QStringLiteral("The Last1 home"));
    // The typed role is remembered for every screen that asks for one.
    EXPECT_EQ(wizard.roles(), (QStringList{QStringLiteral("Mother"), QStringLiteral("Aunt")}));
    EXPECT_EQ(RememberedRoles::read(settings), (QStringList{QStringLiteral("Mother"), QStringLiteral("Aunt")}));
    auto members = membersOf(id, 1);
    members->setSettings(&settings);
    EXPECT_EQ(members->roles(), (QStringList{QStringLiteral("Mother"), QStringLiteral("Aunt")}));

    // A client without name and address suggests "New Household".
    addClient(5, {{QStringLiteral("Last_Name"), QVariant()}, {QStringLiteral("Address1"), QVariant()}});
    clients().refresh();
    standOn(5);
    TFormHouseholdWizard unnamed(ws->services, ui(), ws->session, data->clock(), clients());
    unnamed.FormShow();
    EXPECT_EQ(unnamed.name(), QStringLiteral("New Household"));
    EXPECT_TRUE(unnamed.existingOffered());
}

TEST_P(HouseholdScreens, WizardJoinsAnExistingHouseholdOrSaysItCouldNot)
{
    const qint64 ames = household(QStringLiteral("Ames on Elm"), {{1, true}});
    household(QStringLiteral("Baker on Oak"), {{2, true}});
    standOn(3);
    TFormHouseholdWizard wizard(ws->services, ui(), ws->session, data->clock(), clients());
    wizard.FormShow();
    ASSERT_TRUE(wizard.existingOffered());
    wizard.next();
    wizard.setChoice(Choice::ExistingHousehold);
    wizard.next();
    ASSERT_EQ(wizard.step(), Step::Search);
    ASSERT_EQ(wizard.found().size(), 2); // every household before anything is typed
    wizard.search(QStringLiteral("ames"));
    ASSERT_EQ(wizard.found().size(), 1);
    EXPECT_EQ(wizard.chosenHousehold(), ames);
    wizard.search(QStringLiteral("nobody"));
    EXPECT_FALSE(wizard.canNext());
    wizard.search(QStringLiteral("Ames"));
    wizard.next();
    wizard.setRole(QStringLiteral("Son"));
    ASSERT_TRUE(wizard.Finish());
    EXPECT_EQ(householdOf(3), ames);
    EXPECT_FALSE(memberRow(3).value(0, 2).toBool());
    EXPECT_EQ(count(QStringLiteral("Households")), 2);

    // The household went while the wizard was open: told, nothing written.
    standOn(4);
    TFormHouseholdWizard late(ws->services, ui(), ws->session, data->clock(), clients());
    late.FormShow();
    late.next();
    late.setChoice(Choice::ExistingHousehold);
    late.next();
    late.search(QStringLiteral("Baker"));
    late.next();
    db().execute(QStringLiteral("delete from Households where Household_Name = 'Baker on Oak'"));
    EXPECT_FALSE(late.Finish());
    EXPECT_EQ(told(), QStringList{HouseholdActions::notCreatedText()});
    EXPECT_EQ(householdOf(4), 0);
    EXPECT_EQ(memberRow(4).rowCount(), 0);
}

TEST_P(HouseholdScreens, MembersFollowTheAccessLevel)
{
    const qint64 id = household(QStringLiteral("Ames on Elm"), {{1, true}, {2, false}});
    for (const char* level : {"R", "O"}) {
        ws->session.accessLevel = QString::fromLatin1(level);
        auto members = membersOf(id, 2);
        ASSERT_TRUE(members->FormShow()) << level;
        EXPECT_FALSE(members->editingAllowed());
        EXPECT_EQ(members->members().recordCount(), 2);
        EXPECT_EQ(members->members().fieldValue(u"FullName").toString(), QStringLiteral("First2 Last2"));
        EXPECT_FALSE(members->ActionAddMember());
        EXPECT_FALSE(members->ActionRemoveSelected());
        EXPECT_FALSE(members->setRole(QStringLiteral("Lodger")));
        EXPECT_TRUE(members->FormClose());
    }
    EXPECT_TRUE(questions().isEmpty());

    ws->session.accessLevel = QStringLiteral("Z");
    auto unknown = membersOf(id);
    EXPECT_FALSE(unknown->FormShow());
    EXPECT_EQ(told(), QStringList{TFormHouseholdMembers::terminateText()});
    EXPECT_EQ(ui().terminationRequests(), 1);
    EXPECT_EQ(householdOf(1), id);
}

TEST_P(HouseholdScreens, MembersAreAddedAndRemovedInStepWithTheirClients)
{
    const qint64 id = household(QStringLiteral("Ames on Elm"), {{1, true}});
    const qint64 other = household(QStringLiteral("Baker on Oak"), {{4, true}});
    SettingsFile settings;
    settings.writeString(RememberedRoles::section(), QStringLiteral("Item0"),
                         QStringLiteral("Aunt"));
    auto members = membersOf(id, 1);
    members->setSettings(&settings);
    ASSERT_TRUE(members->FormShow());
    EXPECT_EQ(members->windowCaption(), QStringLiteral("Ames on Elm household"));
    EXPECT_EQ(members->roles(), QStringList{QStringLiteral("Aunt")});

    // Adding a person of another household is refused and leaves the row to correct.
    ASSERT_TRUE(members->ActionAddMember());
    const QList<TFormHouseholdMembers::Candidate> found = members->findPeople(QStringLiteral("last"));
    EXPECT_EQ(found.size(), 4);
    ASSERT_TRUE(members->setPerson(4));
    EXPECT_FALSE(members->post());
    EXPECT_EQ(told(), QStringList{HouseholdActions::alreadyMemberText()});
    EXPECT_EQ(members->members().state(), DataSet::State::Insert);
    EXPECT_EQ(householdOf(4), other);

    // A person in no household joins, with the client's Household_ID.
    ASSERT_TRUE(members->setPerson(3));
    ASSERT_TRUE(members->setRole(QStringLiteral("Son")));
    ASSERT_TRUE(members->post());
    EXPECT_EQ(householdOf(3), id);
    ResultSet row = memberRow(3);
    EXPECT_EQ(row.value(0, 1).toString(), QStringLiteral("Son"));
    EXPECT_EQ(row.value(0, 3).toDate(), today());
    EXPECT_EQ(row.value(0, 4).toString(), QStringLiteral("Pat Tester"));
    EXPECT_EQ(members->roles(), (QStringList{QStringLiteral("Son"), QStringLiteral("Aunt")}));
    EXPECT_EQ(settings.readString(RememberedRoles::section(), QStringLiteral("Item0")),
              QStringLiteral("Son"));

    // The same person twice is refused.
    ui().clear();
    ASSERT_TRUE(members->ActionAddMember());
    ASSERT_TRUE(members->setPerson(3));
    EXPECT_FALSE(members->post());
    EXPECT_EQ(told(), QStringList{TFormHouseholdMembers::alreadyHereText()});
    members->cancel();

    // Removal asks; No keeps the member, Yes clears the client's link too.
    ASSERT_TRUE(members->members().locate(QStringLiteral("Person_ID"), 3));
    EXPECT_FALSE(members->ActionRemoveSelected());
    EXPECT_EQ(householdOf(3), id);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(members->ActionRemoveSelected());
    EXPECT_EQ(householdOf(3), 0);
    EXPECT_EQ(memberRow(3).rowCount(), 0);

    // The current client removed while being edited: their edit is saved first.
    ui().clear();
    standOn(1);
    clients().edit();
    clients().setFieldValue(u"PHONE", QStringLiteral("555-0199"));
    ASSERT_TRUE(members->members().locate(QStringLiteral("Person_ID"), 1));
    ui().answerNext(Answer::Yes);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(members->ActionRemoveSelected());
    EXPECT_EQ(questions(), (QStringList{TFormHouseholdMembers::removeQuestion(),
                                        TFormHouseholdMembers::removeEditQuestion()}));
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), QStringLiteral("555-0199"));
    EXPECT_EQ(householdOf(1), 0);
    EXPECT_TRUE(clients().fieldValue(u"HOUSEHOLD_ID").isNull());

    // A member row left without a person goes when the screen closes.
    ASSERT_TRUE(members->ActionAddMember());
    ASSERT_TRUE(members->setRole(QStringLiteral("Guest")));
    ASSERT_TRUE(members->post());
    EXPECT_EQ(count(QStringLiteral("Household_Members")), 2);
    ASSERT_TRUE(members->FormClose());
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Household_Members where Household_ID = :H"),
                           {{QStringLiteral("H"), id}})
                  .value(0, 0)
                  .toInt(),
              0);
}

TEST_P(HouseholdScreens, HouseholdsListMakesAddsAndDeletes)
{
    const qint64 ames = household(QStringLiteral("Ames on Elm"), {{1, true}, {2, false}});
    standOn(2);
    TFormHouseholds form(ws->services, ui(), ws->session, data->clock(), clients());
    QList<QPair<qint64, qint64>> opened;
    form.setMembersScreen([&](qint64 h, qint64 p) { opened.append({h, p}); });
    form.FormShow();
    EXPECT_EQ(form.currentHousehold(), ames); // the client's own household
    EXPECT_EQ(form.members().recordCount(), 2);
    EXPECT_EQ(form.members().fieldValue(u"FullName").toString(), QStringLiteral("First1 Last1"));

    // A member can't be added to a second household.
    EXPECT_FALSE(form.ActionAddPersonTo());
    EXPECT_EQ(told(), QStringList{HouseholdActions::alreadyMemberText()});

    standOn(3);
    const qint64 made = form.ActionNewHousehold();
    ASSERT_GT(made, 0);
    EXPECT_EQ(form.currentHouseholdName(), QStringLiteral("Last3 12 Elm Street"));
    ASSERT_TRUE(form.ActionAddPersonTo());
    EXPECT_EQ(householdOf(3), made);
    EXPECT_TRUE(memberRow(3).value(0, 1).isNull()); // no role yet
    EXPECT_EQ(opened, (QList<QPair<qint64, qint64>>{{made, 3}}));
    EXPECT_EQ(form.members().recordCount(), 1);
    ASSERT_TRUE(form.renameHousehold(QStringLiteral("Cole and Dunn")));
    EXPECT_EQ(form.currentHouseholdName(), QStringLiteral("Cole and Dunn"));
    EXPECT_TRUE(form.search(QStringLiteral("ames")));
    EXPECT_EQ(form.currentHousehold(), ames);

    // Deleting asks, and clears every member's link, shown or not.
    EXPECT_FALSE(form.ActionDeleteHousehold());
    EXPECT_EQ(householdOf(1), ames);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(form.ActionDeleteHousehold());
    EXPECT_EQ(householdOf(1), 0);
    EXPECT_EQ(householdOf(2), 0);
    EXPECT_EQ(householdOf(3), made);
    EXPECT_EQ(count(QStringLiteral("Households")), 1);
    EXPECT_EQ(count(QStringLiteral("Household_Members")), 1);

    // Read-only users only look.
    ws->session.accessLevel = QStringLiteral("R");
    TFormHouseholds looking(ws->services, ui(), ws->session, data->clock(), clients());
    looking.FormShow();
    EXPECT_TRUE(looking.readOnly());
    EXPECT_EQ(looking.ActionNewHousehold(), 0);
    EXPECT_FALSE(looking.ActionDeleteHousehold());
    EXPECT_EQ(count(QStringLiteral("Households")), 1);
}

TEST_P(HouseholdScreens, JumpToHeadOfHousehold)
{
    household(QStringLiteral("Ames on Elm"), {{1, false}, {2, true}, {3, false}});
    ClientLocator locator(clients(), ui());
    bool windowFilterOff = false;
    locator.setFilterOff([&] {
        windowFilterOff = true;
        clients().setFiltered(false);
    });
    // A filter hides the head: the user is told and it goes.
    clients().setFilter([](const DataSet& set) { return set.fieldValue(u"PERSON_ID").toInt() != 2; });
    clients().setFiltered(true);
    standOn(3);
    ASSERT_TRUE(HeadOfHousehold::jump(db(), clients(), ui(), locator));
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 2);
    EXPECT_TRUE(windowFilterOff);
    EXPECT_FALSE(clients().isFiltered());
    EXPECT_EQ(told(), QStringList{HeadOfHousehold::filterNotice()});

    // The head is looked for among the others: the head has none.
    ui().clear();
    EXPECT_FALSE(HeadOfHousehold::jump(db(), clients(), ui(), locator));
    EXPECT_EQ(told(), QStringList{HeadOfHousehold::noHeadText()});
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 2);

    ui().clear();
    standOn(4);
    EXPECT_FALSE(HeadOfHousehold::jump(db(), clients(), ui(), locator));
    EXPECT_EQ(told(), QStringList{HeadOfHousehold::notInHouseholdText()});
}

TEST_P(HouseholdScreens, LocateSelectedMemberMovesTheClientsOrSaysItCouldNot)
{
    const qint64 id = household(QStringLiteral("Ames on Elm"), {{1, true}, {3, false}});
    ClientLocator locator(clients(), ui());
    standOn(4);
    insertRow(db(), QStringLiteral("Household_Members"),
              {{QStringLiteral("Household_ID"), id}, {QStringLiteral("Person_ID"), 99}});
    auto members = membersOf(id, 3);
    members->setLocator(&locator);
    ASSERT_TRUE(members->FormShow());
    clients().setFilter([](const DataSet& set) { return set.fieldValue(u"PERSON_ID").toInt() == 4; });
    clients().setFiltered(true);
    ASSERT_TRUE(members->ActionLocateSelected());
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 3);
    EXPECT_EQ(told(), QStringList{TFormHouseholdMembers::locateFilterNotice()});

    // A member row whose person is not among the clients.
    ui().clear();
    ASSERT_TRUE(members->members().locate(QStringLiteral("Person_ID"), 99));
    EXPECT_FALSE(members->ActionLocateSelected());
    EXPECT_EQ(told(), QStringList{TFormHouseholdMembers::locateFailedText()});
    EXPECT_EQ(clients().fieldValue(u"PERSON_ID").toInt(), 3);
}

TEST_P(HouseholdScreens, PendingClientEditBeforeAScreen)
{
    standOn(1);
    EXPECT_TRUE(
        PendingClientEdit::settleBeforeScreen(clients(), ui(), PendingClientEdit::beforeWizardQuestion()));
    EXPECT_TRUE(questions().isEmpty()); // nothing to settle
    clients().edit();
    clients().setFieldValue(u"PHONE", QStringLiteral("555-0111"));
    ui().answerNext(Answer::Cancel);
    EXPECT_FALSE(
        PendingClientEdit::settleBeforeScreen(clients(), ui(), PendingClientEdit::beforeMembersQuestion()));
    EXPECT_EQ(clients().state(), DataSet::State::Edit);
    ui().answerNext(Answer::No);
    EXPECT_TRUE(PendingClientEdit::settleBeforeScreen(clients(), ui(),
                                                      PendingClientEdit::beforeHouseholdsQuestion()));
    EXPECT_EQ(clients().state(), DataSet::State::Browse);
    EXPECT_TRUE(stored(1, QStringLiteral("Phone")).isNull());
    clients().edit();
    clients().setFieldValue(u"PHONE", QStringLiteral("555-0112"));
    ui().answerNext(Answer::Yes);
    EXPECT_TRUE(
        PendingClientEdit::settleBeforeScreen(clients(), ui(), PendingClientEdit::beforeWizardQuestion()));
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), QStringLiteral("555-0112"));
}

INSTANTIATE_TEST_SUITE_P(Stores, HouseholdScreens,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL), storeParamName);

} // namespace kb::test
