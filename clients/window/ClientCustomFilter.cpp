#include "window/ClientCustomFilter.h"

#include <QDate>
#include <QLocale>

namespace kb {

namespace {

// The typed value in the field's type; invalid when it does not read as one.
QVariant typed(const QString& text, FieldType type)
{
    const QString t = text.trimmed();
    switch (type) {
    case FieldType::Date:
    case FieldType::DateTime: {
        QDate date = QDate::fromString(t, Qt::ISODate);
        if (!date.isValid()) date = QLocale().toDate(t, QLocale::ShortFormat);
        if (!date.isValid()) date = QDate::fromString(t, QStringLiteral("M/d/yyyy"));
        return date.isValid() ? QVariant(date) : QVariant();
    }
    case FieldType::SmallInt:
    case FieldType::Int:
    case FieldType::AutoInc:
    case FieldType::Float:
    case FieldType::Currency: {
        bool ok = false;
        const double n = t.toDouble(&ok);
        return ok ? QVariant(n) : QVariant();
    }
    case FieldType::Bool: {
        const QString l = t.toLower();
        if (l == QLatin1String("true") || l == QLatin1String("yes") || l == QLatin1String("y") ||
            l == QLatin1String("1"))
            return true;
        if (l == QLatin1String("false") || l == QLatin1String("no") || l == QLatin1String("n") ||
            l == QLatin1String("0"))
            return false;
        return {};
    }
    default:
        return t;
    }
}

int compare(const QVariant& stored, const QVariant& wanted, FieldType type)
{
    switch (type) {
    case FieldType::Date:
    case FieldType::DateTime: {
        const QDate a = stored.toDate();
        const QDate b = wanted.toDate();
        return a < b ? -1 : (a > b ? 1 : 0);
    }
    case FieldType::Bool:
        return int(stored.toBool()) - int(wanted.toBool());
    case FieldType::SmallInt:
    case FieldType::Int:
    case FieldType::AutoInc:
    case FieldType::Float:
    case FieldType::Currency: {
        const double a = stored.toDouble();
        const double b = wanted.toDouble();
        return a < b ? -1 : (a > b ? 1 : 0);
    }
    default:
        return QString::compare(stored.toString().trimmed(), wanted.toString(), Qt::CaseInsensitive);
    }
}

} // namespace

QStringList ClientCustomFilter::operatorTexts()
{
    return {QStringLiteral("equals"),      QStringLiteral("does not equal"), QStringLiteral("is less than"),
            QStringLiteral("is at most"),  QStringLiteral("is more than"),   QStringLiteral("is at least"),
            QStringLiteral("contains"),    QStringLiteral("starts with"),    QStringLiteral("is empty"),
            QStringLiteral("is not empty")};
}

bool ClientCustomFilter::meets(const DataSet& clients, const Condition& c) const
{
    const int index = clients.fieldIndex(c.column);
    if (index < 0) return false;
    const QVariant stored = clients.fieldValue(index);
    const bool empty = stored.isNull() || stored.toString().trimmed().isEmpty();
    if (c.op == Operator::IsEmpty) return empty;
    if (c.op == Operator::IsNotEmpty) return !empty;
    const FieldType type = clients.field(index).type;
    if (c.op == Operator::Contains) return stored.toString().contains(c.value.trimmed(), Qt::CaseInsensitive);
    if (c.op == Operator::StartsWith)
        return stored.toString().trimmed().startsWith(c.value.trimmed(), Qt::CaseInsensitive);
    const QVariant wanted = typed(c.value, type);
    if (!wanted.isValid()) return false;
    if (empty) return c.op == Operator::NotEquals;
    const int order = compare(stored, wanted, type);
    switch (c.op) {
    case Operator::Equals:
        return order == 0;
    case Operator::NotEquals:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessOrEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    case Operator::GreaterOrEqual:
        return order >= 0;
    default:
        return false;
    }
}

bool ClientCustomFilter::accepts(const DataSet& clients) const
{
    for (const Condition& c : m_conditions)
        if (!meets(clients, c)) return false;
    return true;
}

QString ClientCustomFilter::describe() const
{
    QStringList parts;
    for (const Condition& c : m_conditions) {
        QString part = c.column + QLatin1Char(' ') + operatorTexts().at(int(c.op));
        if (takesValue(c.op)) part += QStringLiteral(" \"") + c.value + QLatin1Char('"');
        parts << part;
    }
    return parts.join(QStringLiteral(" and "));
}

} // namespace kb
