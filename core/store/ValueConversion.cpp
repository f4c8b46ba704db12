#include "store/ValueConversion.h"

#include "store/DbError.h"
#include "Money.h"

#include <QDate>
#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace kb {

namespace {

[[noreturn]] void misfit(const QVariant& value, FieldType type, const QString& name)
{
    throw DbError(DbErrorCode::ParameterType,
                  QStringLiteral("Parameter %1 expects a value of type %2; '%3' does not fit")
                      .arg(name.isEmpty() ? QStringLiteral("value") : QLatin1Char(':') + name, fieldTypeName(type),
                           value.toString()));
}

bool isTextual(const QVariant& v) { return v.typeId() == QMetaType::QString || v.typeId() == QMetaType::QByteArray; }

} // namespace

QString dateText(const QDate& date) { return date.toString(QStringLiteral("yyyy-MM-dd")); }

QString dateTimeText(const QDateTime& dateTime)
{
    return dateTime.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

namespace {

// Reads n digits at a position; -1 when one is not a digit. Dates are read
// for every row of every table, so this avoids the general date parser.
int digits(QStringView text, qsizetype at, int n)
{
    int value = 0;
    for (int i = 0; i < n; ++i) {
        const char16_t c = text[at + i].unicode();
        if (c < u'0' || c > u'9')
            return -1;
        value = value * 10 + (c - u'0');
    }
    return value;
}

} // namespace

QDate parseDate(QStringView text)
{
    text = text.trimmed();
    if (text.size() < 10 || text[4] != u'-' || text[7] != u'-')
        return {};
    const int year = digits(text, 0, 4);
    const int month = digits(text, 5, 2);
    const int day = digits(text, 8, 2);
    if (year < 0 || month < 0 || day < 0)
        return {};
    return QDate(year, month, day); // invalid for a day that does not exist
}

QDateTime parseDateTime(QStringView text)
{
    text = text.trimmed();
    if (text.size() == 10) {
        const QDate d = parseDate(text);
        return d.isValid() ? QDateTime(d, QTime(0, 0)) : QDateTime();
    }
    if (text.size() >= 19 && (text[10] == u' ' || text[10] == u'T') && text[13] == u':' && text[16] == u':') {
        const QDate d = parseDate(text);
        const int hour = digits(text, 11, 2);
        const int minute = digits(text, 14, 2);
        const int second = digits(text, 17, 2);
        int ms = 0;
        if (text.size() >= 21 && text[19] == u'.') {
            const qsizetype n = std::min<qsizetype>(3, text.size() - 20);
            ms = digits(text, 20, int(n));
            for (qsizetype i = n; i < 3; ++i)
                ms *= 10;
        }
        const QTime time(hour, minute, second, std::max(ms, 0));
        if (d.isValid() && time.isValid())
            return QDateTime(d, time);
    }
    QString t = text.toString();
    t.replace(u'T', u' ');
    const qsizetype dot = t.indexOf(u'.');
    QDateTime dt = QDateTime::fromString(dot > 0 ? t.left(dot) : t, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (!dt.isValid())
        dt = QDateTime::fromString(t, QStringLiteral("yyyy-MM-dd HH:mm"));
    if (dt.isValid() && dot > 0)
        dt = dt.addMSecs(qRound(t.mid(dot).toDouble() * 1000));
    return dt;
}

QVariant toCanonical(const QVariant& value, FieldType type, const QString& name)
{
    if (!value.isValid() || value.isNull())
        return {};
    const int id = value.typeId();
    switch (type) {
    case FieldType::String:
    case FieldType::Memo:
        if (id == QMetaType::QDate)
            return dateText(value.toDate());
        if (id == QMetaType::QDateTime)
            return dateTimeText(value.toDateTime());
        if (id == QMetaType::Bool)
            return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
        if (id == qMetaTypeId<Money>())
            return value.value<Money>().toString();
        return value.toString();
    case FieldType::SmallInt:
    case FieldType::Int:
    case FieldType::AutoInc: {
        if (id == QMetaType::Bool)
            return qlonglong(value.toBool() ? 1 : 0);
        if (id == QMetaType::Double || id == QMetaType::Float) {
            const double d = value.toDouble();
            if (std::floor(d) != d)
                misfit(value, type, name);
            return qlonglong(d);
        }
        if (id == qMetaTypeId<Money>()) {
            const Money m = value.value<Money>();
            if (m.units() % Money::Scale != 0)
                misfit(value, type, name);
            return qlonglong(m.units() / Money::Scale);
        }
        bool ok = false;
        const qlonglong n = isTextual(value) ? value.toString().trimmed().toLongLong(&ok) : value.toLongLong(&ok);
        if (!ok)
            misfit(value, type, name);
        return n;
    }
    case FieldType::Float: {
        if (id == qMetaTypeId<Money>())
            return value.value<Money>().toDouble();
        bool ok = false;
        const double d = isTextual(value) ? value.toString().trimmed().toDouble(&ok) : value.toDouble(&ok);
        if (!ok)
            misfit(value, type, name);
        return d;
    }
    case FieldType::Currency: {
        if (id == qMetaTypeId<Money>())
            return value;
        if (id == QMetaType::Double || id == QMetaType::Float)
            return QVariant::fromValue(Money::fromDouble(value.toDouble()));
        if (id == QMetaType::Int || id == QMetaType::LongLong || id == QMetaType::UInt || id == QMetaType::ULongLong)
            return QVariant::fromValue(Money::fromUnits(value.toLongLong() * Money::Scale));
        const auto m = Money::parse(value.toString());
        if (!m)
            misfit(value, type, name);
        return QVariant::fromValue(*m);
    }
    case FieldType::Bool: {
        if (id == QMetaType::Bool)
            return value;
        if (isTextual(value)) {
            const QString t = value.toString().trimmed().toUpper();
            if (t == QLatin1String("TRUE") || t == QLatin1String("T") || t == QLatin1String("Y") ||
                t == QLatin1String("YES") || t == QLatin1String("1"))
                return true;
            if (t == QLatin1String("FALSE") || t == QLatin1String("F") || t == QLatin1String("N") ||
                t == QLatin1String("NO") || t == QLatin1String("0"))
                return false;
            misfit(value, type, name);
        }
        bool ok = false;
        const qlonglong n = value.toLongLong(&ok);
        if (!ok || (n != 0 && n != 1))
            misfit(value, type, name);
        return n != 0;
    }
    case FieldType::Date: {
        if (id == QMetaType::QDate)
            return value.toDate().isValid() ? value : QVariant();
        if (id == QMetaType::QDateTime)
            return value.toDateTime().date();
        const QDate d = isTextual(value) ? parseDate(value.toString()) : QDate();
        if (!d.isValid())
            misfit(value, type, name);
        return d;
    }
    case FieldType::DateTime: {
        if (id == QMetaType::QDateTime)
            return value;
        if (id == QMetaType::QDate)
            return QDateTime(value.toDate(), QTime(0, 0));
        const QDateTime dt = isTextual(value) ? parseDateTime(value.toString()) : QDateTime();
        if (!dt.isValid())
            misfit(value, type, name);
        return dt;
    }
    case FieldType::Blob:
        return value.toByteArray();
    case FieldType::Unknown:
        break;
    }
    // No type known: keep the caller's kind of value.
    if (id == QMetaType::Int || id == QMetaType::UInt || id == QMetaType::LongLong || id == QMetaType::ULongLong ||
        id == QMetaType::Short || id == QMetaType::UShort)
        return value.toLongLong();
    return value;
}

} // namespace kb
