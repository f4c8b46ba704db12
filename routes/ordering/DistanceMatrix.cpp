#include "DistanceMatrix.h"

#include "GreatCircle.h"
#include "RoutingError.h"

#include <algorithm>
#include <cmath>

namespace kb::routes {

namespace {

void checkSize(std::size_t size)
{
    if (size > std::size_t(DistanceMatrix::kMaxStops))
        throw RoutingError(QStringLiteral("Too many stops to order: %1; at most %2 can be ordered at once.")
                               .arg(size)
                               .arg(DistanceMatrix::kMaxStops));
}

std::int32_t checkedCost(double value)
{
    if (!std::isfinite(value) || value < 0.0 || value > double(DistanceMatrix::kMaxCost))
        throw RoutingError(QStringLiteral("A distance between two stops is out of range: %1.").arg(value));
    return std::int32_t(value);
}

} // namespace

DistanceMatrix::DistanceMatrix(int size) : m_size(size), m_costs(std::size_t(size) * size, 0)
{
    if (size < 0) throw RoutingError(QStringLiteral("A distance table cannot have a negative size."));
    checkSize(std::size_t(size));
}

DistanceMatrix DistanceMatrix::fromGeoPoints(const std::vector<GeoPoint>& points)
{
    checkSize(points.size());
    DistanceMatrix m(int(points.size()));
    for (int i = 0; i < m.m_size; ++i) {
        const GeoPoint& p = points[i];
        if (!std::isfinite(p.latitude) || !std::isfinite(p.longitude) || std::abs(p.latitude) > 90.0 ||
            std::abs(p.longitude) > 180.0)
            throw RoutingError(QStringLiteral("Stop %1 has no valid latitude and longitude (%2, %3).")
                                   .arg(i + 1)
                                   .arg(p.latitude)
                                   .arg(p.longitude));
    }
    for (int i = 0; i < m.m_size; ++i)
        for (int j = i + 1; j < m.m_size; ++j)
            m.set(i, j, checkedCost(std::round(greatCircleMetres(points[i], points[j]))));
    return m;
}

DistanceMatrix DistanceMatrix::fromPlanePoints(const std::vector<PlanePoint>& points)
{
    checkSize(points.size());
    DistanceMatrix m(int(points.size()));
    for (int i = 0; i < m.m_size; ++i)
        for (int j = i + 1; j < m.m_size; ++j) {
            const double dx = points[i].x - points[j].x;
            const double dy = points[i].y - points[j].y;
            // TSPLIB's nint: add a half and cut off.
            m.set(i, j, checkedCost(std::floor(std::sqrt(dx * dx + dy * dy) + 0.5)));
        }
    return m;
}

void DistanceMatrix::set(int i, int j, std::int32_t cost)
{
    if (i < 0 || j < 0 || i >= m_size || j >= m_size)
        throw RoutingError(
            QStringLiteral("Stop %1 or %2 is not in a table of %3 stops.").arg(i).arg(j).arg(m_size));
    if (cost < 0 || cost > kMaxCost)
        throw RoutingError(QStringLiteral("A distance between two stops is out of range: %1.").arg(cost));
    m_costs[std::size_t(i) * m_size + j] = cost;
    m_costs[std::size_t(j) * m_size + i] = cost;
}

std::int32_t DistanceMatrix::maxCost() const
{
    return m_costs.empty() ? 0 : *std::max_element(m_costs.begin(), m_costs.end());
}

std::int64_t DistanceMatrix::length(const std::vector<int>& order, bool closed) const
{
    std::int64_t sum = 0;
    for (std::size_t k = 1; k < order.size(); ++k)
        sum += at(order[k - 1], order[k]);
    if (closed && order.size() > 1) sum += at(order.back(), order.front());
    return sum;
}

} // namespace kb::routes
