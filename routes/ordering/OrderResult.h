#pragma once

#include <cstdint>
#include <vector>

namespace kb::routes {

struct OrderResult
{
    // Indexes of the stops given, in visiting order.
    std::vector<int> order;
    // The route's length, with the closing leg for a round trip.
    std::int64_t length = 0;
    // No order of these stops can be shorter than this, so
    // (length - lowerBound) / lowerBound is the most the route can be off.
    std::int64_t lowerBound = 0;
    // The order was found by an exhaustive method and is the best there is.
    bool provenOptimal = false;
    // The route before improvement (farthest insertion); the result is never longer.
    std::int64_t constructionLength = 0;
    double elapsedMs = 0.0;
};

} // namespace kb::routes
