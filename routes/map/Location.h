#pragma once

namespace kb::map {

// A point on the map in decimal degrees, north and east positive.
struct Location
{
    double latitude = 0.0;
    double longitude = 0.0;
};

} // namespace kb::map
