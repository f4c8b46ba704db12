#include "defaults/TFormScheduleCalendar.h"

#include "UserInterface.h"
#include "defaults/DeliveryFrequency.h"

#include <algorithm>

namespace kb {

TFormScheduleCalendar::TFormScheduleCalendar(ClientSchedule schedule, const QDate& today, UserInterface& ui)
    : m_schedule(std::move(schedule)), m_today(today), m_ui(ui)
{
    showToday();
}

QString TFormScheduleCalendar::title() const
{
    return deliveryFrequency(m_schedule.frequency).calendarTitle;
}

void TFormScheduleCalendar::setMonthsShown(int months)
{
    m_months = std::clamp(months, 1, 24);
}

void TFormScheduleCalendar::showMonth(int year, int month)
{
    const QDate first(year, month, 1);
    if (first.isValid()) m_first = first;
}

void TFormScheduleCalendar::showToday()
{
    m_first = m_today.addDays(1 - m_today.dayOfWeek());
}

QList<QDate> TFormScheduleCalendar::markedDates() const
{
    QList<QDate> dates;
    for (QDate d = m_first; d <= lastShown(); d = d.addDays(1))
        if (isMarked(d)) dates.append(d);
    return dates;
}

bool TFormScheduleCalendar::startPrint()
{
    if (m_printing) {
        m_ui.information(printBusyText());
        return false;
    }
    m_printing = true;
    return true;
}

} // namespace kb
