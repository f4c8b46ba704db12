#pragma once

#include <chrono>
#include <cstdint>

namespace kb::routes {

class OrderingProblem;

// A lower bound on the shortest round trip after Held and Karp: every round
// trip is a 1-tree (a spanning tree of all nodes but one, plus two links to
// that one), so the cheapest 1-tree is never longer than the best tour. Node
// penalties that make crowded nodes dearer tighten it, found by subgradient
// steps toward the length of a known tour. Each step costs time proportional
// to the square of the number of nodes; the count of steps is fixed by size so
// the figure is repeatable, with a time cap as a safety net.
class OneTreeBound
{
public:
    // knownTourCost: the cost of a tour of the same problem, which sizes the steps.
    static std::int64_t compute(const OrderingProblem& problem, std::int64_t knownTourCost,
                                std::chrono::steady_clock::time_point stopBy);
};

} // namespace kb::routes
