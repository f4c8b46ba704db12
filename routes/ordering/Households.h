#pragma once

#include <utility>
#include <vector>

namespace kb::routes {

// Stops that share a whole stop number (4.1, 4.2 and 4 all share 4) are one
// household or one address and are delivered one after the other. Stop
// numbers of 0 or below (unnumbered rows, a start location) belong to no
// household.
class Households
{
public:
    // Links that chain each household's stops in ascending stop number, as
    // pairs of indexes into stopNumbers, for the optimiser to keep.
    static std::vector<std::pair<int, int>> links(const std::vector<double>& stopNumbers);
};

} // namespace kb::routes
