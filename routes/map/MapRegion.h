#pragma once

#include <QString>

namespace kb::map {

// The map data a session works with: European for UK postal formats, North
// American for every other.
enum class MapRegion { NorthAmerica, Europe };

inline MapRegion regionForPostalFormat(const QString& postalFormat)
{
    return postalFormat.trimmed().compare(QLatin1String("UK"), Qt::CaseInsensitive) == 0
               ? MapRegion::Europe
               : MapRegion::NorthAmerica;
}

} // namespace kb::map
