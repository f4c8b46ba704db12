// The screens of a client's save, offscreen, over real presenters: the
// household list migrates the chosen member, the reset screen hands back
// the dates on OK only, and both keep their places in the per-user ini.
// With KB_SCREENSHOTS set, each view is also saved there as a picture.

#include "InsertRow.h"
#include "ResetStartDateView.h"
#include "ScriptedUserInterface.h"
#include "ShowHouseholdMembersView.h"
#include "TempDataDir.h"

#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientDialogs.h"
#include "rules/ClientRules.h"
#include "screens/TFormResetStartDate.h"
#include "screens/TFormShowHouseholdMembers.h"
#include "session/SessionState.h"
#include "settings/SettingsFile.h"

#include <QApplication>
#include <QDateEdit>
#include <QDir>
#include <QPushButton>
#include <QTableWidget>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

using namespace kb;

namespace {

void screenshot(QWidget& view, const QString& name)
{
    const QString dir = qEnvironmentVariable("KB_SCREENSHOTS");
    if (!dir.isEmpty()) view.grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

class Dialogs final : public ClientDialogs
{
public:
    std::function<void(TFormShowHouseholdMembers&)> onMembers;
    void showHouseholdMembers(TFormShowHouseholdMembers& form) override { onMembers(form); }
    bool showResetStartDate(TFormResetStartDate&) override { return false; }
};

class ClientDialogsViewTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        static int argc = 1;
        static char name[] = "ui_tests";
        static char* argv[] = {name, nullptr};
        if (!QApplication::instance()) new QApplication(argc, argv);
    }

    QTemporaryDir folder;
    SettingsFile settings{folder.path()};
    test::TempDataDir data;
    test::ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
};

TEST_F(ClientDialogsViewTest, TheHouseholdListMigratesTheChosenMember)
{
    for (int person : {1, 2, 3}) {
        test::insertRow(data.db(), QStringLiteral("Clients"),
                        {{QStringLiteral("Person_ID"), person},
                         {QStringLiteral("Client_ID"), QStringLiteral("%1.0").arg(person)},
                         {QStringLiteral("First_Name"), QStringLiteral("Member")},
                         {QStringLiteral("Last_Name"), QStringLiteral("Number %1").arg(person)},
                         {QStringLiteral("Status"), QStringLiteral("A")},
                         {QStringLiteral("Household_ID"), 5},
                         {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                         {QStringLiteral("Start_Dte"), QDate(2024, 1, 2)},
                         {QStringLiteral("Monday"), true},
                         {QStringLiteral("Thursday"), true}});
        test::insertRow(data.db(), QStringLiteral("Household_Members"),
                        {{QStringLiteral("Household_ID"), 5}, {QStringLiteral("Person_ID"), person}});
    }
    SessionState session;
    session.userFullName = QStringLiteral("Pat Tester");
    Dialogs dialogs;
    TableDataSet clients(data.db(), QStringLiteral("Clients"));
    ClientRules rules(services, ui, data.clock(), session);
    rules.attach(clients);
    rules.setDialogs(&dialogs);
    clients.open();
    int shown = 0;
    dialogs.onMembers = [&](TFormShowHouseholdMembers& form) {
        ++shown;
        ui::ShowHouseholdMembersView view(form, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Other Household Members");
        ASSERT_EQ(view.grid()->rowCount(), 2);
        EXPECT_EQ(view.grid()->item(0, 1)->text(), "Member Number 2");
        EXPECT_EQ(view.grid()->item(0, 3)->text(), "01/02/2024");
        EXPECT_EQ(view.grid()->item(0, 8)->text(), "MoTh");
        screenshot(view, QStringLiteral("household-members"));
        view.grid()->setCurrentCell(1, 0);
        ASSERT_TRUE(view.migrateButton()->isEnabled());
        view.migrateButton()->click();
        EXPECT_EQ(view.grid()->item(1, 6)->text(), "R9");
        view.move(40, 50);
        view.accept();
    };
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), 1));
    clients.edit();
    clients.setFieldValue(u"Def_Rte", QStringLiteral("R9"));
    ui.answerNext(Answer::Yes);
    clients.post();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select Def_Rte from Clients where Person_ID = 3"))
                  .value(0, 0)
                  .toString(),
              "R9");
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select Def_Rte from Clients where Person_ID = 2"))
                  .value(0, 0)
                  .toString(),
              "R1");
    EXPECT_EQ(ui.texts(test::ScriptedUserInterface::Kind::Information),
              QStringList{"Successfully migrated the delivery information to Member Number 3"});
    rules.detach();
}

TEST_F(ClientDialogsViewTest, TheResetScreenHandsBackTheDatesOnOkAndKeepsItsPlace)
{
    TFormResetStartDate form(QDate(2024, 1, 2), QDate(2024, 6, 1), true);
    {
        ui::ResetStartDateView view(form, settings);
        view.show();
        EXPECT_EQ(view.windowTitle(), "Reset Start Date");
        EXPECT_EQ(view.startDateEdit()->date(), QDate(2024, 1, 2));
        EXPECT_TRUE(view.recertificationDateEdit()->isVisible());
        screenshot(view, QStringLiteral("reset-start-date"));
        view.startDateEdit()->setDate(QDate(2024, 3, 11));
        view.move(120, 130);
        view.reject();
    }
    EXPECT_EQ(form.startDate(), QDate(2024, 1, 2)) << "Cancel keeps the dates";
    {
        ui::ResetStartDateView view(form, settings);
        EXPECT_EQ(view.pos(), QPoint(120, 130));
        view.show();
        view.startDateEdit()->setDate(QDate(2024, 3, 11));
        view.recertificationDateEdit()->setDate(view.recertificationDateEdit()->minimumDate());
        view.accept();
    }
    EXPECT_EQ(form.startDate(), QDate(2024, 3, 11));
    EXPECT_FALSE(form.recertificationDate().isValid()) << "the empty picker is no date";

    TFormResetStartDate startOnly(QDate(), QDate(), false);
    ui::ResetStartDateView view(startOnly, settings);
    view.show();
    EXPECT_FALSE(view.recertificationDateEdit()->isVisible());
    EXPECT_EQ(view.startDateEdit()->text().trimmed(), "");
}

} // namespace
