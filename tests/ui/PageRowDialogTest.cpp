// The forms of the funding and application rows of the client window,
// offscreen over the real page queries and their rules: a new funding use
// typed and saved, and one the weekday rule refuses staying open.

#include "ModuleFixture.h"
#include "WidgetApplication.h"

#include "clients/PageRowDialog.h"
#include "dataset/QueryDataSet.h"
#include "funding/FundingTerms.h"
#include "funding/FundingUses.h"
#include "rules/ModuleClientRules.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>

using namespace kb;
using namespace kb::test;

namespace {

class PageRowDialogTest : public ModuleFixture
{
protected:
    static void SetUpTestSuite() { ensureWidgetApplication(); }
    void SetUp() override
    {
        ModuleFixture::SetUp();
        if (!data) return;
        insertRow(db(), QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Home Meals")},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        insertRow(db(), QStringLiteral("Fundsrcs"),
                  {{QStringLiteral("Fund_ID"), 1},
                   {QStringLiteral("Fund_CD"), QStringLiteral("MOW")},
                   {QStringLiteral("Fund_Srce"), QStringLiteral("Meals Fund")}});
        insertRow(db(), QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 1},
                   {QStringLiteral("Client_ID"), QStringLiteral("101.0")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Ames")},
                   {QStringLiteral("Status"), QStringLiteral("A")},
                   {QStringLiteral("Svcs_Used"), 1}});
    }
    void beforeStart(TDataModule1& m) override { rules = std::make_unique<ModuleClientRules>(m); }
    void TearDown() override
    {
        form.reset();
        if (module) module->shutdown();
        rules.reset();
        module.reset();
    }

    std::unique_ptr<ModuleClientRules> rules;
    std::unique_ptr<TFormClients> form;
};

TEST_P(PageRowDialogTest, AFundingUseIsTypedAndSavedThroughItsRules)
{
    signIn(QStringLiteral("userW"));
    form = std::make_unique<TFormClients>(*module, ui, rules->rules());
    form->create();
    form->firstShow();
    form->changePage(client_page::FundingBilling);
    QueryDataSet& uses = form->pageData().query(QStringLiteral("QueryFundUses"));

    form->funding().ActionAddFunding();
    {
        ui::PageRowDialog dialog(*form, QStringLiteral("QueryFundUses"));
        auto* source = qobject_cast<QComboBox*>(dialog.editor(QStringLiteral("Fund_CD")));
        ASSERT_NE(source, nullptr);
        source->setCurrentIndex(source->findData(QStringLiteral("MOW")));
        qobject_cast<QCheckBox*>(dialog.editor(QStringLiteral("Sunday")))->setChecked(false);
        dialog.accept();
        EXPECT_EQ(dialog.result(), QDialog::Accepted);
    }
    EXPECT_EQ(uses.state(), DataSet::State::Browse);
    EXPECT_EQ(
        db().execute(QStringLiteral("select count(*) from FundUses where Fund_CD = 'MOW' and Sunday = False"))
            .value(0, 0)
            .toInt(),
        1);

    // A second source on the same days is refused: the form stays open.
    form->funding().ActionAddFunding();
    {
        ui::PageRowDialog dialog(*form, QStringLiteral("QueryFundUses"));
        auto* source = qobject_cast<QComboBox*>(dialog.editor(QStringLiteral("Fund_CD")));
        source->setCurrentIndex(source->findData(QStringLiteral("MOW")));
        dialog.open();
        dialog.accept();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{FundingUses::overlapText()});
        dialog.reject();
    }
    EXPECT_EQ(uses.state(), DataSet::State::Browse);
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from FundUses")).value(0, 0).toInt(), 1);
}

TEST_P(PageRowDialogTest, TheMethodBringsUpTheTimeRateGroup)
{
    signIn(QStringLiteral("userW"));
    form = std::make_unique<TFormClients>(*module, ui, rules->rules());
    form->create();
    form->firstShow();
    form->changePage(client_page::FundingBilling);
    form->funding().ActionAddFunding();
    ui::PageRowDialog dialog(*form, QStringLiteral("QueryFundUses"));
    auto* method = qobject_cast<QComboBox*>(dialog.editor(QStringLiteral("Reimbursement_Method")));
    ASSERT_NE(method, nullptr);
    auto* time = dialog.findChild<QGroupBox*>(TimeRatesGroup);
    ASSERT_NE(time, nullptr);
    EXPECT_EQ(time->title(), "Reimbursement Rates by Time Period");
    EXPECT_TRUE(time->isAncestorOf(dialog.editor(QStringLiteral("Reimbursement_Rate"))));
    EXPECT_TRUE(time->isAncestorOf(dialog.editor(QStringLiteral("Reimbursement_Period"))));
    EXPECT_TRUE(time->isHidden());
    method->setCurrentIndex(method->findText(QStringLiteral("Time Period")));
    EXPECT_FALSE(time->isHidden());
    method->setCurrentIndex(method->findText(QStringLiteral("Meals or Meal Items")));
    EXPECT_TRUE(time->isHidden());
    dialog.reject();
}

INSTANTIATE_TEST_SUITE_P(Stores, PageRowDialogTest, ::testing::Values(StoreKind::SQLite),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
