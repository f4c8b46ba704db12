#include "LocalSearch.h"

#include "Deadline.h"
#include "NeighbourLists.h"
#include "OrderingProblem.h"
#include "Tour.h"

namespace kb::routes {

namespace {
constexpr int kLongestRun = 3;
} // namespace

LocalSearch::LocalSearch(const OrderingProblem& problem, const NeighbourLists& neighbours)
    : m_neighbours(neighbours), m_costs(problem.row(0)), m_n(problem.size()),
      m_queued(std::size_t(problem.size()), 0)
{
    m_queue.reserve(std::size_t(m_n));
}

void LocalSearch::markDirty(int node)
{
    if (m_queued[node]) return;
    m_queued[node] = 1;
    m_queue.push_back(node);
}

void LocalSearch::markAllDirty()
{
    for (int v = 0; v < m_n; ++v)
        markDirty(v);
}

std::int64_t LocalSearch::run(Tour& tour, const Deadline& deadline)
{
    std::int64_t saved = 0;
    if (m_n < 5) {
        m_queue.clear();
        m_head = 0;
        std::fill(m_queued.begin(), m_queued.end(), 0);
        return 0;
    }
    unsigned steps = 0;
    while (m_head < m_queue.size()) {
        if ((++steps & 255u) == 0 && deadline.passed()) break;
        const int v = m_queue[m_head++];
        m_queued[v] = 0;
        if (m_head > 4096 && 2 * m_head > m_queue.size()) {
            m_queue.erase(m_queue.begin(), m_queue.begin() + std::ptrdiff_t(m_head));
            m_head = 0;
        }
        for (;;) {
            std::int64_t gain = tryTwoOpt(tour, v);
            if (gain == 0) gain = tryOrOpt(tour, v);
            if (gain == 0) break;
            saved += gain;
        }
    }
    for (std::size_t k = m_head; k < m_queue.size(); ++k)
        m_queued[m_queue[k]] = 0;
    m_queue.clear();
    m_head = 0;
    return saved;
}

std::int64_t LocalSearch::tryTwoOpt(Tour& tour, int t1)
{
    for (int forward = 1; forward >= 0; --forward) {
        const int t2 = forward ? tour.next(t1) : tour.prev(t1);
        const std::int64_t d12 = cost(t1, t2);
        for (const int* it = m_neighbours.begin(t2); it != m_neighbours.end(t2); ++it) {
            const int t3 = *it;
            const std::int64_t g1 = d12 - cost(t2, t3);
            if (g1 <= 0) break;
            // With t2 after t1, the link to give up at t3 is the one before it.
            const int t4 = forward ? tour.prev(t3) : tour.next(t3);
            if (t3 == t1 || t4 == t2) continue;
            const std::int64_t gain = g1 + cost(t3, t4) - cost(t4, t1);
            if (gain > 0) {
                tour.exchange(t2, t1, t3, t4);
                markDirty(t1);
                markDirty(t2);
                markDirty(t3);
                markDirty(t4);
                return gain;
            }
        }
    }
    return 0;
}

std::int64_t LocalSearch::tryOrOpt(Tour& tour, int s1)
{
    if (m_n < 8) return 0;
    for (int forward = 1; forward >= 0; --forward) {
        auto step = [&](int v) { return forward ? tour.next(v) : tour.prev(v); };
        // The run starts at s1 and extends away from p.
        const int p = forward ? tour.prev(s1) : tour.next(s1);
        int run[kLongestRun] = {s1, -1, -1};
        int s2 = s1;
        for (int length = 1; length <= kLongestRun; ++length) {
            if (length > 1) {
                s2 = step(s2);
                run[length - 1] = s2;
            }
            const int n = step(s2);
            if (s2 == p || n == p || step(n) == p) break;
            const std::int64_t g1 = std::int64_t(cost(p, s1)) + cost(s2, n) - cost(p, n);
            if (g1 <= 0) continue;
            auto inRun = [&](int v) { return v == run[0] || v == run[1] || v == run[2]; };
            for (const int* it = m_neighbours.begin(s1); it != m_neighbours.end(s1); ++it) {
                const int c = *it;
                const std::int64_t g2 = g1 - cost(s1, c);
                if (g2 <= 0) break;
                if (c == p || c == n || inRun(c)) continue;
                const int after = step(c);
                const int before = forward ? tour.prev(c) : tour.next(c);
                for (const int e : {after, before}) {
                    if (e == p || e == n || inRun(e)) continue;
                    const std::int64_t gain = g2 + cost(c, e) - cost(s2, e);
                    if (gain <= 0) continue;
                    // Seen in the direction p -> s1 .. s2 -> n, the run goes in
                    // between c and e by two or three reversals.
                    if (e == after) {
                        tour.exchange(p, s1, c, e);
                        tour.exchange(p, c, n, s2);
                        if (length > 1) tour.exchange(c, s2, s1, e);
                    } else {
                        tour.exchange(p, s1, e, c);
                        tour.exchange(p, e, n, s2);
                    }
                    for (const int v : {p, n, s1, s2, c, e})
                        markDirty(v);
                    return gain;
                }
            }
        }
    }
    return 0;
}

} // namespace kb::routes
