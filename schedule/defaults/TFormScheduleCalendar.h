#pragma once

#include "defaults/ClientSchedule.h"

#include <QDate>
#include <QList>
#include <QString>

namespace kb {

class UserInterface;

// "Delivery Weeks": the dates on which a client's standing schedule can
// bring a delivery, over several months side by side. A date is marked
// "Delivery Possible" when its weekday box is checked on the client window
// and IsDeliveryWeek holds for the frequency chosen there; starting,
// stopping and suspensions don't enter, hence "possible".
class TFormScheduleCalendar
{
public:
    TFormScheduleCalendar(ClientSchedule schedule, const QDate& today, UserInterface& ui);

    static QString caption() { return QStringLiteral("Delivery Weeks"); }
    static QString formName() { return QStringLiteral("TFormScheduleCalendar"); }
    static QString hint() { return QStringLiteral("Delivery Possible"); }
    static QString printBusyText()
    {
        return QStringLiteral(
            "A print job is already in progress.\r\nPlease try again after printing is completed.");
    }

    const QString& clientName() const { return m_schedule.name; }
    // The calendar title of the chosen frequency ("\"A\" Delivery Weeks").
    QString title() const;

    // The span shown: from the first date through 30 days for each month.
    int monthsShown() const { return m_months; }
    void setMonthsShown(int months);
    QDate firstShown() const { return m_first; }
    QDate lastShown() const { return m_first.addDays(30 * m_months - 1); }
    // Opening shows from the beginning of the current week; a change of
    // month repaints from its first day.
    void showMonth(int year, int month);
    void showToday();

    bool isMarked(const QDate& date) const { return m_schedule.deliveryPossible(date); }
    // Every marked date of the shown span, in order.
    QList<QDate> markedDates() const;

    // "Print": false (the user told) while another print job of the screen runs.
    bool startPrint();
    void endPrint() { m_printing = false; }

private:
    ClientSchedule m_schedule;
    QDate m_today;
    UserInterface& m_ui;
    QDate m_first;
    int m_months = 3;
    bool m_printing = false;
};

} // namespace kb
