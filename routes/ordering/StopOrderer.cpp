#include "StopOrderer.h"

#include "Deadline.h"
#include "ExactSolver.h"
#include "FarthestInsertion.h"
#include "IteratedSearch.h"
#include "OneTreeBound.h"
#include "OrderingProblem.h"
#include "RoutingError.h"

namespace kb::routes {

StopOrderer::StopOrderer(OrderOptions options) : m_options(options)
{
    if (m_options.timeLimit.count() <= 0)
        throw RoutingError(QStringLiteral("The time limit for ordering stops must be positive."));
    if (m_options.kickBudget < 0)
        throw RoutingError(QStringLiteral("The number of search rounds cannot be negative."));
}

OrderResult StopOrderer::order(const DistanceMatrix& distances,
                               const std::vector<std::pair<int, int>>& requiredLinks) const
{
    const Deadline deadline(m_options.timeLimit);
    const OrderingProblem problem(distances, m_options, requiredLinks);

    OrderResult result;
    const std::vector<int> construction = FarthestInsertion::build(problem);
    std::vector<int> tour;
    std::int64_t bound = 0;
    if (problem.size() <= ExactSolver::kMaxNodes) {
        tour = ExactSolver::solve(problem);
        bound = problem.tourCost(tour);
        result.provenOptimal = true;
    } else {
        tour = IteratedSearch::improve(problem, construction, m_options, deadline);
        bound = OneTreeBound::compute(problem, problem.tourCost(tour), deadline.share(1.0));
    }
    if (!problem.hasAllRequiredLinks(tour))
        throw RoutingError(
            QStringLiteral("The stops could not be ordered with every required pair kept together."));

    result.order = problem.stopOrder(tour);
    const bool closed = m_options.shape == RouteShape::ClosedTour;
    result.length = distances.length(result.order, closed);
    result.constructionLength = distances.length(problem.stopOrder(construction), closed);
    result.lowerBound = bound + problem.costOffset();
    if (result.length != problem.tourCost(tour) + problem.costOffset())
        throw RoutingError(QStringLiteral("Internal error: the ordered route's length does not add up."));
    if (result.lowerBound == result.length) result.provenOptimal = true;
    result.elapsedMs = deadline.elapsedMs();
    return result;
}

} // namespace kb::routes
