#include "dataset/ServerRecordLocks.h"

#include "sql/Translator.h"
#include "store/Database.h"
#include "store/DbError.h"
#include "store/Store.h"

#include <climits>
#include <cstring>

namespace kb {

ServerRecordLocks::ServerRecordLocks(Database& database) : RecordLocks(database)
{
    // A workstation that vanishes without closing its connection (power,
    // network) is noticed by the server within seconds, and its locks go.
    // Harmless over a local socket, where the settings do not apply.
    database.store().exec(QStringLiteral(
        "SET tcp_keepalives_idle = 5; SET tcp_keepalives_interval = 2; SET tcp_keepalives_count = 3"));
}

ServerRecordLocks::~ServerRecordLocks() = default;

QVariant ServerRecordLocks::ask(std::unique_ptr<StoreStatement>& statement, const char* sql,
                                const std::vector<std::pair<QVariant, FieldType>>& values,
                                FieldType resultType)
{
    const QString text = QString::fromLatin1(sql);
    if (!statement) statement = m_database.store().prepare(text);
    struct Resetter
    {
        StoreStatement& s;
        ~Resetter() { s.reset(); }
    } resetter{*statement};
    for (size_t i = 0; i < values.size(); ++i)
        statement->bind(int(i), values[i].first, values[i].second);
    statement->execute();
    if (!statement->next())
        throw DbError(DbErrorCode::Other, QStringLiteral("The server gave no answer to a lock request"),
                      text);
    return statement->value(0, resultType);
}

bool ServerRecordLocks::call(std::unique_ptr<StoreStatement>& statement, const char* sql, qint64 first,
                             qint64 second)
{
    std::vector<std::pair<QVariant, FieldType>> values{{first, FieldType::Int}};
    if (std::strstr(sql, "$2")) values.emplace_back(second, FieldType::Int);
    return ask(statement, sql, values, FieldType::Bool).toBool();
}

RecordLocks::TableKey ServerRecordLocks::keyOf(const QString& table)
{
    const TableDef* def = m_database.persistentTable(table);
    if (!def) return {};
    const QString name = def->name().toLower();
    if (const auto it = m_keys.constFind(name); it != m_keys.constEnd()) return TableKey{*it};
    const QVariant oid =
        ask(m_objectNumber, "SELECT to_regclass($1)::oid::bigint",
            {{sql::quoteIdentifier(def->name(), Dialect::PostgreSQL), FieldType::String}}, FieldType::Int);
    if (oid.isNull())
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("Table %1 does not exist").arg(def->name()));
    m_keys.insert(name, oid.toLongLong());
    return TableKey{oid.toLongLong()};
}

// The pair form takes two 32-bit keys: the object number's bits and the row.
static qint64 firstKey(qint64 objectNumber)
{
    return qint64(qint32(quint32(objectNumber)));
}

static qint64 checkedRow(qint64 rowId)
{
    if (rowId <= INT_MIN || rowId > INT_MAX)
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("Row %1 is beyond what the record locks can name").arg(rowId));
    return rowId;
}

// A statement that changes many rows at once (a run's save deletes and
// writes thousands) cannot take a server lock per row: the server's lock
// table is small and shared by all sessions. It closes the table's gate
// instead, so no new edit of the table can begin, and then looks whether
// anyone is editing one of its rows. An edit begins by passing the gate
// (held shared only while the row's own lock is taken), which a closed gate
// refuses. The gate is the pair (table, lowest 32-bit number), which no row can be.

// Beyond this many rows a statement closes the gate rather than locking each row.
static constexpr size_t RowsLockedOneByOne = 64;

bool ServerRecordLocks::acquireRow(TableKey key, qint64 rowId)
{
    // The gate is a transaction lock: outside a transaction it ends with
    // this one statement; inside one it keeps bulk statements of other
    // sessions out until the transaction ends, which does no harm.
    return call(m_tryRow,
                "SELECT CASE WHEN pg_try_advisory_xact_lock_shared($1::int4, -2147483648) "
                "THEN pg_try_advisory_lock($1::int4, $2::int4) ELSE false END",
                firstKey(key.value), checkedRow(rowId));
}

void ServerRecordLocks::releaseRow(TableKey key, qint64 rowId)
{
    call(m_unlockRow, "SELECT pg_advisory_unlock($1::int4, $2::int4)", firstKey(key.value),
         checkedRow(rowId));
}

bool ServerRecordLocks::holdRowsOnce(TableKey key, const std::vector<qint64>& rows, bool tableHeld)
{
    // All rows in one round trip: an array of their identities.
    QString list;
    list.reserve(qsizetype(rows.size()) * 8);
    for (const qint64 row : rows) {
        list += list.isEmpty() ? QLatin1Char('{') : QLatin1Char(',');
        list += QString::number(checkedRow(row));
    }
    list += QLatin1Char('}');
    const std::vector<std::pair<QVariant, FieldType>> values{{tableHeld, FieldType::Bool},
                                                             {key.value, FieldType::Int},
                                                             {list, FieldType::String},
                                                             {firstKey(key.value), FieldType::Int}};
    if (rows.size() > RowsLockedOneByOne)
        return ask(m_holdManyRows,
                   "SELECT CASE WHEN ($1 OR pg_try_advisory_xact_lock_shared($2::int8)) "
                   "AND pg_try_advisory_xact_lock($4::int4, -2147483648) "
                   "THEN NOT EXISTS (SELECT 1 FROM pg_locks l WHERE l.locktype = 'advisory' AND l.granted "
                   "AND l.pid <> pg_backend_pid() "
                   "AND l.database = (SELECT oid FROM pg_database WHERE datname = current_database()) "
                   "AND l.objsubid = 2 AND l.classid = $4::int4::oid "
                   "AND l.objid IN (SELECT r.id::int4::oid FROM unnest($3::int8[]) AS r(id))) "
                   "ELSE false END",
                   values, FieldType::Bool)
            .toBool();
    return ask(m_holdRows,
               "SELECT ($1 OR pg_try_advisory_xact_lock_shared($2::int8)) AND NOT EXISTS (SELECT 1 FROM "
               "unnest($3::int8[]) AS r(id) WHERE NOT pg_try_advisory_xact_lock($4::int4, r.id::int4))",
               values, FieldType::Bool)
        .toBool();
}

bool ServerRecordLocks::moveTableHold(TableKey key, TableMode from, TableMode to)
{
    // Take the new hold before giving up the old one, so nobody slips in between.
    if (to == TableMode::Exclusive &&
        !call(m_tryExclusive, "SELECT pg_try_advisory_lock($1::int8)", key.value))
        return false;
    if (to == TableMode::Shared &&
        !call(m_tryShared, "SELECT pg_try_advisory_lock_shared($1::int8)", key.value))
        return false;
    if (from == TableMode::Exclusive)
        call(m_unlockExclusive, "SELECT pg_advisory_unlock($1::int8)", key.value);
    else if (from == TableMode::Shared)
        call(m_unlockShared, "SELECT pg_advisory_unlock_shared($1::int8)", key.value);
    return true;
}

} // namespace kb
