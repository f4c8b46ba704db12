#include "TempDataDir.h"

#include "session/DataDirectory.h"
#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <stdexcept>

namespace kb::test {

QDateTime fixedNow() { return QDateTime(QDate(2024, 3, 6), QTime(10, 30)); }

std::string storeName(StoreKind kind) { return kind == StoreKind::SQLite ? "SQLite" : "PostgreSQL"; }

QString postgresTestAddress() { return qEnvironmentVariable("KB_TEST_PG"); }

namespace {

ServerAddress testAddress(const QString& schema)
{
    ServerAddress address = ServerAddress::parse(postgresTestAddress());
    address.schema = schema;
    return address;
}

} // namespace

TempDataDir::TempDataDir(StoreKind kind) : m_kind(kind), m_clock(fixedNow())
{
    if (kind == StoreKind::SQLite) {
        m_path = m_temp.filePath(QStringLiteral("data"));
        m_db = createDataDirectory(m_path, m_clock);
        return;
    }
    if (postgresTestAddress().isEmpty())
        throw std::runtime_error("KB_TEST_PG is not set");
    m_schema = QStringLiteral("kbt_%1_%2")
                   .arg(QCoreApplication::applicationPid())
                   .arg(QRandomGenerator::global()->generate64(), 0, 36);
    m_db = createServerDatabase(testAddress(m_schema), m_clock);
}

TempDataDir::~TempDataDir()
{
    if (m_kind == StoreKind::PostgreSQL && m_db) {
        m_db.reset();
        PostgresStore cleaner(ServerAddress::parse(postgresTestAddress()));
        cleaner.exec(QStringLiteral("DROP SCHEMA IF EXISTS \"%1\" CASCADE").arg(m_schema));
    }
}

std::unique_ptr<Database> TempDataDir::openAnother()
{
    if (m_kind == StoreKind::SQLite)
        return openDataDirectory(m_path, m_clock);
    return openServerDatabase(testAddress(m_schema), m_clock);
}

QStringList TempDataDir::commandLocation() const
{
    if (m_kind == StoreKind::SQLite)
        return {QStringLiteral("--data"), m_path};
    return {QStringLiteral("--server"), postgresTestAddress() + QStringLiteral("#") + m_schema};
}

} // namespace kb::test
