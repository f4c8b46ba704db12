#include "dataset/FileRecordLocks.h"

#include "store/Database.h"
#include "store/DbError.h"
#include "store/SqliteStore.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kb {

namespace {

constexpr qint64 TableStretch = qint64(1) << 40;
// The last byte of a stretch stands for the table; rows use the rest.
constexpr qint64 TableByte = TableStretch - 1;

} // namespace

FileRecordLocks::FileRecordLocks(Database& database) : RecordLocks(database)
{
    auto* store = dynamic_cast<SqliteStore*>(&database.store());
    if (!store)
        throw DbError(DbErrorCode::Other, QStringLiteral("File record locks need a data directory"));
    m_path = QFileInfo(store->path()).absoluteDir().filePath(QString::fromLatin1(LockFileName));
    const QByteArray path = QFile::encodeName(m_path);
    // Not inherited by programs the process starts: their locks are their own.
    if (store->readOnly()) {
        // Reading holds tables shared, which a read-only descriptor allows;
        // without a lock file nobody who writes is at work.
        m_readOnlyReason = store->readOnlyReason();
        m_fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        return;
    }
    m_fd = ::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (m_fd < 0)
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("Cannot open the lock file %1: %2").arg(m_path, QString::fromLocal8Bit(std::strerror(errno))));
}

FileRecordLocks::~FileRecordLocks()
{
    // Closing the session's own file descriptions frees all its locks at once.
    if (m_fd >= 0)
        ::close(m_fd);
    if (m_statementFd >= 0)
        ::close(m_statementFd);
}

RecordLocks::TableKey FileRecordLocks::keyOf(const QString& table)
{
    const TableDef* def = m_database.persistentTable(table);
    if (!def)
        return {};
    const QList<TableDef>& tables = m_database.catalogue().tables();
    for (qsizetype i = 0; i < tables.size(); ++i)
        if (&tables[i] == def)
            return TableKey{qint64(i)};
    return {};
}

bool FileRecordLocks::setLock(qint64 offset, short kind)
{
    if (!m_readOnlyReason.isEmpty()) {
        if (kind == F_WRLCK)
            throw DbError(DbErrorCode::Other, m_readOnlyReason + QStringLiteral(": nothing can be changed"));
        if (m_fd < 0)
            return true;
    }
    return setLock(m_fd, offset, 1, kind);
}

bool FileRecordLocks::setLock(int fd, qint64 offset, qint64 length, short kind)
{
    struct flock lock;
    std::memset(&lock, 0, sizeof lock);
    lock.l_type = kind;
    lock.l_whence = SEEK_SET;
    lock.l_start = off_t(offset);
    lock.l_len = off_t(length);
    lock.l_pid = 0; // required for open-file-description locks
    for (;;) {
        if (::fcntl(fd, F_OFD_SETLK, &lock) == 0)
            return true;
        if (errno == EINTR)
            continue;
        if (errno == EAGAIN || errno == EACCES)
            return false;
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("Cannot lock in %1: %2").arg(m_path, QString::fromLocal8Bit(std::strerror(errno))));
    }
}

static qint64 rowOffset(qint64 table, qint64 rowId)
{
    if (rowId < 0 || rowId >= TableByte)
        throw DbError(DbErrorCode::Other, QStringLiteral("Row %1 is beyond what the record locks can name").arg(rowId));
    return table * TableStretch + rowId;
}

bool FileRecordLocks::acquireRow(TableKey key, qint64 rowId) { return setLock(rowOffset(key.value, rowId), F_WRLCK); }

void FileRecordLocks::releaseRow(TableKey key, qint64 rowId) { setLock(rowOffset(key.value, rowId), F_UNLCK); }

bool FileRecordLocks::holdRowsOnce(TableKey key, const std::vector<qint64>& rows, bool tableHeld)
{
    if (!m_readOnlyReason.isEmpty())
        throw DbError(DbErrorCode::Other, m_readOnlyReason + QStringLiteral(": nothing can be changed"));
    if (m_statementFd < 0) {
        m_statementFd = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CLOEXEC);
        if (m_statementFd < 0)
            throw DbError(DbErrorCode::Other, QStringLiteral("Cannot open the lock file %1: %2")
                                                  .arg(m_path, QString::fromLocal8Bit(std::strerror(errno))));
    }
    bool held = tableHeld || setLock(m_statementFd, key.value * TableStretch + TableByte, 1, F_RDLCK);
    for (size_t i = 0; held && i < rows.size(); ++i)
        held = setLock(m_statementFd, rowOffset(key.value, rows[i]), 1, F_WRLCK);
    if (!held)
        releaseRowHolds();
    return held;
}

void FileRecordLocks::releaseRowHolds()
{
    if (m_statementFd >= 0)
        setLock(m_statementFd, 0, 0, F_UNLCK);
}

bool FileRecordLocks::moveTableHold(TableKey key, TableMode from, TableMode to)
{
    (void)from;
    const short kind = to == TableMode::Exclusive ? F_WRLCK : to == TableMode::Shared ? F_RDLCK : F_UNLCK;
    return setLock(key.value * TableStretch + TableByte, kind);
}

} // namespace kb
