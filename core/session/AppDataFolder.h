#pragma once

#include <QString>

namespace kb {

// The per-user base folder of the platform (where a user's programs keep
// their files), or empty when the platform names none.
QString platformUserDataFolder();

// cAppDataFolder: base + "Kettlebrook" + separator, made when missing.
// An empty base gives the empty string, so ini files go to the current
// directory. Throws StartupError("Cannot create directory" + path).
QString makeAppDataFolder(const QString& base);

} // namespace kb
