#pragma once

#include <QDate>
#include <QString>

namespace kb {

// The History texts of a missed delivery and the check-list lines built from
// them. Dates stand in the workstation's short date format, the way staff
// read and type them, and the lists read a line's date back from its text.
namespace miss_text {

// The workstation's short form of a date, "3/11/24".
QString shortDate(const QDate& date);
// Reads a date written by shortDate; a two-digit year is taken in the
// century that puts it no earlier than 1950. Invalid for anything else.
QDate parseShortDate(const QString& text);

// "3/11/24, Missed Delivery", or with " (Excused)" when recorded as excused.
QString recorded(const QDate& date, bool excused);
// A recorded miss excused later: its text followed by " (Excused)".
QString excused(const QString& event);
// The new row that stands for a cleared miss: "Missed delivery (3/11/24) deleted."
QString cleared(const QDate& date);

// A check-list line: the weekday name, "; " and the date, with " (Excused)"
// behind it when asked.
QString listLine(const QDate& date, bool showExcused = false);
// The date behind "; ", any text from "(" onward dropped.
QDate dateOfLine(const QString& line);

} // namespace miss_text

} // namespace kb
