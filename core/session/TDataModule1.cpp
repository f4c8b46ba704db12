#include "session/TDataModule1.h"

#include "session/AppDataFolder.h"
#include "store/Database.h"
#include "DebugLog.h"
#include "session/OpenSession.h"
#include "records/RecordServices.h"
#include "session/SignIn.h"
#include "session/StartupError.h"
#include "UserInterface.h"

#include <QDir>
#include <QFile>

namespace kb {

TDataModule1::TDataModule1(const Clock& clock, UserInterface& ui) : m_clock(clock), m_ui(ui) {}

TDataModule1::~TDataModule1() = default;

const QStringList& TDataModule1::startupTables()
{
    static const QStringList tables = {
        QStringLiteral("Diet"),        QStringLiteral("Services"),    QStringLiteral("Routes"),
        QStringLiteral("Config"),      QStringLiteral("EventCds"),    QStringLiteral("Staff"),
        QStringLiteral("Events"),      QStringLiteral("Clients"),     QStringLiteral("Zips"),
        QStringLiteral("StopReasons"), QStringLiteral("Individuals"), QStringLiteral("Fundsrcs"),
        QStringLiteral("ServiceApps"), QStringLiteral("Conditions"),  QStringLiteral("Docs")};
    return tables;
}

void TDataModule1::checkTempDirectory(const QString& path, UserInterface& ui)
{
    if (!QDir(path).exists())
        ui.warning(QStringLiteral("The Windows Temp directory on this machine\n\r(") + path +
                   QStringLiteral(")\n\r does not exist. Kettlebrook will run but most likely not function properly!"));
}

void TDataModule1::start(const SessionSettings& settings, const QString& appDataBase)
{
    checkTempDirectory(QDir::tempPath(), m_ui);
    m_session.cMode = settings.mode;
    m_session.cConnectionMethod = settings.connection;
    m_location = DataLocation::find(settings);
    DebugLog::log(QStringLiteral("Connecting to ") +
                  (m_location.clientServer ? m_location.serverAddress + QLatin1Char('/') + m_location.database
                                           : m_location.directory));
    m_db = openSession(m_location, m_clock);
    m_services = std::make_unique<RecordServices>(*m_db, m_ui);
    m_session.lGoOn = true;

    m_session.cAppDataFolder = makeAppDataFolder(appDataBase);
    for (const QString& table : startupTables())
        if (!m_db->exists(table))
            throw StartupError(QStringLiteral("Unable to open the table ") + table);
    const ResultSet config = m_db->execute(QStringLiteral("Select DSORT_ORDER from Config"));
    if (!config.isEmpty())
        m_session.clientIndex = config.value(0, 0).toString().trimmed();
}

void TDataModule1::removeScratchFiles()
{
    if (m_location.clientServer || m_location.directory.isEmpty())
        return;
    QDir dir(m_location.directory);
    if (!dir.exists())
        return;
    const QStringList patterns = {QStringLiteral("*DietTrans*.dat"),   QStringLiteral("*DietTrans*.idx"),
                                  QStringLiteral("*DecodedDiet*.dat"), QStringLiteral("*DecodedDiet*.idx"),
                                  QStringLiteral("*SpecLabels*.dat"),  QStringLiteral("*SpecLabels*.idx")};
    for (const QString& name : dir.entryList(patterns, QDir::Files))
        QFile::remove(dir.filePath(name));
}

void TDataModule1::shutdown()
{
    if (m_shutDown || !m_db)
        return;
    m_shutDown = true;
    removeScratchFiles();
    m_db->dropMemoryTables();
    if (m_session.signedIn())
        SignIn::recordSignOut(*m_db, m_session);
}

} // namespace kb
