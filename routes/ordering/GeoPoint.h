#pragma once

namespace kb::routes {

// A place on the earth in decimal degrees, north and east positive.
struct GeoPoint
{
    double latitude = 0.0;
    double longitude = 0.0;
};

} // namespace kb::routes
