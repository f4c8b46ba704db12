#include "session/OpenSession.h"

#include "session/DataDirectory.h"

#include "store/PostgresStore.h"

#include <stdexcept>

namespace kb {

std::unique_ptr<Database> openSession(const DataLocation& location, const Clock& clock)
{
    if (location.clientServer)
        return openServerDatabase(ServerAddress::parse(location.serverAddress + QLatin1Char('/') + location.database),
                                  clock);
    return openDataDirectory(location.directory, clock);
}

} // namespace kb
