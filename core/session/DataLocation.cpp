#include "session/DataLocation.h"

#include "session/DataDirectory.h"
#include "session/StartupError.h"

#include <QFileInfo>

namespace kb {

namespace {

const QString notDefined = QStringLiteral(
    "The Kettlebrook database has not been defined. The application can not continue. Kettlebrook will now "
    "terminate...");

QString firstFilled(const QString& first, const QString& second) { return first.isEmpty() ? second : first; }

} // namespace

DataLocation DataLocation::find(const SessionSettings& settings)
{
    DataLocation location;
    if (settings.clientServer()) {
        location.clientServer = true;
        location.database = firstFilled(settings.aliasKettleBrook, settings.alias);
        if (location.database.isEmpty())
            throw StartupError(notDefined);
        location.serverAddress = settings.serverIp;
        location.internet = settings.connection == QLatin1String("Internet");
        return location;
    }
    location.directory = firstFilled(settings.alias, settings.aliasKettleBrook);
    if (location.directory.isEmpty())
        throw StartupError(notDefined);
    const QString named = QStringLiteral("The Kettlebrook database:\r\n") + location.directory;
    if (!QFileInfo(location.directory).isDir())
        throw StartupError(named + QStringLiteral("\r\ndoes not appear to be valid. Kettlebrook will now terminate..."));
    if (!isDataDirectory(location.directory))
        throw StartupError(named + QStringLiteral(
                                       "\r\ndoes not appear to be pointing to Kettlebrook data. Kettlebrook will now "
                                       "terminate..."));
    return location;
}

} // namespace kb
