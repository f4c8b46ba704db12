#pragma once

#include "session/DataLocation.h"

#include <memory>

namespace kb {

class Clock;
class Database;

// Connects the data session at a location found by DataLocation::find: the
// data directory in file-server mode, the server in client-server mode.
// Throws when the connection fails.
std::unique_ptr<Database> openSession(const DataLocation& location, const Clock& clock);

} // namespace kb
