#include "session/TDataModule1.h"

#include "DebugLog.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "session/AppDataFolder.h"
#include "session/OpenSession.h"
#include "session/SignIn.h"
#include "session/StartupError.h"
#include "settings/ConfigRecord.h"
#include "settings/SettingsFile.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QDir>
#include <QFile>

namespace kb {

namespace {

struct LongLivedQuery
{
    const char* name;
    const char* text;
};

// The lists the client window offers in its drop-downs, kept open for the
// life of the session.
const LongLivedQuery LongLivedQueries[] = {
    {"QueryMutuallyExclusiveDeliveryServices",
     "Select SERVICE_ID, SERVICE_DESC from Services where MUTL_EXCL = True and SERVICE_TYPE = 'D' "
     "order by SORT_ORDER, SERVICE_DESC"},
    {"QueryHouseholdName", "Select Household_ID, Household_Name from Households"},
    {"QueryCuisines", "Select Cuisine_ID, Cuisine from Cuisines order by Cuisine"},
    {"QueryColdBagCodes", "Select Record_ID, Bag_Code from Cold_Bag_Codes order by Bag_Code"},
    {"QueryCaseManagers", "Select Staff_ID, Staff_Name from Staff where Case_Manager = True Order by Staff_Name NoCase"},
};

} // namespace

TDataModule1::TDataModule1(const Clock& clock, UserInterface& ui)
    : m_clock(clock), m_ui(ui), m_userSettings(std::make_unique<SettingsFile>()),
      m_sharedSettings(std::make_unique<SettingsFile>())
{
}

TDataModule1::~TDataModule1()
{
    // The data sets give back their locks while the session still lives.
    m_queries.clear();
    m_tables.clear();
}

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

const QStringList& TDataModule1::longLivedQueries()
{
    static const QStringList names = [] {
        QStringList list;
        for (const LongLivedQuery& q : LongLivedQueries)
            list.append(QString::fromLatin1(q.name));
        return list;
    }();
    return names;
}

void TDataModule1::checkTempDirectory(const QString& path, UserInterface& ui)
{
    if (!QDir(path).exists())
        ui.warning(QStringLiteral("The Windows Temp directory on this machine\n\r(") + path +
                   QStringLiteral(")\n\r does not exist. Kettlebrook will run but most likely not function properly!"));
}

void TDataModule1::addDataSetHooks(std::function<void(TDataModule1&)> install)
{
    m_hookInstallers.push_back(std::move(install));
}

void TDataModule1::start(const SessionSettings& settings, const QString& appDataBase, Opening opening)
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
    m_userSettings = std::make_unique<SettingsFile>(m_session.cAppDataFolder);
    // A server has no data directory on this machine; its shared lists then
    // stay with the user's own.
    m_sharedSettings = std::make_unique<SettingsFile>(
        m_location.clientServer ? m_session.cAppDataFolder : m_location.directory);

    for (const QString& table : startupTables())
        if (!m_db->exists(table))
            throw StartupError(QStringLiteral("Unable to open the table ") + table);
    createDataSets();
    if (opening == Opening::AtStart)
        openDataSets();
    m_session.clientIndex = ConfigRecord::fromDataSet(config()).text(QStringLiteral("DSORT_ORDER")).trimmed();
    if (opening == Opening::AtStart)
        positionClients();
}

void TDataModule1::createDataSets()
{
    for (const QString& name : startupTables()) {
        auto set = std::make_unique<TableDataSet>(*m_db, name);
        m_services->installErrorHooks(*set);
        m_tables.push_back(std::move(set));
    }
    for (const LongLivedQuery& q : LongLivedQueries)
        m_queries.push_back(std::make_unique<QueryDataSet>(*m_db, QString::fromLatin1(q.text)));
    config().setHook(DataSet::Hook::BeforePost, ConfigBeforePost);
    table(QStringLiteral("Events")).setHook(DataSet::Hook::BeforePost, GenericDatasetBeforePost);
    for (const auto& install : m_hookInstallers)
        install(*this);
}

void TDataModule1::openDataSets()
{
    for (const auto& set : m_tables)
        if (!OpenTable(*set))
            throw StartupError(QStringLiteral("Unable to open the table ") + set->tableName());
    for (const auto& q : m_queries)
        OpenQuery(*q);
    query(QStringLiteral("QueryHouseholdName"))
        .setMaster(clients(), QStringLiteral("HOUSEHOLD_ID"), QStringLiteral("Household_ID"));
}

TableDataSet& TDataModule1::table(const QString& name)
{
    for (const auto& set : m_tables) {
        if (set->tableName().compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (!set->isActive())
            OpenTable(*set);
        return *set;
    }
    throw DbError(DbErrorCode::UnknownName, QStringLiteral("The data module holds no table %1").arg(name));
}

QueryDataSet& TDataModule1::query(const QString& name)
{
    const qsizetype index = longLivedQueries().indexOf(name);
    if (index < 0 || size_t(index) >= m_queries.size())
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("The data module holds no query %1").arg(name));
    QueryDataSet& set = *m_queries[size_t(index)];
    if (!set.isActive())
        OpenQuery(set);
    return set;
}

std::vector<DataSet*> TDataModule1::dataSets()
{
    std::vector<DataSet*> sets;
    for (const auto& set : m_tables)
        sets.push_back(set.get());
    for (const auto& q : m_queries)
        sets.push_back(q.get());
    return sets;
}

void TDataModule1::positionClients()
{
    TableDataSet& set = clients();
    const TableDef* def = m_db->persistentTable(u"Clients");
    const QString& index = m_session.clientIndex;
    if (!index.isEmpty() && def && def->index(index) && set.indexName().compare(index, Qt::CaseInsensitive) != 0)
        set.setIndexName(def->index(index)->name);
    set.first();
}

void TDataModule1::userSignedIn()
{
    const AccessLevel access = m_session.access();
    if (!access.mayChangeData()) {
        std::vector<TableDataSet*> tables;
        for (const auto& set : m_tables)
            if (set->isActive())
                tables.push_back(set.get());
            else
                set->setReadOnly(true);
        SetAllTables(QStringLiteral("RO"), tables);
        for (const auto& q : m_queries)
            if (q->isActive())
                SetOneQuery(*q, QStringLiteral("RO"));
            else
                q->setReadOnly(true);
    }
    if (clients().isActive())
        positionClients();
}

bool TDataModule1::closeQuery()
{
    if (m_tables.empty())
        return true;
    TableDataSet& set = *m_tables[size_t(startupTables().indexOf(QStringLiteral("Clients")))];
    if (set.state() != DataSet::State::Edit && set.state() != DataSet::State::Insert)
        return true;
    if (m_ui.question(QStringLiteral("Save your changes to the data before closing this window?"), Buttons::YesNo) !=
        Answer::Yes) {
        set.cancel();
        return true;
    }
    try {
        set.post();
    } catch (const Abort&) {
        return false;
    } catch (const DbError& error) {
        m_ui.error(error.message());
        return false;
    }
    return true;
}

void TDataModule1::runClosingStatement()
{
    if (m_session.staffId < 0 || !m_session.signedIn())
        return;
    const ResultSet asks = m_db->execute(
        QStringLiteral("Select Execute_OnClose_Query from Staff where Staff_ID = :Staff_ID"),
        {{QStringLiteral("Staff_ID"), m_session.staffId}});
    if (asks.isEmpty() || !asks.value(0, 0).toBool())
        return;
    const QString text = GetSQLStatement(*m_db, QStringLiteral("EXECUTE_ON_CLOSE"));
    if (!text.trimmed().isEmpty())
        m_db->execute(text);
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
    try {
        runClosingStatement();
    } catch (const std::exception& e) {
        const auto* db = dynamic_cast<const DbError*>(&e);
        m_ui.error(db ? db->message() : QString::fromUtf8(e.what()));
    }
    for (const auto& q : m_queries)
        q->close();
    for (const auto& set : m_tables)
        set->close();
    removeScratchFiles();
    m_db->dropMemoryTables();
    if (m_session.signedIn())
        SignIn::recordSignOut(*m_db, m_session);
    for (SettingsFile* file : {m_userSettings.get(), m_sharedSettings.get()}) {
        try {
            file->save();
        } catch (const MessageError& e) {
            m_ui.warning(e.message());
        }
    }
}

} // namespace kb
