// Missed deliveries on a saved run: what a mark does to the date's Deliveri
// rows (and not to MealCrdt), the History rows and texts, the questions
// before a mark, excusing and clearing, the batch list, and the summary.

#include "OutcomesFixture.h"

#include "missed/MissEventText.h"
#include "missed/MissRecorder.h"
#include "missed/MissedSummary.h"
#include "missed/TFormBatchAddMissedDeliveries.h"
#include "missed/TFormExcuseMissedMeals.h"
#include "missed/TFormMissedDel.h"
#include "missed/TFormSummarizeMissedDeliveries.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class MissedDeliveriesTest : public OutcomesFixture
{
protected:
    void SetUp() override
    {
        OutcomesFixture::SetUp();
        for (int p = 1; p <= 5; ++p)
            addClient(p);
        // Person 2 also has a frozen scheduled delivery on Monday: two rows that date.
        addDated(2, monday, QStringLiteral("S"));
        ASSERT_EQ(saveRun(monday), 6);
        ui.clear();
    }

    TFormMissedDel single(int person)
    {
        return TFormMissedDel(db(), session, ui, MissedClient::read(db(), person));
    }
    qint64 missesByStatement()
    {
        return count(
            QStringLiteral("Select Count(*) from History where Event like '%Missed Delivery%' and not "
                           "Event like '%eleted%' and not Event like '%xcused%'"));
    }
};

TEST_P(MissedDeliveriesTest, RecordingMarksEveryRowOfTheDateAndLeavesItemsAlone)
{
    const QString mealCrdt = mealCrdtText();
    const QString others = deliveriText(QStringLiteral("where Person_ID <> 2"));
    TFormMissedDel form = single(2);
    EXPECT_EQ(form.recordedBy(), "Pat Tester");
    ASSERT_TRUE(form.setDate(monday));
    form.setRecordedBy(QStringLiteral("Driver Dan"));
    EXPECT_TRUE(form.ActionOK());

    const ResultSet rows = db().execute(
        QStringLiteral("Select Delivery_Status from Deliveri where Person_ID = 2 and Deliv_Dt = :D"),
        {{QStringLiteral("D"), monday}});
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.value(0, 0), "M");
    EXPECT_EQ(rows.value(1, 0), "M");
    EXPECT_EQ(mealCrdtText(), mealCrdt);
    EXPECT_EQ(deliveriText(QStringLiteral("where Person_ID <> 2")), others);

    const ResultSet history = db().execute(QStringLiteral(
        "Select Person_ID, Client_ID, Tran_Date, User, Event, Event_Date from History where Person_ID = 2"));
    ASSERT_EQ(history.rowCount(), 1);
    EXPECT_EQ(history.value(0, 1), "C002");
    EXPECT_EQ(history.value(0, 2).toDateTime(), fixedNow());
    EXPECT_EQ(history.value(0, 3), "Driver Dan");
    EXPECT_EQ(history.value(0, 4), "3/4/24, Missed Delivery");
    EXPECT_EQ(history.value(0, 5).toDate(), monday);

    // A second attempt is refused and the screen stays open.
    TFormMissedDel again = single(2);
    again.setDate(monday);
    EXPECT_FALSE(again.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{"That delivery has already been marked as missed."});
    EXPECT_EQ(events(2).size(), 1);
}

TEST_P(MissedDeliveriesTest, ACompedDeliveryAndADateWithoutDeliveryAreAskedAbout)
{
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'C' where Person_ID = 3"));
    TFormMissedDel comped = single(3);
    comped.setDate(monday);
    comped.setExcused(true);
    ui.answerNext(Answer::No);
    EXPECT_FALSE(comped.ActionOK());
    EXPECT_EQ(statusOf(3, monday), "C");
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(comped.ActionOK());
    EXPECT_EQ(statusOf(3, monday), "E");
    EXPECT_EQ(events(3), QStringList{"3/4/24, Missed Delivery (Excused)"});
    EXPECT_EQ(ui.texts(Kind::Question).value(0), "That delivery was comped! Change it to missed?");

    // Tuesday was never saved: Yes leaves only the History row, which the
    // excuse list then works on alone.
    const QString stored = deliveriText();
    TFormMissedDel none = single(4);
    none.setDate(tuesday);
    ui.answerNext(Answer::No);
    EXPECT_FALSE(none.ActionOK());
    EXPECT_TRUE(events(4).isEmpty());
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(none.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Question).last(),
              "The client did not receive a delivery on that date. \r\n Do you "
              "want to record it as missed anyway?");
    EXPECT_EQ(deliveriText(), stored);
    TFormExcuseMissedMeals excuse(db(), session, ui, MissedClient::read(db(), 4));
    excuse.FormShow();
    EXPECT_EQ(excuse.lines(), QStringList{"Tuesday; 3/5/24"});
    excuse.setChecked(0, true);
    EXPECT_TRUE(excuse.ActionApply());
    EXPECT_EQ(events(4), QStringList{"3/5/24, Missed Delivery (Excused)"});
    EXPECT_EQ(deliveriText(), stored);
}

TEST_P(MissedDeliveriesTest, AStoppedClientsCalendarKeepsToTheLastDays)
{
    db().execute(QStringLiteral("Update Clients set Status = 'S' where Person_ID = 5"));
    TFormMissedDel stopped = single(5);
    EXPECT_FALSE(stopped.setDate(QDate(2024, 3, 2))); // four days ago
    EXPECT_TRUE(stopped.setDate(QDate(2024, 3, 3)));
    EXPECT_TRUE(stopped.setDate(QDate(2024, 3, 7))); // tomorrow
    EXPECT_FALSE(stopped.setDate(QDate(2024, 3, 8)));
    TFormMissedDel active = single(4);
    EXPECT_TRUE(active.setDate(QDate(2023, 1, 1)));
}

TEST_P(MissedDeliveriesTest, ExcusingAndClearingFollowTheHistoryAndClearingRestoresTheRow)
{
    const QString before = deliveriText(QStringLiteral("where Person_ID = 1"));
    TFormMissedDel form = single(1);
    form.setDate(monday);
    ASSERT_TRUE(form.ActionOK());
    EXPECT_EQ(statusOf(1, monday), "M");

    TFormExcuseMissedMeals excuse(db(), session, ui, MissedClient::read(db(), 1));
    EXPECT_EQ(excuse.caption(), "Excuse Missed Meals");
    excuse.FormShow();
    ASSERT_EQ(excuse.lines(), QStringList{"Monday; 3/4/24"});
    excuse.setChecked(0, true);
    ASSERT_TRUE(excuse.ActionApply());
    EXPECT_EQ(statusOf(1, monday), "E");
    EXPECT_EQ(events(1), QStringList{"3/4/24, Missed Delivery (Excused)"});
    excuse.FormShow();
    EXPECT_TRUE(excuse.lines().isEmpty()); // excused: out of the excuse list

    TFormDeleteMissedMeals clear(db(), session, ui, MissedClient::read(db(), 1));
    EXPECT_EQ(clear.caption(), "Clear Missed Meals");
    clear.FormShow();
    ASSERT_EQ(clear.lines(), QStringList{"Monday; 3/4/24 (Excused)"});
    clear.setChecked(0, true);
    ASSERT_TRUE(clear.ActionApply());
    EXPECT_EQ(deliveriText(QStringLiteral("where Person_ID = 1")), before);
    EXPECT_EQ(events(1), QStringList{"Missed delivery (3/4/24) deleted."});
    clear.FormShow();
    EXPECT_TRUE(clear.lines().isEmpty());

    // The date can be marked again, and the summary counts only the new mark.
    TFormMissedDel again = single(1);
    again.setDate(monday);
    EXPECT_TRUE(again.ActionOK());
    summarizeMissedDeliveries(db(), ui, monday);
    EXPECT_EQ(count(QStringLiteral("Select Missed_Deliveries from Clients where Person_ID = 1")), 1);
    EXPECT_EQ(count(QStringLiteral("Select Count(Excused_Deliveries) from Clients")), 0);
}

TEST_P(MissedDeliveriesTest, TwoMissesOfOneDateAreFoundByTheirDateAndTheFirstChanges)
{
    const MissedClient client = MissedClient::read(db(), 3);
    MissedDeliveries misses(db());
    misses.record(client, tuesday, false, QStringLiteral("A"));
    misses.record(client, tuesday, false, QStringLiteral("B"));
    TFormExcuseMissedMeals excuse(db(), session, ui, client);
    excuse.FormShow();
    ASSERT_EQ(excuse.lines().size(), 2);
    excuse.setChecked(1, true);
    ASSERT_TRUE(excuse.ActionApply());
    EXPECT_EQ(events(3), (QStringList{"3/5/24, Missed Delivery (Excused)", "3/5/24, Missed Delivery"}));
    EXPECT_EQ(miss_text::dateOfLine(QStringLiteral("Monday; 3/4/24 (Excused)")), monday);
    EXPECT_FALSE(miss_text::dateOfLine(QStringLiteral("Monday 3/4/24")).isValid());
}

TEST_P(MissedDeliveriesTest, ABatchMarksExactlyTheChosenRowsAndTheSummaryAgreesWithACount)
{
    const QString mealCrdt = mealCrdtText();
    const QString untouched = deliveriText(QStringLiteral("where Person_ID in (1, 4)"));
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'C' where Person_ID = 5"));

    TFormBatchAddMissedDeliveries batch(db(), session, ui);
    EXPECT_EQ(batch.caption(), "Record Missed Deliveries");
    EXPECT_EQ(batch.date(), QDate(2024, 3, 6));
    batch.setDate(monday);
    EXPECT_EQ(batch.weekdayName(), "Monday");
    for (const char* client : {"C002", "C003", "C005"}) {
        batch.setExcused(QLatin1String(client) == QLatin1String("C003"));
        batch.setSearchText(QString::fromLatin1(client));
        batch.ActionAddToList();
        EXPECT_TRUE(batch.searchText().isEmpty());
    }
    batch.setSearchText(QStringLiteral("C002"));
    batch.ActionAddToList();
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{"That Client has already been added to the list!"});
    batch.setSearchIndex(2); // Phone
    batch.setSearchText(QStringLiteral("555-0106"));
    batch.ActionAddToList(); // nobody has it
    batch.setSearchText(QString());
    batch.ActionAddToList(); // empty: nothing
    ASSERT_EQ(batch.candidates().size(), 3u);
    EXPECT_TRUE(batch.candidates()[1].excused);

    ui.clear();
    ui.answerNext(Answer::No); // person 5's comped delivery stays comped
    EXPECT_EQ(batch.ActionRecord(), 2);
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{"The delivery for First5 Last5 was comped! Change it to missed?"});
    EXPECT_EQ(batch.candidates().size(), 3u); // the list stays
    EXPECT_EQ(statusOf(2, monday), "M");
    EXPECT_EQ(statusOf(3, monday), "E");
    EXPECT_EQ(statusOf(5, monday), "C");
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from Deliveri where Person_ID = 2 and Delivery_Status = 'M'")),
        2);
    EXPECT_EQ(deliveriText(QStringLiteral("where Person_ID in (1, 4)")), untouched);
    EXPECT_EQ(mealCrdtText(), mealCrdt);

    // Recording the same list again marks nothing more.
    ui.clear();
    EXPECT_EQ(batch.ActionRecord(), 0);
    EXPECT_TRUE(ui.texts(Kind::Information)
                    .contains("The delivery for First2 Last2 has already been marked as missed."));

    TFormSummarizeMissedDeliveries summary(db(), session, ui);
    EXPECT_EQ(summary.since(), QDate(2023, 3, 7));
    bool refreshed = false;
    summary.setRefresh([&] { refreshed = true; });
    const auto result = summary.ActionSummarize();
    ASSERT_TRUE(result.has_value());
    EXPECT_TRUE(refreshed);
    EXPECT_EQ(result->missedClients, 1);
    EXPECT_EQ(result->excusedClients, 1);
    EXPECT_EQ(count(QStringLiteral("Select Sum(Missed_Deliveries) from Clients")), missesByStatement());
    EXPECT_EQ(count(QStringLiteral("Select Excused_Deliveries from Clients where Person_ID = 3")), 1);
}

TEST_P(MissedDeliveriesTest, TheSummaryStartsFromNothingAndSkipsEntriesWithoutAClient)
{
    db().execute(QStringLiteral("Update Clients set Missed_Deliveries = 7, Excused_Deliveries = 2"));
    MissedDeliveries misses(db());
    misses.record(MissedClient::read(db(), 1), monday, false, QStringLiteral("x"));
    MissedClient nobody = MissedClient::read(db(), 2);
    nobody.clientId = QVariant();
    misses.record(nobody, monday, false, QStringLiteral("x"));
    MissedClient gone = MissedClient::read(db(), 3);
    gone.clientId = QStringLiteral("ZZZ");
    misses.record(gone, monday, false, QStringLiteral("x"));

    summarizeMissedDeliveries(db(), ui, QDate(2024, 3, 7)); // after every entry
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Clients where not Missed_Deliveries is null or not "
                                   "Excused_Deliveries is null")),
              0);
    summarizeMissedDeliveries(db(), ui, QDate(2024, 3, 6));
    const ResultSet counters = missedCounters(db());
    ASSERT_EQ(counters.rowCount(), 1);
    EXPECT_EQ(counters.value(0, 1), "C001");
    EXPECT_EQ(counters.value(0, 2).toInt(), 1);
    EXPECT_TRUE(counters.value(0, 3).isNull());
}

TEST_P(MissedDeliveriesTest, AReadOnlyUserRecordsNothing)
{
    session.accessLevel = QStringLiteral("R");
    TFormMissedDel form = single(1);
    form.setDate(monday);
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(events(1).isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Stores, MissedDeliveriesTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
