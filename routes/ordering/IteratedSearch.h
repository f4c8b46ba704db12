#pragma once

#include <vector>

namespace kb::routes {

class Deadline;
class OrderingProblem;
struct OrderOptions;

// Iterated local search: after the local search has done all it can, a small
// disturbance is made at a random spot (two neighbouring stretches of up to a
// fifth of the route, at most 200 nodes, swap places: the "double bridge" that
// local moves cannot undo), the damage is repaired locally, and the result is
// kept when it is no longer than before. Each round costs about the size of
// the disturbance, not of the tour, so thousands of rounds fit in a fraction
// of a second. The
// number of rounds is set by size (or by the caller) and the random source is
// seeded, so the same input always gives the same order; the deadline only
// stops runs far larger than any route.
class IteratedSearch
{
public:
    // Returns the best tour seen; it is never longer than the one given.
    static std::vector<int> improve(const OrderingProblem& problem, std::vector<int> start,
                                    const OrderOptions& options, const Deadline& deadline);

    // Rounds used when the caller sets none.
    static int defaultKicks(int nodes);
};

} // namespace kb::routes
