// The batch missed-delivery and walk-in screens, offscreen over their real
// presenters on a demo agency with a saved run: clients typed or scanned
// into the list and recorded from the screen's button.

#include "SavedRunAgency.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"
#include "missed/TFormBatchAddMissedDeliveries.h"
#include "outcomes/BatchMissedDeliveriesView.h"
#include "outcomes/BatchWalkInsView.h"
#include "session/SessionState.h"
#include "walkins/TFormBatchAddWalkIns.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::ui;

namespace {

const QDate monday(2024, 3, 4);

// Types the text into the box key by key, as a person or a scanner does.
void type(QLineEdit& box, const QString& text)
{
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QApplication::sendEvent(&box, &press);
    }
}

// Lets the scanner's pause elapse.
void waitFor(const std::function<bool()>& done)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < 3000)
        QApplication::processEvents(QEventLoop::AllEvents, 50);
}

class BatchOutcomesViews : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    void SetUp() override
    {
        session.userFullName = QStringLiteral("Tom Reyes");
        ASSERT_TRUE(saveDemoRun(data, session, ui, monday));
        const ResultSet two = data.db().execute(
            QStringLiteral("Select Distinct Person_ID from Deliveri where Deliv_Dt = :D order by Person_ID"),
            {{QStringLiteral("D"), monday}});
        ASSERT_GE(two.rowCount(), 2);
        first = two.value(0, 0).toLongLong();
        second = two.value(1, 0).toLongLong();
    }
    QString clientId(qint64 person)
    {
        return data.db()
            .execute(QStringLiteral("Select Client_ID from Clients where Person_ID = :P"),
                     {{QStringLiteral("P"), person}})
            .value(0, 0)
            .toString();
    }
    QString status(qint64 person)
    {
        return data.db()
            .execute(
                QStringLiteral("Select Delivery_Status from Deliveri where Person_ID = :P and Deliv_Dt = :D"),
                {{QStringLiteral("P"), person}, {QStringLiteral("D"), monday}})
            .value(0, 0)
            .toString();
    }

    TempDataDir data;
    ScriptedUserInterface ui;
    SessionState session;
    qint64 first = 0;
    qint64 second = 0;
};

TEST_F(BatchOutcomesViews, MissesAreTypedOrScannedIntoTheListAndRecorded)
{
    TFormBatchAddMissedDeliveries presenter(data.db(), session, ui);
    BatchMissedDeliveriesView view(presenter);
    view.findChild<QDateEdit*>()->setDate(monday);
    EXPECT_EQ(presenter.date(), monday);
    EXPECT_FALSE(view.recordButton()->isEnabled());

    // By Client ID, the first choice shown; the second line is excused.
    type(*view.searchBox(), clientId(first));
    view.addButton()->click();
    ASSERT_EQ(view.list()->rowCount(), 1)
        << ui.texts(ScriptedUserInterface::Kind::Warning).join('\n').toStdString();
    EXPECT_TRUE(view.searchBox()->text().isEmpty());

    // A scanned Person ID goes in after the pause, without a key press.
    view.scannerBox()->setChecked(true);
    view.show();
    EXPECT_FALSE(view.findChild<QComboBox*>()->isVisible());
    type(*view.searchBox(), QString::number(second));
    waitFor([&] { return view.list()->rowCount() == 2; });
    ASSERT_EQ(view.list()->rowCount(), 2);
    type(*view.searchBox(), QString::number(second));
    waitFor([&] { return !presenter.scanPending(); });
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{QStringLiteral("That Client has already been added to the list!")});
    view.list()->item(1, view.list()->columnCount() - 1)->setCheckState(Qt::Checked);
    keepScreenshot(view, QStringLiteral("TFormBatchAddMissedDeliveries"));

    ASSERT_TRUE(view.recordButton()->isEnabled());
    view.recordButton()->click();
    EXPECT_EQ(status(first), "M");
    EXPECT_EQ(status(second), "E");
    EXPECT_EQ(view.list()->rowCount(), 2);

    // Remove asks first; No keeps the line.
    view.list()->selectRow(0);
    view.removeButton()->click();
    EXPECT_EQ(view.list()->rowCount(), 2);
    ui.answerNext(Answer::Yes);
    view.removeButton()->click();
    EXPECT_EQ(view.list()->rowCount(), 1);
    view.hide();
}

TEST_F(BatchOutcomesViews, WalkInsAreAddedEditedAndRecorded)
{
    const auto walkIns = [&] {
        return data.db()
            .execute(QStringLiteral("Select Count(*) from EpisodicDeliveries where Delivery_Type = 'W'"))
            .value(0, 0)
            .toLongLong();
    };
    const qint64 before = walkIns();
    TFormBatchAddWalkIns presenter(data.db(), session, ui);
    BatchWalkInsView view(presenter);
    EXPECT_EQ(view.searchBy()->currentText(), "Person ID");
    EXPECT_FALSE(view.recordButton()->isEnabled());

    type(*view.searchBox(), QString::number(first));
    view.complimentaryBox()->setChecked(true);
    view.addButton()->click();
    ASSERT_EQ(view.list()->rowCount(), 1)
        << ui.texts(ScriptedUserInterface::Kind::Warning).join('\n').toStdString();
    ASSERT_EQ(presenter.walkIns().size(), 1u);
    EXPECT_TRUE(presenter.walkIns()[0].comp);
    EXPECT_FALSE(view.complimentaryBox()->isChecked());
    type(*view.searchBox(), QString::number(first));
    view.addButton()->click();
    EXPECT_EQ(view.list()->rowCount(), 1);
    EXPECT_TRUE(
        ui.texts(ScriptedUserInterface::Kind::Warning)
            .contains(QStringLiteral("That Client has already been added to the list for that date!")));

    // The date of the line is edited in place.
    const QDate tuesday = monday.addDays(1);
    view.list()->item(0, 4)->setData(Qt::EditRole, tuesday);
    waitFor([&] { return presenter.walkIns()[0].delivDate == tuesday; });
    EXPECT_EQ(presenter.walkIns()[0].delivDate, tuesday);
    keepScreenshot(view, QStringLiteral("TFormBatchAddWalkIns"));

    view.recordButton()->click();
    EXPECT_EQ(walkIns(), before + 1);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Information)
                    .contains(QStringLiteral("Successfully added one walk-in event.")));

    // A recorded list closes without a question; a new line asks first, and
    // No closes without recording it.
    ui.clear();
    type(*view.searchBox(), QString::number(second));
    view.addButton()->click();
    ASSERT_EQ(view.list()->rowCount(), 2);
    view.reject();
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Question).size(), 1);
    EXPECT_EQ(view.result(), QDialog::Rejected);
    EXPECT_EQ(walkIns(), before + 1);
}

} // namespace
