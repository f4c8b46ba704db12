#pragma once

#include "dataset/RecordLocks.h"

#include "catalogue/FieldType.h"

#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

namespace kb {

class StoreStatement;

// Record locks on the database server: the server's session advisory locks,
// keyed by the table's object number, so agencies that share one database
// in schemas of their own never meet. A row is the pair (table, row
// identity); a table as a whole is the single key of its object number. The
// server frees them when the connection ends, also when the process dies.
class ServerRecordLocks final : public RecordLocks
{
public:
    explicit ServerRecordLocks(Database& database);
    ~ServerRecordLocks() override;

protected:
    TableKey keyOf(const QString& table) override;
    bool acquireRow(TableKey key, qint64 rowId) override;
    void releaseRow(TableKey key, qint64 rowId) override;
    bool moveTableHold(TableKey key, TableMode from, TableMode to) override;
    // A statement's holds are the server's transaction locks, which end
    // with the transaction around the statement.
    bool holdRowsOnce(TableKey key, const std::vector<qint64>& rows, bool tableHeld) override;
    void releaseRowHolds() override {}

private:
    // Runs a one-row statement of the server's own, prepared once, and gives its one value.
    QVariant ask(std::unique_ptr<StoreStatement>& statement, const char* sql,
                 const std::vector<std::pair<QVariant, FieldType>>& values, FieldType resultType);
    // Runs one of the lock calls and gives its true or false.
    bool call(std::unique_ptr<StoreStatement>& statement, const char* sql, qint64 first, qint64 second = 0);

    std::unique_ptr<StoreStatement> m_tryRow;
    std::unique_ptr<StoreStatement> m_unlockRow;
    std::unique_ptr<StoreStatement> m_tryShared;
    std::unique_ptr<StoreStatement> m_tryExclusive;
    std::unique_ptr<StoreStatement> m_unlockShared;
    std::unique_ptr<StoreStatement> m_unlockExclusive;
    std::unique_ptr<StoreStatement> m_objectNumber;
    std::unique_ptr<StoreStatement> m_holdRows;
    std::unique_ptr<StoreStatement> m_holdManyRows;
    QHash<QString, qint64> m_keys; // by lower-case table name
};

} // namespace kb
