#include "Money.h"

#include <cmath>

namespace kb {

Money Money::fromDouble(double value)
{
    return fromUnits(std::llround(value * Scale));
}

std::optional<Money> Money::parse(QStringView text)
{
    text = text.trimmed();
    if (text.isEmpty())
        return std::nullopt;
    bool negative = false;
    qsizetype i = 0;
    if (text[0] == u'-' || text[0] == u'+') {
        negative = text[0] == u'-';
        ++i;
    }
    std::int64_t whole = 0;
    int digits = 0;
    for (; i < text.size() && text[i].isDigit(); ++i, ++digits)
        whole = whole * 10 + text[i].digitValue();
    std::int64_t fraction = 0;
    int places = 0;
    bool roundUp = false;
    if (i < text.size() && text[i] == u'.') {
        for (++i; i < text.size() && text[i].isDigit(); ++i, ++digits) {
            if (places < 4) {
                fraction = fraction * 10 + text[i].digitValue();
                ++places;
            } else if (places == 4) {
                roundUp = text[i].digitValue() >= 5;
                ++places;
            }
        }
    }
    if (digits == 0)
        return std::nullopt;
    if (i < text.size()) {
        // Exponent forms come from stores that print doubles.
        bool ok = false;
        const double d = text.toDouble(&ok);
        if (!ok)
            return std::nullopt;
        return fromDouble(d);
    }
    for (int p = std::min(places, 4); p < 4; ++p)
        fraction *= 10;
    std::int64_t units = whole * Scale + fraction + (roundUp ? 1 : 0);
    return fromUnits(negative ? -units : units);
}

QString Money::toString() const
{
    const std::int64_t absUnits = m_units < 0 ? -m_units : m_units;
    QString fraction = QString::number(absUnits % Scale).rightJustified(4, u'0');
    while (fraction.size() > 2 && fraction.endsWith(u'0'))
        fraction.chop(1);
    return QStringLiteral("%1%2.%3")
        .arg(m_units < 0 ? QStringLiteral("-") : QString())
        .arg(absUnits / Scale)
        .arg(fraction);
}

void registerMoneyType()
{
    static const bool registered = [] {
        QMetaType::registerConverter<Money, double>(&Money::toDouble);
        QMetaType::registerConverter<Money, QString>(&Money::toString);
        return true;
    }();
    (void)registered;
}

} // namespace kb
