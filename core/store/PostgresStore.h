#pragma once

#include "store/Store.h"

typedef struct pg_conn PGconn;

namespace kb {

// Where a PostgreSQL database is: "HOST[:PORT]/DATABASE[#SCHEMA]". HOST may be a
// socket directory (a path); the user and password come from the usual
// PGUSER and PGPASSWORD settings of the environment.
struct ServerAddress
{
    QString host;
    int port = 5432;
    QString database;
    QString schema; // empty: the database's own; else a schema of its own, made if missing

    // Throws DbError on a malformed address.
    static ServerAddress parse(const QString& text);
    QString toString() const;
};

// The server store: a PostgreSQL database for agencies with many
// workstations.
class PostgresStore final : public Store
{
public:
    explicit PostgresStore(const ServerAddress& address);
    ~PostgresStore() override;

    Dialect dialect() const override { return Dialect::PostgreSQL; }
    std::unique_ptr<StoreStatement> prepare(const QString& sql) override;
    void exec(const QString& sql) override;
    void begin() override;
    void commit() override;
    void rollback() override;
    bool tableExists(const QString& physicalName) override;
    // The last value a row-key counter gave out in this session: right after
    // an insert that left the row key to the server.
    qint64 lastInsertRowId() override;

    PGconn* handle() const { return m_conn; }

private:
    PGconn* m_conn = nullptr;
    int m_nextStatement = 0;
    bool m_inTransaction = false;
};

} // namespace kb
