#pragma once

#include <cstdint>

namespace kb::routes {

// A small random source whose sequence is the same on every platform and
// compiler, so the same stops with the same seed always give the same order
// (the standard library's distributions do not promise that).
class SplitMix64
{
public:
    explicit SplitMix64(std::uint64_t seed) : m_state(seed) {}

    std::uint64_t next()
    {
        std::uint64_t z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }

    // A whole number in [0, bound); bound must be positive.
    int below(int bound) { return int((next() >> 33) % std::uint64_t(bound)); }

private:
    std::uint64_t m_state;
};

} // namespace kb::routes
