#include "session/DataDirectory.h"

#include "store/DbError.h"
#include "store/PostgresStore.h"
#include "store/SqliteStore.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QSysInfo>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kb {

QString databaseFilePath(const QString& directory)
{
    return QDir(directory).filePath(QString::fromLatin1(DatabaseFileName));
}

bool isDataDirectory(const QString& directory) { return QFileInfo::exists(databaseFilePath(directory)); }

namespace {

// All tables and the rows a new agency starts with, inside the caller's
// transaction.
void addCatalogueWithStartingRows(Database& db, const NewAgencyFill& fill)
{
    for (const TableDef& table : db.catalogue().tables())
        db.createTable(table);
    seedNewAgency(db);
    if (fill)
        fill(db);
}

[[noreturn]] void failWith(const QString& message) { throw DbError(DbErrorCode::Other, message); }

QString systemError(int error) { return QString::fromLocal8Bit(std::strerror(error)); }

// A new data directory is built under this hidden name beside its place:
// ".NAME.new-HOST-PID-RANDOM". Host and process tell later inits whether
// its builder is still at work.
QString buildingPrefix(const QString& name) { return QLatin1Char('.') + name + QStringLiteral(".new-"); }

QString buildingName(const QString& name)
{
    return buildingPrefix(name) + QStringLiteral("%1-%2-%3")
                                      .arg(QSysInfo::machineHostName())
                                      .arg(::getpid())
                                      .arg(QRandomGenerator::global()->generate(), 0, 36);
}

// Removes what builders on this machine that are gone for good (a crash, a
// kill) left beside the folder. A builder that is still running, or one on
// another machine sharing the folder, is left alone.
void removeAbandonedBuilds(const QDir& parent, const QString& name)
{
    const QString prefix = buildingPrefix(name);
    const QString host = QSysInfo::machineHostName() + QLatin1Char('-');
    const QStringList found =
        parent.entryList({prefix + QLatin1Char('*')}, QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& entry : found) {
        const QString rest = entry.mid(prefix.size());
        if (!rest.startsWith(host))
            continue;
        const QStringList parts = rest.mid(host.size()).split(QLatin1Char('-'));
        bool ok = false;
        const qint64 pid = parts.value(0).toLongLong(&ok);
        if (!ok || parts.size() != 2 || pid <= 0)
            continue;
        if (::kill(pid_t(pid), 0) == 0 || errno != ESRCH)
            continue;
        QDir(parent.filePath(entry)).removeRecursively();
    }
}

// Forces a file or folder's contents to disk.
void syncPath(const QString& path, bool folder)
{
    const int fd = ::open(QFile::encodeName(path).constData(), (folder ? O_DIRECTORY : 0) | O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        failWith(QStringLiteral("Cannot open %1: %2").arg(path, systemError(errno)));
    const int rc = ::fsync(fd);
    const int error = errno;
    ::close(fd);
    if (rc != 0 && error != EINVAL)
        failWith(QStringLiteral("Cannot write %1 to disk: %2").arg(path, systemError(error)));
}

void syncFolder(const QString& folder)
{
    QDirIterator files(folder, QDir::Files | QDir::Hidden);
    while (files.hasNext())
        syncPath(files.next(), false);
    syncPath(folder, true);
}

} // namespace

std::unique_ptr<Database> openDataDirectory(const QString& directory, const Clock& clock)
{
    if (!QFileInfo(directory).isDir())
        throw DbError(DbErrorCode::Other, QStringLiteral("The data directory %1 does not exist").arg(directory));
    if (!isDataDirectory(directory))
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("The directory %1 does not hold Kettlebrook data").arg(directory));
    return std::make_unique<Database>(std::make_unique<SqliteStore>(databaseFilePath(directory), false),
                                      Catalogue::standard(), clock);
}

std::unique_ptr<Database> createDataDirectory(const QString& directory, const Clock& clock, const NewAgencyFill& fill)
{
    const QFileInfo target(QDir::cleanPath(QFileInfo(directory).absoluteFilePath()));
    if (isDataDirectory(target.filePath()))
        failWith(QStringLiteral("%1 is already a data directory").arg(directory));
    if (target.exists() && !target.isDir())
        failWith(QStringLiteral("%1 is a file; a new data directory needs an empty or new folder").arg(directory));
    if (target.isDir() &&
        !QDir(target.filePath()).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        failWith(QStringLiteral("%1 is not empty; a new data directory needs an empty or new folder").arg(directory));
    const QDir parent = target.absoluteDir();
    if (!parent.exists() && !QDir().mkpath(parent.path()))
        failWith(QStringLiteral("Cannot create directory %1").arg(parent.path()));
    removeAbandonedBuilds(parent, target.fileName());

    const QString building = parent.filePath(buildingName(target.fileName()));
    if (!QDir().mkdir(building))
        failWith(QStringLiteral("Cannot create directory %1: check that the folder %2 may be written")
                     .arg(building, parent.path()));
    try {
        {
            Database db(std::make_unique<SqliteStore>(databaseFilePath(building), true), Catalogue::standard(),
                        clock);
            TransactionGuard guard(db);
            addCatalogueWithStartingRows(db, fill);
            guard.commit();
            // Closing the last connection folds the log into the database file.
        }
        syncFolder(building);
        // The one step that makes the data directory appear, whole. rename()
        // also takes the place of an empty folder, and fails when another
        // init has filled it in the meantime.
        if (::rename(QFile::encodeName(building).constData(), QFile::encodeName(target.filePath()).constData()) != 0) {
            const int error = errno;
            if (error == EEXIST || error == ENOTEMPTY) {
                if (isDataDirectory(target.filePath()))
                    failWith(QStringLiteral("%1 is already a data directory: another init made it at the same time")
                                 .arg(directory));
                failWith(QStringLiteral("%1 is not empty; a new data directory needs an empty or new folder")
                             .arg(directory));
            }
            failWith(QStringLiteral("Cannot move the new data directory into place at %1: %2")
                         .arg(directory, systemError(error)));
        }
        syncPath(parent.path(), true);
    } catch (...) {
        QDir(building).removeRecursively();
        throw;
    }
    return openDataDirectory(target.filePath(), clock);
}

namespace {

// Config is the table every Kettlebrook database has from its first day.
bool holdsKettlebrookTables(Database& db) { return db.exists(QStringLiteral("Config")); }

} // namespace

std::unique_ptr<Database> openServerDatabase(const ServerAddress& address, const Clock& clock)
{
    auto db = std::make_unique<Database>(std::make_unique<PostgresStore>(address), Catalogue::standard(), clock);
    if (!holdsKettlebrookTables(*db))
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("The database %1 does not hold Kettlebrook data").arg(address.toString()));
    return db;
}

std::unique_ptr<Database> createServerDatabase(const ServerAddress& address, const Clock& clock,
                                               const NewAgencyFill& fill)
{
    auto db = std::make_unique<Database>(std::make_unique<PostgresStore>(address), Catalogue::standard(), clock);
    TransactionGuard guard(*db);
    // Two inits of one database at once: the second waits here until the
    // first is done, then finds its tables. The key stands apart from the
    // record locks, whose first half is a table's object number.
    // It waits as long as the first takes, not the session's short lock wait.
    db->store().exec(QStringLiteral("SET LOCAL lock_timeout = 0; SELECT pg_advisory_xact_lock(-1, 1)"));
    if (holdsKettlebrookTables(*db))
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("The database %1 already holds Kettlebrook data").arg(address.toString()));
    addCatalogueWithStartingRows(*db, fill);
    guard.commit();
    return db;
}

} // namespace kb
