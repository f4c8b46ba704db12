#include "store/SqliteStore.h"

#include "store/DbError.h"
#include "Money.h"
#include "store/ValueConversion.h"

#include <QDate>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include <sqlite3.h>

#include <climits>
#include <cmath>
#include <unistd.h>

namespace kb {

namespace {

// The session waits this long for another workstation's write lock before
// the error reaches the record services: 15 tries, 100 ms apart.
constexpr int BusyTimeoutMs = 1500;

DbErrorCode codeFor(int extended)
{
    switch (extended) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
        return DbErrorCode::DuplicateKey;
    case SQLITE_BUSY_SNAPSHOT:
        return DbErrorCode::ChangedSinceRead;
    default:
        break;
    }
    switch (extended & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DbErrorCode::TableLocked;
    default:
        return DbErrorCode::Other;
    }
}

bool tooDeep(const QString& message)
{
    return message == QLatin1String("parser stack overflow") ||
           message.startsWith(QLatin1String("Expression tree is too large"));
}

// The store's message, or ours where its words would not tell a user what
// to do. readOnlyReason says why the data was opened read-only, if it was.
QString messageFor(int extended, const QString& message, const QString& readOnlyReason)
{
    if (tooDeep(message))
        return statementTooComplex();
    switch (extended & 0xff) {
    case SQLITE_READONLY:
        return (readOnlyReason.isEmpty() ? QStringLiteral("The data is read-only here") : readOnlyReason) +
               QStringLiteral(": nothing can be changed (%1)").arg(message);
    case SQLITE_FULL:
        return QStringLiteral("The disk of the data directory is full: free some space and try again (%1)").arg(message);
    default:
        return message;
    }
}

[[noreturn]] void fail(sqlite3* db, int rc, const QString& sql, const QString& readOnlyReason = {})
{
    const int extended = db ? sqlite3_extended_errcode(db) : rc;
    const QString message = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc));
    throw DbError(tooDeep(message) ? DbErrorCode::Syntax : codeFor(extended),
                  messageFor(extended, message, readOnlyReason), sql);
}

class SqliteStatement final : public StoreStatement
{
public:
    SqliteStatement(sqlite3* db, sqlite3_stmt* stmt, QString sql, QString readOnlyReason)
        : m_db(db), m_stmt(stmt), m_sql(std::move(sql)), m_readOnlyReason(std::move(readOnlyReason))
    {
    }
    ~SqliteStatement() override { sqlite3_finalize(m_stmt); }

    void bind(int position, const QVariant& value, FieldType type) override
    {
        const int index = position + 1;
        if (index > sqlite3_bind_parameter_count(m_stmt))
            return;
        int rc = SQLITE_OK;
        if (!value.isValid() || value.isNull()) {
            rc = sqlite3_bind_null(m_stmt, index);
        } else {
            const int id = value.typeId();
            if (id == qMetaTypeId<Money>()) {
                const Money m = value.value<Money>();
                rc = type == FieldType::Currency ? sqlite3_bind_int64(m_stmt, index, m.units())
                                                 : sqlite3_bind_double(m_stmt, index, m.toDouble());
            } else if (id == QMetaType::QDate) {
                const QByteArray text = dateText(value.toDate()).toUtf8();
                rc = sqlite3_bind_text(m_stmt, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
            } else if (id == QMetaType::QDateTime) {
                const QByteArray text = dateTimeText(value.toDateTime()).toUtf8();
                rc = sqlite3_bind_text(m_stmt, index, text.constData(), int(text.size()), SQLITE_TRANSIENT);
            } else if (id == QMetaType::Bool) {
                rc = sqlite3_bind_int(m_stmt, index, value.toBool() ? 1 : 0);
            } else if (id == QMetaType::LongLong || id == QMetaType::Int || id == QMetaType::UInt ||
                       id == QMetaType::ULongLong) {
                rc = sqlite3_bind_int64(m_stmt, index, value.toLongLong());
            } else if (id == QMetaType::Double || id == QMetaType::Float) {
                rc = sqlite3_bind_double(m_stmt, index, value.toDouble());
            } else if (id == QMetaType::QByteArray) {
                const QByteArray bytes = value.toByteArray();
                rc = sqlite3_bind_blob(m_stmt, index, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
            } else {
                const QString s = value.toString();
                rc = sqlite3_bind_text16(m_stmt, index, s.utf16(), int(s.size() * 2), SQLITE_TRANSIENT);
            }
        }
        if (rc != SQLITE_OK)
            fail(m_db, rc, m_sql, m_readOnlyReason);
    }

    void execute() override
    {
        m_pending = false;
        const int rc = sqlite3_step(m_stmt);
        if (rc == SQLITE_ROW) {
            m_pending = true;
            m_done = false;
        } else if (rc == SQLITE_DONE) {
            m_done = true;
            m_changes = sqlite3_changes64(m_db);
        } else {
            sqlite3_reset(m_stmt);
            fail(m_db, rc, m_sql, m_readOnlyReason);
        }
    }

    bool next() override
    {
        if (m_pending) {
            m_pending = false;
            return true;
        }
        if (m_done)
            return false;
        const int rc = sqlite3_step(m_stmt);
        if (rc == SQLITE_ROW)
            return true;
        if (rc == SQLITE_DONE) {
            m_done = true;
            return false;
        }
        sqlite3_reset(m_stmt);
        fail(m_db, rc, m_sql, m_readOnlyReason);
    }

    QVariant value(int column, FieldType type) override
    {
        const int storage = sqlite3_column_type(m_stmt, column);
        if (storage == SQLITE_NULL)
            return {};
        switch (type) {
        case FieldType::String:
        case FieldType::Memo:
            return text(column);
        case FieldType::SmallInt:
        case FieldType::Int:
        case FieldType::AutoInc: {
            if (storage == SQLITE_FLOAT)
                return double(sqlite3_column_double(m_stmt, column));
            const sqlite3_int64 n = sqlite3_column_int64(m_stmt, column);
            if (storage == SQLITE_TEXT) {
                bool ok = false;
                const qlonglong parsed = text(column).toLongLong(&ok);
                if (!ok)
                    return text(column);
                return parsed >= INT_MIN && parsed <= INT_MAX ? QVariant(int(parsed)) : QVariant(parsed);
            }
            return n >= INT_MIN && n <= INT_MAX ? QVariant(int(n)) : QVariant(qlonglong(n));
        }
        case FieldType::Float:
            return sqlite3_column_double(m_stmt, column);
        case FieldType::Currency:
            if (storage == SQLITE_INTEGER)
                return QVariant::fromValue(Money::fromUnits(sqlite3_column_int64(m_stmt, column)));
            return QVariant::fromValue(Money::fromUnits(std::llround(sqlite3_column_double(m_stmt, column))));
        case FieldType::Bool:
            return sqlite3_column_int64(m_stmt, column) != 0;
        case FieldType::Date: {
            const QDate d = parseDate(text(column));
            return d.isValid() ? QVariant(d) : QVariant();
        }
        case FieldType::DateTime: {
            const QDateTime dt = parseDateTime(text(column));
            return dt.isValid() ? QVariant(dt) : QVariant();
        }
        case FieldType::Blob:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(m_stmt, column)),
                              sqlite3_column_bytes(m_stmt, column));
        case FieldType::Unknown:
            break;
        }
        switch (storage) {
        case SQLITE_INTEGER: return qlonglong(sqlite3_column_int64(m_stmt, column));
        case SQLITE_FLOAT: return sqlite3_column_double(m_stmt, column);
        case SQLITE_BLOB:
            return QByteArray(static_cast<const char*>(sqlite3_column_blob(m_stmt, column)),
                              sqlite3_column_bytes(m_stmt, column));
        default: return text(column);
        }
    }

    int columnCount() const override { return sqlite3_column_count(m_stmt); }
    qint64 rowsAffected() const override { return m_changes; }

    void reset() override
    {
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
        m_pending = false;
        m_done = false;
    }

private:
    QString text(int column) const
    {
        const auto* data = static_cast<const char16_t*>(sqlite3_column_text16(m_stmt, column));
        return QString::fromUtf16(data, sqlite3_column_bytes16(m_stmt, column) / 2);
    }

    sqlite3* m_db;
    sqlite3_stmt* m_stmt;
    QString m_sql;
    QString m_readOnlyReason;
    bool m_pending = false;
    bool m_done = false;
    qint64 m_changes = 0;
};

} // namespace

SqliteStore::SqliteStore(const QString& path, bool create) : m_path(path)
{
    if (create) {
        openConnection(QFile::encodeName(path), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        // WAL lets readers on other workstations go on while one writes. The
        // mode is kept in the file, so later sessions need not set it again:
        // setting it would need a write, which a read-only share refuses.
        exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    } else if (!mayWrite(path)) {
        openReadOnly(QStringLiteral("The data directory may not be written by this user"));
    } else {
        openConnection(QFile::encodeName(path), SQLITE_OPEN_READWRITE);
        // Reading shares an index file beside the database; on a full disk
        // it cannot be made, and the data is then read as it stands.
        if (!readsBack())
            openReadOnly(QStringLiteral("The disk of the data directory is full (free some space and open it again)"));
    }
    // LIKE is case-sensitive in the dialect.
    exec(QStringLiteral("PRAGMA synchronous=NORMAL"));
    exec(QStringLiteral("PRAGMA case_sensitive_like=ON"));
    exec(QStringLiteral("PRAGMA temp_store=MEMORY"));
}

bool SqliteStore::mayWrite(const QString& path)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    return ::access(folder.constData(), W_OK) == 0 && ::access(QFile::encodeName(path).constData(), W_OK) == 0;
}

void SqliteStore::openConnection(const QByteArray& name, int flags)
{
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    const int rc = sqlite3_open_v2(name.constData(), &m_db, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (rc != SQLITE_OK) {
        const QString message = m_db ? QString::fromUtf8(sqlite3_errmsg(m_db)) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_close(m_db);
        m_db = nullptr;
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot open %1: %2").arg(m_path, message));
    }
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, BusyTimeoutMs);
    m_readOnly = (flags & SQLITE_OPEN_READONLY) != 0;
}

bool SqliteStore::readsBack()
{
    const int rc = sqlite3_exec(m_db, "SELECT count(*) FROM sqlite_schema", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        return true;
    switch (sqlite3_extended_errcode(m_db) & 0xff) {
    case SQLITE_READONLY:
    case SQLITE_CANTOPEN:
    case SQLITE_FULL:
    case SQLITE_IOERR:
    case SQLITE_PERM:
        return false;
    default:
        fail(m_db, rc, QStringLiteral("reading %1").arg(m_path));
    }
}

void SqliteStore::openReadOnly(const QString& reason)
{
    m_readOnlyReason = reason;
    // Read-only, sharing the index of the workstations that write when it
    // is there; where it is not and cannot be made, the file is read as it
    // stands, for nobody who could change it is at work.
    QUrl url = QUrl::fromLocalFile(QFileInfo(m_path).absoluteFilePath());
    url.setQuery(QStringLiteral("mode=ro"));
    openConnection(url.toEncoded(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    if (readsBack())
        return;
    url.setQuery(QStringLiteral("mode=ro&immutable=1"));
    openConnection(url.toEncoded(), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    if (!readsBack())
        fail(m_db, sqlite3_extended_errcode(m_db), QStringLiteral("reading %1").arg(m_path));
}

SqliteStore::~SqliteStore()
{
    sqlite3_close_v2(m_db);
}

std::unique_ptr<StoreStatement> SqliteStore::prepare(const QString& sql)
{
    sqlite3_stmt* stmt = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    const int rc = sqlite3_prepare_v3(m_db, utf8.constData(), int(utf8.size()), SQLITE_PREPARE_PERSISTENT, &stmt,
                                      nullptr);
    if (rc != SQLITE_OK)
        fail(m_db, rc, sql, m_readOnlyReason);
    return std::make_unique<SqliteStatement>(m_db, stmt, sql, m_readOnlyReason);
}

void SqliteStore::exec(const QString& sql)
{
    char* error = nullptr;
    const int rc = sqlite3_exec(m_db, sql.toUtf8().constData(), nullptr, nullptr, &error);
    if (rc != SQLITE_OK) {
        const QString message = error ? QString::fromUtf8(error) : QString::fromUtf8(sqlite3_errstr(rc));
        sqlite3_free(error);
        const int extended = sqlite3_extended_errcode(m_db);
        throw DbError(tooDeep(message) ? DbErrorCode::Syntax : codeFor(extended),
                      messageFor(extended, message, m_readOnlyReason), sql);
    }
}

void SqliteStore::begin()
{
    // Take the write lock at once, so a transaction never fails half-way
    // because another workstation wrote since it read.
    exec(QStringLiteral("BEGIN IMMEDIATE"));
}

void SqliteStore::beginLocal()
{
    // Deferred: memory tables live in the connection's own temporary store.
    exec(QStringLiteral("BEGIN"));
}

void SqliteStore::commit() { exec(QStringLiteral("COMMIT")); }

void SqliteStore::rollback()
{
    if (!sqlite3_get_autocommit(m_db))
        exec(QStringLiteral("ROLLBACK"));
}

qint64 SqliteStore::lastInsertRowId() { return sqlite3_last_insert_rowid(m_db); }

bool SqliteStore::tableExists(const QString& physicalName)
{
    auto stmt = prepare(QStringLiteral(
        "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE "
        "UNION ALL SELECT 1 FROM sqlite_temp_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE"));
    stmt->bind(0, physicalName, FieldType::String);
    stmt->execute();
    return stmt->next();
}

} // namespace kb
