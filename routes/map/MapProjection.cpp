#include "MapProjection.h"

#include "Location.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kb::map {

namespace {

constexpr double earthRadiusMetres = 6378137.0;

} // namespace

QPointF MapProjection::project(const Location& location)
{
    const double latitude = std::clamp(location.latitude, -maxLatitude, maxLatitude);
    const double x = (location.longitude + 180.0) / 360.0;
    const double phi = latitude * std::numbers::pi / 180.0;
    const double y = 0.5 - std::log(std::tan(std::numbers::pi / 4.0 + phi / 2.0)) / (2.0 * std::numbers::pi);
    return {x, y};
}

Location MapProjection::unproject(const QPointF& point)
{
    const double longitude = point.x() * 360.0 - 180.0;
    const double n = std::numbers::pi * (1.0 - 2.0 * point.y());
    const double latitude = std::atan(std::sinh(n)) * 180.0 / std::numbers::pi;
    return {latitude, longitude};
}

double MapProjection::metresPerUnit(double latitude)
{
    const double phi = std::clamp(latitude, -maxLatitude, maxLatitude) * std::numbers::pi / 180.0;
    return 2.0 * std::numbers::pi * earthRadiusMetres * std::cos(phi);
}

QRectF MapProjection::bounds(const std::vector<Location>& locations)
{
    if (locations.empty()) return {};
    QPointF first = project(locations.front());
    double left = first.x(), right = first.x(), top = first.y(), bottom = first.y();
    for (const Location& l : locations) {
        const QPointF p = project(l);
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

double MapProjection::scaleBarMetres(double atMostMetres)
{
    if (!(atMostMetres >= 1.0)) return 1.0;
    const double power = std::pow(10.0, std::floor(std::log10(atMostMetres)));
    for (double step : {5.0, 2.0, 1.0})
        if (step * power <= atMostMetres) return step * power;
    return power;
}

QString MapProjection::scaleBarText(double metres)
{
    if (metres >= 1000.0) return QStringLiteral("%1 km").arg(metres / 1000.0, 0, 'g', 6);
    return QStringLiteral("%1 m").arg(metres, 0, 'g', 6);
}

} // namespace kb::map
