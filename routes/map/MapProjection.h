#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

namespace kb::map {

struct Location;

// Places on a flat map: the spherical Mercator projection of the whole world
// onto a square of side 1, x growing east from longitude -180 and y growing
// south from the northern edge, so that shapes near any one place keep their
// look and a drawing only has to scale and shift these numbers.
class MapProjection
{
public:
    // Latitudes beyond this do not fit the square and are held to it.
    static constexpr double maxLatitude = 85.05112878;

    static QPointF project(const Location& location);
    static Location unproject(const QPointF& point);

    // Metres on the ground that one unit of the square spans at a latitude.
    static double metresPerUnit(double latitude);

    // The smallest rectangle holding the places; empty with none.
    static QRectF bounds(const std::vector<Location>& locations);

    // The length a scale bar shows: the longest 1, 2 or 5 times a power of
    // ten that is not above `atMostMetres`.
    static double scaleBarMetres(double atMostMetres);
    // "200 m", "1 km", "20 km".
    static QString scaleBarText(double metres);
};

} // namespace kb::map
