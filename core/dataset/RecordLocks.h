#pragma once

#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace kb {

class Database;

// Who holds a lock inside one session: the data set that took it. Two data
// sets of one session editing one row conflict like two workstations do.
using LockOwner = const void*;

// The pessimistic record locks of one session, seen by every process on the
// same data: a row in edit is held by one data set of one session until it
// is posted or cancelled, and a process that dies loses its locks with it.
//
// Besides rows, a session holds each table it uses: shared while a table is
// open or one of its rows is held, exclusive for an exclusive open. A
// conflicting open fails with ExclusiveOpen (11013); taking a row of a table
// another session holds exclusively fails with TableLocked (10241); a row
// held elsewhere fails with RecordLocked (10258) once the session's retries
// are spent.
//
// Tables of the catalogue are locked across processes; memory tables are
// private to their session, so their locks live only here.
class RecordLocks
{
public:
    // The locks of the store under the session: a lock file in the data
    // directory, or the server's advisory locks.
    static std::unique_ptr<RecordLocks> create(Database& database);

    virtual ~RecordLocks();
    RecordLocks(const RecordLocks&) = delete;
    RecordLocks& operator=(const RecordLocks&) = delete;

    // One try, no waiting: true when owner now holds the row (also when it
    // held it already).
    bool tryLock(LockOwner owner, const QString& table, qint64 rowId);
    // Tries retryCount() times, retryWaitMs() apart. Throws DbError
    // RecordLocked naming the table, or TableLocked when another session
    // holds the whole table.
    void lock(LockOwner owner, const QString& table, qint64 rowId);
    void unlock(LockOwner owner, const QString& table, qint64 rowId);
    bool isLocked(LockOwner owner, const QString& table, qint64 rowId) const;
    // Every lock of one owner, or of the whole session.
    void unlockAll(LockOwner owner);
    void unlockAll();

    // Holds the rows a statement is about to change, so that none is
    // changed under another session's edit. probe gives the rows' identities
    // (anew for each try); rows this session holds itself are its own to
    // change. Waits like lock() while another session holds one of them or
    // the whole table, then throws DbError RecordLocked. The hold lasts
    // until releaseStatementRows(), on the server to the end of the
    // transaction around the statement.
    void holdStatementRows(const QString& table, const std::function<std::vector<qint64>()>& probe);
    void releaseStatementRows();

    // Holds the table for an open data set; throws DbError(ExclusiveOpen)
    // when another session has it exclusively, or, for an exclusive open,
    // when any other session uses it. Nested holds are counted.
    void openTable(LockOwner owner, const QString& table, bool exclusive);
    void closeTable(LockOwner owner, const QString& table, bool exclusive);

    // The session's retries before a lock conflict reaches the caller:
    // 15 tries, 100 ms apart.
    int retryCount() const { return m_retryCount; }
    int retryWaitMs() const { return m_retryWaitMs; }
    void setRetries(int count, int waitMs);

    enum class TableMode { None, Shared, Exclusive };

protected:
    explicit RecordLocks(Database& database);

    // Where a table's locks live in the store; an invalid key for a table
    // that only this session sees.
    struct TableKey
    {
        qint64 value = -1;
        bool shared() const { return value >= 0; }
    };
    virtual TableKey keyOf(const QString& table) = 0;
    // The store's locks, one try each, never waiting. A session moves its
    // own hold on a table between none, shared and exclusive; false (and
    // the hold unchanged) when another session's hold stands in the way.
    virtual bool acquireRow(TableKey key, qint64 rowId) = 0;
    virtual void releaseRow(TableKey key, qint64 rowId) = 0;
    virtual bool moveTableHold(TableKey key, TableMode from, TableMode to) = 0;
    // One try at holding rows for a statement (none of them held by this
    // session) and the table shared unless tableHeld says this session
    // holds it already; nothing held and false when another session is in
    // the way.
    virtual bool holdRowsOnce(TableKey key, const std::vector<qint64>& rows, bool tableHeld) = 0;
    virtual void releaseRowHolds() = 0;

    Database& m_database;

private:
    struct TableHold
    {
        TableKey key;
        int shared = 0;    // opens and held rows
        int exclusive = 0; // exclusive opens
    };
    struct RowHold
    {
        LockOwner owner = nullptr;
        QString table;
        qint64 rowId = 0;
    };

    enum class Attempt { Acquired, RowBusy, TableBusy };

    TableHold& hold(const QString& table);
    // Changes the counts of a table's hold and the store's lock with them;
    // false, with nothing changed, when the store refuses.
    bool changeHold(TableHold& h, int sharedDelta, int exclusiveDelta);
    Attempt attempt(LockOwner owner, const QString& table, qint64 rowId);
    void release(const QString& key);
    static QString rowKey(const QString& table, qint64 rowId);

    QHash<QString, TableHold> m_tables; // by lower-case name
    QHash<QString, RowHold> m_rows;     // by rowKey()
    int m_retryCount = 15;
    int m_retryWaitMs = 100;
};

} // namespace kb
