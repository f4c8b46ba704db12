// The missed-delivery and credit screens, offscreen over their real
// presenters on a demo agency with a saved run: a miss recorded from the
// calendar, excused from the check list, and a walk-in credited from the grid.

#include "SavedRunAgency.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "WidgetApplication.h"
#include "missed/TFormExcuseMissedMeals.h"
#include "missed/TFormMissedDel.h"
#include "outcomes/CreditWalkInsView.h"
#include "outcomes/EpisodicClientInfoView.h"
#include "outcomes/MissedDeliveryViews.h"
#include "session/SessionState.h"
#include "walkins/TFormCreditWalkIns.h"
#include "walkins/WalkInRecorder.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::ui;

namespace {

const QDate monday(2024, 3, 4);

class OutcomesViews : public ::testing::Test
{
protected:
    static void SetUpTestSuite() { kb::test::ensureWidgetApplication(); }

    void SetUp() override
    {
        session.userFullName = QStringLiteral("Tom Reyes");
        ASSERT_TRUE(saveDemoRun(data, session, ui, monday));
        person = data.db()
                     .execute(QStringLiteral("Select Min(Person_ID) from Deliveri where Deliv_Dt = :D"),
                              {{QStringLiteral("D"), monday}})
                     .value(0, 0)
                     .toLongLong();
        ASSERT_GT(person, 0);
    }
    QString status()
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
    qint64 person = 0;
};

TEST_F(OutcomesViews, AMissIsRecordedFromTheCalendarAndExcusedFromTheList)
{
    const MissedClient client = MissedClient::read(data.db(), person);
    TFormMissedDel presenter(data.db(), session, ui, client);
    MissedDeliveryView view(presenter);
    view.calendar()->setSelectedDate(monday);
    view.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
    EXPECT_EQ(view.result(), QDialog::Accepted);
    EXPECT_EQ(status(), "M");

    TFormExcuseMissedMeals excuse(data.db(), session, ui, client);
    MissedMealsView list(excuse);
    ASSERT_EQ(list.list()->count(), 1);
    list.list()->item(0)->setCheckState(Qt::Checked);
    list.actionButton()->click();
    EXPECT_EQ(list.result(), QDialog::Accepted);
    EXPECT_EQ(status(), "E");
}

TEST_F(OutcomesViews, AWalkInIsCreditedFromTheGrid)
{
    ASSERT_EQ(
        WalkInRecorder(data.db(), ui)
            .record({WalkIn::ofClient(data.db(), person, QDate(2024, 3, 5))}, QStringLiteral("Tom Reyes")),
        1);
    const qint64 before =
        data.db().execute(QStringLiteral("Select Count(*) from Deliveri")).value(0, 0).toLongLong();
    TFormCreditWalkIns presenter(data.db(), session, ui);
    CreditWalkInsView view(presenter);
    EXPECT_FALSE(view.saveButton()->isEnabled());
    view.applyButton()->click();
    EXPECT_GE(view.grid()->model()->rowCount(), 1);
    ASSERT_TRUE(view.saveButton()->isEnabled())
        << ui.texts(ScriptedUserInterface::Kind::Error).join('\n').toStdString();
    view.saveButton()->click();
    EXPECT_FALSE(view.saveButton()->isEnabled());
    EXPECT_GT(data.db().execute(QStringLiteral("Select Count(*) from Deliveri")).value(0, 0).toLongLong(),
              before);
    view.reject();
}

TEST_F(OutcomesViews, AClientsUncreditedEventsAreDeletedFromTheCreditGridsMenu)
{
    ASSERT_EQ(
        WalkInRecorder(data.db(), ui)
            .record({WalkIn::ofClient(data.db(), person, QDate(2024, 3, 5))}, QStringLiteral("Tom Reyes")),
        1);
    TFormCreditWalkIns presenter(data.db(), session, ui);
    CreditWalkInsView view(presenter);
    EXPECT_FALSE(view.exportButton()->isEnabled());
    view.applyButton()->click();
    EXPECT_TRUE(view.exportButton()->isEnabled());
    EXPECT_EQ(view.grid()->model()->headerData(0, Qt::Horizontal).toString(), "Date");
    int row = -1;
    for (int r = 0; r < presenter.model()->rowCount() && row < 0; ++r)
        if (presenter.model()->field(r, QStringLiteral("Person_ID")).toLongLong() == person) row = r;
    ASSERT_GE(row, 0);
    view.grid()->setCurrentIndex(view.grid()->model()->index(row, 0));
    QAction* deleteEvents = view.popupMenu()->actions().value(0);
    ASSERT_NE(deleteEvents, nullptr);
    EXPECT_EQ(deleteEvents->text(), "Delete &episodic events of selected Client");
    ASSERT_TRUE(deleteEvents->isEnabled());

    bool shown = false;
    ui.answerNext(Answer::Yes);
    QTimer::singleShot(0, [&] {
        auto* info = qobject_cast<EpisodicClientInfoView*>(QApplication::activeModalWidget());
        if (!info) return;
        shown = true;
        EXPECT_EQ(info->windowTitle(), "Episodic/Scheduled Client Information");
        EXPECT_FALSE(info->deleteButton()->isEnabled());
        for (int i = 0; i < info->list()->count(); ++i)
            info->list()->item(i)->setCheckState(Qt::Checked);
        EXPECT_TRUE(info->deleteButton()->isEnabled());
        info->deleteButton()->click();
    });
    deleteEvents->trigger();
    EXPECT_TRUE(shown);
    EXPECT_EQ(
        data.db()
            .execute(QStringLiteral("Select Count(*) from EpisodicDeliveries where Person_ID = :P and "
                                    "Deliv_Date <= :D and (Fulfilled is null or not (Fulfilled = 'Y'))"),
                     {{QStringLiteral("P"), person}, {QStringLiteral("D"), QDate(2024, 3, 6)}})
            .value(0, 0)
            .toLongLong(),
        0);
    // The list was prepared again without the client.
    for (int r = 0; r < presenter.model()->rowCount(); ++r)
        EXPECT_NE(presenter.model()->field(r, QStringLiteral("Person_ID")).toLongLong(), person);
    view.reject();
}

} // namespace
