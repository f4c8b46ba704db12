#pragma once

#include <QDate>
#include <QString>

#include <array>

namespace kb {

// Seven flags, Monday first.
using WeekdayFlags = std::array<bool, 7>;

// What the user sets on the Auto Schedule screen. The pattern is never
// stored: it is turned into dated deliveries once and forgotten.
struct RecurrencePattern
{
    enum class Style { Daily, Weekly, Monthly };
    // "Every n day(s)", "Every weekday", "Every weekend day".
    enum class DailyKind { EveryNDays, Weekday, WeekendDay };
    // "Day d of every m month(s)", "The first Monday of every m month(s)".
    enum class MonthlyKind { DayOfMonth, Instance };
    // What "The <instance> <kind>" counts: any day, Monday to Friday,
    // Saturday or Sunday, or one weekday (Monday = 3 ... Sunday = 9).
    enum class InstanceKind {
        Day,
        Weekday,
        WeekendDay,
        Monday,
        Tuesday,
        Wednesday,
        Thursday,
        Friday,
        Saturday,
        Sunday
    };
    enum class End { AfterOccurrences, ByDate };

    // The ranges the screen's spins allow; a pattern outside them is refused.
    static constexpr int maxEveryDays = 31;
    static constexpr int maxEveryWeeks = 52;
    static constexpr int maxDayOfMonth = 31;
    static constexpr int maxEveryMonths = 12;
    static constexpr int maxOccurrences = 365;
    // However the range ends, the generator looks at no more candidates
    // (days, weekly windows or month days) than this.
    static constexpr int maxTries = 375;
    // "last" as an instance number.
    static constexpr int lastInstance = -1;

    Style style = Style::Daily;

    DailyKind dailyKind = DailyKind::EveryNDays;
    int everyDays = 1;

    int everyWeeks = 1;
    WeekdayFlags weekdays = {false, false, false, false, false, false, false};

    MonthlyKind monthlyKind = MonthlyKind::DayOfMonth;
    int dayOfMonth = 1;
    int everyMonthsByDay = 1; // m of "Day d of every m month(s)"
    int instance = 1;         // 1 to 4, or lastInstance
    InstanceKind instanceKind = InstanceKind::Day;
    int everyMonthsByInstance = 1; // m of "The ... of every m month(s)"

    QDate start;
    End end = End::AfterOccurrences;
    int occurrences = 1;
    QDate endDate;

    // The reason the pattern cannot be run, in the user's words; empty when
    // it can. Catches what the screen's controls keep from happening and a
    // command line does not: a missing or reversed range, a step of zero, more
    // occurrences than allowed, a weekly pattern without a weekday.
    QString refusal() const;
};

// "first" ... "fourth", "last"; "day", "weekday", "weekend day", "Monday" ...
// "Sunday": the words of the screen's lists.
QString instanceWord(int instance);
QString instanceKindWord(RecurrencePattern::InstanceKind kind);

} // namespace kb
