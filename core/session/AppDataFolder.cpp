#include "session/AppDataFolder.h"

#include "session/StartupError.h"

#include <QDir>
#include <QStandardPaths>

namespace kb {

QString platformUserDataFolder() { return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation); }

QString makeAppDataFolder(const QString& base)
{
    if (base.isEmpty())
        return {};
    const QString folder = QDir(base).filePath(QStringLiteral("Kettlebrook")) + QLatin1Char('/');
    if (!QDir(folder).exists() && !QDir().mkpath(folder))
        throw StartupError(QStringLiteral("Cannot create directory") + folder);
    return folder;
}

} // namespace kb
