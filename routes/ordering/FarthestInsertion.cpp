#include "FarthestInsertion.h"

#include "OrderingProblem.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kb::routes {

namespace {

// The chains of required links, each as its nodes in order; a node without
// required links is a chain of one.
std::vector<std::vector<int>> chains(const OrderingProblem& problem)
{
    const int n = problem.size();
    std::vector<char> seen(std::size_t(n), 0);
    std::vector<std::vector<int>> result;
    auto walk = [&](int start) {
        std::vector<int> chain{start};
        seen[start] = 1;
        int previous = -1;
        int v = start;
        for (;;) {
            int following = -1;
            for (int k = 0; k < 2; ++k) {
                const int u = problem.requiredPartner(v, k);
                if (u != -1 && u != previous && !seen[u]) following = u;
            }
            if (following == -1) break;
            chain.push_back(following);
            seen[following] = 1;
            previous = v;
            v = following;
        }
        result.push_back(std::move(chain));
    };
    // Chain ends first, so each chain is walked from one end.
    for (int v = 0; v < n; ++v)
        if (!seen[v] && (problem.requiredPartner(v, 0) == -1 || problem.requiredPartner(v, 1) == -1)) walk(v);
    // What is left is one loop through every node.
    for (int v = 0; v < n; ++v)
        if (!seen[v]) walk(v);
    return result;
}

} // namespace

std::vector<int> FarthestInsertion::build(const OrderingProblem& problem)
{
    const auto pieces = chains(problem);
    const int count = int(pieces.size());

    // The tour as a ring of nodes; fixedAfter[k] says the link from position k
    // to the next lies inside a chain and must not be split.
    std::vector<int> tour(pieces[0]);
    std::vector<char> fixedAfter(tour.size(), 1);
    fixedAfter.back() = 0;
    std::vector<char> placed(std::size_t(count), 0);
    placed[0] = 1;

    // For each piece, its nearest distance from either end to any tour node.
    constexpr std::int64_t kFar = std::numeric_limits<std::int64_t>::max();
    std::vector<std::int64_t> nearest(std::size_t(count), kFar);
    // The dummy of an open route is at cost 0 from everything and says nothing
    // about where a stop lies, so it is left out of the distances; a lone dummy
    // comes last, which cuts the finished round trip where it costs least.
    const int dummy = problem.dummy();
    auto refresh = [&](const std::vector<int>& added) {
        for (int p = 0; p < count; ++p) {
            if (placed[p]) continue;
            const int front = pieces[p].front();
            const int back = pieces[p].back();
            if (front == dummy && back == dummy) {
                nearest[p] = 0;
                continue;
            }
            for (int v : added) {
                if (v == dummy) continue;
                if (front != dummy) nearest[p] = std::min<std::int64_t>(nearest[p], problem.cost(v, front));
                if (back != dummy) nearest[p] = std::min<std::int64_t>(nearest[p], problem.cost(v, back));
            }
        }
    };
    refresh(tour);

    for (int round = 1; round < count; ++round) {
        int pick = -1;
        for (int p = 0; p < count; ++p)
            if (!placed[p] && (pick == -1 || nearest[p] > nearest[pick])) pick = p;
        const std::vector<int>& piece = pieces[pick];
        const int a = piece.front();
        const int b = piece.back();

        std::int64_t bestDelta = kFar;
        std::size_t bestAt = 0;
        bool reversed = false;
        const std::size_t m = tour.size();
        for (std::size_t k = 0; k < m; ++k) {
            if (fixedAfter[k]) continue;
            const int u = tour[k];
            const int w = tour[(k + 1) % m];
            const std::int64_t base = problem.cost(u, w);
            const std::int64_t straight = std::int64_t(problem.cost(u, a)) + problem.cost(b, w) - base;
            const std::int64_t turned = std::int64_t(problem.cost(u, b)) + problem.cost(a, w) - base;
            if (straight < bestDelta) {
                bestDelta = straight;
                bestAt = k;
                reversed = false;
            }
            if (turned < bestDelta) {
                bestDelta = turned;
                bestAt = k;
                reversed = true;
            }
        }

        std::vector<int> inserted(piece);
        if (reversed) std::reverse(inserted.begin(), inserted.end());
        tour.insert(tour.begin() + std::ptrdiff_t(bestAt + 1), inserted.begin(), inserted.end());
        std::vector<char> links(inserted.size(), 1);
        links.back() = 0;
        fixedAfter.insert(fixedAfter.begin() + std::ptrdiff_t(bestAt + 1), links.begin(), links.end());
        placed[pick] = 1;
        refresh(inserted);
    }
    return tour;
}

} // namespace kb::routes
