// The household commands of the client window offscreen, over a demo
// agency: the jump to the head of a household leaves the window on the
// head, and the households command opens its screen on the client's own
// household.

#include "DemoAgency.h"
#include "ModuleFixture.h"
#include "QtClientDialogs.h"
#include "WidgetApplication.h"

#include "clients/HouseholdWizardView.h"
#include "clients/HouseholdsView.h"
#include "clientwindow/MainWindow.h"
#include "dataset/TableDataSet.h"
#include "households/TFormHouseholds.h"
#include "rules/ModuleClientRules.h"
#include "session/TDataModule1.h"
#include "window/ClientCommands.h"
#include "window/ClientFieldLayout.h"
#include "window/TFormClients.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>

using namespace kb;
using namespace kb::test;

namespace {

class HouseholdWindow : public ModuleFixture
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }

    void SetUp() override
    {
        ModuleFixture::SetUp();
        if (!data) return;
        DemoOptions options;
        options.clients = 120;
        generateDemoAgency(db(), options);
    }
    void beforeStart(TDataModule1& m) override { rules = std::make_unique<ModuleClientRules>(m); }
    void TearDown() override
    {
        window.reset();
        form.reset();
        if (module) module->shutdown();
        dialogs.reset();
        rules.reset();
        module.reset();
    }

    std::unique_ptr<ModuleClientRules> rules;
    std::unique_ptr<ui::QtClientDialogs> dialogs;
    std::unique_ptr<TFormClients> form;
    std::unique_ptr<ui::MainWindow> window;
};

} // namespace

TEST_P(HouseholdWindow, TheJumpStaysOnTheHeadAndTheListOpensOnTheHousehold)
{
    // A member of a household that has a head other than them.
    const ResultSet pair = db().execute(QStringLiteral(
        "select m.Person_ID, h.Person_ID, m.Household_ID from Household_Members m join Household_Members h "
        "on "
        "m.Household_ID = h.Household_ID where h.Head_of_Household = True and m.Person_ID <> h.Person_ID "
        "order by m.Person_ID"));
    ASSERT_FALSE(pair.isEmpty()) << "the demo agency has households with heads";
    const qint64 member = pair.value(0, 0).toLongLong();
    const qint64 head = pair.value(0, 1).toLongLong();
    const qint64 household = pair.value(0, 2).toLongLong();

    signIn(QStringLiteral("keeperin"));
    dialogs = std::make_unique<ui::QtClientDialogs>(nullptr, module->userSettings());
    rules->setDialogs(dialogs.get());
    form = std::make_unique<TFormClients>(*module, ui, rules->rules());
    form->create();
    window = std::make_unique<ui::MainWindow>(*form, ui);
    window->show();
    form->firstShow();
    TableDataSet& clients = module->clients();
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), member));
    form->SetControlsState(true);

    ASSERT_TRUE(form->run(QStringLiteral("ActionJumpToHeadOfHousehold")));
    EXPECT_EQ(clients.fieldValue(u"PERSON_ID").toLongLong(), head);
    EXPECT_EQ(form->value(client_field::HouseholdName),
              db().execute(QStringLiteral("select Household_Name from Households where Household_ID = :H"),
                           {{QStringLiteral("H"), household}})
                  .value(0, 0));

    QString title;
    int members = -1;
    QTimer::singleShot(0, [&] {
        auto* view = qobject_cast<ui::HouseholdsView*>(QApplication::activeModalWidget());
        if (!view) return;
        title = view->windowTitle();
        members = view->members()->rowCount();
        view->accept();
    });
    ASSERT_TRUE(form->run(client_command::Households));
    EXPECT_EQ(title, TFormHouseholds::caption());
    EXPECT_EQ(members,
              db().execute(QStringLiteral("select count(*) from Household_Members where Household_ID = :H"),
                           {{QStringLiteral("H"), household}})
                  .value(0, 0)
                  .toInt());
    EXPECT_EQ(clients.fieldValue(u"PERSON_ID").toLongLong(), head);

    // The wizard puts a client of no household into a new one, and the
    // client page names it at once.
    const qint64 single =
        db().execute(QStringLiteral("select min(Person_ID) from Clients where Household_ID is null "
                                    "and (Org_Client is null or Org_Client <> 'Y')"))
            .value(0, 0)
            .toLongLong();
    ASSERT_GT(single, 0);
    ASSERT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), single));
    form->SetControlsState(true);
    QString suggested;
    QTimer::singleShot(0, [&] {
        auto* view = qobject_cast<ui::HouseholdWizardView*>(QApplication::activeModalWidget());
        if (!view) return;
        view->nextButton()->click();
        view->nextButton()->click();
        suggested = view->nameEdit()->text();
        view->nextButton()->click();
        view->finishButton()->click();
    });
    ASSERT_TRUE(form->run(client_command::HouseholdWizard));
    ASSERT_FALSE(suggested.isEmpty());
    EXPECT_EQ(clients.fieldValue(u"PERSON_ID").toLongLong(), single);
    EXPECT_GT(clients.fieldValue(u"HOUSEHOLD_ID").toLongLong(), 0);
    EXPECT_EQ(form->value(client_field::HouseholdName).toString(), suggested);
}

INSTANTIATE_TEST_SUITE_P(Stores, HouseholdWindow, ::testing::Values(StoreKind::SQLite),
                         [](const ::testing::TestParamInfo<StoreKind>& info) {
                             return storeName(info.param);
                         });
