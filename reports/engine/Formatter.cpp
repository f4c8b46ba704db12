#include "engine/Formatter.h"

#include "engine/ValueKinds.h"

#include "Money.h"

#include <QDate>
#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace kb::reports {

Formatter::Formatter(const QString& locale, QString dateFormat, QString dateTimeFormat)
    : m_locale(locale), m_dateFormat(std::move(dateFormat)), m_dateTimeFormat(std::move(dateTimeFormat))
{
    m_locale.setNumberOptions(QLocale::OmitGroupSeparator);
}

bool Formatter::isNumber(const QVariant& value) { return isNumberValue(value); }

double Formatter::toNumber(const QVariant& value)
{
    if (value.typeId() == qMetaTypeId<Money>())
        return value.value<Money>().toDouble();
    if (value.typeId() == QMetaType::QString) {
        bool ok = false;
        const double d = value.toString().trimmed().toDouble(&ok);
        return ok ? d : 0.0;
    }
    return value.toDouble();
}

QString Formatter::text(const QVariant& value) const
{
    if (!value.isValid() || value.isNull())
        return {};
    if (isIntegerValue(value))
        return QString::number(value.toLongLong());
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("Yes") : QStringLiteral("No");
    case QMetaType::Double:
    case QMetaType::Float: {
        const double d = value.toDouble();
        if (!std::isfinite(d))
            return {};
        return QString::number(d, 'g', 12);
    }
    case QMetaType::QDate:
        return m_locale.toString(value.toDate(), m_dateFormat);
    case QMetaType::QDateTime:
        return m_locale.toString(value.toDateTime(), m_dateTimeFormat);
    case QMetaType::QByteArray:
        return {};
    default:
        break;
    }
    if (value.typeId() == qMetaTypeId<Money>())
        return value.value<Money>().toString();
    return value.toString();
}

QString Formatter::text(const QVariant& value, const QString& format) const
{
    if (format.isEmpty())
        return text(value);
    if (!value.isValid() || value.isNull())
        return {};
    if (value.typeId() == QMetaType::Bool) {
        const qsizetype semicolon = format.indexOf(u';');
        if (semicolon < 0)
            return text(value);
        return value.toBool() ? format.left(semicolon) : format.mid(semicolon + 1);
    }
    if (value.typeId() == QMetaType::QDate)
        return m_locale.toString(value.toDate(), format);
    if (value.typeId() == QMetaType::QDateTime)
        return m_locale.toString(value.toDateTime(), format);
    if (isNumber(value))
        return number(toNumber(value), format);
    // A text may hold a date or a number written in full.
    const QString s = value.toString();
    const QDateTime dt = QDateTime::fromString(s.trimmed(), Qt::ISODate);
    if (dt.isValid() && s.trimmed().size() > 10)
        return m_locale.toString(dt, format);
    const QDate d = QDate::fromString(s.trimmed(), Qt::ISODate);
    if (d.isValid())
        return m_locale.toString(d, format);
    bool ok = false;
    const double n = s.trimmed().toDouble(&ok);
    if (ok)
        return number(n, format);
    return s;
}

QString Formatter::number(double value, const QString& pattern) const
{
    if (!std::isfinite(value))
        return {};
    // The pattern's numeric core is the run of 0 # , . characters.
    qsizetype start = -1, end = -1;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        if (c == u'0' || c == u'#' || c == u',' || c == u'.') {
            if (start < 0)
                start = i;
            end = i + 1;
        } else if (start >= 0) {
            break;
        }
    }
    if (start < 0)
        return pattern; // a pattern without digits prints as it stands
    const QString prefix = pattern.left(start);
    const QString core = pattern.mid(start, end - start);
    const QString suffix = pattern.mid(end);
    if (suffix.contains(u'%'))
        value *= 100;
    const qsizetype dot = core.indexOf(u'.');
    const QString intPart = dot < 0 ? core : core.left(dot);
    const QString fracPart = dot < 0 ? QString() : core.mid(dot + 1);
    const int maxDecimals = int(fracPart.count(u'0') + fracPart.count(u'#'));
    const int minDecimals = int(fracPart.count(u'0'));
    const int minDigits = int(intPart.count(u'0'));
    const bool grouping = intPart.contains(u',');

    const bool negative = value < 0;
    QString digits = QString::number(std::abs(value), 'f', std::min(maxDecimals, 15));
    QString whole = digits, fraction;
    if (const qsizetype p = digits.indexOf(u'.'); p >= 0) {
        whole = digits.left(p);
        fraction = digits.mid(p + 1);
    }
    while (fraction.size() > minDecimals && fraction.endsWith(u'0'))
        fraction.chop(1);
    if (whole == QLatin1String("0") && minDigits == 0 && !fraction.isEmpty())
        whole.clear();
    while (whole.size() < minDigits)
        whole.prepend(u'0');
    if (grouping && whole.size() > 3) {
        const QString separator = m_locale.groupSeparator();
        for (qsizetype i = whole.size() - 3; i > 0; i -= 3)
            whole.insert(i, separator);
    }
    QString result = whole;
    if (!fraction.isEmpty())
        result += m_locale.decimalPoint() + fraction;
    if (result.isEmpty())
        result = QStringLiteral("0");
    const bool allZero = std::none_of(result.begin(), result.end(), [](QChar c) { return c >= u'1' && c <= u'9'; });
    return (negative && !allZero ? QStringLiteral("-") : QString()) + prefix + result + suffix;
}

} // namespace kb::reports
