#pragma once

#include <QMetaType>
#include <QString>

#include <cstdint>
#include <optional>

namespace kb {

// The engine's currency type: an exact decimal with four places, kept as a
// count of ten-thousandths so sums of many bills never drift.
class Money
{
public:
    static constexpr std::int64_t Scale = 10000;

    constexpr Money() = default;
    static constexpr Money fromUnits(std::int64_t units)
    {
        Money m;
        m.m_units = units;
        return m;
    }
    static Money fromDouble(double value);
    // Accepts "12", "-3.5", "0.1234"; more than four decimals are rounded
    // half away from zero. Returns nothing for text that is no number.
    static std::optional<Money> parse(QStringView text);

    constexpr std::int64_t units() const { return m_units; }
    double toDouble() const { return double(m_units) / Scale; }
    // Plain C-locale text with at least two decimals: "12.50", "3.1416".
    QString toString() const;

    friend constexpr bool operator==(Money a, Money b) { return a.m_units == b.m_units; }
    friend constexpr auto operator<=>(Money a, Money b) { return a.m_units <=> b.m_units; }
    friend constexpr Money operator+(Money a, Money b) { return fromUnits(a.m_units + b.m_units); }
    friend constexpr Money operator-(Money a, Money b) { return fromUnits(a.m_units - b.m_units); }

private:
    std::int64_t m_units = 0;
};

// Registers the QVariant conversions (to double and to text) once.
void registerMoneyType();

} // namespace kb

Q_DECLARE_METATYPE(kb::Money)
