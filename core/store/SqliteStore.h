#pragma once

#include "store/Store.h"

struct sqlite3;

namespace kb {

// The embedded store: one SQLite database file in WAL mode, shared by the
// processes of one machine. Opens read-only where it may not write.
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
    // Opened read-only: the directory or the file may not be written by
    // this process, or the disk has no room even for reading.
    bool readOnly() const { return m_readOnly; }
    const QString& readOnlyReason() const { return m_readOnlyReason; }

private:
    static bool mayWrite(const QString& path);
    void openConnection(const QByteArray& name, int flags);
    void openReadOnly(const QString& reason);
    // One read of the file; false when the failure means the data can only
    // be read read-only.
    bool readsBack();

    sqlite3* m_db = nullptr;
    QString m_path;
    bool m_readOnly = false;
    QString m_readOnlyReason; // for the message of a refused change
};

} // namespace kb
