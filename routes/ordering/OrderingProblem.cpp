#include "OrderingProblem.h"

#include "RoutingError.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace kb::routes {

namespace {

// Up to this many nodes the exact solver runs, and it needs a bonus larger
// than any whole tour to be sure of keeping the required links.
constexpr int kWholeTourBonusBelow = 16;

class Components
{
public:
    explicit Components(int n) : m_parent(std::size_t(n)), m_count(std::size_t(n), 1)
    {
        std::iota(m_parent.begin(), m_parent.end(), 0);
    }
    int find(int v)
    {
        while (m_parent[v] != v)
            v = m_parent[v] = m_parent[m_parent[v]];
        return v;
    }
    int count(int v) { return m_count[find(v)]; }
    void join(int a, int b)
    {
        a = find(a);
        b = find(b);
        if (a == b) return;
        m_parent[b] = a;
        m_count[a] += m_count[b];
    }

private:
    std::vector<int> m_parent;
    std::vector<int> m_count;
};

} // namespace

OrderingProblem::OrderingProblem(const DistanceMatrix& distances, const OrderOptions& options,
                                 const std::vector<std::pair<int, int>>& requiredLinks)
    : m_options(options), m_stops(distances.size())
{
    if (m_stops == 0) throw RoutingError(QStringLiteral("There are no stops to order."));
    const bool open = options.shape == RouteShape::OpenPath;
    m_size = open ? m_stops + 1 : m_stops;
    m_dummy = open ? m_stops : -1;
    m_partners.assign(std::size_t(m_size) * 2, -1);

    for (const auto& [a, b] : requiredLinks) {
        if (a < 0 || b < 0 || a >= m_stops || b >= m_stops || a == b)
            throw RoutingError(QStringLiteral("Stops %1 and %2 cannot be kept together: no such pair.")
                                   .arg(a + 1)
                                   .arg(b + 1));
        addLink(a, b);
    }
    const int first = 0;
    const int last = m_stops - 1;
    if (open) {
        if (options.fixFirst) addLink(m_dummy, first);
        if (options.fixLast && !(options.fixFirst && first == last)) addLink(m_dummy, last);
    } else if (options.fixFirst && options.fixLast && m_stops >= 3) {
        addLink(first, last);
    }

    // A tour of three or fewer nodes holds every link there is.
    if (m_size <= 3) {
        m_links.clear();
        m_partners.assign(std::size_t(m_size) * 2, -1);
    }

    Components components(m_size);
    for (const auto& [a, b] : m_links) {
        if (components.find(a) == components.find(b) && components.count(a) < m_size)
            throw RoutingError(
                QStringLiteral("The stops that must stay next to each other form a closed loop "
                               "that leaves other stops out."));
        components.join(a, b);
    }

    const std::int32_t maxDistance = distances.maxCost();
    const std::int64_t factor = m_size <= kWholeTourBonusBelow ? m_size + 1 : 5;
    const std::int64_t bonus = factor * std::int64_t(maxDistance) + 1;
    m_costs.assign(std::size_t(m_size) * m_size, 0);
    for (int i = 0; i < m_stops; ++i)
        for (int j = 0; j < m_stops; ++j)
            m_costs[std::size_t(i) * m_size + j] = distances.at(i, j);
    for (const auto& [a, b] : m_links) {
        m_costs[std::size_t(a) * m_size + b] -= std::int32_t(bonus);
        m_costs[std::size_t(b) * m_size + a] -= std::int32_t(bonus);
        m_offset += bonus;
    }
    for (std::int32_t c : m_costs)
        m_maxAbsCost = std::max(m_maxAbsCost, std::abs(c));
}

void OrderingProblem::addLink(int a, int b)
{
    if (isRequired(a, b)) return;
    for (int v : {a, b})
        if (requiredPartner(v, 1) != -1) {
            const QString who = v == m_dummy ? QStringLiteral("The start or end of the route")
                                             : QStringLiteral("Stop %1").arg(v + 1);
            throw RoutingError(who + QStringLiteral(" is required next to more than two other stops."));
        }
    m_partners[std::size_t(a) * 2 + (requiredPartner(a, 0) == -1 ? 0 : 1)] = b;
    m_partners[std::size_t(b) * 2 + (requiredPartner(b, 0) == -1 ? 0 : 1)] = a;
    m_links.emplace_back(a, b);
}

std::int64_t OrderingProblem::tourCost(const std::vector<int>& tour) const
{
    std::int64_t sum = 0;
    for (std::size_t k = 0; k < tour.size(); ++k)
        sum += cost(tour[k], tour[(k + 1) % tour.size()]);
    return sum;
}

bool OrderingProblem::hasAllRequiredLinks(const std::vector<int>& tour) const
{
    const int n = int(tour.size());
    std::vector<int> pos(std::size_t(n), 0);
    for (int k = 0; k < n; ++k)
        pos[tour[k]] = k;
    for (const auto& [a, b] : m_links) {
        const int d = std::abs(pos[a] - pos[b]);
        if (d != 1 && d != n - 1) return false;
    }
    return true;
}

std::vector<int> OrderingProblem::stopOrder(const std::vector<int>& tour) const
{
    const int n = int(tour.size());
    std::vector<int> pos(std::size_t(n), 0);
    for (int k = 0; k < n; ++k)
        pos[tour[k]] = k;
    auto at = [&](int k) { return tour[((k % n) + n) % n]; };

    int start = 0;
    int step = 1;
    const int first = 0;
    const int last = m_stops - 1;
    if (m_dummy >= 0) {
        start = pos[m_dummy];
        if (m_options.fixFirst)
            step = at(start + 1) == first ? 1 : -1;
        else if (m_options.fixLast)
            step = at(start - 1) == last ? 1 : -1;
        start += step;
    } else if (m_options.fixFirst && m_options.fixLast && m_stops >= 3) {
        start = pos[first];
        step = at(start + 1) == last ? -1 : 1;
    } else if (m_options.fixLast && !m_options.fixFirst) {
        start = pos[last] + 1;
    } else {
        start = pos[first];
    }

    std::vector<int> order;
    order.reserve(std::size_t(m_stops));
    for (int k = 0; k < n; ++k) {
        const int v = at(start + step * k);
        if (v != m_dummy) order.push_back(v);
    }
    return order;
}

} // namespace kb::routes
