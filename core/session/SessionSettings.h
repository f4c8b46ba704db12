#pragma once

#include <QString>

class QSettings;

namespace kb {

// The four values that say where the data is, kept in the user's section of
// the platform settings store outside the data directory. The program only
// reads them; an installer or an administrator writes them.
struct SessionSettings
{
    QString alias;           // Alias, value "Kettlebrook"
    QString aliasKettleBrook; // Alias, value "Kettle Brook"
    QString mode;            // "C" for client-server, anything else file server
    QString connection;      // "Internet", anything else LAN
    QString serverIp;        // HOST or HOST:PORT of the database server

    bool clientServer() const { return mode == QLatin1String("C"); }

    // Reads the values; a missing one reads as the empty string.
    static SessionSettings read(QSettings& store);
    // The per-user store: on Linux an ini file in the user's configuration
    // folder (Kettlebrook/DataSession.ini).
    static SessionSettings readUserStore();

    // Command-line options win over the store: --data DIR selects file-server
    // mode on DIR, --server HOST[:PORT]/DATABASE client-server mode.
    void applyDataOption(const QString& directory);
    void applyServerOption(const QString& server);
};

} // namespace kb
