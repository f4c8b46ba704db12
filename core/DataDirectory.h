#pragma once

#include "Clock.h"
#include "Database.h"

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

// The rows every new data directory starts with (in one transaction).
void seedNewAgency(Database& db);

} // namespace kb
