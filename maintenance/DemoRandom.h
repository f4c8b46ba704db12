#pragma once

#include <QtGlobal>

#include <cmath>
#include <initializer_list>
#include <random>
#include <vector>

namespace kb::demo {

// The one source of chance of the demo agency. The standard distributions
// may differ between standard libraries, so the numbers are drawn straight
// from the engine: the same seed then gives the same agency everywhere.
class DemoRandom
{
public:
    explicit DemoRandom(quint32 seed) : m_engine(seed) {}

    // 0 <= result < 1
    double uniform() { return double(m_engine()) / 4294967296.0; }
    // 0 <= result < n; 0 when n is not positive.
    int below(int n) { return n <= 0 ? 0 : int(uniform() * n); }
    // lo <= result <= hi
    int between(int lo, int hi) { return hi <= lo ? lo : lo + below(hi - lo + 1); }
    bool chance(double p) { return uniform() < p; }
    double range(double lo, double hi) { return lo + uniform() * (hi - lo); }

    // A normally distributed number (Box-Muller), for scattering addresses.
    double normal(double mean, double sigma)
    {
        double u = uniform();
        if (u < 1e-12) u = 1e-12;
        const double v = uniform();
        return mean + sigma * std::sqrt(-2.0 * std::log(u)) * std::cos(6.283185307179586 * v);
    }

    template <typename Container> const auto& pick(const Container& items)
    {
        return items[below(int(std::size(items)))];
    }

    // The index of a weight, chosen in proportion to the weights.
    int weighted(std::initializer_list<double> weights)
    {
        double total = 0;
        for (double w : weights)
            total += w;
        double r = uniform() * total;
        int i = 0;
        for (double w : weights) {
            if (r < w) return i;
            r -= w;
            ++i;
        }
        return int(weights.size()) - 1;
    }

    // The same for weights kept in a container.
    template <typename Container> int weightedIn(const Container& weights)
    {
        double total = 0;
        for (double w : weights)
            total += w;
        double r = uniform() * total;
        int i = 0;
        for (double w : weights) {
            if (r < w) return i;
            r -= w;
            ++i;
        }
        return int(std::size(weights)) - 1;
    }

private:
    std::mt19937 m_engine;
};

} // namespace kb::demo
