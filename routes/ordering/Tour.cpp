#include "Tour.h"

#include "RoutingError.h"

#include <algorithm>
#include <utility>

namespace kb::routes {

Tour::Tour(std::vector<int> order)
    : m_size(int(order.size())), m_order(std::move(order)), m_pos(m_order.size(), -1)
{
    for (int k = 0; k < m_size; ++k) {
        const int v = m_order[k];
        if (v < 0 || v >= m_size || m_pos[v] != -1)
            throw RoutingError(QStringLiteral("A tour must visit each of its %1 nodes once.").arg(m_size));
        m_pos[v] = k;
    }
}

void Tour::exchange(int a, int b, int c, int d)
{
    if (next(a) == b)
        reverse(m_pos[b], m_pos[c]);
    else
        reverse(m_pos[a], m_pos[d]);
}

void Tour::reverse(int i, int j)
{
    int length = j - i;
    if (length < 0) length += m_size;
    ++length;
    // The rest of the ring reversed gives the same round trip, run the other way.
    if (2 * length > m_size) {
        const int ni = j + 1 == m_size ? 0 : j + 1;
        const int nj = i == 0 ? m_size - 1 : i - 1;
        i = ni;
        j = nj;
        length = m_size - length;
    }
    for (int k = 0; k < length / 2; ++k) {
        const int vi = m_order[i];
        const int vj = m_order[j];
        m_order[i] = vj;
        m_pos[vj] = i;
        m_order[j] = vi;
        m_pos[vi] = j;
        if (++i == m_size) i = 0;
        if (--j < 0) j = m_size - 1;
    }
}

void Tour::swapStretches(int at, int first, int second)
{
    const int total = first + second;
    m_scratch.resize(std::size_t(total));
    for (int k = 0; k < total; ++k)
        m_scratch[k] = m_order[(at + 1 + k) % m_size];
    std::rotate(m_scratch.begin(), m_scratch.begin() + first, m_scratch.end());
    for (int k = 0; k < total; ++k) {
        const int p = (at + 1 + k) % m_size;
        m_order[p] = m_scratch[k];
        m_pos[m_scratch[k]] = p;
    }
}

void Tour::assign(const Tour& other)
{
    m_order = other.m_order;
    m_pos = other.m_pos;
}

} // namespace kb::routes
