#pragma once

#include <vector>

namespace kb::routes {

// A round trip held as an array of nodes plus each node's position, the
// fastest form for the tour sizes of delivery routes and the benchmarks.
// Every change is a reversal of a stretch of the tour; the shorter of the two
// stretches that give the same round trip is the one reversed, so the
// direction in which the array runs may flip and callers work in terms of
// "next" and "previous" of the moment.
class Tour
{
public:
    explicit Tour(std::vector<int> order);

    int size() const { return m_size; }
    int next(int v) const
    {
        const int p = m_pos[v] + 1;
        return m_order[p == m_size ? 0 : p];
    }
    int prev(int v) const
    {
        const int p = m_pos[v];
        return m_order[p == 0 ? m_size - 1 : p - 1];
    }
    int position(int v) const { return m_pos[v]; }
    int at(int position) const { return m_order[position]; }
    const std::vector<int>& order() const { return m_order; }

    // Replaces links (a,b) and (c,d) with (a,c) and (b,d). Requires b to follow a
    // and d to follow c in the same direction (both next, or both previous).
    void exchange(int a, int b, int c, int d);

    // Swaps the two stretches of lengths first and second that start just after
    // position `at`: x A B y becomes x B A y. Touches only those nodes.
    void swapStretches(int at, int first, int second);

    void assign(const Tour& other);

private:
    // Reverses the stretch from position i forward to position j.
    void reverse(int i, int j);

    int m_size;
    std::vector<int> m_order;
    std::vector<int> m_pos;
    std::vector<int> m_scratch;
};

} // namespace kb::routes
