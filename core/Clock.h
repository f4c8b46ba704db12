#pragma once

#include <QDate>
#include <QDateTime>

namespace kb {

// Today's date and the time of day come from here, never from the system
// directly, so that runs, suspensions and ages can be tested on fixed dates.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;
    QDate today() const { return now().date(); }
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class FixedClock final : public Clock
{
public:
    explicit FixedClock(QDateTime now) : m_now(std::move(now)) {}
    QDateTime now() const override { return m_now; }
    void set(QDateTime now) { m_now = std::move(now); }

private:
    QDateTime m_now;
};

} // namespace kb
