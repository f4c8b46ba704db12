#pragma once

#include "Clock.h"
#include "store/Database.h"

#include <QTemporaryDir>

#include <memory>
#include <string>

namespace kb::test {

enum class StoreKind { SQLite, PostgreSQL };

std::string storeName(StoreKind kind);

// The PostgreSQL server the tests may use, from KB_TEST_PG
// ("HOST[:PORT]/DATABASE"); empty when the tests run without a server.
QString postgresTestAddress();

// A fresh, empty agency database with the whole catalogue and the starting
// rows, and a clock fixed at Wednesday 6 March 2024, 10:30: a data directory
// in a temporary folder, or a schema of its own on the test server.
class TempDataDir
{
public:
    explicit TempDataDir(StoreKind kind = StoreKind::SQLite);
    ~TempDataDir();

    StoreKind kind() const { return m_kind; }
    const QString& path() const { return m_path; }
    Database& db() { return *m_db; }
    FixedClock& clock() { return m_clock; }
    // Another session on the same data, like a second workstation.
    std::unique_ptr<Database> openAnother();
    // The --data or --server option pair that names this data for the
    // kettlebrook command.
    QStringList commandLocation() const;

private:
    StoreKind m_kind;
    QTemporaryDir m_temp;
    QString m_path;
    QString m_schema;
    FixedClock m_clock;
    std::unique_ptr<Database> m_db;
};

QDateTime fixedNow();

} // namespace kb::test

// Skips a test meant for a store that this run has not got.
#define KB_REQUIRE_STORE(kind)                                                                                 \
    do {                                                                                                       \
        if ((kind) == ::kb::test::StoreKind::PostgreSQL && ::kb::test::postgresTestAddress().isEmpty())        \
            GTEST_SKIP() << "no PostgreSQL server for the tests (set KB_TEST_PG)";                            \
    } while (false)
