#pragma once

#include "DistanceMatrix.h"
#include "OrderOptions.h"
#include "SplitMix64.h"

#include <QString>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>
#include <vector>

namespace kb::routes::testing {

inline QString tsplibDir()
{
    return QStringLiteral(KB_TSPLIB_DIR);
}

inline std::vector<PlanePoint> randomPoints(int n, std::uint64_t seed, int span = 1000)
{
    SplitMix64 random(seed);
    std::vector<PlanePoint> points;
    for (int i = 0; i < n; ++i)
        points.push_back({double(random.below(span)), double(random.below(span))});
    return points;
}

// True when each pair of stops appears side by side in the order.
inline bool keepsLinks(const std::vector<int>& order, const std::vector<std::pair<int, int>>& links,
                       bool closed)
{
    const int n = int(order.size());
    std::vector<int> pos(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k)
        pos[order[k]] = k;
    for (const auto& [a, b] : links) {
        const int d = std::abs(pos[a] - pos[b]);
        if (d != 1 && !(closed && d == n - 1)) return false;
    }
    return true;
}

inline bool isPermutation(std::vector<int> order, int n)
{
    std::sort(order.begin(), order.end());
    std::vector<int> expected(static_cast<std::size_t>(n));
    std::iota(expected.begin(), expected.end(), 0);
    return order == expected;
}

// The shortest length over every order that meets the options and keeps the links.
inline std::int64_t bruteForceLength(const DistanceMatrix& d, const OrderOptions& options,
                                     const std::vector<std::pair<int, int>>& links = {})
{
    const int n = d.size();
    const bool closed = options.shape == RouteShape::ClosedTour;
    std::vector<int> order(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    do {
        if (options.fixFirst && order.front() != 0) continue;
        if (options.fixLast && order.back() != n - 1) continue;
        if (!keepsLinks(order, links, closed)) continue;
        best = std::min(best, d.length(order, closed));
    } while (std::next_permutation(order.begin(), order.end()));
    return best;
}

} // namespace kb::routes::testing
