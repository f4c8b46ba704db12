#include "ExactSolver.h"

#include "OrderingProblem.h"
#include "RoutingError.h"

#include <cstdint>
#include <limits>
#include <numeric>

namespace kb::routes {

std::vector<int> ExactSolver::solve(const OrderingProblem& problem)
{
    const int n = problem.size();
    if (n > kMaxNodes)
        throw RoutingError(
            QStringLiteral("The exact method takes at most %1 stops, not %2.").arg(kMaxNodes).arg(n));
    std::vector<int> tour(static_cast<std::size_t>(n));
    std::iota(tour.begin(), tour.end(), 0);
    if (n <= 3) return tour;

    // Node 0 is the fixed start; state (set of the other nodes visited, last
    // node) holds the cheapest path from 0 through that set ending there.
    const int m = n - 1;
    const std::uint32_t full = (1u << m) - 1;
    constexpr std::int64_t kNone = std::numeric_limits<std::int64_t>::max();
    std::vector<std::int64_t> best(std::size_t(full + 1) * m, kNone);
    std::vector<std::int8_t> from(std::size_t(full + 1) * m, -1);
    auto at = [m](std::uint32_t set, int last) { return std::size_t(set) * m + last; };

    for (int j = 0; j < m; ++j)
        best[at(1u << j, j)] = problem.cost(0, j + 1);
    for (std::uint32_t set = 1; set <= full; ++set) {
        for (int j = 0; j < m; ++j) {
            if (!(set & (1u << j))) continue;
            const std::int64_t here = best[at(set, j)];
            if (here == kNone) continue;
            const std::int32_t* row = problem.row(j + 1);
            for (int k = 0; k < m; ++k) {
                if (set & (1u << k)) continue;
                const std::uint32_t grown = set | (1u << k);
                const std::int64_t candidate = here + row[k + 1];
                if (candidate < best[at(grown, k)]) {
                    best[at(grown, k)] = candidate;
                    from[at(grown, k)] = std::int8_t(j);
                }
            }
        }
    }

    int last = 0;
    std::int64_t bestTotal = kNone;
    for (int j = 0; j < m; ++j) {
        const std::int64_t total = best[at(full, j)] + problem.cost(j + 1, 0);
        if (total < bestTotal) {
            bestTotal = total;
            last = j;
        }
    }
    std::uint32_t set = full;
    for (int k = n - 1; k >= 1; --k) {
        tour[k] = last + 1;
        const int previous = from[at(set, last)];
        set &= ~(1u << last);
        last = previous;
    }
    tour[0] = 0;
    return tour;
}

} // namespace kb::routes
