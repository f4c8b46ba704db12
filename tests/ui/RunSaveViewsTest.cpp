// The run screen's save and the special meals screens, offscreen over their
// real presenters on a demo agency: saving from the button, the Print
// Report button waiting for the report screen, the special meals dialog
// keeping itself open on a rule without diets, the browse and the copy.

#include "DemoAgency.h"
#include "RunPrepareView.h"
#include "ScriptedUserInterface.h"
#include "TFormRunPrepare.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"
#include "confirmation/GivenItemConfirmation.h"
#include "dialogs/DateChoice.h"
#include "dialogs/GivenRunDialogs.h"
#include "session/SessionState.h"
#include "specialmeals/BrowseSpecialMealDatesView.h"
#include "specialmeals/CopySpecialMealsView.h"
#include "specialmeals/DateChoiceDialog.h"
#include "specialmeals/SetSpecialMealsView.h"
#include "specialmeals/TFormBrowseSpecialMealDates.h"
#include "specialmeals/TFormCopySpecialMeals.h"
#include "specialmeals/TFormSetSpecialMeals.h"

#include <QCalendarWidget>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTableWidget>
#include <QTextCharFormat>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

const QDate monday(2024, 3, 11);

class RunSaveViews : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    void SetUp() override
    {
        DemoOptions options;
        options.clients = 200;
        generateDemoAgency(data.db(), options);
        session.userFullName = QStringLiteral("Tom Reyes");
        for (const char* column : {"SPECIAL1_LABEL", "SPECIAL2_LABEL"})
            data.db().execute(
                QStringLiteral("Update Config set %1 = :Label").arg(QLatin1String(column)),
                {{QStringLiteral("Label"), QStringLiteral("Meal ") + QLatin1String(column).mid(7, 1)}});
    }

    qint64 saved(const QDate& date)
    {
        return data.db()
            .execute(QStringLiteral("Select Count(*) from Deliveri where Deliv_Dt = :D"),
                     {{QStringLiteral("D"), date}})
            .value(0, 0)
            .toLongLong();
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
    GivenRunDialogs dialogs;
};

TEST_F(RunSaveViews, TheRunScreenSavesFromItsButtonAndWaitsForTheReportScreen)
{
    TFormRunPrepare presenter(data.db(), session, ui);
    ui::RunPrepareView view(presenter, ui);
    // What the screen would ask is answered here.
    GivenItemConfirmation none = GivenItemConfirmation::none();
    presenter.setItemConfirmation(&none);
    presenter.setDialogs(&dialogs);
    view.show();
    EXPECT_EQ(view.saveButton()->text(), "Save Data");
    EXPECT_FALSE(view.saveButton()->isEnabled());
    EXPECT_FALSE(view.printReportButton()->isEnabled());
    EXPECT_EQ(view.printReportButton()->toolTip(), "The delivery reports are not available yet.");
    EXPECT_TRUE(view.populateButton()->isEnabled());
    EXPECT_FALSE(view.exportButton()->isEnabled());
    EXPECT_FALSE(view.listingButton()->isEnabled());

    view.dateEdit()->setDate(monday);
    view.prepareButton()->click();
    const qint64 rows = view.grid()->model()->rowCount();
    ASSERT_GT(rows, 0);
    EXPECT_TRUE(view.exportButton()->isEnabled());
    EXPECT_TRUE(view.listingButton()->isEnabled());
    ASSERT_TRUE(view.saveButton()->isEnabled());
    view.saveButton()->click();
    EXPECT_EQ(saved(monday), rows);
    EXPECT_FALSE(view.saveButton()->isEnabled());
    bool ok = false;
    for (QLabel* label : view.findChildren<QLabel*>())
        ok |= label->text() == QLatin1String("OK");
    EXPECT_TRUE(ok);

    // Once there is a report screen, Print Report opens it on the date.
    QList<QDate> opened;
    presenter.setReportScreen([&](const QDate& from, const QDate& to) { opened << from << to; });
    ASSERT_TRUE(view.printReportButton()->isEnabled());
    view.printReportButton()->click();
    EXPECT_EQ(opened, (QList<QDate>{monday, monday}));
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Question).isEmpty());

    // A read-only user prepares but cannot save.
    session.accessLevel = QStringLiteral("R");
    view.prepareButton()->click();
    EXPECT_FALSE(view.saveButton()->isEnabled());
}

TEST_F(RunSaveViews, TheSpecialMealsDialogStaysOpenForARuleWithoutDiets)
{
    TFormSetSpecialMeals presenter(data.db(), ui);
    presenter.propose();
    ui::SetSpecialMealsView view(presenter);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Set Special Meal Qualifications");
    ASSERT_EQ(view.panelCount(), 2);
    EXPECT_EQ(view.panel(2)->title(), "Second Special Meal (Special Meal Two)");
    EXPECT_EQ(view.ruleList(1)->currentText(), "Selected diet restrictions");
    EXPECT_TRUE(view.dietList(1)->isEnabled());
    EXPECT_GT(view.dietList(1)->count(), 0);

    view.okButton()->click();
    EXPECT_TRUE(view.isVisible());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning).size(), 1);

    view.ruleList(2)->setCurrentIndex(1);
    EXPECT_FALSE(view.dietList(2)->isEnabled());
    view.dietList(1)->item(0)->setCheckState(Qt::Checked);
    view.matchAllButton(1)->setChecked(true);
    view.okButton()->click();
    EXPECT_FALSE(view.isVisible());
    EXPECT_EQ(view.result(), QDialog::Accepted);
    EXPECT_EQ(presenter.result().meal(1).selectionOption, "S");
    EXPECT_TRUE(presenter.result().meal(1).filterAll);
    EXPECT_EQ(presenter.result().meal(2).selectionOption, "I");
}

TEST_F(RunSaveViews, TheBrowseShowsTheMarksAndTheCopyTheChosenDates)
{
    SpecialMealsSetup setup;
    setup.meal(2) = {QStringLiteral("D"), 0, false, QString()};
    setup.insert(data.db(), monday);
    TFormBrowseSpecialMealDates browse(data.db(), ui, dialogs);
    ui::BrowseSpecialMealDatesView view(browse, nullptr);
    view.show();
    EXPECT_EQ(view.windowTitle(), "Special Meals by Date");
    ASSERT_EQ(view.table()->rowCount(), 1);
    ASSERT_EQ(view.table()->columnCount(), 3);
    EXPECT_EQ(view.table()->horizontalHeaderItem(1)->text(), "Meal 1");
    EXPECT_EQ(view.table()->item(0, 1)->checkState(), Qt::Unchecked);
    EXPECT_EQ(view.table()->item(0, 2)->checkState(), Qt::Checked);
    EXPECT_TRUE(view.editButton()->isEnabled());

    TFormCopySpecialMeals copy(data.db(), ui, setup, monday);
    ui::CopySpecialMealsView copyView(copy);
    copyView.show();
    EXPECT_EQ(copyView.calendar()->selectedDate(), monday);
    copyView.calendar()->setSelectedDate(monday.addDays(7));
    copyView.commandButton(QStringLiteral("Add Selected Date"))->click();
    ASSERT_EQ(copyView.destinations()->count(), 1);
    EXPECT_EQ(copyView.calendar()->dateTextFormat(monday.addDays(7)).fontWeight(), QFont::Bold);
    copyView.destinations()->item(0)->setCheckState(Qt::Checked);
    copyView.commandButton(QStringLiteral("Delete Checked"))->click();
    EXPECT_EQ(copyView.destinations()->count(), 0);

    DateChoice choice{QStringLiteral("Repopulate the Grid"),
                      QStringLiteral("Select a Previously Saved Date:"), monday};
    ui::DateChoiceDialog dateDialog(choice);
    EXPECT_EQ(dateDialog.windowTitle(), "Repopulate the Grid");
    dateDialog.calendar()->setSelectedDate(monday.addDays(1));
    dateDialog.accept();
    EXPECT_EQ(choice.date, monday.addDays(1));
}

} // namespace
