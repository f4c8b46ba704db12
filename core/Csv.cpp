#include "Csv.h"

#include "Money.h"
#include "store/ValueConversion.h"

#include <QDate>
#include <QDateTime>

namespace kb {

QString csvText(const QVariant& value)
{
    if (!value.isValid() || value.isNull())
        return {};
    const int id = value.typeId();
    if (id == QMetaType::QDate)
        return dateText(value.toDate());
    if (id == QMetaType::QDateTime)
        return dateTimeText(value.toDateTime());
    if (id == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    if (id == QMetaType::Double || id == QMetaType::Float)
        return QString::number(value.toDouble(), 'g', 15);
    if (id == qMetaTypeId<Money>())
        return value.value<Money>().toString();
    if (id == QMetaType::QByteArray)
        return QString::fromLatin1(value.toByteArray().toBase64());
    return value.toString();
}

QString csvField(const QString& text)
{
    if (text.contains(u',') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r') ||
        (!text.isEmpty() && (text.front().isSpace() || text.back().isSpace()))) {
        QString quoted = text;
        quoted.replace(u'"', QLatin1String("\"\""));
        return QLatin1Char('"') + quoted + QLatin1Char('"');
    }
    return text;
}

void writeCsvHeader(QTextStream& out, const QStringList& names)
{
    for (qsizetype c = 0; c < names.size(); ++c) {
        if (c)
            out << ',';
        out << csvField(names[c]);
    }
    out << '\n';
}

void writeCsvRecord(QTextStream& out, const QVariantList& values)
{
    for (qsizetype c = 0; c < values.size(); ++c) {
        if (c)
            out << ',';
        const QVariant& v = values[c];
        const QString text = csvText(v);
        // An empty text that is not null is written quoted, so that reading
        // the file back tells the two apart; so is a lone empty field.
        const bool quoteEmpty = (v.isValid() && !v.isNull()) || values.size() == 1;
        out << (text.isEmpty() && quoteEmpty ? QStringLiteral("\"\"") : csvField(text));
    }
    out << '\n';
}

void writeCsv(QTextStream& out, const ResultSet& result)
{
    QStringList names;
    for (int c = 0; c < result.columnCount(); ++c)
        names.append(result.columnName(c));
    writeCsvHeader(out, names);
    for (qsizetype r = 0; r < result.rowCount(); ++r)
        writeCsvRecord(out, result.row(r));
}

bool readCsvRecord(QTextStream& in, CsvRecord& record)
{
    record.fields.clear();
    record.quoted.clear();
    if (in.atEnd())
        return false;
    QString line = in.readLine();
    QString field;
    bool quoted = false;
    bool inQuotes = false;
    qsizetype i = 0;
    for (;;) {
        if (i >= line.size()) {
            if (inQuotes && !in.atEnd()) {
                field += u'\n';
                line = in.readLine();
                i = 0;
                continue;
            }
            record.fields.append(field);
            record.quoted.append(quoted);
            return true;
        }
        const QChar c = line[i];
        if (inQuotes) {
            if (c == u'"') {
                if (i + 1 < line.size() && line[i + 1] == u'"') {
                    field += u'"';
                    i += 2;
                    continue;
                }
                inQuotes = false;
            } else {
                field += c;
            }
        } else if (c == u'"') {
            inQuotes = true;
            quoted = true;
        } else if (c == u',') {
            record.fields.append(field);
            record.quoted.append(quoted);
            field.clear();
            quoted = false;
        } else {
            field += c;
        }
        ++i;
    }
}

} // namespace kb
