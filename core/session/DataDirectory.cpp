#include "session/DataDirectory.h"

#include "store/DbError.h"
#include "store/PostgresStore.h"
#include "store/SqliteStore.h"

#include <QDir>
#include <QFileInfo>

namespace kb {

QString databaseFilePath(const QString& directory)
{
    return QDir(directory).filePath(QString::fromLatin1(DatabaseFileName));
}

bool isDataDirectory(const QString& directory) { return QFileInfo::exists(databaseFilePath(directory)); }

namespace {

// All tables and the rows a new agency starts with, or nothing.
void createCatalogueWithStartingRows(Database& db)
{
    TransactionGuard guard(db);
    for (const TableDef& table : db.catalogue().tables())
        db.createTable(table);
    seedNewAgency(db);
    guard.commit();
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

std::unique_ptr<Database> createDataDirectory(const QString& directory, const Clock& clock)
{
    QDir dir(directory);
    const bool existed = dir.exists();
    if (isDataDirectory(directory))
        throw DbError(DbErrorCode::Other, QStringLiteral("%1 is already a data directory").arg(directory));
    if (existed && !dir.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("%1 is not empty; a new data directory needs an empty or new folder").arg(directory));
    if (!existed && !QDir().mkpath(directory))
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot create directory %1").arg(directory));
    try {
        auto db = std::make_unique<Database>(std::make_unique<SqliteStore>(databaseFilePath(directory), true),
                                             Catalogue::standard(), clock);
        createCatalogueWithStartingRows(*db);
        return db;
    } catch (...) {
        // Nothing half-made stays behind.
        for (const QString& name : QDir(directory).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(QDir(directory).filePath(name));
        if (!existed)
            QDir().rmdir(directory);
        throw;
    }
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

std::unique_ptr<Database> createServerDatabase(const ServerAddress& address, const Clock& clock)
{
    auto db = std::make_unique<Database>(std::make_unique<PostgresStore>(address), Catalogue::standard(), clock);
    if (holdsKettlebrookTables(*db))
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("The database %1 already holds Kettlebrook data").arg(address.toString()));
    createCatalogueWithStartingRows(*db);
    return db;
}

} // namespace kb
