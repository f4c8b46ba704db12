// The household screens offscreen, over real presenters: the wizard walks
// its pages to a new household, the members screen adds a member from its
// person search and hides its editing commands from read-only users, and
// the households list shows the chosen household's members. With
// KB_SCREENSHOTS set, each view is also saved there as a picture.

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"

#include "clients/HouseholdMembersView.h"
#include "clients/HouseholdWizardView.h"
#include "clients/HouseholdsView.h"
#include "dataset/TableDataSet.h"
#include "households/RememberedRoles.h"
#include "households/TFormHouseholdMembers.h"
#include "households/TFormHouseholdWizard.h"
#include "households/TFormHouseholds.h"
#include "records/RecordServices.h"
#include "rules/ClientRules.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;

namespace {

void screenshot(QWidget& view, const QString& name)
{
    const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
    if (!dir.isEmpty()) view.grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

class HouseholdScreensViewTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { test::ensureWidgetApplication(); }

    void SetUp() override
    {
        session.userFullName = QStringLiteral("Pat Tester");
        session.accessLevel = QStringLiteral("W");
        const char* const names[][3] = {{"Ann", "Ames", "12 Elm Street"},
                                        {"Bo", "Ames", "12 Elm Street"},
                                        {"Cy", "Cole", "40 Oak Avenue"}};
        for (int person = 1; person <= 3; ++person)
            test::insertRow(data.db(), QStringLiteral("Clients"),
                            {{QStringLiteral("Person_ID"), person},
                             {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(person)},
                             {QStringLiteral("First_Name"), QString::fromLatin1(names[person - 1][0])},
                             {QStringLiteral("Last_Name"), QString::fromLatin1(names[person - 1][1])},
                             {QStringLiteral("Address1"), QString::fromLatin1(names[person - 1][2])},
                             {QStringLiteral("Status"), QStringLiteral("A")}});
        rules.attach(clients);
        clients.open();
    }
    void TearDown() override
    {
        clients.close();
        rules.detach();
    }
    qint64 householdOf(int person)
    {
        return data.db()
            .execute(QStringLiteral("select Household_ID from Clients where Person_ID = :P"),
                     {{QStringLiteral("P"), person}})
            .value(0, 0)
            .toLongLong();
    }

    QTemporaryDir folder;
    SettingsFile settings{folder.path()};
    test::TempDataDir data;
    test::ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
    SessionState session;
    TableDataSet clients{data.db(), QStringLiteral("Clients")};
    ClientRules rules{services, ui, data.clock(), session};
};

} // namespace

TEST_F(HouseholdScreensViewTest, TheWizardWalksToANewHousehold)
{
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), 1));
    TFormHouseholdWizard wizard(services, ui, session, data.clock(), clients);
    settings.writeString(RememberedRoles::section(), QStringLiteral("Item0"), QStringLiteral("Mother"));
    wizard.setSettings(&settings);
    ui::HouseholdWizardView view(wizard, services, ui, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Household Wizard");
    EXPECT_FALSE(view.backButton()->isEnabled());
    view.nextButton()->click();
    EXPECT_FALSE(view.existingChoice()->isEnabled()); // no household yet
    EXPECT_TRUE(view.newChoice()->isChecked());
    screenshot(view, QStringLiteral("household-wizard-choice"));
    view.nextButton()->click();
    EXPECT_EQ(view.nameEdit()->text(), "Ames 12 Elm Street");
    screenshot(view, QStringLiteral("household-wizard-name"));
    view.nextButton()->click();
    EXPECT_TRUE(view.finishButton()->isEnabled());
    EXPECT_FALSE(view.nextButton()->isEnabled());
    view.role()->setCurrentText(QStringLiteral("Mother"));
    view.head()->setChecked(true);
    screenshot(view, QStringLiteral("household-wizard-role"));
    view.finishButton()->click();
    EXPECT_EQ(view.result(), QDialog::Accepted);
    EXPECT_GT(householdOf(1), 0);
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select Role, Head_of_Household from Household_Members"))
                  .value(0, 0),
              "Mother");

    // A second client finds it among the existing households.
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), 2));
    TFormHouseholdWizard second(services, ui, session, data.clock(), clients);
    ui::HouseholdWizardView secondView(second, services, ui, settings);
    secondView.show();
    secondView.nextButton()->click();
    ASSERT_TRUE(secondView.existingChoice()->isEnabled());
    secondView.existingChoice()->setChecked(true);
    secondView.nextButton()->click();
    secondView.searchEdit()->setText(QStringLiteral("am"));
    emit secondView.searchEdit()->textEdited(QStringLiteral("am"));
    ASSERT_EQ(secondView.found()->count(), 1);
    screenshot(secondView, QStringLiteral("household-wizard-search"));
    secondView.nextButton()->click();
    secondView.finishButton()->click();
    EXPECT_EQ(householdOf(2), householdOf(1));
}

TEST_F(HouseholdScreensViewTest, MembersAreAddedFromThePersonSearch)
{
    test::insertRow(data.db(), QStringLiteral("Households"),
                    {{QStringLiteral("Household_ID"), 5},
                     {QStringLiteral("Household_Name"), QStringLiteral("Ames home")}});
    for (int person : {1, 2})
        test::insertRow(
            data.db(), QStringLiteral("Household_Members"),
            {{QStringLiteral("Household_ID"), 5},
             {QStringLiteral("Person_ID"), person},
             {QStringLiteral("Role"), person == 1 ? QStringLiteral("Mother") : QStringLiteral("Son")},
             {QStringLiteral("Head_of_Household"), person == 1}});
    {
        TFormHouseholdMembers members(services, ui, session, data.clock(), clients, 5, 2);
        members.setSettings(&settings);
        ASSERT_TRUE(members.FormShow());
        ui::HouseholdMembersView view(members, services, ui, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Ames home household");
        ASSERT_EQ(view.members()->rowCount(), 2);
        EXPECT_EQ(view.members()->item(0, 0)->text(), "Ann Ames");
        EXPECT_EQ(view.members()->item(0, 3)->text(), "Yes");
        EXPECT_EQ(view.role()->currentText(), "Son"); // stands on the client it was given
        view.button(QStringLiteral("&Add Member"))->click();
        EXPECT_TRUE(view.personSearch()->isEnabled());
        view.personSearch()->setText(QStringLiteral("col"));
        emit view.personSearch()->textEdited(QStringLiteral("col"));
        ASSERT_EQ(view.people()->count(), 1);
        view.role()->setCurrentText(QStringLiteral("Lodger"));
        screenshot(view, QStringLiteral("household-members-adding"));
        view.button(QStringLiteral("&Save Member"))->click();
        EXPECT_EQ(view.members()->rowCount(), 3);
        screenshot(view, QStringLiteral("household-members"));
        view.accept();
    }
    EXPECT_EQ(householdOf(3), 5);

    // Read-only users see the members and the locate command only.
    session.accessLevel = QStringLiteral("R");
    TFormHouseholdMembers readOnly(services, ui, session, data.clock(), clients, 5, 0);
    ASSERT_TRUE(readOnly.FormShow());
    ui::HouseholdMembersView view(readOnly, services, ui, settings);
    view.show();
    EXPECT_FALSE(view.button(QStringLiteral("&Add Member"))->isVisible());
    EXPECT_FALSE(view.button(QStringLiteral("&Remove Selected"))->isVisible());
    EXPECT_FALSE(view.role()->isVisible());
    EXPECT_TRUE(view.button(QStringLiteral("&Locate Selected Household Member"))->isVisible());
    screenshot(view, QStringLiteral("household-members-read-only"));
}

TEST_F(HouseholdScreensViewTest, TheHouseholdsListShowsTheChosenMembers)
{
    for (const auto& [id, name] : {std::pair{5, "Ames home"}, std::pair{6, "Baker on Oak"}})
        test::insertRow(data.db(), QStringLiteral("Households"),
                        {{QStringLiteral("Household_ID"), id},
                         {QStringLiteral("Household_Name"), QString::fromLatin1(name)}});
    test::insertRow(data.db(), QStringLiteral("Household_Members"),
                    {{QStringLiteral("Household_ID"), 6}, {QStringLiteral("Person_ID"), 3}});
    data.db().execute(QStringLiteral("update Clients set Household_ID = 6 where Person_ID = 3"));
    clients.refresh();
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), 3));
    TFormHouseholds households(services, ui, session, data.clock(), clients);
    int membersOpened = 0;
    households.setMembersScreen([&](qint64, qint64) { ++membersOpened; });
    ui::HouseholdsView view(households, services, ui, settings);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Households Maintenance");
    ASSERT_EQ(view.households()->rowCount(), 2);
    EXPECT_EQ(view.households()->currentRow(), 1); // the client's own household
    ASSERT_EQ(view.members()->rowCount(), 1);
    EXPECT_EQ(view.members()->item(0, 0)->text(), "Cy Cole");
    screenshot(view, QStringLiteral("households"));
    view.households()->setCurrentCell(0, 0);
    EXPECT_EQ(view.members()->rowCount(), 0);
    view.button(QStringLiteral("&Edit Members"))->click();
    EXPECT_EQ(membersOpened, 1);
}
