#pragma once

#include "Clock.h"
#include "Database.h"

#include <QTemporaryDir>

#include <memory>

namespace kb::test {

// A fresh data directory in a temporary folder, with a clock fixed at
// Wednesday 6 March 2024, 10:30.
class TempDataDir
{
public:
    TempDataDir();
    const QString& path() const { return m_path; }
    Database& db() { return *m_db; }
    FixedClock& clock() { return m_clock; }
    // Another session on the same data directory, like a second workstation.
    std::unique_ptr<Database> openAnother();

private:
    QTemporaryDir m_temp;
    QString m_path;
    FixedClock m_clock;
    std::unique_ptr<Database> m_db;
};

QDateTime fixedNow();

} // namespace kb::test
