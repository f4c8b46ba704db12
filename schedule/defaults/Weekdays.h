#pragma once

#include <QDate>
#include <QString>

#include <array>

namespace kb {

class DataSet;

// The weekdays of a standing schedule, Monday = 0 to Sunday = 6: the code
// Defdels.Del_Day and Deliveri.DOW keep, the boolean column of Clients and
// FundUses, the Config column of the agency's service days, and the caption
// of a day button.
struct Weekday
{
    QString code;      // "MON"
    QString column;    // "Monday"
    QString configDay; // "DMON"
    QString caption;   // "Mon"
};

const std::array<Weekday, 7>& weekdays();
// 0 for Monday ... 6 for Sunday.
int weekdayIndex(const QDate& date);
const Weekday& weekdayOf(const QDate& date);

// Which boxes the weekday pop-up commands invert.
enum class WeekdayGroup { Weekdays, Weekends, AllDays };

// Inverts each box of the group in the current row of a set with the
// weekday columns (a client, a funding use), putting the row into edit
// first; a mixed week stays mixed.
void invertWeekdays(DataSet& set, WeekdayGroup group);

} // namespace kb
