#pragma once

#include "RouteShape.h"

#include <chrono>
#include <cstdint>

namespace kb::routes {

struct OrderOptions
{
    RouteShape shape = RouteShape::ClosedTour;
    // The first stop given stays first (a start location).
    bool fixFirst = false;
    // The last stop given stays last (an end location).
    bool fixLast = false;
    // Safety cap on wall time. The search is budgeted by counted steps sized to
    // finish well inside it, so the cap only cuts very large inputs short.
    std::chrono::milliseconds timeLimit{2000};
    // Perturbation rounds of the improvement search; 0 sizes them by the stop count.
    int kickBudget = 0;
    std::uint64_t seed = 0x4B65747462726B31ull;
};

} // namespace kb::routes
