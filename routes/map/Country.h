#pragma once

#include <QString>

namespace kb::map {

// Country numbers an address lookup takes, by the postal format of the
// configuration; any other format passes Unspecified.
enum class Country { Unspecified = 0, Canada = 39, UnitedKingdom = 242, UnitedStates = 244 };

inline Country countryForPostalFormat(const QString& postalFormat)
{
    const QString f = postalFormat.trimmed().toUpper();
    if (f == QLatin1String("USA")) return Country::UnitedStates;
    if (f == QLatin1String("CAN")) return Country::Canada;
    if (f == QLatin1String("UK")) return Country::UnitedKingdom;
    return Country::Unspecified;
}

} // namespace kb::map
