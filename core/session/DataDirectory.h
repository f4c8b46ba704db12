#pragma once

#include "Clock.h"
#include "store/Database.h"

#include <QString>

#include <functional>
#include <memory>

namespace kb {

// A data directory holds the agency's tables in one database file; that
// file is also the marker that a directory is a data directory at all.
inline constexpr const char* DatabaseFileName = "kettlebrook.db";

QString databaseFilePath(const QString& directory);
bool isDataDirectory(const QString& directory);

// Opens an existing data directory. Throws DbError when the directory or
// its database file is missing. A directory this process may not write (a
// read-only share or medium, or a full disk) opens read-only: every read
// works, and a change is refused with a message that says why.
std::unique_ptr<Database> openDataDirectory(const QString& directory, const Clock& clock);

// What a new agency is given before anyone can see it, such as a generated
// demo agency; it runs in the transaction that makes the tables.
using NewAgencyFill = std::function<void(Database&)>;

// Makes a new data directory with the whole catalogue, the one Config row,
// the IDNOS counters and the codes a new agency starts with (and fill's
// rows). Refuses a directory that is already a data directory or holds
// other files. The directory is built beside its place under a hidden name
// and renamed into place when whole, so a failure, a crash or another init
// of the same folder at the same moment leaves either no data directory or
// a whole one, never part of one; an init whose folder another took first
// fails and touches nothing of the other's.
std::unique_ptr<Database> createDataDirectory(const QString& directory, const Clock& clock,
                                              const NewAgencyFill& fill = {});

struct ServerAddress;

// Opens the agency's database on a server. Throws DbError when the server
// cannot be reached or the database holds no Kettlebrook tables.
std::unique_ptr<Database> openServerDatabase(const ServerAddress& address, const Clock& clock);

// Makes the catalogue in an empty server database, with the same starting
// rows as a new data directory (and fill's), in one transaction. Refuses a
// database that already has them; two inits at once make it once.
std::unique_ptr<Database> createServerDatabase(const ServerAddress& address, const Clock& clock,
                                               const NewAgencyFill& fill = {});

// The rows every new data directory starts with (in one transaction).
void seedNewAgency(Database& db);

} // namespace kb
