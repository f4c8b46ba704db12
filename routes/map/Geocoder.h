#pragma once

#include "AddressMatches.h"
#include "AddressQuery.h"

namespace kb::map {

// Turns an address into places on the map. The map server asks one of these
// for every address lookup, so a geocoding service reachable by URL can stand
// in for the local one without the callers knowing.
class Geocoder
{
public:
    virtual ~Geocoder() = default;
    // Failures to reach a service are thrown as MapServerError; an address
    // that cannot be placed is an answer of quality NotFound, not a failure.
    virtual AddressMatches find(const AddressQuery& query) const = 0;
};

} // namespace kb::map
