#pragma once

// What the stress and crash tests of worker processes share: new data on
// the store under test with the pool of shared clients, the counters as
// they stood before, and a fleet of workers journaling into a folder of
// their own.

#include "StressFleet.h"
#include "StressVerdict.h"

#include "TempDataDir.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace kb::stress {

class StressFixture : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
        preparePool(data->db());
        before = readCounters(data->db());
    }
    // A worker of this run, on this data.
    WorkerOptions worker(const QString& name) const { return workerOn(data->commandLocation(), name, journals.path()); }

    std::unique_ptr<test::TempDataDir> data;
    Counters before;
    QTemporaryDir journals;
    StressFleet fleet{QStringLiteral(KB_STRESS_WORKER)};
};

} // namespace kb::stress
