#include "defaults/Weekdays.h"

#include "dataset/DataSet.h"

namespace kb {

const std::array<Weekday, 7>& weekdays()
{
    static const std::array<Weekday, 7> days = {{
        {QStringLiteral("MON"), QStringLiteral("Monday"), QStringLiteral("DMON"), QStringLiteral("Mon")},
        {QStringLiteral("TUE"), QStringLiteral("Tuesday"), QStringLiteral("DTUE"), QStringLiteral("Tue")},
        {QStringLiteral("WED"), QStringLiteral("Wednesday"), QStringLiteral("DWED"), QStringLiteral("Wed")},
        {QStringLiteral("THU"), QStringLiteral("Thursday"), QStringLiteral("DTHU"), QStringLiteral("Thu")},
        {QStringLiteral("FRI"), QStringLiteral("Friday"), QStringLiteral("DFRI"), QStringLiteral("Fri")},
        {QStringLiteral("SAT"), QStringLiteral("Saturday"), QStringLiteral("DSAT"), QStringLiteral("Sat")},
        {QStringLiteral("SUN"), QStringLiteral("Sunday"), QStringLiteral("DSUN"), QStringLiteral("Sun")},
    }};
    return days;
}

int weekdayIndex(const QDate& date)
{
    return date.dayOfWeek() - 1;
}

const Weekday& weekdayOf(const QDate& date)
{
    return weekdays()[size_t(weekdayIndex(date))];
}

void invertWeekdays(DataSet& set, WeekdayGroup group)
{
    if (!set.isActive()) return;
    if (set.state() == DataSet::State::Browse) set.edit();
    const int first = group == WeekdayGroup::Weekends ? 5 : 0;
    const int last = group == WeekdayGroup::Weekdays ? 4 : 6;
    for (int d = first; d <= last; ++d) {
        const QString& column = weekdays()[size_t(d)].column;
        set.setFieldValue(column, !set.fieldValue(column).toBool());
    }
}

} // namespace kb
