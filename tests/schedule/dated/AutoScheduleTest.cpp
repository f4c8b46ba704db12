// The Auto Schedule screen on both stores: what it previews is what it
// writes, in one go, with the route, stop, kind and marks of a generated
// row; bad patterns and a No write nothing.

#include "DatedFixture.h"

#include "recurrence/TFormRecurrence.h"

#include <cstdlib>
#include <ctime>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class AutoScheduleTest : public DatedFixture
{
protected:
    std::unique_ptr<TFormRecurrence> form(int person)
    {
        auto f = std::make_unique<TFormRecurrence>(db(), ui, QStringLiteral("Pat Tester"),
                                                   *DatedClient::byPersonId(db(), person));
        f->SetDeliveryType(person == 20 ? QStringLiteral("Episodic") : QStringLiteral("Scheduled"));
        return f;
    }
};

TEST_P(AutoScheduleTest, WritesWhatThePreviewShowsWithTheClientsWeekdayRoutes)
{
    auto f = form(10);
    EXPECT_EQ(f->caption(), QStringLiteral("Auto-Create Scheduled Deliveries"));
    EXPECT_EQ(TFormRecurrence::entryCode(f->serviceEntries().value(f->serviceIndex())), QStringLiteral("1"));
    EXPECT_EQ(f->routeEntries().value(0),
              QStringLiteral("Client's regular day-assigned route                   [---]"));
    // Every weekday from Friday 8 March: the service's days (Monday to
    // Friday) limit it; Tuesdays take the client's Tuesday route and stop.
    f->setPage(TFormRecurrence::Page::Daily);
    f->setStart(QDate(2024, 3, 8));
    f->setOccurrences(4);
    const std::vector<GeneratedDelivery> preview = f->preview();
    ASSERT_EQ(preview.size(), 4u);
    EXPECT_EQ(preview[0].date, QDate(2024, 3, 8));
    EXPECT_EQ(preview[1].date, QDate(2024, 3, 11));
    EXPECT_EQ(preview[2].route, QStringLiteral("R2"));
    EXPECT_EQ(preview[2].stop.toDouble(), 7.0);
    EXPECT_EQ(rowsOf(10).rowCount(), 0) << "the preview writes nothing";

    ui.answerNext(Answer::Yes);
    EXPECT_EQ(f->ActionOk(), TFormRecurrence::Outcome::Created);
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{QStringLiteral("Create the specified deliveries?")});
    EXPECT_EQ(ui.texts(Kind::Information).value(0),
              QStringLiteral("Finished creating 4 Scheduled Deliveries."));
    const ResultSet rows = rowsOf(10);
    ASSERT_EQ(rows.rowCount(), 4);
    for (qsizetype r = 0; r < 4; ++r) {
        EXPECT_EQ(rows.value(r, 1).toDate(), preview[size_t(r)].date);
        EXPECT_EQ(rows.value(r, 2).toString(), QStringLiteral("S"));
        EXPECT_EQ(rows.value(r, 3).toInt(), 1);
        EXPECT_EQ(rows.value(r, 4).toString(), QStringLiteral("D"));
        EXPECT_EQ(rows.value(r, 5).toString().trimmed(), preview[size_t(r)].route);
        EXPECT_EQ(rows.value(r, 6).toDouble(), preview[size_t(r)].stop.toDouble());
        EXPECT_EQ(rows.value(r, 7).toString(), QString());
        EXPECT_EQ(rows.value(r, 8).toInt(), -1);
        EXPECT_EQ(rows.value(r, 9).toString(), QStringLiteral("Pat Tester (AutoSched)"));
        EXPECT_EQ(rows.value(r, 10).toString(), QStringLiteral("C010"));
    }
    EXPECT_EQ(rows.value(0, 5).toString(), QStringLiteral("R1"));
    EXPECT_EQ(rows.value(0, 6).toDouble(), 4.0);

    // A named route gives stop 0; the episodic client's rows are "E".
    auto e = form(20);
    EXPECT_EQ(e->caption(), QStringLiteral("Auto-Create Episodic Deliveries"));
    e->setPage(TFormRecurrence::Page::Monthly);
    e->setInstance(RecurrencePattern::lastInstance);
    e->setInstanceKind(RecurrencePattern::InstanceKind::Thursday);
    e->setStart(QDate(2024, 5, 1));
    e->setOccurrences(3);
    e->setRouteIndex(3); // R3
    ui.answerNext(Answer::Yes);
    ASSERT_EQ(e->ActionOk(), TFormRecurrence::Outcome::Created);
    const ResultSet episodic = rowsOf(20);
    ASSERT_EQ(episodic.rowCount(), 3);
    EXPECT_EQ(episodic.value(0, 1).toDate(), QDate(2024, 5, 30));
    EXPECT_EQ(episodic.value(2, 1).toDate(), QDate(2024, 7, 25));
    EXPECT_EQ(episodic.value(0, 2).toString(), QStringLiteral("E"));
    EXPECT_EQ(episodic.value(0, 5).toString(), QStringLiteral("R3"));
    EXPECT_EQ(episodic.value(0, 6).toDouble(), 0.0);
}

TEST_P(AutoScheduleTest, DatesSurviveTheStoreAcrossDaylightSavingAndLeapDays)
{
    const char* old = std::getenv("TZ");
    const QByteArray oldZone = old ? QByteArray(old) : QByteArray();
    qputenv("TZ", "America/New_York");
    tzset();
    auto f = form(10);
    f->setLimitIndex(int(RecurrenceLimit::None));
    f->setStart(QDate(2024, 2, 27));
    f->setEndDate(QDate(2024, 3, 12)); // over the leap day and the spring change
    f->setEndKind(RecurrencePattern::End::ByDate);
    ui.answerNext(Answer::Yes);
    ASSERT_EQ(f->ActionOk(), TFormRecurrence::Outcome::Created);
    auto fall = form(10);
    fall->setLimitIndex(int(RecurrenceLimit::None));
    fall->setStart(QDate(2024, 11, 1));
    fall->setOccurrences(5);
    ui.answerNext(Answer::Yes);
    ASSERT_EQ(fall->ActionOk(), TFormRecurrence::Outcome::Created);
    if (old)
        qputenv("TZ", oldZone);
    else
        qunsetenv("TZ");
    tzset();

    const ResultSet rows = rowsOf(10);
    ASSERT_EQ(rows.rowCount(), 15 + 5);
    for (qsizetype r = 0; r < 15; ++r)
        EXPECT_EQ(rows.value(r, 1).toDate(), QDate(2024, 2, 27).addDays(r));
    for (qsizetype r = 0; r < 5; ++r)
        EXPECT_EQ(rows.value(15 + r, 1).toDate(), QDate(2024, 11, 1).addDays(r));
}

TEST_P(AutoScheduleTest, BadPatternsAndNoWriteNothing)
{
    auto f = form(10);
    f->setStart(QDate(2024, 3, 8));
    f->setEveryDays(0);
    EXPECT_FALSE(f->refusal().isEmpty());
    EXPECT_TRUE(f->preview().empty());
    EXPECT_EQ(f->ActionOk(), TFormRecurrence::Outcome::Stayed);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("The number of days between deliveries must be from 1 to 31.")});
    f->setEveryDays(1);
    f->setOccurrences(366);
    EXPECT_EQ(f->ActionOk(), TFormRecurrence::Outcome::Stayed);
    f->setOccurrences(3);
    f->setEndKind(RecurrencePattern::End::ByDate);
    f->setEndDate(QDate(2024, 3, 1)); // the start follows the end, as the screen does
    EXPECT_EQ(f->pattern().start, QDate(2024, 3, 1));
    f->setEndDate(QDate());
    EXPECT_FALSE(f->okEnabled());
    f->setPage(TFormRecurrence::Page::Weekly);
    f->setEndDate(QDate(2024, 4, 1));
    EXPECT_FALSE(f->okEnabled()) << "a weekly pattern needs a weekday";
    f->setWeekday(2, true);
    EXPECT_TRUE(f->okEnabled());
    EXPECT_EQ(f->ActionOk(), TFormRecurrence::Outcome::Closed) << "the question was answered No";
    EXPECT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries")), 0);

    // A service that no longer exists: told, and the run makes nothing.
    db().execute(QStringLiteral("Delete from Services where Service_ID = 1"));
    auto g = form(10);
    g->setStart(QDate(2024, 3, 8));
    g->setOccurrences(3);
    ui.clear();
    ui.answerNext(Answer::Yes);
    EXPECT_EQ(g->ActionOk(), TFormRecurrence::Outcome::Created);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("The Client's Service could not be located!")});
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{QStringLiteral("Completed the process but no deliveries were scheduled.")});
    EXPECT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries")), 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, AutoScheduleTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
