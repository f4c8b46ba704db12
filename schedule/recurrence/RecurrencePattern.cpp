#include "recurrence/RecurrencePattern.h"

#include <algorithm>

namespace kb {

namespace {

QString outOfRange(const QString& what, int max)
{
    return QStringLiteral("The number of %1 must be from 1 to %2.").arg(what).arg(max);
}

} // namespace

QString RecurrencePattern::refusal() const
{
    switch (style) {
    case Style::Daily:
        if (dailyKind == DailyKind::EveryNDays && (everyDays < 1 || everyDays > maxEveryDays))
            return outOfRange(QStringLiteral("days between deliveries"), maxEveryDays);
        break;
    case Style::Weekly:
        if (everyWeeks < 1 || everyWeeks > maxEveryWeeks)
            return outOfRange(QStringLiteral("weeks between deliveries"), maxEveryWeeks);
        if (std::none_of(weekdays.begin(), weekdays.end(), [](bool on) { return on; }))
            return QStringLiteral("Check at least one weekday for a weekly pattern.");
        break;
    case Style::Monthly:
        if (monthlyKind == MonthlyKind::DayOfMonth) {
            if (dayOfMonth < 1 || dayOfMonth > maxDayOfMonth)
                return QStringLiteral("The day of the month must be from 1 to %1.").arg(maxDayOfMonth);
            if (everyMonthsByDay < 1 || everyMonthsByDay > maxEveryMonths)
                return outOfRange(QStringLiteral("months between deliveries"), maxEveryMonths);
        } else {
            if (instance != lastInstance && (instance < 1 || instance > 4))
                return QStringLiteral("The instance must be first, second, third, fourth or last.");
            if (everyMonthsByInstance < 1 || everyMonthsByInstance > maxEveryMonths)
                return outOfRange(QStringLiteral("months between deliveries"), maxEveryMonths);
        }
        break;
    }
    if (!start.isValid()) return QStringLiteral("Choose the date on which the deliveries start.");
    if (end == End::AfterOccurrences) {
        if (occurrences < 1 || occurrences > maxOccurrences)
            return outOfRange(QStringLiteral("occurrences"), maxOccurrences);
    } else {
        if (!endDate.isValid()) return QStringLiteral("Choose the date by which the deliveries end.");
        if (endDate < start)
            return QStringLiteral("The end date (%1) is earlier than the start date (%2).")
                .arg(endDate.toString(Qt::ISODate), start.toString(Qt::ISODate));
    }
    return {};
}

QString instanceWord(int instance)
{
    switch (instance) {
    case 1:
        return QStringLiteral("first");
    case 2:
        return QStringLiteral("second");
    case 3:
        return QStringLiteral("third");
    case 4:
        return QStringLiteral("fourth");
    default:
        return QStringLiteral("last");
    }
}

QString instanceKindWord(RecurrencePattern::InstanceKind kind)
{
    using K = RecurrencePattern::InstanceKind;
    switch (kind) {
    case K::Day:
        return QStringLiteral("day");
    case K::Weekday:
        return QStringLiteral("weekday");
    case K::WeekendDay:
        return QStringLiteral("weekend day");
    default:
        break;
    }
    static const char* const names[] = {"Monday", "Tuesday",  "Wednesday", "Thursday",
                                        "Friday", "Saturday", "Sunday"};
    return QString::fromLatin1(names[int(kind) - int(K::Monday)]);
}

} // namespace kb
