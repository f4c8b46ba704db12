#pragma once

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

#include <memory>

namespace kb::test {

// A store with two delivery services (1 "Hot Meals" every weekday and a
// walk-in default, 2 "Frozen Meals" on Mondays and Thursdays), an agency
// that delivers Monday to Saturday, routes R1 to R3, an ongoing client 10
// (C010: default route R1 stop 4, Tuesdays on R2 stop 7, stop date
// 30 June 2025) and an episodic client 20 (C020, no default route). Each
// test runs on SQLite and, with a server, on PostgreSQL.
class DatedFixture : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override;

    Database& db() { return data->db(); }
    // The person's EpisodicDeliveries rows by date, then RecordID.
    ResultSet rowsOf(int person);
    qint64 count(const QString& sql, const Params& params = {});

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
};

} // namespace kb::test
