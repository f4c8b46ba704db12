#include "data/CsvRows.h"

#include "Csv.h"
#include "MessageError.h"
#include "store/ValueConversion.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QTextStream>

namespace kb::reports {

namespace {

// A code written with leading zeros ("00707", a ZIP "05101") is text, not
// the number it would read as.
bool leadingZero(const QString& text)
{
    const qsizetype start = text.startsWith(u'-') ? 1 : 0;
    return text.size() > start + 1 && text[start] == u'0' && text[start + 1].isDigit();
}

// The narrowest type every value of a column reads as.
FieldType inferType(const std::vector<QStringList>& rows, const std::vector<QList<bool>>& quoted, int column)
{
    bool allInt = true, allNumber = true, allBool = true, allDate = true, allDateTime = true, any = false;
    for (size_t r = 0; r < rows.size(); ++r) {
        const QString& text = rows[r][column];
        if (text.isEmpty() && !quoted[r][column])
            continue;
        any = true;
        bool ok = false;
        if (leadingZero(text))
            allInt = allNumber = false;
        if (allInt) {
            text.toLongLong(&ok);
            allInt = ok;
        }
        if (allNumber) {
            text.toDouble(&ok);
            allNumber = ok && !text.trimmed().isEmpty();
        }
        if (allBool)
            allBool = text == QLatin1String("true") || text == QLatin1String("false");
        if (allDate)
            allDate = text.size() == 10 && parseDate(text).isValid();
        if (allDateTime)
            allDateTime = text.size() == 19 && parseDateTime(text).isValid();
        if (!allInt && !allNumber && !allBool && !allDate && !allDateTime)
            return FieldType::String;
    }
    if (!any)
        return FieldType::String;
    if (allInt)
        return FieldType::Int;
    if (allNumber)
        return FieldType::Float;
    if (allBool)
        return FieldType::Bool;
    if (allDate)
        return FieldType::Date;
    if (allDateTime)
        return FieldType::DateTime;
    return FieldType::String;
}

QVariant typedValue(const QString& text, bool quoted, FieldType type)
{
    if (text.isEmpty() && !quoted)
        return {};
    switch (type) {
    case FieldType::Int: return text.toLongLong();
    case FieldType::Float: return text.toDouble();
    case FieldType::Bool: return text == QLatin1String("true");
    case FieldType::Date: return parseDate(text);
    case FieldType::DateTime: return parseDateTime(text);
    default: return text;
    }
}

} // namespace

namespace {

ResultSet readRows(QTextStream& in, const QString& path)
{
    CsvRecord header;
    if (!readCsvRecord(in, header))
        throw MessageError(QStringLiteral("%1 is empty; it needs a header line of column names.").arg(path));
    if (header.fields.size() > MaxCsvColumns)
        throw MessageError(QStringLiteral("%1 has more than %2 columns.").arg(path).arg(MaxCsvColumns));
    const int columns = int(header.fields.size());
    std::vector<QStringList> rows;
    std::vector<QList<bool>> quoted;
    CsvRecord record;
    while (readCsvRecord(in, record)) {
        if (record.fields.size() == 1 && record.fields[0].isEmpty() && !record.quoted[0])
            continue; // a blank line
        if (record.fields.size() > columns)
            throw MessageError(QStringLiteral("%1, row %2: more fields than the header names.")
                                   .arg(path)
                                   .arg(rows.size() + 1));
        if (qsizetype(rows.size()) >= MaxCsvRows)
            throw MessageError(QStringLiteral("%1 has more than %2 rows.").arg(path).arg(MaxCsvRows));
        while (record.fields.size() < columns) {
            record.fields.append(QString());
            record.quoted.append(false);
        }
        rows.push_back(record.fields);
        quoted.push_back(record.quoted);
    }
    std::vector<sql::OutputColumn> outputColumns;
    for (int c = 0; c < columns; ++c)
        outputColumns.push_back(sql::OutputColumn{header.fields[c].trimmed(), inferType(rows, quoted, c), 0});
    ResultSet result(outputColumns);
    result.setHasRows(true);
    for (size_t r = 0; r < rows.size(); ++r) {
        QVariantList values;
        values.reserve(columns);
        for (int c = 0; c < columns; ++c)
            values.append(typedValue(rows[r][c], quoted[r][c], outputColumns[size_t(c)].type));
        result.appendRow(std::move(values));
    }
    return result;
}

} // namespace

ResultSet readCsvRows(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw MessageError(QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    return readRows(in, path);
}

ResultSet readCsvText(const QString& text, const QString& name)
{
    QString copy = text;
    QTextStream in(&copy, QIODevice::ReadOnly);
    return readRows(in, name);
}

} // namespace kb::reports
