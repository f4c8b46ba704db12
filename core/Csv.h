#pragma once

#include "store/ResultSet.h"

#include <QStringList>
#include <QTextStream>

namespace kb {

// The plain CSV of every headless command and of table export: a header of
// column names, dates as YYYY-MM-DD, date-times as YYYY-MM-DD HH:MM:SS,
// booleans true/false, numbers in the C locale, null as an empty field.
// A record whose only field is empty is written as "", so that it stays a
// record: readers skip an empty line as no record at all.
QString csvText(const QVariant& value);
QString csvField(const QString& text); // quotes when needed
void writeCsvHeader(QTextStream& out, const QStringList& names);
void writeCsvRecord(QTextStream& out, const QVariantList& values);
void writeCsv(QTextStream& out, const ResultSet& result);

// Reads one record (it may span lines inside quotes); false at the end.
// A field that was quoted is never null; an empty unquoted field is.
struct CsvRecord
{
    QStringList fields;
    QList<bool> quoted;
};
bool readCsvRecord(QTextStream& in, CsvRecord& record);

} // namespace kb
