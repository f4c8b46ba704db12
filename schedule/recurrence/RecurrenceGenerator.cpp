#include "recurrence/RecurrenceGenerator.h"

#include <optional>

namespace kb {

namespace {

using Pattern = RecurrencePattern;

bool isWeekend(const QDate& date)
{
    return date.dayOfWeek() >= Qt::Saturday;
}

QDate lastOfMonth(const QDate& date)
{
    return QDate(date.year(), date.month(), date.daysInMonth());
}

// The outcome of looking at one monthly candidate: no date of the pattern
// there, a date that fails the day test ("good day, bad conditions"), or a
// date that makes a delivery ("good day, good conditions").
enum class Verdict { None, GoodDayBadConditions, GoodDayGoodConditions };

class Run
{
public:
    Run(const Pattern& pattern, const RecurrenceDayTest& test) : m_pattern(pattern), m_test(test) {}

    RecurrenceDates daily();
    RecurrenceDates weekly();
    RecurrenceDates monthly();

private:
    bool occurrencesLeft() const { return m_iterations <= m_pattern.occurrences; }
    bool afterOccurrences() const { return m_pattern.end == Pattern::End::AfterOccurrences; }
    // Counts one candidate; true when the limit is reached.
    bool tried() { return ++m_result.tries >= Pattern::maxTries; }
    Verdict make(const QDate& date);
    Verdict verifyDay(const QDate& candidate);
    Verdict verifyInstance(const QDate& candidate);
    std::optional<QDate> instanceDate(const QDate& candidate) const;
    bool ofKind(const QDate& date) const;

    const Pattern& m_pattern;
    const RecurrenceDayTest& m_test;
    RecurrenceDates m_result;
    int m_iterations = 1; // one more than the deliveries made
};

Verdict Run::make(const QDate& date)
{
    if (!m_test.passes(date)) return Verdict::GoodDayBadConditions;
    m_result.dates.push_back(date);
    return Verdict::GoodDayGoodConditions;
}

RecurrenceDates Run::daily()
{
    QDate candidate = m_pattern.start;
    while (afterOccurrences() ? occurrencesLeft() : candidate <= m_pattern.endDate) {
        const bool limitReached = tried();
        const bool kindFits = m_pattern.dailyKind == Pattern::DailyKind::Weekday      ? !isWeekend(candidate)
                              : m_pattern.dailyKind == Pattern::DailyKind::WeekendDay ? isWeekend(candidate)
                                                                                      : true;
        if (kindFits && make(candidate) == Verdict::GoodDayGoodConditions) ++m_iterations;
        candidate = candidate.addDays(
            m_pattern.dailyKind == Pattern::DailyKind::EveryNDays ? m_pattern.everyDays : 1);
        if (limitReached) break;
    }
    return m_result;
}

RecurrenceDates Run::weekly()
{
    QDate weekStart = m_pattern.start;
    while (afterOccurrences() ? occurrencesLeft() : weekStart <= m_pattern.endDate) {
        // With a count the window is always whole; by date it stops at the end.
        const QDate lastAllowed = afterOccurrences() ? weekStart.addDays(730) : m_pattern.endDate;
        int made = 0;
        for (int i = 0; i < 7; ++i) {
            const QDate date = weekStart.addDays(i);
            if (m_pattern.weekdays[size_t(date.dayOfWeek() - 1)] && date <= lastAllowed &&
                make(date) == Verdict::GoodDayGoodConditions)
                ++made;
        }
        m_iterations += made;
        const bool limitReached = tried();
        weekStart = weekStart.addDays(7 * m_pattern.everyWeeks);
        if (limitReached) break;
    }
    return m_result;
}

Verdict Run::verifyDay(const QDate& candidate)
{
    if (candidate.day() != m_pattern.dayOfMonth) return Verdict::None;
    return make(candidate);
}

bool Run::ofKind(const QDate& date) const
{
    using K = Pattern::InstanceKind;
    switch (m_pattern.instanceKind) {
    case K::Day:
        return true;
    case K::Weekday:
        return !isWeekend(date);
    case K::WeekendDay:
        return isWeekend(date);
    default:
        return date.dayOfWeek() == int(m_pattern.instanceKind) - int(K::Monday) + 1;
    }
}

std::optional<QDate> Run::instanceDate(const QDate& candidate) const
{
    if (m_pattern.instance == Pattern::lastInstance) {
        for (QDate date = lastOfMonth(candidate); date.month() == candidate.month(); date = date.addDays(-1))
            if (ofKind(date)) return date;
        return std::nullopt;
    }
    if (m_pattern.instanceKind == Pattern::InstanceKind::Day) {
        if (candidate.day() >= 5) return std::nullopt;
        return candidate.addDays(m_pattern.instance - 1);
    }
    int count = 0;
    for (QDate date = candidate; date.month() == candidate.month(); date = date.addDays(1))
        if (ofKind(date) && ++count == m_pattern.instance) return date;
    return std::nullopt;
}

Verdict Run::verifyInstance(const QDate& candidate)
{
    const std::optional<QDate> found = instanceDate(candidate);
    return found ? make(*found) : Verdict::None;
}

RecurrenceDates Run::monthly()
{
    const bool byDay = m_pattern.monthlyKind == Pattern::MonthlyKind::DayOfMonth;
    const int months = byDay ? m_pattern.everyMonthsByDay : m_pattern.everyMonthsByInstance;
    QDate candidate = m_pattern.start.day() == 1 ? m_pattern.start : GetNextMonthStart(m_pattern.start, 1);
    QDate endDate = m_pattern.endDate;
    if (!afterOccurrences() && endDate < candidate) endDate = lastOfMonth(candidate);
    const QDate endMonth = afterOccurrences() ? QDate() : lastOfMonth(endDate);
    while (afterOccurrences() ? occurrencesLeft() : candidate <= endMonth) {
        const Verdict verdict = byDay ? verifyDay(candidate) : verifyInstance(candidate);
        const bool limitReached = tried();
        switch (verdict) {
        case Verdict::GoodDayGoodConditions:
            ++m_iterations;
            candidate = GetNextMonthStart(candidate, months);
            break;
        case Verdict::GoodDayBadConditions:
            candidate = GetNextMonthStart(candidate, months);
            break;
        case Verdict::None:
            candidate = candidate.addDays(1);
            break;
        }
        if (limitReached) break;
    }
    return m_result;
}

} // namespace

bool RecurrenceDayTest::passes(const QDate& date) const
{
    if (!activeDays[size_t(date.dayOfWeek() - 1)]) return false;
    return !stopDate.isValid() || date <= stopDate;
}

QDate GetNextMonthStart(const QDate& date, int months)
{
    return QDate(date.year(), date.month(), 1).addMonths(months);
}

RecurrenceDates generateRecurrence(const RecurrencePattern& pattern, const RecurrenceDayTest& test)
{
    if (!pattern.refusal().isEmpty()) return {};
    Run run(pattern, test);
    switch (pattern.style) {
    case Pattern::Style::Daily:
        return run.daily();
    case Pattern::Style::Weekly:
        return run.weekly();
    case Pattern::Style::Monthly:
        return run.monthly();
    }
    return {};
}

} // namespace kb
