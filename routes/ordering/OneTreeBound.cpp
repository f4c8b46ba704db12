#include "OneTreeBound.h"

#include "OrderingProblem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace kb::routes {

namespace {

// One cheapest 1-tree under penalties pi: the tree's plain cost, and each node's degree.
struct OneTree
{
    std::int64_t plainCost = 0;
    double penaltyPart = 0.0; // sum of pi[v] * (degree[v] - 2)
    std::vector<int> degree;
};

void cheapestOneTree(const OrderingProblem& problem, const std::vector<double>& pi, OneTree& tree,
                     std::vector<double>& key, std::vector<int>& parent, std::vector<char>& inTree)
{
    const int n = problem.size();
    tree.plainCost = 0;
    std::fill(tree.degree.begin(), tree.degree.end(), 0);
    // Prim's method over nodes 1..n-1; node 0 is the one joined by two links.
    constexpr double kInf = std::numeric_limits<double>::infinity();
    std::fill(key.begin(), key.end(), kInf);
    std::fill(inTree.begin(), inTree.end(), 0);
    std::fill(parent.begin(), parent.end(), -1);
    int v = 1;
    inTree[1] = 1;
    for (int added = 1; added < n - 1; ++added) {
        const std::int32_t* row = problem.row(v);
        const double pv = pi[v];
        int nextNode = -1;
        double nextKey = kInf;
        for (int u = 1; u < n; ++u) {
            if (inTree[u]) continue;
            const double k = row[u] + pv + pi[u];
            if (k < key[u]) {
                key[u] = k;
                parent[u] = v;
            }
            if (key[u] < nextKey) {
                nextKey = key[u];
                nextNode = u;
            }
        }
        v = nextNode;
        inTree[v] = 1;
        tree.plainCost += problem.cost(v, parent[v]);
        ++tree.degree[v];
        ++tree.degree[parent[v]];
    }
    // The two cheapest links at node 0.
    int first = -1;
    int second = -1;
    const std::int32_t* row0 = problem.row(0);
    auto dearer = [&](int a, int b) { return row0[a] + pi[a] > row0[b] + pi[b]; };
    for (int u = 1; u < n; ++u) {
        if (first == -1 || dearer(first, u)) {
            second = first;
            first = u;
        } else if (second == -1 || dearer(second, u)) {
            second = u;
        }
    }
    tree.plainCost += row0[first] + row0[second];
    tree.degree[0] = 2;
    ++tree.degree[first];
    ++tree.degree[second];
    tree.penaltyPart = 0.0;
    for (int u = 0; u < n; ++u)
        tree.penaltyPart += pi[u] * (tree.degree[u] - 2);
}

std::int64_t wholeBound(const OneTree& tree)
{
    // Tour costs are whole numbers, so the bound may be rounded up; the small
    // allowance keeps floating-point noise from rounding past the true value.
    const double allowance = 1e-7 * (1.0 + std::abs(tree.penaltyPart));
    return tree.plainCost + std::int64_t(std::ceil(tree.penaltyPart - allowance));
}

} // namespace

std::int64_t OneTreeBound::compute(const OrderingProblem& problem, std::int64_t knownTourCost,
                                   std::chrono::steady_clock::time_point stopBy)
{
    const int n = problem.size();
    if (n <= 3) return knownTourCost;
    const double squared = double(n) * n;
    const int steps = int(std::clamp(2.0e8 / squared, 100.0, 1500.0));
    const int patience = std::max(5, std::min(50, steps / 10));

    std::vector<double> pi(std::size_t(n), 0.0);
    std::vector<double> bestPi = pi;
    std::vector<double> key(static_cast<std::size_t>(n));
    std::vector<int> parent(static_cast<std::size_t>(n));
    std::vector<char> inTree(static_cast<std::size_t>(n));
    OneTree tree;
    tree.degree.assign(std::size_t(n), 0);

    std::int64_t best = std::numeric_limits<std::int64_t>::min();
    std::vector<double> direction(static_cast<std::size_t>(n), 0.0);
    double lambda = 2.0;
    int sinceBetter = 0;
    for (int step = 0; step < steps; ++step) {
        if ((step & 7) == 7 && std::chrono::steady_clock::now() >= stopBy) break;
        cheapestOneTree(problem, pi, tree, key, parent, inTree);
        const std::int64_t bound = wholeBound(tree);
        if (bound > best) {
            best = bound;
            bestPi = pi;
            sinceBetter = 0;
        } else if (++sinceBetter >= patience) {
            // Stalled: smaller steps, from the best penalties so far.
            lambda /= 2.0;
            sinceBetter = 0;
            pi = bestPi;
            std::fill(direction.begin(), direction.end(), 0.0);
            continue;
        }
        if (best >= knownTourCost) break;
        // Part of the previous direction is kept, which damps the zigzag of
        // plain subgradient steps.
        double norm = 0.0;
        bool isTour = true;
        for (int v = 0; v < n; ++v) {
            const int g = tree.degree[v] - 2;
            isTour = isTour && g == 0;
            direction[v] = 0.7 * g + 0.3 * direction[v];
            norm += direction[v] * direction[v];
        }
        // Every node has degree 2: the 1-tree is itself a tour, and the best one.
        if (isTour || norm == 0.0 || lambda < 1e-6) break;
        const double value = double(tree.plainCost) + tree.penaltyPart;
        const double t = lambda * std::max(1.0, double(knownTourCost) - value) / norm;
        for (int v = 0; v < n; ++v)
            pi[v] += t * direction[v];
    }
    return best;
}

} // namespace kb::routes
