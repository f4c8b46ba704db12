#pragma once

#include <vector>

namespace kb::routes {

class OrderingProblem;

// The best round trip by dynamic programming over subsets (Held and Karp):
// time grows as 2^n * n^2, well under a millisecond up to kMaxNodes nodes,
// and the answer is proven best, so small routes need no search at all.
class ExactSolver
{
public:
    static constexpr int kMaxNodes = 13;

    // Throws for a problem of more than kMaxNodes nodes.
    static std::vector<int> solve(const OrderingProblem& problem);
};

} // namespace kb::routes
