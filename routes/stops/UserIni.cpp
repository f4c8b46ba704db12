#include "UserIni.h"

#include "session/SessionState.h"

namespace kb {

QString userIniPath(const SessionState& session)
{
    return session.cAppDataFolder + QStringLiteral("Kettbrk.ini");
}

} // namespace kb
