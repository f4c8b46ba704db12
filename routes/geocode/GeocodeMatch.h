#pragma once

#include "map/MatchQuality.h"

#include <QString>
#include <QVariant>

namespace kb {

// What an address lookup found for one client, as kept in Geocoded_Addresses.
struct GeocodeMatch
{
    qint64 recordId = 0; // of Geocoded_Addresses
    qint64 personId = 0;
    QString clientId;
    QString name;
    QString address1;
    QString city;
    QString state;
    QString zip;
    // The coordinates the client has now; null when none.
    QVariant currentLatitude;
    QVariant currentLongitude;
    map::MatchQuality quality = map::MatchQuality::NotFound;
    double latitude = 0;
    double longitude = 0;
    QString source; // "K" the agency's known addresses, "W" the web service
    QString foundName;

    bool found() const { return quality != map::MatchQuality::NotFound; }
    bool hasCoordinates() const
    {
        return !currentLatitude.isNull() && !currentLongitude.isNull() && currentLatitude.toDouble() != 0.0 &&
               currentLongitude.toDouble() != 0.0;
    }
    // "Exact", "Close", "Approximate" or "Not found".
    QString qualityText() const;
};

} // namespace kb
