#pragma once

#include "session/DataLocation.h"
#include "session/SessionSettings.h"
#include "session/SessionState.h"

#include <QStringList>

#include <memory>

namespace kb {

class Clock;
class Database;
class RecordServices;
class UserInterface;

// The main data module: the data session and its state for the life of the
// process. Start-up finds and connects the data, builds the per-user folder
// and opens the first tables; shutdown clears scratch tables and writes the
// sign-out.
class TDataModule1
{
public:
    TDataModule1(const Clock& clock, UserInterface& ui);
    ~TDataModule1();

    // Session start, finding the data, connecting and the data module's own
    // steps, in that order. Throws StartupError (or the connection's error)
    // when the program cannot go on. appDataBase is the platform's per-user
    // folder (platformUserDataFolder() outside tests).
    void start(const SessionSettings& settings, const QString& appDataBase);

    Database& db() { return *m_db; }
    // The record services every data screen's data sets use.
    RecordServices& services() { return *m_services; }
    SessionState& session() { return m_session; }
    const SessionState& session() const { return m_session; }
    const DataLocation& location() const { return m_location; }
    const Clock& clock() const { return m_clock; }

    // Deletes what a crash may have left of scratch tables in the data
    // directory and the session's memory tables, then writes the sign-out
    // when a user signed in. Safe to call once the data is connected.
    void shutdown();

    // The temporary directory the session works in; the user is warned, and
    // the program goes on, when it does not exist.
    static void checkTempDirectory(const QString& path, UserInterface& ui);
    // The tables opened at start-up, in their order.
    static const QStringList& startupTables();

private:
    void removeScratchFiles();

    const Clock& m_clock;
    UserInterface& m_ui;
    SessionState m_session;
    DataLocation m_location;
    std::unique_ptr<Database> m_db;
    std::unique_ptr<RecordServices> m_services;
    bool m_shutDown = false;
};

} // namespace kb
