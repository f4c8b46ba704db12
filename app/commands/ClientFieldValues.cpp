#include "ClientFieldValues.h"

#include "CommandLine.h"
#include "Money.h"
#include "catalogue/Catalogue.h"
#include "store/ValueConversion.h"

#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace kb::app {

namespace {

[[noreturn]] void refuse(const ColumnDef& column, const QString& value, const QString& form)
{
    throw UsageError(QStringLiteral("client: %1 takes %2; '%3' is none.").arg(column.name, form, value));
}

QVariant integerValue(const ColumnDef& column, const QString& value, qint64 min, qint64 max)
{
    static const QRegularExpression whole(QStringLiteral("^[+-]?[0-9]{1,18}$"));
    if (!whole.match(value).hasMatch()) refuse(column, value, QStringLiteral("a whole number"));
    const qint64 n = value.toLongLong();
    if (n < min || n > max)
        refuse(column, value, QStringLiteral("a whole number from %1 to %2").arg(min).arg(max));
    return n;
}

QVariant typedValue(const ColumnDef& column, const QString& value)
{
    if (value.isEmpty()) return {};
    const bool quotedEmpty = value == QLatin1String("\"\"");
    switch (column.type) {
    case FieldType::String:
        if (quotedEmpty) return QString();
        if (column.width > 0 && value.size() > column.width)
            refuse(column, value, QStringLiteral("at most %1 characters").arg(column.width));
        return value;
    case FieldType::Memo:
        return quotedEmpty ? QString() : value;
    case FieldType::SmallInt:
        return integerValue(column, value, std::numeric_limits<qint16>::min(),
                            std::numeric_limits<qint16>::max());
    case FieldType::Int:
    case FieldType::AutoInc:
        return integerValue(column, value, std::numeric_limits<qint32>::min(),
                            std::numeric_limits<qint32>::max());
    case FieldType::Float: {
        static const QRegularExpression number(
            QStringLiteral("^[+-]?([0-9]+\\.?[0-9]*|\\.[0-9]+)([eE][+-]?[0-9]+)?$"));
        bool ok = number.match(value).hasMatch();
        const double d = ok ? value.toDouble(&ok) : 0;
        if (!ok || !std::isfinite(d)) refuse(column, value, QStringLiteral("a number such as 12.5"));
        return d;
    }
    case FieldType::Currency: {
        const auto money = Money::parse(value);
        if (!money) refuse(column, value, QStringLiteral("an amount such as 12.50"));
        return QVariant::fromValue(*money);
    }
    case FieldType::Bool:
        if (value.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return true;
        if (value.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return false;
        refuse(column, value, QStringLiteral("true or false"));
    case FieldType::Date: {
        const QDate d = value.size() == 10 ? parseDate(value) : QDate();
        if (!d.isValid()) refuse(column, value, QStringLiteral("a date YYYY-MM-DD"));
        return d;
    }
    case FieldType::DateTime: {
        const QDateTime dt = value.size() == 19 ? parseDateTime(value) : QDateTime();
        if (!dt.isValid()) refuse(column, value, QStringLiteral("a date and time YYYY-MM-DD HH:MM:SS"));
        return dt;
    }
    case FieldType::Blob:
    case FieldType::Unknown:
        break;
    }
    throw UsageError(QStringLiteral("client: %1 cannot be set from the command line.").arg(column.name));
}

} // namespace

ClientAssignments parseClientAssignments(const QStringList& words)
{
    const TableDef* clients = Catalogue::standard().table(u"Clients");
    ClientAssignments assignments;
    QStringList seen;
    for (const QString& word : words) {
        const qsizetype eq = word.indexOf(u'=');
        if (eq <= 0)
            throw UsageError(QStringLiteral("client: give each change as FIELD=VALUE, not '%1'.").arg(word));
        const QString name = word.left(eq).trimmed();
        const ColumnDef* column = clients->column(name);
        if (!column) throw UsageError(QStringLiteral("client: Clients has no field %1.").arg(name));
        if (column->type == FieldType::AutoInc ||
            column->name.compare(QLatin1String("PERSON_ID"), Qt::CaseInsensitive) == 0)
            throw UsageError(
                QStringLiteral("client: %1 is given by the system and cannot be set.").arg(column->name));
        if (seen.contains(column->name))
            throw UsageError(QStringLiteral("client: %1 is given twice.").arg(column->name));
        seen.append(column->name);
        assignments.emplace_back(column->name, typedValue(*column, word.mid(eq + 1)));
    }
    return assignments;
}

} // namespace kb::app
