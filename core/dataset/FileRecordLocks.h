#pragma once

#include "dataset/RecordLocks.h"

namespace kb {

// Record locks of a data directory: byte-range locks on the lock file
// beside the database, taken on an open file description of the session's
// own. The kernel frees them when the process ends, however it ends, and
// two sessions of one process conflict like two processes.
//
// Each catalogue table owns a 2^40-byte stretch of the file, at its place in
// the catalogue times 2^40: a row's byte is the stretch's start plus its row
// identity, and the stretch's last byte stands for the table as a whole. So
// no two rows share a lock.
class FileRecordLocks final : public RecordLocks
{
public:
    explicit FileRecordLocks(Database& database);
    ~FileRecordLocks() override;

    static constexpr const char* LockFileName = "kettlebrook.locks";

protected:
    TableKey keyOf(const QString& table) override;
    bool acquireRow(TableKey key, qint64 rowId) override;
    void releaseRow(TableKey key, qint64 rowId) override;
    bool moveTableHold(TableKey key, TableMode from, TableMode to) override;
    bool holdRowsOnce(TableKey key, const std::vector<qint64>& rows, bool tableHeld) override;
    void releaseRowHolds() override;

private:
    // One try at a lock of the given kind (F_RDLCK, F_WRLCK, F_UNLCK) on one
    // byte (0 bytes: to the end of the file), through the session's own
    // descriptor or another.
    bool setLock(qint64 offset, short kind);
    bool setLock(int fd, qint64 offset, qint64 length, short kind);

    int m_fd = -1;
    // A statement's holds go through a descriptor of their own, so that
    // giving them back all at once leaves the data sets' locks alone.
    int m_statementFd = -1;
    QString m_path;
    QString m_readOnlyReason; // the data opened read-only, and why: shared holds only
};

} // namespace kb
