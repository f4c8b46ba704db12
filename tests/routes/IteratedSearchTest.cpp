#include "RouteTestSupport.h"

#include "Deadline.h"
#include "ExactSolver.h"
#include "FarthestInsertion.h"
#include "Households.h"
#include "IteratedSearch.h"
#include "OrderingProblem.h"

#include <gtest/gtest.h>

using namespace kb::routes;
using namespace kb::routes::testing;

// The search used for larger routes must find the proven best on small ones,
// whatever the route's shape, fixed ends and households.
TEST(IteratedSearch, FindsTheExactOptimumOnSmallRoutes)
{
    std::uint64_t seed = 500;
    const std::vector<double> stops{1, 2.1, 2.2, 3, 4, 5.1, 5.2, 6, 7, 8, 9, 10};
    for (int instance = 0; instance < 6; ++instance) {
        const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(12, seed++));
        for (int variant = 0; variant < 16; ++variant) {
            OrderOptions o;
            o.shape = variant & 1 ? RouteShape::OpenPath : RouteShape::ClosedTour;
            o.fixFirst = variant & 2;
            o.fixLast = variant & 4;
            const auto links = variant & 8 ? Households::links(stops) : std::vector<std::pair<int, int>>{};
            const OrderingProblem problem(d, o, links);
            ASSERT_LE(problem.size(), ExactSolver::kMaxNodes);
            const auto exact = ExactSolver::solve(problem);
            const auto found = IteratedSearch::improve(problem, FarthestInsertion::build(problem), o,
                                                       Deadline(std::chrono::milliseconds(5000)));
            EXPECT_TRUE(problem.hasAllRequiredLinks(found));
            EXPECT_EQ(problem.tourCost(found), problem.tourCost(exact))
                << "instance " << instance << " variant " << variant;
        }
    }
}

TEST(FarthestInsertion, KeepsRequiredLinksAndVisitsEveryNode)
{
    const DistanceMatrix d = DistanceMatrix::fromPlanePoints(randomPoints(30, 9));
    OrderOptions o;
    o.shape = RouteShape::OpenPath;
    o.fixFirst = true;
    o.fixLast = true;
    const OrderingProblem problem(d, o, {{3, 4}, {4, 5}, {10, 20}});
    const auto tour = FarthestInsertion::build(problem);
    EXPECT_TRUE(isPermutation(tour, problem.size()));
    EXPECT_TRUE(problem.hasAllRequiredLinks(tour));
}
