#pragma once

#include <vector>

namespace kb::routes {

class OrderingProblem;

// For each node, the few nodes worth linking it to, nearest first. The search
// only tries links to these, which keeps one pass near linear in the number of
// stops; a required partner always comes first because its cost is lowest.
class NeighbourLists
{
public:
    NeighbourLists(const OrderingProblem& problem, int perNode);

    const int* begin(int v) const { return m_items.data() + std::size_t(v) * m_width; }
    const int* end(int v) const { return begin(v) + m_width; }
    int width() const { return m_width; }

private:
    int m_width;
    std::vector<int> m_items;
};

} // namespace kb::routes
