#pragma once

#include "Clock.h"
#include "store/Database.h"

#include <QString>

#include <memory>

namespace kb {

// A data directory holds the agency's tables in one database file; that
// file is also the marker that a directory is a data directory at all.
inline constexpr const char* DatabaseFileName = "kettlebrook.db";

QString databaseFilePath(const QString& directory);
bool isDataDirectory(const QString& directory);

// Opens an existing data directory. Throws DbError when the directory or
// its database file is missing.
std::unique_ptr<Database> openDataDirectory(const QString& directory, const Clock& clock);

// Makes a new data directory with the whole catalogue, the one Config row,
// the IDNOS counters and the codes a new agency starts with. Refuses a
// directory that is already a data directory or holds other files, and
// leaves nothing behind when it fails.
std::unique_ptr<Database> createDataDirectory(const QString& directory, const Clock& clock);

struct ServerAddress;

// Opens the agency's database on a server. Throws DbError when the server
// cannot be reached or the database holds no Kettlebrook tables.
std::unique_ptr<Database> openServerDatabase(const ServerAddress& address, const Clock& clock);

// Makes the catalogue in an empty server database, with the same starting
// rows as a new data directory. Refuses a database that already has them.
std::unique_ptr<Database> createServerDatabase(const ServerAddress& address, const Clock& clock);

// The rows every new data directory starts with (in one transaction).
void seedNewAgency(Database& db);

} // namespace kb
