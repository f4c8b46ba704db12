#include "dataset/RecordLocks.h"

#include "store/Database.h"
#include "store/DbError.h"
#include "dataset/FileRecordLocks.h"
#include "dataset/ServerRecordLocks.h"

#include <QThread>

namespace kb {

std::unique_ptr<RecordLocks> RecordLocks::create(Database& database)
{
    if (database.dialect() == Dialect::SQLite)
        return std::make_unique<FileRecordLocks>(database);
    return std::make_unique<ServerRecordLocks>(database);
}

RecordLocks::RecordLocks(Database& database) : m_database(database) {}

RecordLocks::~RecordLocks() = default;

void RecordLocks::setRetries(int count, int waitMs)
{
    m_retryCount = std::max(1, count);
    m_retryWaitMs = std::max(0, waitMs);
}

QString RecordLocks::rowKey(const QString& table, qint64 rowId)
{
    return table.toLower() + QLatin1Char('#') + QString::number(rowId);
}

RecordLocks::TableHold& RecordLocks::hold(const QString& table)
{
    const QString name = table.toLower();
    auto it = m_tables.find(name);
    if (it == m_tables.end()) {
        TableHold h;
        h.key = keyOf(table);
        it = m_tables.insert(name, h);
    }
    return *it;
}

// The session's hold on a table follows its counts: exclusive while an
// exclusive open lasts, shared while anything else uses it, none after.
static RecordLocks::TableMode modeOf(int shared, int exclusive)
{
    if (exclusive > 0)
        return RecordLocks::TableMode::Exclusive;
    return shared > 0 ? RecordLocks::TableMode::Shared : RecordLocks::TableMode::None;
}

bool RecordLocks::changeHold(TableHold& h, int sharedDelta, int exclusiveDelta)
{
    const TableMode from = modeOf(h.shared, h.exclusive);
    const TableMode to = modeOf(h.shared + sharedDelta, h.exclusive + exclusiveDelta);
    if (from != to && h.key.shared() && !moveTableHold(h.key, from, to))
        return false;
    h.shared += sharedDelta;
    h.exclusive += exclusiveDelta;
    return true;
}

RecordLocks::Attempt RecordLocks::attempt(LockOwner owner, const QString& table, qint64 rowId)
{
    const QString key = rowKey(table, rowId);
    const auto held = m_rows.constFind(key);
    if (held != m_rows.constEnd())
        return held->owner == owner ? Attempt::Acquired : Attempt::RowBusy;
    TableHold& h = hold(table);
    if (!changeHold(h, 1, 0))
        return Attempt::TableBusy;
    if (h.key.shared() && !acquireRow(h.key, rowId)) {
        changeHold(h, -1, 0);
        return Attempt::RowBusy;
    }
    m_rows.insert(key, RowHold{owner, table, rowId});
    return Attempt::Acquired;
}

bool RecordLocks::tryLock(LockOwner owner, const QString& table, qint64 rowId)
{
    return attempt(owner, table, rowId) == Attempt::Acquired;
}

void RecordLocks::lock(LockOwner owner, const QString& table, qint64 rowId)
{
    Attempt last = Attempt::RowBusy;
    for (int i = 0; i < m_retryCount; ++i) {
        if (i > 0)
            QThread::msleep(ulong(m_retryWaitMs));
        last = attempt(owner, table, rowId);
        if (last == Attempt::Acquired)
            return;
    }
    if (last == Attempt::TableBusy)
        throw DbError(DbErrorCode::TableLocked, QStringLiteral("Table %1 is locked by another user").arg(table));
    throw DbError(DbErrorCode::RecordLocked, QStringLiteral("Record locked by another user in table %1").arg(table));
}

bool RecordLocks::isLocked(LockOwner owner, const QString& table, qint64 rowId) const
{
    const auto held = m_rows.constFind(rowKey(table, rowId));
    return held != m_rows.constEnd() && held->owner == owner;
}

void RecordLocks::release(const QString& key)
{
    const RowHold row = m_rows.take(key);
    TableHold& h = hold(row.table);
    if (h.key.shared())
        releaseRow(h.key, row.rowId);
    changeHold(h, -1, 0);
}

void RecordLocks::unlock(LockOwner owner, const QString& table, qint64 rowId)
{
    const QString key = rowKey(table, rowId);
    const auto held = m_rows.constFind(key);
    if (held != m_rows.constEnd() && held->owner == owner)
        release(key);
}

void RecordLocks::unlockAll(LockOwner owner)
{
    const QStringList keys = m_rows.keys();
    for (const QString& key : keys)
        if (m_rows.value(key).owner == owner)
            release(key);
}

void RecordLocks::unlockAll()
{
    const QStringList keys = m_rows.keys();
    for (const QString& key : keys)
        release(key);
}

void RecordLocks::holdStatementRows(const QString& table, const std::function<std::vector<qint64>()>& probe)
{
    TableHold& h = hold(table);
    if (!h.key.shared())
        return;
    for (int i = 0;; ++i) {
        std::vector<qint64> others;
        for (const qint64 row : probe())
            if (!m_rows.contains(rowKey(table, row)))
                others.push_back(row);
        // Rows this session holds keep the table held shared, so no other
        // session can hold it whole: nothing more to wait for.
        if (others.empty() || holdRowsOnce(h.key, others, h.shared > 0 || h.exclusive > 0))
            return;
        if (i + 1 >= m_retryCount)
            break;
        QThread::msleep(ulong(m_retryWaitMs));
    }
    throw DbError(DbErrorCode::RecordLocked, QStringLiteral("Record locked by another user in table %1").arg(table));
}

void RecordLocks::releaseStatementRows() { releaseRowHolds(); }

void RecordLocks::openTable(LockOwner owner, const QString& table, bool exclusive)
{
    (void)owner;
    TableHold& h = hold(table);
    if (changeHold(h, exclusive ? 0 : 1, exclusive ? 1 : 0))
        return;
    if (exclusive)
        throw DbError(DbErrorCode::ExclusiveOpen,
                      QStringLiteral("Table %1 is in use by another user and cannot be opened exclusively").arg(table));
    throw DbError(DbErrorCode::ExclusiveOpen, QStringLiteral("Table %1 is open exclusively by another user").arg(table));
}

void RecordLocks::closeTable(LockOwner owner, const QString& table, bool exclusive)
{
    (void)owner;
    TableHold& h = hold(table);
    if ((exclusive ? h.exclusive : h.shared) > 0)
        changeHold(h, exclusive ? 0 : -1, exclusive ? -1 : 0);
}

} // namespace kb
