#pragma once

#include "Geocoder.h"

#include <QString>

#include <map>
#include <vector>

namespace kb::map {

// Address lookup from coordinates the system already holds (clients,
// locations and other addresses with a latitude and longitude). An address
// known as given is Exact. An unknown street in a known postal code, or else
// in a known town, gets the centre of the known addresses there with quality
// Approximate, so the caller warns the user and can still pin it. Anything
// else is NotFound. Comparison ignores case, punctuation and repeated blanks.
class KnownAddressGeocoder : public Geocoder
{
public:
    void add(const AddressQuery& address, const Location& location);

    AddressMatches find(const AddressQuery& query) const override;

private:
    static QString normalised(const QString& text);
    static QString streetKey(const QString& street, const QString& area);
    static QString postalKey(const AddressQuery& address);
    static QString townKey(const AddressQuery& address);

    struct Area
    {
        double latitudeSum = 0.0;
        double longitudeSum = 0.0;
        int count = 0;
        Location centre() const { return {latitudeSum / count, longitudeSum / count}; }
    };

    std::map<QString, std::vector<Location>> m_exact;
    std::map<QString, Area> m_postalAreas;
    std::map<QString, Area> m_towns;
};

} // namespace kb::map
