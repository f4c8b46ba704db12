#include "IteratedSearch.h"

#include "Deadline.h"
#include "LocalSearch.h"
#include "NeighbourLists.h"
#include "OrderOptions.h"
#include "OrderingProblem.h"
#include "SplitMix64.h"
#include "Tour.h"

#include <algorithm>
#include <cstdint>

namespace kb::routes {

namespace {
constexpr int kNeighbours = 10;
// Bounds on the length of the two stretches a disturbance swaps. Long
// stretches move whole neighbourhoods at once, which on large routes escapes
// the traps that short ones keep falling back into; the cost of a swap grows
// with them, so they scale with the route.
constexpr int kShortestReach = 30;
constexpr int kLongestReach = 200;
constexpr int kKickAttempts = 8;
} // namespace

int IteratedSearch::defaultKicks(int nodes)
{
    return std::clamp(nodes * 60, 2000, 60000);
}

std::vector<int> IteratedSearch::improve(const OrderingProblem& problem, std::vector<int> start,
                                         const OrderOptions& options, const Deadline& deadline)
{
    const int n = problem.size();
    // An open route's dummy sits in every list at cost 0, so give the real stops one more place.
    const NeighbourLists neighbours(problem, kNeighbours + (problem.dummy() >= 0 ? 1 : 0));
    LocalSearch search(problem, neighbours);
    Tour tour(std::move(start));
    const auto searchEnd = deadline.share(0.85);
    const Deadline searchDeadline(
        std::chrono::duration_cast<std::chrono::milliseconds>(searchEnd - Deadline::Clock::now()));

    std::int64_t current = problem.tourCost(tour.order());
    search.markAllDirty();
    current -= search.run(tour, searchDeadline);
    Tour kept = tour;
    Tour best = tour;
    std::int64_t bestCost = current;

    const int kicks = options.kickBudget > 0 ? options.kickBudget : defaultKicks(n);
    const int longest = std::min(std::clamp(n / 5, kShortestReach, kLongestReach), (n - 2) / 2);
    if (n < 8 || longest < 1) return best.order();
    SplitMix64 random(options.seed);
    for (int round = 0; round < kicks && !searchDeadline.passed(); ++round) {
        int at = 0, first = 0, second = 0;
        int x = 0, a1 = 0, a2 = 0, b1 = 0, b2 = 0, y = 0;
        bool found = false;
        for (int attempt = 0; attempt < kKickAttempts && !found; ++attempt) {
            at = random.below(n);
            first = 1 + random.below(longest);
            second = 1 + random.below(longest);
            x = tour.at(at);
            a1 = tour.at((at + 1) % n);
            a2 = tour.at((at + first) % n);
            b1 = tour.at((at + first + 1) % n);
            b2 = tour.at((at + first + second) % n);
            y = tour.at((at + first + second + 1) % n);
            // A disturbance must not break a required link.
            found = !problem.isRequired(x, a1) && !problem.isRequired(a2, b1) && !problem.isRequired(b2, y);
        }
        if (!found) continue;
        const std::int64_t delta = std::int64_t(problem.cost(x, b1)) + problem.cost(b2, a1) +
                                   problem.cost(a2, y) - problem.cost(x, a1) - problem.cost(a2, b1) -
                                   problem.cost(b2, y);
        tour.swapStretches(at, first, second);
        for (const int v : {x, a1, a2, b1, b2, y})
            search.markDirty(v);
        const std::int64_t candidate = current + delta - search.run(tour, searchDeadline);
        if (candidate <= current) {
            current = candidate;
            kept.assign(tour);
            if (candidate < bestCost) {
                bestCost = candidate;
                best.assign(tour);
            }
        } else {
            tour.assign(kept);
        }
    }
    return best.order();
}

} // namespace kb::routes
