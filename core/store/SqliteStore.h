#pragma once

#include "store/Store.h"

struct sqlite3;

namespace kb {

// The embedded store: one SQLite database file in WAL mode, shared by the
// processes of one machine.
class SqliteStore final : public Store
{
public:
    // Opens (and with create, makes) the database file.
    SqliteStore(const QString& path, bool create);
    ~SqliteStore() override;

    Dialect dialect() const override { return Dialect::SQLite; }
    std::unique_ptr<StoreStatement> prepare(const QString& sql) override;
    void exec(const QString& sql) override;
    void begin() override;
    void beginLocal() override;
    void commit() override;
    void rollback() override;
    bool tableExists(const QString& physicalName) override;
    qint64 lastInsertRowId() override;

    sqlite3* handle() const { return m_db; }
    const QString& path() const { return m_path; }

private:
    sqlite3* m_db = nullptr;
    QString m_path;
};

} // namespace kb
