#pragma once

#include <cstdint>
#include <vector>

namespace kb::routes {

class Deadline;
class NeighbourLists;
class OrderingProblem;
class Tour;

// Improves a tour until no move of the kinds below shortens it:
//  - 2-opt: two links replaced by two others, one stretch reversed;
//  - Or-opt: a run of one to three consecutive nodes moved between two
//    other neighbours, either way round.
// Only links to listed neighbours are tried, and a node is looked at again
// only once a link at it has changed (a work queue of "dirty" nodes), so a
// small disturbance is repaired in time proportional to its size. Only
// strictly shorter tours are taken, so nodes at one point (links of length
// 0) cannot make it go round in circles.
class LocalSearch
{
public:
    LocalSearch(const OrderingProblem& problem, const NeighbourLists& neighbours);

    void markDirty(int node);
    void markAllDirty();
    // Works through the queue; returns the total cost saved. Stops early once
    // the deadline passes, leaving a valid tour.
    std::int64_t run(Tour& tour, const Deadline& deadline);

private:
    std::int64_t tryTwoOpt(Tour& tour, int t1);
    std::int64_t tryOrOpt(Tour& tour, int s1);
    int cost(int a, int b) const { return m_costs[std::size_t(a) * m_n + b]; }

    const NeighbourLists& m_neighbours;
    const std::int32_t* m_costs;
    int m_n;
    std::vector<int> m_queue;
    std::size_t m_head = 0;
    std::vector<char> m_queued;
};

} // namespace kb::routes
