#include "GreatCircle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kb::routes {

namespace {
constexpr double kEarthRadiusMetres = 6371008.8;
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
} // namespace

double greatCircleMetres(const GeoPoint& a, const GeoPoint& b)
{
    const double lat1 = a.latitude * kRadiansPerDegree;
    const double lat2 = b.latitude * kRadiansPerDegree;
    const double dLat = lat2 - lat1;
    const double dLon = (b.longitude - a.longitude) * kRadiansPerDegree;
    const double s = std::sin(dLat / 2.0);
    const double t = std::sin(dLon / 2.0);
    const double h = std::clamp(s * s + std::cos(lat1) * std::cos(lat2) * t * t, 0.0, 1.0);
    return 2.0 * kEarthRadiusMetres * std::asin(std::sqrt(h));
}

} // namespace kb::routes
