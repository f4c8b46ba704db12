#pragma once

#include "session/DataLocation.h"
#include "session/SessionSettings.h"
#include "session/SessionState.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace kb {

class Clock;
class DataSet;
class Database;
class QueryDataSet;
class RecordServices;
class SettingsFile;
class TableDataSet;
class UserInterface;

// The main data module: the data session, its state and the shared data sets
// for the life of the process. Start-up finds and connects the data, builds
// the per-user folder, loads the two settings files and opens the first
// tables and the long-lived queries; shutdown asks about an unsaved client,
// runs the user's closing statement, clears scratch tables, writes the
// sign-out and the settings files.
//
// The shared data sets belong to the module. Their current row is what every
// screen works on, and the rules of a row hang on their hooks: a higher layer
// (the client rules) attaches them through addDataSetHooks before start(),
// so they are in place before anything is opened.
class TDataModule1
{
public:
    // Whether start() opens the shared data sets (the desktop program) or
    // leaves each to open on first use (a headless command, which needs few).
    enum class Opening { AtStart, OnFirstUse };

    TDataModule1(const Clock& clock, UserInterface& ui);
    ~TDataModule1();

    // Called with the module once its data sets exist and before any opens.
    void addDataSetHooks(std::function<void(TDataModule1&)> install);

    // Session start, finding the data, connecting and the data module's own
    // steps, in that order. Throws StartupError (or the connection's error)
    // when the program cannot go on. appDataBase is the platform's per-user
    // folder (platformUserDataFolder() outside tests).
    void start(const SessionSettings& settings, const QString& appDataBase, Opening opening = Opening::AtStart);

    // After a successful sign-in (SignIn::complete): read-only and
    // reports-only users get their data sets read-only ("RO"), and Clients
    // takes the user's own index when the user has one.
    void userSignedIn();

    Database& db() { return *m_db; }
    // The record services every data screen's data sets use.
    RecordServices& services() { return *m_services; }
    SessionState& session() { return m_session; }
    const SessionState& session() const { return m_session; }
    const DataLocation& location() const { return m_location; }
    const Clock& clock() const { return m_clock; }
    UserInterface& ui() { return m_ui; }

    // A table of startupTables(), opened on first use when it is not yet.
    // Throws DbError(UnknownName) for any other name.
    TableDataSet& table(const QString& name);
    TableDataSet& clients() { return table(QStringLiteral("Clients")); }
    TableDataSet& config() { return table(QStringLiteral("Config")); }
    TableDataSet& staff() { return table(QStringLiteral("Staff")); }
    // A long-lived query of longLivedQueries(), opened on first use.
    QueryDataSet& query(const QString& name);
    // The data sets the module holds, open or not, for hooks and "RO".
    std::vector<DataSet*> dataSets();

    // The per-user Kettbrk.ini (positions and layouts) and the shared one in
    // the data directory (remembered entries of combo boxes).
    SettingsFile& userSettings() { return *m_userSettings; }
    SettingsFile& sharedSettings() { return *m_sharedSettings; }

    // The first steps of closing the main window: when Clients is being
    // edited, "Save your changes to the data before closing this window?";
    // Yes posts, No cancels. False when the post was refused and the window
    // should stay open.
    bool closeQuery();
    // Runs EXECUTE_ON_CLOSE when the user's Staff row asks for it, closes the
    // data sets, deletes what a crash may have left of scratch tables in the
    // data directory and the session's memory tables, writes the sign-out
    // when a user signed in and saves the settings files. A failure of the
    // closing statement or of the settings files is told and the rest still
    // runs. Safe to call once the data is connected.
    void shutdown();

    // The temporary directory the session works in; the user is warned, and
    // the program goes on, when it does not exist.
    static void checkTempDirectory(const QString& path, UserInterface& ui);
    // The tables opened at start-up, in their order.
    static const QStringList& startupTables();
    // The long-lived queries prepared at start-up, in the order they open.
    static const QStringList& longLivedQueries();

private:
    void createDataSets();
    void openDataSets();
    // Clients in session().clientIndex when it names one of its indexes, on the first row.
    void positionClients();
    void runClosingStatement();
    void removeScratchFiles();

    const Clock& m_clock;
    UserInterface& m_ui;
    SessionState m_session;
    DataLocation m_location;
    std::unique_ptr<Database> m_db;
    std::unique_ptr<RecordServices> m_services;
    std::unique_ptr<SettingsFile> m_userSettings;
    std::unique_ptr<SettingsFile> m_sharedSettings;
    std::vector<std::unique_ptr<TableDataSet>> m_tables; // in startupTables() order
    std::vector<std::unique_ptr<QueryDataSet>> m_queries; // in longLivedQueries() order
    std::vector<std::function<void(TDataModule1&)>> m_hookInstallers;
    bool m_shutDown = false;
};

} // namespace kb
