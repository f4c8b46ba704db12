#include "store/PostgresStore.h"

#include "Money.h"
#include "store/DbError.h"
#include "store/ValueConversion.h"

#include <QDate>
#include <QDateTime>

#include <libpq-fe.h>

#include <climits>
#include <optional>

namespace kb {

namespace {

// Type numbers of the server's built-in types, for results whose type the
// catalogue cannot tell.
constexpr Oid BoolOid = 16;
constexpr Oid ByteaOid = 17;
constexpr Oid Int8Oid = 20;
constexpr Oid Int2Oid = 21;
constexpr Oid Int4Oid = 23;
constexpr Oid Float4Oid = 700;
constexpr Oid Float8Oid = 701;
constexpr Oid DateOid = 1082;
constexpr Oid TimestampOid = 1114;
constexpr Oid NumericOid = 1700;

DbErrorCode codeFor(const char* sqlState)
{
    const QByteArray state(sqlState ? sqlState : "");
    if (state == "23505") return DbErrorCode::DuplicateKey;
    if (state == "55P03") return DbErrorCode::RecordLocked;
    if (state == "40P01") return DbErrorCode::TableLocked;
    if (state == "40001") return DbErrorCode::ChangedSinceRead;
    return DbErrorCode::Other;
}

QString errorText(PGconn* conn, const PGresult* result)
{
    QString text = result ? QString::fromUtf8(PQresultErrorMessage(result)) : QString();
    if (text.isEmpty() && conn) text = QString::fromUtf8(PQerrorMessage(conn));
    return text.trimmed();
}

// Owns a result so every path clears it.
struct Result
{
    PGresult* r = nullptr;
    explicit Result(PGresult* result) : r(result) {}
    ~Result() { PQclear(r); }
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;
    Result(Result&& other) noexcept : r(other.r) { other.r = nullptr; }
};

void check(PGconn* conn, const Result& result, const QString& sql)
{
    const ExecStatusType status = result.r ? PQresultStatus(result.r) : PGRES_FATAL_ERROR;
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) return;
    const char* state = result.r ? PQresultErrorField(result.r, PG_DIAG_SQLSTATE) : nullptr;
    // Stack depth or statement complexity beyond the server's limits.
    if (state && (qstrcmp(state, "54001") == 0 || qstrcmp(state, "54000") == 0))
        throw DbError(DbErrorCode::Syntax,
                      statementTooComplex() + QStringLiteral(" (%1)").arg(errorText(conn, result.r)), sql);
    throw DbError(codeFor(state), errorText(conn, result.r), sql);
}

QByteArray wireText(const QVariant& value)
{
    const int id = value.typeId();
    if (id == qMetaTypeId<Money>()) return value.value<Money>().toString().toUtf8();
    if (id == QMetaType::QDate) return dateText(value.toDate()).toUtf8();
    if (id == QMetaType::QDateTime)
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")).toUtf8();
    if (id == QMetaType::Bool) return value.toBool() ? QByteArrayLiteral("true") : QByteArrayLiteral("false");
    if (id == QMetaType::Double || id == QMetaType::Float)
        return QByteArray::number(value.toDouble(), 'g', 17);
    return value.toString().toUtf8();
}

class PostgresStatement final : public StoreStatement
{
public:
    PostgresStatement(PGconn* conn, QByteArray name, QString sql, int parameterCount)
        : m_conn(conn), m_name(std::move(name)), m_sql(std::move(sql)), m_values(parameterCount),
          m_isNull(parameterCount, true), m_isBinary(parameterCount, false)
    {
    }
    ~PostgresStatement() override
    {
        endStream();
        PQclear(m_result);
        if (PQstatus(m_conn) == CONNECTION_OK && PQtransactionStatus(m_conn) != PQTRANS_INERROR)
            PQclear(PQexec(m_conn, ("DEALLOCATE " + m_name).constData()));
    }

    void bind(int position, const QVariant& value, FieldType type) override
    {
        if (position >= int(m_values.size())) return;
        m_isNull[position] = !value.isValid() || value.isNull();
        m_isBinary[position] = false;
        if (m_isNull[position]) return;
        if (type == FieldType::Blob || value.typeId() == QMetaType::QByteArray) {
            m_values[position] = value.toByteArray();
            m_isBinary[position] = type == FieldType::Blob;
            return;
        }
        m_values[position] = wireText(value);
    }

    void execute() override
    {
        PQclear(m_result);
        m_result = nullptr;
        m_row = -1;
        const WireValues wire = wireValues();
        Result result(PQexecPrepared(m_conn, m_name.constData(), wire.count(), wire.values.data(),
                                     wire.lengths.data(), wire.formats.data(), 0));
        check(m_conn, result, m_sql);
        m_result = result.r;
        result.r = nullptr;
    }

    void stream() override
    {
        endStream();
        PQclear(m_result);
        m_result = nullptr;
        m_row = -1;
        const WireValues wire = wireValues();
        if (!PQsendQueryPrepared(m_conn, m_name.constData(), wire.count(), wire.values.data(),
                                 wire.lengths.data(), wire.formats.data(), 0))
            throw DbError(DbErrorCode::Other, errorText(m_conn, nullptr), m_sql);
        m_streaming = true;
        if (!PQsetSingleRowMode(m_conn)) {
            endStream();
            throw DbError(DbErrorCode::Other, QStringLiteral("The server cannot send the rows one by one"),
                          m_sql);
        }
    }

    bool next() override
    {
        if (m_streaming) return nextStreamed();
        if (!m_result) return false;
        if (m_row + 1 >= PQntuples(m_result)) return false;
        ++m_row;
        return true;
    }

    QVariant value(int column, FieldType type) override
    {
        if (PQgetisnull(m_result, m_row, column)) return {};
        const char* raw = PQgetvalue(m_result, m_row, column);
        const int length = PQgetlength(m_result, m_row, column);
        if (type == FieldType::Unknown) type = typeOf(PQftype(m_result, column));
        switch (type) {
        case FieldType::String:
        case FieldType::Memo:
        case FieldType::Unknown:
            return QString::fromUtf8(raw, length);
        case FieldType::SmallInt:
        case FieldType::Int:
        case FieldType::AutoInc: {
            bool ok = false;
            const qlonglong n = QByteArray::fromRawData(raw, length).toLongLong(&ok);
            if (!ok) return QByteArray::fromRawData(raw, length).toDouble();
            return n >= INT_MIN && n <= INT_MAX ? QVariant(int(n)) : QVariant(n);
        }
        case FieldType::Float:
            return QByteArray::fromRawData(raw, length).toDouble();
        case FieldType::Currency: {
            const auto m = Money::parse(QString::fromLatin1(raw, length));
            return m ? QVariant::fromValue(*m) : QVariant();
        }
        case FieldType::Bool:
            return raw[0] == 't';
        case FieldType::Date: {
            const QDate d = parseDate(QString::fromLatin1(raw, length));
            return d.isValid() ? QVariant(d) : QVariant();
        }
        case FieldType::DateTime: {
            const QDateTime dt = parseDateTime(QString::fromLatin1(raw, length));
            return dt.isValid() ? QVariant(dt) : QVariant();
        }
        case FieldType::Blob: {
            size_t size = 0;
            unsigned char* bytes = PQunescapeBytea(reinterpret_cast<const unsigned char*>(raw), &size);
            const QByteArray data(reinterpret_cast<const char*>(bytes), qsizetype(size));
            PQfreemem(bytes);
            return data;
        }
        }
        return {};
    }

    qint64 executeMany(const std::vector<std::vector<QVariant>>& rows,
                       const std::vector<FieldType>& types) override
    {
        // Runs are pipelined in chunks: one round trip per chunk, and never
        // so much unread that client and server wait on each other.
        constexpr size_t Chunk = 500;
        qint64 changed = 0;
        if (!PQenterPipelineMode(m_conn))
            throw DbError(DbErrorCode::Other, errorText(m_conn, nullptr), m_sql);
        struct PipelineExit
        {
            PGconn* conn;
            ~PipelineExit() { PQexitPipelineMode(conn); }
        } exitPipeline{m_conn};
        for (size_t start = 0; start < rows.size(); start += Chunk) {
            const size_t end = std::min(rows.size(), start + Chunk);
            for (size_t r = start; r < end; ++r) {
                for (size_t i = 0; i < rows[r].size(); ++i)
                    bind(int(i), rows[r][i], types[i]);
                const WireValues wire = wireValues();
                if (!PQsendQueryPrepared(m_conn, m_name.constData(), wire.count(), wire.values.data(),
                                         wire.lengths.data(), wire.formats.data(), 0))
                    throw DbError(DbErrorCode::Other, errorText(m_conn, nullptr), m_sql);
            }
            if (!PQpipelineSync(m_conn)) throw DbError(DbErrorCode::Other, errorText(m_conn, nullptr), m_sql);
            // Read every result of the chunk up to its sync, keeping the first error.
            std::optional<DbError> failure;
            for (;;) {
                PGresult* raw = PQgetResult(m_conn);
                if (!raw) continue; // the end of one run's results
                Result result(raw);
                const ExecStatusType status = PQresultStatus(raw);
                if (status == PGRES_PIPELINE_SYNC) break;
                if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK)
                    changed += QByteArray(PQcmdTuples(raw)).toLongLong();
                else if (status != PGRES_PIPELINE_ABORTED && !failure)
                    failure.emplace(codeFor(PQresultErrorField(raw, PG_DIAG_SQLSTATE)),
                                    errorText(m_conn, raw), m_sql);
            }
            if (failure) throw *failure;
        }
        return changed;
    }

    int columnCount() const override { return m_result ? PQnfields(m_result) : 0; }

    qint64 rowsAffected() const override
    {
        if (!m_result) return 0;
        return QByteArray(PQcmdTuples(m_result)).toLongLong();
    }

    void reset() override
    {
        endStream();
        PQclear(m_result);
        m_result = nullptr;
        m_row = -1;
        std::fill(m_isNull.begin(), m_isNull.end(), true);
    }

private:
    // One row per result in single-row mode; the last result has none and
    // ends the run.
    bool nextStreamed()
    {
        PQclear(m_result);
        m_result = PQgetResult(m_conn);
        m_row = 0;
        if (!m_result) {
            m_streaming = false;
            return false;
        }
        const ExecStatusType status = PQresultStatus(m_result);
        if (status == PGRES_SINGLE_TUPLE) return true;
        Result last(m_result);
        m_result = nullptr;
        endStream();
        check(m_conn, last, m_sql);
        return false;
    }

    // Reads what is left of a streamed run, first asking the server to stop
    // sending rows nobody will read, so the connection is free again.
    void endStream()
    {
        if (!m_streaming) return;
        m_streaming = false;
        if (PQisBusy(m_conn)) {
            if (PGcancel* cancel = PQgetCancel(m_conn)) {
                char message[256];
                PQcancel(cancel, message, sizeof message);
                PQfreeCancel(cancel);
            }
        }
        while (PGresult* rest = PQgetResult(m_conn))
            PQclear(rest);
    }

    // The bound values in the arrays the client library takes; they point
    // into the statement's own buffers.
    struct WireValues
    {
        std::vector<const char*> values;
        std::vector<int> lengths;
        std::vector<int> formats;
        int count() const { return int(values.size()); }
    };

    WireValues wireValues() const
    {
        const size_t n = m_values.size();
        WireValues wire{std::vector<const char*>(n), std::vector<int>(n), std::vector<int>(n)};
        for (size_t i = 0; i < n; ++i) {
            wire.values[i] = m_isNull[i] ? nullptr : m_values[i].constData();
            wire.lengths[i] = int(m_values[i].size());
            wire.formats[i] = m_isBinary[i] ? 1 : 0;
        }
        return wire;
    }

    static FieldType typeOf(Oid oid)
    {
        switch (oid) {
        case BoolOid:
            return FieldType::Bool;
        case ByteaOid:
            return FieldType::Blob;
        case Int2Oid:
        case Int4Oid:
        case Int8Oid:
            return FieldType::Int;
        case Float4Oid:
        case Float8Oid:
        case NumericOid:
            return FieldType::Float;
        case DateOid:
            return FieldType::Date;
        case TimestampOid:
            return FieldType::DateTime;
        default:
            return FieldType::String;
        }
    }

    PGconn* m_conn;
    QByteArray m_name;
    QString m_sql;
    std::vector<QByteArray> m_values;
    std::vector<bool> m_isNull;
    std::vector<bool> m_isBinary;
    PGresult* m_result = nullptr;
    int m_row = -1;
    bool m_streaming = false;
};

} // namespace

ServerAddress ServerAddress::parse(const QString& fullText)
{
    // An optional "#schema" keeps several agencies apart in one database.
    QString text = fullText;
    QString schema;
    const qsizetype hash = text.lastIndexOf(u'#');
    if (hash > 0) {
        schema = text.mid(hash + 1);
        text = text.left(hash);
    }
    const qsizetype slash = text.lastIndexOf(u'/');
    if (slash <= 0 || slash == text.size() - 1)
        throw DbError(
            DbErrorCode::Other,
            QStringLiteral("The server address '%1' is not of the form HOST[:PORT]/DATABASE").arg(text));
    ServerAddress a;
    a.database = text.mid(slash + 1);
    QString host = text.left(slash);
    const qsizetype colon = host.lastIndexOf(u':');
    if (colon > 0) {
        bool ok = false;
        a.port = host.mid(colon + 1).toInt(&ok);
        if (!ok || a.port <= 0 || a.port > 65535)
            throw DbError(DbErrorCode::Other,
                          QStringLiteral("The port in the server address '%1' is not a number").arg(text));
        host = host.left(colon);
    }
    a.host = host;
    a.schema = schema;
    return a;
}

QString ServerAddress::toString() const
{
    QString text = QStringLiteral("%1:%2/%3").arg(host).arg(port).arg(database);
    if (!schema.isEmpty()) text += QLatin1Char('#') + schema;
    return text;
}

PostgresStore::PostgresStore(const ServerAddress& address)
{
    const QByteArray host = address.host.toUtf8();
    const QByteArray port = QByteArray::number(address.port);
    const QByteArray database = address.database.toUtf8();
    const char* keys[] = {"host", "port", "dbname", "application_name", "client_encoding", nullptr};
    const char* values[] = {host.constData(), port.constData(), database.constData(),
                            "kettlebrook",    "UTF8",           nullptr};
    m_conn = PQconnectdbParams(keys, values, 1);
    if (PQstatus(m_conn) != CONNECTION_OK) {
        const QString message = QString::fromUtf8(PQerrorMessage(m_conn)).trimmed();
        PQfinish(m_conn);
        m_conn = nullptr;
        throw DbError(
            DbErrorCode::Other,
            QStringLiteral("Cannot connect to the database server %1: %2").arg(address.toString(), message));
    }
    // Dates travel as ISO texts; the session waits at most 1.5 s for a row
    // lock, as the record services expect of 15 tries 100 ms apart.
    exec(QStringLiteral("SET DateStyle = 'ISO, YMD'; SET lock_timeout = '1500ms'; "
                        "SET client_min_messages = warning"));
    if (!address.schema.isEmpty()) {
        const QString schema = QLatin1Char('"') + address.schema.toLower() + QLatin1Char('"');
        // Two sessions making one schema at once would both pass the "if not
        // exists" and one would fail on the catalogue's key: they take turns.
        exec(QStringLiteral(
                 "BEGIN; SELECT pg_advisory_xact_lock(-1, 2); CREATE SCHEMA IF NOT EXISTS %1; COMMIT; "
                 "SET search_path TO %1")
                 .arg(schema));
    }
}

PostgresStore::~PostgresStore()
{
    PQfinish(m_conn);
}

std::unique_ptr<StoreStatement> PostgresStore::prepare(const QString& sql)
{
    const QByteArray name = "kb_" + QByteArray::number(++m_nextStatement);
    Result result(PQprepare(m_conn, name.constData(), sql.toUtf8().constData(), 0, nullptr));
    check(m_conn, result, sql);
    Result described(PQdescribePrepared(m_conn, name.constData()));
    check(m_conn, described, sql);
    return std::make_unique<PostgresStatement>(m_conn, name, sql, PQnparams(described.r));
}

void PostgresStore::exec(const QString& sql)
{
    Result result(PQexec(m_conn, sql.toUtf8().constData()));
    check(m_conn, result, sql);
}

void PostgresStore::begin()
{
    exec(QStringLiteral("BEGIN"));
    m_inTransaction = true;
}

void PostgresStore::commit()
{
    exec(QStringLiteral("COMMIT"));
    m_inTransaction = false;
}

void PostgresStore::rollback()
{
    m_inTransaction = false;
    if (PQtransactionStatus(m_conn) != PQTRANS_IDLE) exec(QStringLiteral("ROLLBACK"));
}

qint64 PostgresStore::lastInsertRowId()
{
    const QString sql = QStringLiteral("SELECT lastval()");
    Result result(PQexec(m_conn, "SELECT lastval()"));
    check(m_conn, result, sql);
    return QByteArray(PQgetvalue(result.r, 0, 0)).toLongLong();
}

bool PostgresStore::tableExists(const QString& physicalName)
{
    const QByteArray name = physicalName.toLower().toUtf8();
    const char* values[] = {name.constData()};
    Result result(
        PQexecParams(m_conn,
                     "SELECT 1 FROM pg_catalog.pg_class c JOIN pg_catalog.pg_namespace n ON n.oid = "
                     "c.relnamespace WHERE c.relname = $1 AND c.relkind = 'r' AND (n.nspname = "
                     "current_schema() OR n.oid = pg_my_temp_schema())",
                     1, nullptr, values, nullptr, nullptr, 0));
    check(m_conn, result, QStringLiteral("table lookup"));
    return PQntuples(result.r) > 0;
}

} // namespace kb
