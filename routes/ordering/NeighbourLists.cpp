#include "NeighbourLists.h"

#include "OrderingProblem.h"

#include <algorithm>
#include <numeric>

namespace kb::routes {

NeighbourLists::NeighbourLists(const OrderingProblem& problem, int perNode)
{
    const int n = problem.size();
    m_width = std::max(0, std::min(perNode, n - 1));
    m_items.resize(std::size_t(n) * m_width);
    std::vector<int> others;
    for (int v = 0; v < n; ++v) {
        others.clear();
        for (int u = 0; u < n; ++u)
            if (u != v) others.push_back(u);
        const std::int32_t* row = problem.row(v);
        // Ties go to the lower node number so the lists never depend on the sort's whims.
        auto closer = [row](int a, int b) { return row[a] != row[b] ? row[a] < row[b] : a < b; };
        std::partial_sort(others.begin(), others.begin() + m_width, others.end(), closer);
        std::copy(others.begin(), others.begin() + m_width, m_items.begin() + std::ptrdiff_t(v) * m_width);
    }
}

} // namespace kb::routes
