#pragma once

#include "store/ResultSet.h"

#include <QString>

namespace kb::reports {

// Reads a CSV file as the commands write it (a header line of column
// names, dates as YYYY-MM-DD, date-times as YYYY-MM-DD HH:MM:SS, booleans
// true/false, an empty unquoted field null) into rows for a pipe. A column
// whose every value reads as a whole number, a number, a boolean, a date or
// a date-time gets that type, so that sums, formats and links work on it.
//
// Bounded: at most MaxCsvColumns columns and MaxCsvRows rows; a longer file
// or a row with more fields than the header is refused with MessageError.
inline constexpr int MaxCsvColumns = 1000;
inline constexpr qsizetype MaxCsvRows = 2000000;

ResultSet readCsvRows(const QString& path);
// The same from text in memory; name stands for the file in messages.
ResultSet readCsvText(const QString& text, const QString& name);

} // namespace kb::reports
