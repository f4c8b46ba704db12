#pragma once

// The data the agency benchmarks run on: an existing data directory, or a
// demo agency generated for the run on SQLite in a temporary directory, or
// on a server in a schema of the benchmark's own (dropped first).

#include "DemoAgency.h"
#include "session/DataDirectory.h"
#include "store/PostgresStore.h"

#include <QTemporaryDir>

#include <memory>

inline std::unique_ptr<kb::Database> openDemoBenchData(const QString& dataDir, const QString& server,
                                                       const QString& schema, int clients, const QTemporaryDir& temp,
                                                       const kb::Clock& clock)
{
    if (!dataDir.isEmpty())
        return kb::openDataDirectory(dataDir, clock);
    std::unique_ptr<kb::Database> db;
    if (!server.isEmpty()) {
        kb::ServerAddress address = kb::ServerAddress::parse(server);
        address.schema = schema;
        kb::PostgresStore(kb::ServerAddress::parse(server))
            .exec(QStringLiteral("DROP SCHEMA IF EXISTS %1 CASCADE").arg(schema));
        db = kb::createServerDatabase(address, clock);
    } else {
        db = kb::createDataDirectory(temp.filePath(QStringLiteral("data")), clock);
    }
    kb::DemoOptions demo;
    demo.clients = clients;
    kb::generateDemoAgency(*db, demo);
    return db;
}
