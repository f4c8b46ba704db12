#pragma once

#include "session/AccessLevel.h"

#include <QString>

namespace kb {

// What the data session knows for the life of the process; every screen
// reads the user's names and level from here.
struct SessionState
{
    QString cMode;             // "C" client-server, anything else file server
    QString cConnectionMethod; // "Internet" or LAN, client-server mode only
    QString cAppDataFolder;    // the per-user folder, with a trailing separator
    bool lGoOn = false;        // the data is connected
    QString cUserName;         // the User ID typed at sign-in
    QString userFullName;      // Staff.Staff_Name, written into History.User
    int staffId = 0;           // Staff.Staff_ID, -1 for the built-in administrator
    QString accessLevel;       // Staff.Access_Level
    QString clientIndex;       // the client sort order: Staff.DSort_Order, else Config.DSORT_ORDER

    bool signedIn() const { return !cUserName.isEmpty(); }
    // What the user's level allows; full use before anyone signed in.
    AccessLevel access() const
    {
        return AccessLevel::isKnown(accessLevel) ? AccessLevel::fromCode(accessLevel) : AccessLevel();
    }
};

} // namespace kb
