#pragma once

#include <vector>

namespace kb::routes {

class OrderingProblem;

// The classic construction: start from one stop and again and again take the
// stop farthest from the tour so far and put it where it lengthens the tour
// least. Stops chained by required links travel as one piece, entered at
// either end, and a tour link inside such a chain is never split, so the
// result always has every required link. Takes time proportional to the
// square of the number of stops. It is the yardstick the optimiser must
// never do worse than.
class FarthestInsertion
{
public:
    static std::vector<int> build(const OrderingProblem& problem);
};

} // namespace kb::routes
