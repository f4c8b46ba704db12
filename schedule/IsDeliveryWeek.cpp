#include "IsDeliveryWeek.h"

namespace kb {

int deliveryWeekNumber(const QDate& date)
{
    static const QDate origin(1899, 12, 30);
    const qint64 days = origin.daysTo(date);
    // Integer division truncates like the whole part of the quotient.
    return int((days - 2) / 7);
}

bool IsDeliveryWeek(const QString& frequency, const QDate& date)
{
    const QString f = frequency.trimmed();
    if (f.isEmpty() || f == QLatin1String("A"))
        return true;
    if (f == QLatin1String("O"))
        return deliveryWeekNumber(date) % 2 != 0;
    if (f == QLatin1String("E"))
        return deliveryWeekNumber(date) % 2 == 0;
    bool ok = false;
    const int n = f.toInt(&ok);
    return ok && (date.day() - 1) / 7 + 1 == n;
}

} // namespace kb
