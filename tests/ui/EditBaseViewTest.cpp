// The generic code table view, offscreen, over a real presenter: the
// navigator follows the presenter, a new row typed in the edit page is
// saved, a double click opens a row, and the menu lists every screen.

#include "WidgetApplication.h"
#include "EditBaseView.h"
#include "records/RecordServices.h"
#include "ReferenceEditorsMenu.h"
#include "window/ClientCommands.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "reference/TFormEditBase.h"
#include "assign/TFormEditRoutes.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
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

TEST_F(EditBaseViewTest, TheRoutesScreenSearchesAsTheUserTypesAndANewRowStartsAtItsCode)
{
    for (const char* route : {"A1", "B7", "C3"})
        data.db().execute(QStringLiteral("Insert into Routes (Route_ID, Route_Desc) values (:Id, :Desc)"),
                          {{QStringLiteral("Id"), QString::fromLatin1(route)},
                           {QStringLiteral("Desc"), QStringLiteral("Route ") + QString::fromLatin1(route)}});
    TFormEditRoutes presenter(services);
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    ASSERT_NE(view.searchBox(), nullptr);
    for (const char* letter : {"b", "7"}) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromLatin1(letter));
        QApplication::sendEvent(view.grid(), &press);
    }
    EXPECT_EQ(view.searchBox()->text(), "b7");
    EXPECT_EQ(view.grid()->currentRow(), 1);
    EXPECT_EQ(view.grid()->item(view.grid()->currentRow(), 0)->text().trimmed(), "B7");
    test::keepScreenshot(view, QStringLiteral("routes-editor"));

    view.button(int(Command::Insert))->click();
    EXPECT_EQ(view.pages()->currentIndex(), 1);
    EXPECT_EQ(view.focusWidget(), view.editor(QStringLiteral("ROUTE_ID")));
    view.button(int(Command::Cancel))->click();

    // Screens without the search keep the plain grid.
    TFormEditBase diets(services, *referenceEditorScreen(QStringLiteral("TFormEditDietMods")));
    ASSERT_TRUE(diets.open());
    ui::EditBaseView plain(diets);
    EXPECT_EQ(plain.searchBox(), nullptr);
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

TEST_F(EditBaseViewTest, DestructiveAndEmptyActionsAskFirstAndTitlesArePlainWords)
{
    TFormEditBase presenter(services, *referenceEditorScreen(QStringLiteral("TFormEditCuisines")));
    ASSERT_TRUE(presenter.open());
    ui::EditBaseView view(presenter);
    view.show();
    QStringList titles;
    for (int c = 0; c < view.grid()->columnCount(); ++c)
        titles << view.grid()->horizontalHeaderItem(c)->text();
    EXPECT_EQ(titles, (QStringList{"Cuisine ID", "Cuisine"}));

    // An empty new row is not saved, and closing drops it without a question.
    view.button(int(Command::Insert))->click();
    view.button(int(Command::Post))->click();
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{TFormEditBase::nothingToSaveText()});
    EXPECT_EQ(data.db().recordCount(QStringLiteral("Cuisines")), 0);
    auto* name = qobject_cast<QLineEdit*>(view.editor(QStringLiteral("Cuisine")));
    ASSERT_NE(name, nullptr);
    name->setText(QStringLiteral("Creole"));
    emit name->textEdited(name->text());
    view.button(int(Command::Post))->click();
    EXPECT_EQ(data.db().recordCount(QStringLiteral("Cuisines")), 1);

    // Deleting asks; No keeps the row.
    ui.clear();
    view.button(int(Command::Delete))->click();
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{TFormEditBase::deleteQuestion()});
    EXPECT_EQ(data.db().recordCount(QStringLiteral("Cuisines")), 1);

    // Escape with a change asks whether to save it.
    name->setText(QStringLiteral("Cajun"));
    emit name->textEdited(name->text());
    ui.clear();
    ui.answerNext(Answer::Yes);
    view.reject();
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"Save changes to data before closing window?"});
    EXPECT_EQ(data.db().execute(QStringLiteral("select Cuisine from Cuisines")).value(0, 0), "Cajun");
}

TEST_F(EditBaseViewTest, TheMenuListsEveryTableMaintenanceScreen)
{
    // Every code table screen has its command under Table Maintenance.
    int screens = 0;
    for (const EditorScreen& screen : referenceEditorScreens()) {
        if (screen.menuText.isEmpty()) continue;
        ++screens;
        const ClientCommandInfo* command = findClientCommand(screen.formName);
        ASSERT_NE(command, nullptr) << screen.formName.toStdString();
        EXPECT_EQ(command->menu, "Edit/Table Maintenance");
    }
    EXPECT_EQ(screens, 19);
    EXPECT_FALSE(ui::showReferenceEditor(QStringLiteral("TFormNoSuchScreen"), services, nullptr));
}

} // namespace
