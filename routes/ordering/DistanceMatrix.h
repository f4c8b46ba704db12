#pragma once

#include "GeoPoint.h"
#include "PlanePoint.h"

#include <cstdint>
#include <vector>

namespace kb::routes {

// Symmetric whole-number travel costs between stops, held in full so the
// optimiser reads any pair in one step. Whole numbers keep sums exact, which
// makes the search repeatable to the unit: metres for real stops, the
// rounded Euclidean rule for the benchmark maps.
class DistanceMatrix
{
public:
    // More stops than this would need hundreds of megabytes; no delivery
    // route comes near it.
    static constexpr int kMaxStops = 5000;
    // Costs stay below this so the optimiser's sums of a few costs plus its
    // bonus for required links cannot overflow.
    static constexpr std::int32_t kMaxCost = 100'000'000;

    explicit DistanceMatrix(int size = 0);

    // Metres along the earth's surface, rounded to the metre.
    static DistanceMatrix fromGeoPoints(const std::vector<GeoPoint>& points);
    // The rounded Euclidean distance: nint(sqrt(dx*dx + dy*dy)).
    static DistanceMatrix fromPlanePoints(const std::vector<PlanePoint>& points);

    int size() const { return m_size; }
    std::int32_t at(int i, int j) const { return m_costs[std::size_t(i) * m_size + j]; }
    // Sets both directions; throws for a negative or too large cost.
    void set(int i, int j, std::int32_t cost);
    std::int32_t maxCost() const;

    // Sum over consecutive stops, plus the closing leg back to the first when closed.
    std::int64_t length(const std::vector<int>& order, bool closed) const;

private:
    int m_size;
    std::vector<std::int32_t> m_costs;
};

} // namespace kb::routes
