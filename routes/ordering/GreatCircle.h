#pragma once

#include "GeoPoint.h"

namespace kb::routes {

// Distance in metres along the earth's surface (haversine on a sphere of the
// mean earth radius). Good to a few tenths of a percent, which is far below
// the difference between a straight line and the road a driver takes.
double greatCircleMetres(const GeoPoint& a, const GeoPoint& b);

} // namespace kb::routes
