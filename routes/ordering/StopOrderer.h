#pragma once

#include "DistanceMatrix.h"
#include "OrderOptions.h"
#include "OrderResult.h"

#include <utility>
#include <vector>

namespace kb::routes {

// Puts a route's stops in the order that makes the drive shortest.
//
// How: every question (round trip or open route, fixed first and/or last
// stop, stops that must stay together) is recast as one round trip with
// required links (see OrderingProblem). Up to ExactSolver::kMaxNodes nodes the
// exact method answers. Above that, farthest insertion builds a first tour,
// and iterated local search (2-opt and Or-opt moves over ten nearest
// neighbours, with double-bridge disturbances) improves it; the result is
// never longer than farthest insertion alone. A Held-Karp 1-tree bound then
// says how much shorter any order could possibly be.
//
// The same input with the same options always gives the same order. The time
// limit is a cap for inputs far beyond any delivery route, not the normal end.
class StopOrderer
{
public:
    explicit StopOrderer(OrderOptions options = {});

    // requiredLinks: pairs of stop indexes that must be visited one right after
    // the other (see Households). Throws RoutingError for an empty route or
    // links that cannot all be kept.
    OrderResult order(const DistanceMatrix& distances,
                      const std::vector<std::pair<int, int>>& requiredLinks = {}) const;

    const OrderOptions& options() const { return m_options; }

private:
    OrderOptions m_options;
};

} // namespace kb::routes
