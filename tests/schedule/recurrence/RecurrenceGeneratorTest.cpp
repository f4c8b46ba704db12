// The dates of every recurrence form, checked against a second calculation
// that works differently from the generator: it scans the calendar or jumps
// straight to the matching day of each month with arithmetic, where the
// generator walks candidate by candidate. Both must agree over years that
// hold month ends, leap days and the changes to and from daylight saving
// time, and on the try limit that ends rare patterns early.

#include "recurrence/RecurrenceGenerator.h"

#include <gtest/gtest.h>

#include <QTimeZone>

#include <cstdlib>
#include <ctime>
#include <vector>

using namespace kb;
using Pattern = RecurrencePattern;

namespace {

using Dates = std::vector<QDate>;

const WeekdayFlags allDays = {true, true, true, true, true, true, true};
const WeekdayFlags monToFri = {true, true, true, true, true, false, false};

bool weekend(const QDate& d)
{
    return d.dayOfWeek() >= 6;
}

RecurrenceDayTest dayTest(WeekdayFlags active = allDays, QDate stop = {})
{
    RecurrenceDayTest t;
    t.activeDays = active;
    t.stopDate = stop;
    return t;
}

Dates generated(const Pattern& p, const RecurrenceDayTest& t)
{
    return generateRecurrence(p, t).dates;
}

std::string show(const Dates& dates)
{
    std::string s;
    for (const QDate& d : dates)
        s += d.toString(Qt::ISODate).toStdString() + ' ';
    return s;
}

#define EXPECT_DATES(actual, expected)                                                                       \
    EXPECT_EQ(actual, expected) << show(actual) << "\n vs " << show(expected)

// ---- the second calculation ----

// Every n days: candidate k is start + k*n; the first maxTries candidates
// are looked at, and those of the right kind that pass the test are kept
// up to the count or the end date.
Dates expectedDaily(const Pattern& p, const RecurrenceDayTest& t)
{
    Dates out;
    const int step = p.dailyKind == Pattern::DailyKind::EveryNDays ? p.everyDays : 1;
    for (QDate d = p.start; p.start.daysTo(d) < qint64(step) * Pattern::maxTries; d = d.addDays(1)) {
        if (p.start.daysTo(d) % step != 0) continue;
        if (p.end == Pattern::End::ByDate && d > p.endDate) break;
        if (p.dailyKind == Pattern::DailyKind::Weekday && weekend(d)) continue;
        if (p.dailyKind == Pattern::DailyKind::WeekendDay && !weekend(d)) continue;
        if (t.activeDays[size_t(d.dayOfWeek() - 1)] && (!t.stopDate.isValid() || d <= t.stopDate))
            out.push_back(d);
        if (p.end == Pattern::End::AfterOccurrences && int(out.size()) == p.occurrences) break;
    }
    return out;
}

// Weekly: a day belongs to window j = days / (7n) when days mod 7n < 7.
// With a count, windows are kept whole until the count is reached.
Dates expectedWeekly(const Pattern& p, const RecurrenceDayTest& t)
{
    Dates out;
    const qint64 period = 7 * qint64(p.everyWeeks);
    qint64 windowOfLast = -1;
    for (QDate d = p.start; p.start.daysTo(d) < period * Pattern::maxTries; d = d.addDays(1)) {
        const qint64 offset = p.start.daysTo(d);
        const qint64 window = offset / period;
        if (offset % period >= 7) continue;
        if (p.end == Pattern::End::AfterOccurrences && int(out.size()) >= p.occurrences &&
            window != windowOfLast)
            break;
        if (p.end == Pattern::End::ByDate && d > p.endDate) break;
        if (!p.weekdays[size_t(d.dayOfWeek() - 1)]) continue;
        if (!t.activeDays[size_t(d.dayOfWeek() - 1)] || (t.stopDate.isValid() && d > t.stopDate)) continue;
        out.push_back(d);
        windowOfLast = window;
    }
    return out;
}

QDate firstMonth(const Pattern& p)
{
    return p.start.day() == 1 ? p.start : QDate(p.start.year(), p.start.month(), 1).addMonths(1);
}

QDate endOfMonth(QDate d)
{
    return QDate(d.year(), d.month(), d.daysInMonth());
}

// Day d: from a month's first, the next date with day d is in the first
// month long enough, and every day on the way counts as a candidate.
Dates expectedMonthlyByDay(const Pattern& p, const RecurrenceDayTest& t)
{
    Dates out;
    QDate from = firstMonth(p);
    const QDate endMonth = p.end == Pattern::End::ByDate ? endOfMonth(std::max(p.endDate, from)) : QDate();
    qint64 tries = 0;
    while (true) {
        QDate month(from.year(), from.month(), 1);
        while (month.daysInMonth() < p.dayOfMonth)
            month = month.addMonths(1);
        const QDate hit(month.year(), month.month(), p.dayOfMonth);
        tries += from.daysTo(hit) + 1;
        if (tries > Pattern::maxTries) break;
        if (p.end == Pattern::End::ByDate && hit > endMonth) break;
        if (t.activeDays[size_t(hit.dayOfWeek() - 1)] && (!t.stopDate.isValid() || hit <= t.stopDate))
            out.push_back(hit);
        if (p.end == Pattern::End::AfterOccurrences && int(out.size()) == p.occurrences) break;
        if (tries == Pattern::maxTries) break;
        from = QDate(hit.year(), hit.month(), 1).addMonths(p.everyMonthsByDay);
    }
    return out;
}

// The nth day of a kind in a month, by arithmetic for one weekday and by a
// list of the month's days for the other kinds.
QDate instanceIn(const QDate& first, int instance, Pattern::InstanceKind kind)
{
    using K = Pattern::InstanceKind;
    const int days = first.daysInMonth();
    if (kind >= K::Monday) {
        const int weekday = int(kind) - int(K::Monday) + 1;
        if (instance == Pattern::lastInstance) {
            const QDate last(first.year(), first.month(), days);
            return last.addDays(-((last.dayOfWeek() - weekday + 7) % 7));
        }
        return first.addDays((weekday - first.dayOfWeek() + 7) % 7 + 7 * (instance - 1));
    }
    std::vector<QDate> ofKind;
    for (int day = 1; day <= days; ++day) {
        const QDate d(first.year(), first.month(), day);
        if (kind == K::Day || (kind == K::Weekday && !weekend(d)) || (kind == K::WeekendDay && weekend(d)))
            ofKind.push_back(d);
    }
    return instance == Pattern::lastInstance ? ofKind.back() : ofKind[size_t(instance - 1)];
}

Dates expectedMonthlyByInstance(const Pattern& p, const RecurrenceDayTest& t)
{
    Dates out;
    QDate month = firstMonth(p);
    const QDate endMonth = p.end == Pattern::End::ByDate ? endOfMonth(std::max(p.endDate, month)) : QDate();
    for (int tries = 1; tries <= Pattern::maxTries;
         ++tries, month = month.addMonths(p.everyMonthsByInstance)) {
        if (p.end == Pattern::End::ByDate && month > endMonth) break;
        const QDate hit = instanceIn(month, p.instance, p.instanceKind);
        if (t.activeDays[size_t(hit.dayOfWeek() - 1)] && (!t.stopDate.isValid() || hit <= t.stopDate))
            out.push_back(hit);
        if (p.end == Pattern::End::AfterOccurrences && int(out.size()) == p.occurrences) break;
    }
    return out;
}

Pattern daily(QDate start, int every, int count)
{
    Pattern p;
    p.start = start;
    p.everyDays = every;
    p.occurrences = count;
    return p;
}

Pattern byDate(Pattern p, QDate end)
{
    p.end = Pattern::End::ByDate;
    p.endDate = end;
    return p;
}

// The generator works on calendar dates; these tests run it in a zone with
// daylight saving so that a slip to date-times would show as a lost or
// doubled day around the changes (10 March and 3 November 2024 there).
class RecurrenceGenerator : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const char* old = std::getenv("TZ");
        m_oldZone = old ? QByteArray(old) : QByteArray();
        m_hadZone = old != nullptr;
        qputenv("TZ", "America/New_York");
        tzset();
    }
    void TearDown() override
    {
        if (m_hadZone)
            qputenv("TZ", m_oldZone);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    QByteArray m_oldZone;
    bool m_hadZone = false;
};

TEST_F(RecurrenceGenerator, DailyFormsAgreeWithTheCalendarScanOverSeveralYears)
{
    ASSERT_TRUE(QTimeZone::systemTimeZone().isDaylightTime(QDateTime(QDate(2024, 7, 1), QTime(12, 0))));
    // Every day across the spring and autumn changes: no day lost or doubled.
    const Dates dst = generated(byDate(daily(QDate(2024, 3, 8), 1, 1), QDate(2024, 3, 12)), dayTest());
    EXPECT_DATES(dst, (Dates{{2024, 3, 8}, {2024, 3, 9}, {2024, 3, 10}, {2024, 3, 11}, {2024, 3, 12}}));
    const Dates fall = generated(daily(QDate(2024, 11, 2), 1, 3), dayTest());
    EXPECT_DATES(fall, (Dates{{2024, 11, 2}, {2024, 11, 3}, {2024, 11, 4}}));

    for (int every : {1, 2, 3, 5, 7, 13, 31})
        for (const QDate start : {QDate(2023, 2, 27), QDate(2024, 2, 28), QDate(2024, 10, 30)}) {
            Pattern p = daily(start, every, 365);
            EXPECT_DATES(generated(p, dayTest()), expectedDaily(p, dayTest())) << "every " << every;
            EXPECT_DATES(generated(p, dayTest(monToFri)), expectedDaily(p, dayTest(monToFri)));
            p = byDate(p, start.addYears(4));
            EXPECT_DATES(generated(p, dayTest(monToFri, QDate(2026, 6, 30))),
                         expectedDaily(p, dayTest(monToFri, QDate(2026, 6, 30))));
        }
    for (auto kind : {Pattern::DailyKind::Weekday, Pattern::DailyKind::WeekendDay}) {
        Pattern p = daily(QDate(2024, 2, 26), 1, 200);
        p.dailyKind = kind;
        EXPECT_DATES(generated(p, dayTest()), expectedDaily(p, dayTest()));
        p = byDate(p, QDate(2025, 3, 31));
        EXPECT_DATES(generated(p, dayTest()), expectedDaily(p, dayTest()));
    }
    // The leap day is an ordinary day.
    const Dates leap = generated(daily(QDate(2024, 2, 27), 2, 3), dayTest());
    EXPECT_DATES(leap, (Dates{{2024, 2, 27}, {2024, 2, 29}, {2024, 3, 2}}));
    // Every 2 days limited to weekdays loses what falls on a weekend.
    const Dates lost = generated(daily(QDate(2024, 3, 8), 2, 3), dayTest(monToFri));
    EXPECT_DATES(lost, (Dates{{2024, 3, 8}, {2024, 3, 12}, {2024, 3, 14}}));
    // By date: nothing after the end; the 375-day limit ends a long range early.
    const Dates longRange = generated(byDate(daily(QDate(2024, 1, 1), 1, 1), QDate(2026, 1, 1)), dayTest());
    ASSERT_EQ(longRange.size(), 375u);
    EXPECT_EQ(longRange.back(), QDate(2024, 1, 1).addDays(374));
}

TEST_F(RecurrenceGenerator, WeeklyWindowsAgreeWithTheCalendarScan)
{
    // Every 2 weeks from a Wednesday, Monday and Friday: the first window
    // holds that week's Friday and the next Monday; the next starts 14 days on.
    Pattern p;
    p.style = Pattern::Style::Weekly;
    p.everyWeeks = 2;
    p.weekdays = {true, false, false, false, true, false, false};
    p.start = QDate(2024, 3, 6);
    p.occurrences = 4;
    EXPECT_DATES(generated(p, dayTest()), (Dates{{2024, 3, 8}, {2024, 3, 11}, {2024, 3, 22}, {2024, 3, 25}}));
    // Three weekdays and four occurrences: the second window is finished whole.
    p.everyWeeks = 1;
    p.weekdays = {true, false, true, false, true, false, false};
    EXPECT_EQ(generated(p, dayTest()).size(), 6u);

    for (int every : {1, 2, 3, 4, 52})
        for (const WeekdayFlags& days :
             {WeekdayFlags{false, true, false, false, false, false, false},
              WeekdayFlags{true, false, true, false, true, false, true}, allDays}) {
            Pattern w = p;
            w.everyWeeks = every;
            w.weekdays = days;
            w.start = QDate(2023, 12, 29);
            w.occurrences = 365;
            EXPECT_DATES(generated(w, dayTest()), expectedWeekly(w, dayTest())) << "every " << every;
            EXPECT_DATES(generated(w, dayTest(monToFri, QDate(2027, 2, 28))),
                         expectedWeekly(w, dayTest(monToFri, QDate(2027, 2, 28))));
            w = byDate(w, QDate(2028, 3, 1));
            EXPECT_DATES(generated(w, dayTest()), expectedWeekly(w, dayTest())) << "by date, every " << every;
        }
}

TEST_F(RecurrenceGenerator, MonthlyByDayWalksIntoTheNextMonthWhereTheDayIsMissing)
{
    Pattern p;
    p.style = Pattern::Style::Monthly;
    p.start = QDate(2024, 1, 1);
    p.dayOfMonth = 31;
    p.occurrences = 12;
    // Day 31: months without it yield the next month's 31st; the walk costs
    // a candidate a day, so the limit ends the run after seven.
    const RecurrenceDates d31 = generateRecurrence(p, dayTest());
    EXPECT_DATES(d31.dates, (Dates{{2024, 1, 31},
                                   {2024, 3, 31},
                                   {2024, 5, 31},
                                   {2024, 7, 31},
                                   {2024, 8, 31},
                                   {2024, 10, 31},
                                   {2024, 12, 31}}));
    EXPECT_EQ(d31.tries, Pattern::maxTries);

    // Day 29: February only in leap years; otherwise March takes it. A
    // start after the first waits for the next month.
    p.dayOfMonth = 29;
    p.start = QDate(2023, 1, 15);
    p.occurrences = 1;
    EXPECT_DATES(generated(p, dayTest()), (Dates{{2023, 3, 29}}));
    p.start = QDate(2023, 7, 1);
    p.occurrences = 9;
    const Dates d29 = generated(p, dayTest());
    ASSERT_EQ(d29.size(), 9u);
    EXPECT_EQ(d29[7], QDate(2024, 2, 29));
    EXPECT_EQ(d29[8], QDate(2024, 3, 29));

    for (int day : {1, 15, 28, 29, 30, 31})
        for (int every : {1, 2, 5, 12})
            for (const QDate start : {QDate(2023, 11, 1), QDate(2024, 1, 31), QDate(2027, 12, 2)}) {
                Pattern m = p;
                m.dayOfMonth = day;
                m.everyMonthsByDay = every;
                m.start = start;
                m.occurrences = 365;
                EXPECT_DATES(generated(m, dayTest()), expectedMonthlyByDay(m, dayTest()))
                    << "day " << day << " every " << every;
                EXPECT_DATES(generated(m, dayTest(monToFri, QDate(2030, 1, 1))),
                             expectedMonthlyByDay(m, dayTest(monToFri, QDate(2030, 1, 1))));
                m = byDate(m, start.addYears(5));
                EXPECT_DATES(generated(m, dayTest()), expectedMonthlyByDay(m, dayTest()));
            }
    // By date runs to the end of the end date's month.
    Pattern m = byDate(p, QDate(2024, 3, 2));
    m.dayOfMonth = 15;
    m.start = QDate(2024, 1, 1);
    EXPECT_DATES(generated(m, dayTest()), (Dates{{2024, 1, 15}, {2024, 2, 15}, {2024, 3, 15}}));
}

TEST_F(RecurrenceGenerator, MonthlyByInstanceAgreesWithArithmeticOverYears)
{
    using K = Pattern::InstanceKind;
    Pattern p;
    p.style = Pattern::Style::Monthly;
    p.monthlyKind = Pattern::MonthlyKind::Instance;
    p.start = QDate(2024, 2, 1); // the first of a month can itself be a date
    p.instance = 1;
    p.instanceKind = K::Thursday;
    p.occurrences = 2;
    EXPECT_DATES(generated(p, dayTest()), (Dates{{2024, 2, 1}, {2024, 3, 7}}));
    // The last Friday: in a month with five Fridays it is the fifth.
    p.instance = Pattern::lastInstance;
    p.instanceKind = K::Friday;
    p.occurrences = 3;
    EXPECT_DATES(generated(p, dayTest()), (Dates{{2024, 2, 23}, {2024, 3, 29}, {2024, 4, 26}}));
    // The last day of February in a leap year and the next.
    p.instanceKind = K::Day;
    p.occurrences = 13;
    const Dates lastDays = generated(p, dayTest());
    EXPECT_EQ(lastDays.front(), QDate(2024, 2, 29));
    EXPECT_EQ(lastDays.back(), QDate(2025, 2, 28));
    // The last weekend day with the limit to weekdays: every month fails and
    // uses up a candidate, so a count of three ends by the limit with nothing.
    p.instanceKind = K::WeekendDay;
    p.occurrences = 3;
    const RecurrenceDates none = generateRecurrence(p, dayTest(monToFri));
    EXPECT_TRUE(none.dates.empty());
    EXPECT_EQ(none.tries, Pattern::maxTries);

    for (int instance : {1, 2, 3, 4, Pattern::lastInstance})
        for (int kind = int(K::Day); kind <= int(K::Sunday); ++kind)
            for (int every : {1, 3, 12}) {
                Pattern m = p;
                m.instance = instance;
                m.instanceKind = K(kind);
                m.everyMonthsByInstance = every;
                m.start = QDate(2023, 10, 17);
                m.occurrences = 60;
                EXPECT_DATES(generated(m, dayTest()), expectedMonthlyByInstance(m, dayTest()))
                    << instanceWord(instance).toStdString() << ' ' << instanceKindWord(K(kind)).toStdString();
                EXPECT_DATES(generated(m, dayTest(monToFri, QDate(2027, 5, 31))),
                             expectedMonthlyByInstance(m, dayTest(monToFri, QDate(2027, 5, 31))));
                m = byDate(m, QDate(2031, 2, 2));
                EXPECT_DATES(generated(m, dayTest()), expectedMonthlyByInstance(m, dayTest()));
            }
}

TEST_F(RecurrenceGenerator, TheStopDateIsTheLastDatePossible)
{
    const RecurrenceDayTest t = dayTest(allDays, QDate(2024, 3, 10));
    EXPECT_DATES(generated(daily(QDate(2024, 3, 8), 1, 10), t),
                 (Dates{{2024, 3, 8}, {2024, 3, 9}, {2024, 3, 10}}));
    // A service without delivery days: three occurrences never come, the
    // limit ends the run.
    const RecurrenceDates nothing = generateRecurrence(daily(QDate(2024, 3, 8), 1, 3), dayTest({}));
    EXPECT_TRUE(nothing.dates.empty());
    EXPECT_EQ(nothing.tries, Pattern::maxTries);
}

TEST_F(RecurrenceGenerator, BadPatternsAreRefusedAndMakeNoDate)
{
    Pattern p = daily(QDate(2024, 3, 8), 0, 3);
    EXPECT_EQ(p.refusal(), QStringLiteral("The number of days between deliveries must be from 1 to 31."));
    EXPECT_TRUE(generated(p, dayTest()).empty());
    p = daily(QDate(2024, 3, 8), 1, 366);
    EXPECT_EQ(p.refusal(), QStringLiteral("The number of occurrences must be from 1 to 365."));
    EXPECT_TRUE(generated(p, dayTest()).empty());
    p = byDate(daily(QDate(2024, 3, 8), 1, 1), QDate(2024, 3, 7));
    EXPECT_EQ(p.refusal(),
              QStringLiteral("The end date (2024-03-07) is earlier than the start date (2024-03-08)."));
    EXPECT_TRUE(generated(p, dayTest()).empty());
    p = daily(QDate(), 1, 1);
    EXPECT_FALSE(p.refusal().isEmpty());
    p = daily(QDate(2024, 3, 8), 1, 1);
    p.style = Pattern::Style::Weekly;
    EXPECT_EQ(p.refusal(), QStringLiteral("Check at least one weekday for a weekly pattern."));
    p.weekdays[0] = true;
    p.everyWeeks = 0;
    EXPECT_FALSE(p.refusal().isEmpty());
    p.style = Pattern::Style::Monthly;
    p.dayOfMonth = 32;
    EXPECT_EQ(p.refusal(), QStringLiteral("The day of the month must be from 1 to 31."));
    p.monthlyKind = Pattern::MonthlyKind::Instance;
    p.everyMonthsByInstance = 13;
    EXPECT_EQ(p.refusal(), QStringLiteral("The number of months between deliveries must be from 1 to 12."));
    p.everyMonthsByInstance = 12;
    p.instance = 5;
    EXPECT_FALSE(p.refusal().isEmpty());
    p.instance = 4;
    EXPECT_TRUE(p.refusal().isEmpty());
}

} // namespace
