#pragma once

#include "recurrence/RecurrencePattern.h"

#include <QDate>

#include <vector>

namespace kb {

// Which dates may carry a generated delivery: an active weekday (by the
// screen's limit: the service's and agency's delivery days, the agency's,
// or all) and, when the client has a stop date, not after it. The stop date
// itself passes, although a run does not serve it; the start date is not
// looked at.
struct RecurrenceDayTest
{
    WeekdayFlags activeDays = {true, true, true, true, true, true, true};
    QDate stopDate; // invalid: no stop date

    bool passes(const QDate& date) const;
};

// The dates a pattern makes, in the order they are made, and how many
// candidates (days, weekly windows or month days) were looked at.
struct RecurrenceDates
{
    std::vector<QDate> dates;
    int tries = 0;
};

// Walks the calendar once by the pattern and gives the dates that qualify;
// nothing is written. The pattern must be one that refusal() lets through.
// Every form stops after RecurrencePattern::maxTries candidates, whatever
// its end condition says, so a pattern that rarely matches (day 31, a
// service without delivery days) ends with fewer dates than asked.
//
// The forms keep the agency's long-standing reading of a pattern:
// - every n days counts calendar days, active or not;
// - a weekly window is seven days from the start date (not from a Monday)
//   and is finished whole, so the occurrences can be overshot;
// - a monthly pattern begins on the first of the month after the start
//   unless the start is a first; "by date" runs to the end of the end
//   date's month;
// - day d walks day by day to d, so a month without that day yields it in
//   the next month, and each walked day counts as a candidate;
// - an instance found on a day that fails the day test uses up its month.
RecurrenceDates generateRecurrence(const RecurrencePattern& pattern, const RecurrenceDayTest& test);

// The first of the month m months after date's month.
QDate GetNextMonthStart(const QDate& date, int months);

} // namespace kb
