// Start-up: the settings store, finding the data with its messages, the
// per-user folder, debug-logging switches, the data module and shutdown.

#include "session/AppDataFolder.h"
#include "session/DataDirectory.h"
#include "session/DataLocation.h"
#include "DebugLog.h"
#include "records/History.h"
#include "session/OpenSession.h"
#include "ScriptedUserInterface.h"
#include "session/SessionSettings.h"
#include "session/SignIn.h"
#include "session/StartupError.h"
#include "session/TDataModule1.h"
#include "session/TFormDisplayLogins.h"
#include "TempDataDir.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

QString startupMessage(const SessionSettings& settings)
{
    try {
        DataLocation::find(settings);
    } catch (const StartupError& e) {
        return e.message();
    }
    return QStringLiteral("(found)");
}

SessionSettings fileServer(const QString& alias, const QString& kettleBrook = {})
{
    SessionSettings s;
    s.alias = alias;
    s.aliasKettleBrook = kettleBrook;
    return s;
}

TEST(SessionSettingsStore, ReadsTheFourValuesAndMissingOnesAreEmpty)
{
    QTemporaryDir temp;
    const QString file = temp.filePath(QStringLiteral("DataSession.ini"));
    {
        QSettings store(file, QSettings::IniFormat);
        store.setValue(QStringLiteral("Alias/Kettle Brook"), QStringLiteral("/srv/agency"));
        store.setValue(QStringLiteral("Mode/Kettlebrook"), QStringLiteral("C"));
        store.setValue(QStringLiteral("Connection/Kettlebrook"), QStringLiteral("Internet"));
        store.setValue(QStringLiteral("Server IP/Kettlebrook"), QStringLiteral("10.0.0.5:5432"));
    }
    QSettings store(file, QSettings::IniFormat);
    const SessionSettings s = SessionSettings::read(store);
    EXPECT_EQ(s.alias, "");
    EXPECT_EQ(s.aliasKettleBrook, "/srv/agency");
    EXPECT_TRUE(s.clientServer());
    EXPECT_EQ(s.connection, "Internet");
    EXPECT_EQ(s.serverIp, "10.0.0.5:5432");
    QSettings empty(temp.filePath(QStringLiteral("none.ini")), QSettings::IniFormat);
    EXPECT_FALSE(SessionSettings::read(empty).clientServer());
}

TEST(SessionSettingsStore, CommandLineOptionsWin)
{
    SessionSettings s;
    s.mode = QStringLiteral("C");
    s.aliasKettleBrook = QStringLiteral("remote");
    s.applyDataOption(QStringLiteral("/data/agency"));
    EXPECT_FALSE(s.clientServer());
    EXPECT_EQ(s.alias, "/data/agency");
    s.applyServerOption(QStringLiteral("db.example:5432/agency"));
    EXPECT_TRUE(s.clientServer());
    EXPECT_EQ(s.serverIp, "db.example:5432");
    EXPECT_EQ(s.aliasKettleBrook, "agency");
    EXPECT_THROW(s.applyServerOption(QStringLiteral("db.example")), std::runtime_error);
}

TEST(FindingTheData, FileServerChecksAndMessages)
{
    TempDataDir data;
    EXPECT_EQ(startupMessage(fileServer({})),
              "The Kettlebrook database has not been defined. The application can not continue. Kettlebrook will "
              "now terminate...");
    EXPECT_EQ(startupMessage(fileServer(data.path())), "(found)");
    // An empty Kettlebrook alias with a filled Kettle Brook alias reaches the data.
    EXPECT_EQ(DataLocation::find(fileServer({}, data.path())).directory, data.path());
    const QString missing = data.path() + QStringLiteral("/nowhere");
    EXPECT_EQ(startupMessage(fileServer(missing)), QStringLiteral("The Kettlebrook database:\r\n") + missing +
                                                      QStringLiteral("\r\ndoes not appear to be valid. Kettlebrook "
                                                                     "will now terminate..."));
    QTemporaryDir other;
    EXPECT_EQ(startupMessage(fileServer(other.path())),
              QStringLiteral("The Kettlebrook database:\r\n") + other.path() +
                  QStringLiteral("\r\ndoes not appear to be pointing to Kettlebrook data. Kettlebrook will now "
                                 "terminate..."));
}

TEST(FindingTheData, ClientServerHasNoDirectoryCheck)
{
    SessionSettings s;
    s.mode = QStringLiteral("C");
    s.serverIp = QStringLiteral("10.0.0.5");
    s.alias = QStringLiteral("/not/a/directory");
    DataLocation found = DataLocation::find(s);
    EXPECT_TRUE(found.clientServer);
    EXPECT_EQ(found.database, "/not/a/directory");
    EXPECT_FALSE(found.internet);
    s.aliasKettleBrook = QStringLiteral("agency"); // read first in this mode
    s.connection = QStringLiteral("Internet");
    found = DataLocation::find(s);
    EXPECT_EQ(found.database, "agency");
    EXPECT_TRUE(found.internet);
    s.alias.clear();
    s.aliasKettleBrook.clear();
    EXPECT_TRUE(startupMessage(s).startsWith(QStringLiteral("The Kettlebrook database has not been defined.")));
    // The server is connected to as the settings name it; no directory is
    // looked for.
    if (postgresTestAddress().isEmpty())
        return;
    TempDataDir server(StoreKind::PostgreSQL);
    const QString address = server.commandLocation().at(1);
    s.serverIp = address.left(address.lastIndexOf(u'/'));
    s.aliasKettleBrook = address.mid(address.lastIndexOf(u'/') + 1);
    FixedClock clock(fixedNow());
    const auto db = openSession(DataLocation::find(s), clock);
    EXPECT_EQ(db->dialect(), Dialect::PostgreSQL);
    EXPECT_EQ(db->recordCount(QStringLiteral("Config")), 1);
}

TEST(AppDataFolderTest, MadeUnderTheBaseWithATrailingSeparator)
{
    QTemporaryDir base;
    const QString folder = makeAppDataFolder(base.path());
    EXPECT_EQ(folder, base.path() + QStringLiteral("/Kettlebrook/"));
    EXPECT_TRUE(QDir(folder).exists());
    EXPECT_EQ(makeAppDataFolder(base.path()), folder); // already there
    EXPECT_EQ(makeAppDataFolder(QString()), "");
    QFile blocker(base.filePath(QStringLiteral("file")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    try {
        makeAppDataFolder(blocker.fileName());
        FAIL() << "made a folder under a file";
    } catch (const StartupError& e) {
        EXPECT_EQ(e.message(), QStringLiteral("Cannot create directory") + blocker.fileName() +
                                   QStringLiteral("/Kettlebrook/"));
    }
}

TEST(DebugLogSwitches, OnlyTheFirstThreeParametersAndOnlyWithTheWord)
{
    EXPECT_EQ(DebugLog::fromArguments({}).target(), DebugLog::Target::Off);
    EXPECT_EQ(DebugLog::fromArguments({QStringLiteral("=ON")}).target(), DebugLog::Target::Off);
    EXPECT_EQ(DebugLog::fromArguments({QStringLiteral("codesite=on")}).target(), DebugLog::Target::Stream);
    EXPECT_EQ(DebugLog::fromArguments({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                                       QStringLiteral("CODESITE=ON")})
                  .target(),
              DebugLog::Target::Off);
    const DebugLog file =
        DebugLog::fromArguments({QStringLiteral("CodeSite=File"), QStringLiteral("CodeSitePath=/tmp/Logs")});
    EXPECT_EQ(file.target(), DebugLog::Target::File);
    EXPECT_EQ(file.filePath(), "/tmp/Logs/Kettlebrook.CSL");
    EXPECT_EQ(file.destinationMessage(), "CodeSite Destination: File[Path=/tmp/Logs/Kettlebrook.CSL]");
    EXPECT_EQ(DebugLog::fromArguments({QStringLiteral("CODESITE=FILE")}).filePath(),
              QDir::home().filePath(QStringLiteral("Kettlebrook.CSL")));
}

TEST(DebugLogSwitches, TheFileReceivesTheLines)
{
    QTemporaryDir folder;
    DebugLog log = DebugLog::fromArguments({QStringLiteral("CODESITE=FILE"), QStringLiteral("CODESITEPATH=") + folder.path()});
    log.install();
    DebugLog::log(QStringLiteral("Creating DataModule1"));
    DebugLog::fromArguments({}).install();
    DebugLog::log(QStringLiteral("not written"));
    QFile file(log.filePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(file.readAll());
    EXPECT_TRUE(text.contains(QStringLiteral("Creating DataModule1")));
    EXPECT_FALSE(text.contains(QStringLiteral("not written")));
}

TEST(DataModule, StartsOnTheDataAndCleansUpAtShutdown)
{
    TempDataDir data;
    QTemporaryDir appData;
    ScriptedUserInterface ui;
    TDataModule1 module(data.clock(), ui);
    module.start(fileServer(data.path()), appData.path());
    EXPECT_TRUE(module.session().lGoOn);
    EXPECT_EQ(module.session().cAppDataFolder, appData.path() + QStringLiteral("/Kettlebrook/"));
    EXPECT_EQ(module.session().clientIndex, "LAST_FIRST");
    EXPECT_TRUE(ui.messages().isEmpty());

    SignIn::complete(module.db(), module.session(), SignIn::lookUp(module.db(), QStringLiteral("keeperin")));
    module.db().execute(QStringLiteral("Create Table if not exists Memory Scratch (A Integer)"));
    const QStringList leftOver = {QStringLiteral("userDietTrans1.dat"), QStringLiteral("xDecodedDiet.idx"),
                                  QStringLiteral("SpecLabels.dat")};
    for (const QString& name : leftOver + QStringList{QStringLiteral("SpecLabels.txt")}) {
        QFile f(QDir(data.path()).filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    module.shutdown();
    for (const QString& name : leftOver)
        EXPECT_FALSE(QFile::exists(QDir(data.path()).filePath(name))) << name.toStdString();
    EXPECT_TRUE(QFile::exists(QDir(data.path()).filePath(QStringLiteral("SpecLabels.txt"))));
    EXPECT_TRUE(isDataDirectory(data.path()));
    EXPECT_EQ(module.db().memoryTable(u"Scratch"), nullptr);
    const ResultSet events = module.db().execute(QStringLiteral("select Event from History order by RecordID"));
    ASSERT_EQ(events.rowCount(), 2);
    EXPECT_EQ(events.value(1, 0).toString(), "System Administrator logged out of Kettlebrook");
}

TEST(DataModule, AMissingTempDirectoryIsToldAndStartUpGoesOn)
{
    ScriptedUserInterface ui;
    TDataModule1::checkTempDirectory(QStringLiteral("/no/such/temp"), ui);
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning),
              QStringList{QStringLiteral("The Windows Temp directory on this machine\n\r(/no/such/temp)\n\r does not "
                                         "exist. Kettlebrook will run but most likely not function properly!")});
}

TEST(DataModule, AMissingStartupTableIsFatal)
{
    TempDataDir data;
    data.db().deleteTable(QStringLiteral("Zips"));
    ScriptedUserInterface ui;
    TDataModule1 module(data.clock(), ui);
    EXPECT_THROW(module.start(fileServer(data.path()), QString()), StartupError);
}

TEST(LoginActivity, ListsTheRecentSignInsAndOutsByUserNewestFirst)
{
    TempDataDir data;
    Database& db = data.db();
    const auto event = [&](const QString& user, const QString& text, const QDateTime& when) {
        data.clock().set(when);
        QueryInsertHistory(db, user, HistoryEntry{{}, {}, text, {}});
    };
    const QDateTime now = fixedNow();
    event(QStringLiteral("Bo"), QStringLiteral("Bo logged into Kettlebrook"), now.addSecs(-3600));
    event(QStringLiteral("Bo"), QStringLiteral("Bo logged out of Kettlebrook"), now.addSecs(-60));
    event(QStringLiteral("Al"), QStringLiteral("Al logged into Kettlebrook"), now.addSecs(-7200));
    event(QStringLiteral("Al"), QStringLiteral("Saved 3/6/2024 All Delivery Types, 3 names."), now.addSecs(-100));
    event(QStringLiteral("Cy"), QStringLiteral("Cy logged into Kettlebrook"), now.addDays(-3));
    data.clock().set(now);

    TFormDisplayLogins logins(db);
    EXPECT_EQ(TFormDisplayLogins::caption(), "User Login Activity");
    EXPECT_EQ(logins.pastDays(), 1);
    logins.refresh();
    const ResultSet& rows = logins.rows();
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.value(0, u"User").toString(), "Al");
    EXPECT_EQ(rows.value(0, u"Action").toString(), "Logged In");
    EXPECT_EQ(rows.value(1, u"User").toString(), "Bo");
    EXPECT_EQ(rows.value(1, u"Action").toString(), "Logged Out");
    EXPECT_EQ(rows.value(2, u"Action").toString(), "Logged In");
    logins.setPastDays(5);
    logins.refresh();
    EXPECT_EQ(logins.rows().rowCount(), 4);
}

TEST(HistoryRows, TheEventIsCutToItsColumn)
{
    TempDataDir data;
    QueryInsertHistory(data.db(), QStringLiteral("Pat"),
                       HistoryEntry{7, QStringLiteral("C007"), QString(60, u'x'), QDate(2024, 3, 1)});
    const ResultSet rows = data.db().execute(QStringLiteral("select Person_ID, Client_ID, Event, Event_Date, User from History"));
    EXPECT_EQ(rows.value(0, 0).toInt(), 7);
    EXPECT_EQ(rows.value(0, 1).toString(), "C007");
    EXPECT_EQ(rows.value(0, 2).toString(), QString(50, u'x'));
    EXPECT_EQ(rows.value(0, 3).toDate(), QDate(2024, 3, 1));
    EXPECT_EQ(rows.value(0, 4).toString(), "Pat");
}

} // namespace
