#pragma once

#include "session/SessionSettings.h"

#include <QString>

namespace kb {

// Where the data session connects: a data directory (file-server mode) or a
// database on a server (client-server mode).
struct DataLocation
{
    bool clientServer = false;
    QString directory;    // file-server mode
    QString serverAddress; // client-server mode: HOST or HOST:PORT
    QString database;     // client-server mode: the remote database name
    bool internet = false; // client-server mode: the connection type

    // Finds the data as the settings say, before anything connects. Throws
    // StartupError with the message the user is told when the data is not
    // defined, the directory does not exist, or it holds no Kettlebrook data
    // (its marker is the database file of DataDirectory.h). A server
    // address is taken as given: only the server can tell whether it is right.
    static DataLocation find(const SessionSettings& settings);
};

} // namespace kb
