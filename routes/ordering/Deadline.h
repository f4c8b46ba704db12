#pragma once

#include <chrono>

namespace kb::routes {

// The wall-time cap of one ordering run. It is a safety net only: the
// search is budgeted by counted steps so that a result does not depend on the
// machine's speed, and the cap ends it early only on inputs far beyond any
// delivery route.
class Deadline
{
public:
    using Clock = std::chrono::steady_clock;

    explicit Deadline(std::chrono::milliseconds limit) : m_start(Clock::now()), m_end(m_start + limit) {}

    bool passed() const { return Clock::now() >= m_end; }
    // A point part of the way to the end, for a stage that must leave time to the next.
    Clock::time_point share(double fraction) const
    {
        return m_start + std::chrono::duration_cast<Clock::duration>((m_end - m_start) * fraction);
    }
    double elapsedMs() const
    {
        return std::chrono::duration<double, std::milli>(Clock::now() - m_start).count();
    }

private:
    Clock::time_point m_start;
    Clock::time_point m_end;
};

} // namespace kb::routes
