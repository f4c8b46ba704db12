#pragma once

#include "DistanceMatrix.h"
#include "OrderOptions.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace kb::routes {

// Every ordering question recast as one round trip with required links, so a
// single tour optimiser serves them all:
//  - an open route gains a dummy stop at cost 0 from every stop; the tour's
//    two links at the dummy mark where the route begins and ends;
//  - a fixed first (or last) stop becomes a required link between it and the
//    dummy; on a round trip with both ends fixed the required link joins the
//    first and last stop directly, and one fixed end is only a rotation;
//  - stops that must stay together (a household) are chained by required links.
// A required link costs its distance minus a bonus larger than any few links
// together, so no improving move ever drops one and every bound computed on
// these costs stays valid once the bonus is added back.
class OrderingProblem
{
public:
    OrderingProblem(const DistanceMatrix& distances, const OrderOptions& options,
                    const std::vector<std::pair<int, int>>& requiredLinks);

    // Nodes of the tour problem: the stops, plus the dummy for an open route.
    int size() const { return m_size; }
    // The node standing for the open ends of an open route, or -1.
    int dummy() const { return m_dummy; }
    std::int32_t cost(int i, int j) const { return m_costs[std::size_t(i) * m_size + j]; }
    const std::int32_t* row(int i) const { return m_costs.data() + std::size_t(i) * m_size; }
    std::int32_t maxAbsCost() const { return m_maxAbsCost; }

    // The nodes a node must be linked to (-1 when unused).
    int requiredPartner(int node, int k) const { return m_partners[std::size_t(node) * 2 + k]; }
    bool isRequired(int a, int b) const { return requiredPartner(a, 0) == b || requiredPartner(a, 1) == b; }
    // Each required link of the tour problem once.
    const std::vector<std::pair<int, int>>& requiredLinks() const { return m_links; }
    // Add to a tour's cost to get the route's length.
    std::int64_t costOffset() const { return m_offset; }

    std::int64_t tourCost(const std::vector<int>& tour) const;
    bool hasAllRequiredLinks(const std::vector<int>& tour) const;
    // The visiting order of the stops that a tour with all required links stands for.
    std::vector<int> stopOrder(const std::vector<int>& tour) const;

private:
    void addLink(int a, int b);

    OrderOptions m_options;
    int m_stops;
    int m_size;
    int m_dummy = -1;
    std::vector<std::int32_t> m_costs;
    std::vector<int> m_partners;
    std::vector<std::pair<int, int>> m_links;
    std::int64_t m_offset = 0;
    std::int32_t m_maxAbsCost = 0;
};

} // namespace kb::routes
