// The generic code table view, offscreen, over a real presenter: the
// navigator follows the presenter, a new row typed in the edit page is
// saved, a double click opens a row, and the menu lists every screen.

#include "WidgetApplication.h"
#include "EditBaseView.h"
#include "records/RecordServices.h"
#include "ReferenceEditorsMenu.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "reference/TFormEditBase.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

#include <gtest/gtest.h>

using namespace kb;
using Command = kb::TFormEditBase::Command;
using Kind = kb::test::ScriptedUserInterface::Kind;

namespace {

class EditBaseViewTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    test::TempDataDir data;
    test::ScriptedUserInterface ui;
    RecordServices services{data.db(), ui};
};

TEST_F(EditBaseViewTest, ANewRowTypedInTheEditPageIsSaved)
{
    TFormEditBase presenter(services, *referenceEditorScreen(QStringLiteral("TFormEditDietMods")));
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Edit Diet Codes");
    EXPECT_EQ(view.pages()->currentIndex(), 0);
    EXPECT_FALSE(view.button(int(Command::Post))->isEnabled());
    ASSERT_TRUE(view.button(int(Command::Insert))->isEnabled());

    view.button(int(Command::Insert))->click();
    EXPECT_EQ(view.pages()->currentIndex(), 1);
    EXPECT_TRUE(view.button(int(Command::Post))->isEnabled());
    EXPECT_FALSE(view.button(int(Command::Insert))->isEnabled());
    auto* id = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("DIET_ID")));
    ASSERT_NE(id, nullptr);
    EXPECT_EQ(id->text(), "1");
    auto* code = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("DIET_CODE")));
    ASSERT_NE(code, nullptr);
    code->insert(QStringLiteral("LS"));
    view.button(int(Command::Post))->click();

    EXPECT_TRUE(ui.messages().isEmpty()) << ui.messages().value(0).text.toStdString();
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select Diet_Code from Diet where Diet_ID = 1"))
                  .value(0, 0)
                  .toString(),
              "LS");
    EXPECT_FALSE(view.button(int(Command::Post))->isEnabled());
    ASSERT_EQ(view.grid()->rowCount(), 1);
    EXPECT_EQ(view.grid()->item(0, 1)->text(), "LS");
}

TEST_F(EditBaseViewTest, ADoubleClickOpensTheRowAndClosingAsksToSave)
{
    TFormEditBase presenter(services, *referenceEditorScreen(QStringLiteral("TFormEditStopReasons")));
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    ASSERT_EQ(view.grid()->rowCount(), 7);
    emit view.grid()->cellDoubleClicked(1, 0);
    EXPECT_EQ(view.pages()->currentIndex(), 1);
    auto* reason = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("STOP_REASON")));
    ASSERT_NE(reason, nullptr);
    EXPECT_EQ(reason->text(), "Deceased");
    reason->insert(QStringLiteral(" (confirmed)"));
    EXPECT_TRUE(view.button(int(Command::Cancel))->isEnabled());

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(view.close());
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"Save changes to data before closing window?"});
    EXPECT_EQ(data.db()
                  .execute(QStringLiteral("select Stop_Reason from StopReasons where Stop_ID = 2"))
                  .value(0, 0)
                  .toString(),
              "Deceased (confirmed)");
}

TEST_F(EditBaseViewTest, ServiceFieldsHideAndShowWithTheType)
{
    TFormEditBase presenter(services, *referenceEditorScreen(QStringLiteral("TFormEditServices")));
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    view.button(int(Command::Insert))->click();
    QWidget* exclusive = view.editor(QStringLiteral("MUTL_EXCL"));
    ASSERT_NE(exclusive, nullptr);
    EXPECT_FALSE(exclusive->isVisible());
    presenter.setValue(QStringLiteral("SERVICE_TYPE"), QStringLiteral("D"));
    EXPECT_TRUE(exclusive->isVisible());
}

TEST_F(EditBaseViewTest, TheMenuListsEveryTableMaintenanceScreen)
{
    QMenu menu;
    ui::addReferenceEditorsMenu(&menu, services, nullptr);
    QStringList entries;
    for (QAction* action : menu.actions())
        entries.append(action->text());
    EXPECT_EQ(entries.size(), 19);
    EXPECT_TRUE(entries.contains(QStringLiteral("Diet Modifications")));
    EXPECT_TRUE(entries.contains(QStringLiteral("System &Queries")));
    EXPECT_TRUE(entries.contains(QStringLiteral("Cold Bag Code Usage")));
    EXPECT_FALSE(ui::showReferenceEditor(QStringLiteral("TFormNoSuchScreen"), services, nullptr));
}

} // namespace
