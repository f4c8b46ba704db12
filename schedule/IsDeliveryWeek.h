#pragma once

#include <QDate>
#include <QString>

namespace kb {

// The week number of a date: the whole part of (D - 2) / 7, where D counts
// the days from 30 December 1899. Weeks run from Monday to Sunday.
int deliveryWeekNumber(const QDate& date);

// Whether a date falls in the delivery weeks of a client's Ongoing_Frequency:
// null, empty or " " and "A" every week; "O" odd weeks ("A Weeks"), "E" even
// weeks ("B Weeks"); a whole number n the nth occurrence of the date's
// weekday in its month. A value that is none of these never delivers. The
// run, the schedule calendar and the verification of conditions all ask
// this one routine.
bool IsDeliveryWeek(const QString& frequency, const QDate& date);

} // namespace kb
