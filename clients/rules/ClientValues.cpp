#include "rules/ClientValues.h"

#include "dataset/DataSet.h"

#include <QStringList>

namespace kb {

const QStringList& weekdayColumns()
{
    static const QStringList columns = {QStringLiteral("MONDAY"),    QStringLiteral("TUESDAY"),
                                        QStringLiteral("WEDNESDAY"), QStringLiteral("THURSDAY"),
                                        QStringLiteral("FRIDAY"),    QStringLiteral("SATURDAY"),
                                        QStringLiteral("SUNDAY")};
    return columns;
}

ClientValues ClientValues::read(const DataSet& clients)
{
    ClientValues values;
    for (int i = 0; i < clients.fieldCount(); ++i) {
        const DataSet::Field& field = clients.field(i);
        if (field.kind == DataSet::FieldKind::Data)
            values.m_values.insert(field.name.toUpper(), clients.fieldValue(i));
    }
    return values;
}

QDate ClientValues::date(const QString& column) const
{
    const QDate d = value(column).toDate();
    return d.isValid() && d.year() >= 1900 ? d : QDate();
}

QString ClientValues::days() const
{
    static const char* const codes[] = {"Mo", "Tu", "We", "Th", "Fr", "Sa", "Su"};
    QString days;
    for (int day = 0; day < 7; ++day)
        if (flag(weekdayColumns()[day])) days += QLatin1String(codes[day]);
    return days;
}

bool ClientValues::sameAs(const ClientValues& other, const QString& column) const
{
    const QVariant a = value(column);
    const QVariant b = other.value(column);
    if (a.isNull() || b.isNull()) return a.isNull() == b.isNull();
    return a == b;
}

} // namespace kb
