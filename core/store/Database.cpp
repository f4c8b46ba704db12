#include "store/Database.h"

#include "Csv.h"
#include "CsvWriter.h"
#include "store/DbError.h"
#include "Money.h"
#include "dataset/RecordLocks.h"
#include "sql/Parser.h"
#include "store/ValueConversion.h"

#include <QFile>
#include <QTextStream>

namespace kb {

struct Database::Compiled
{
    sql::ParsedStatement parsed;
    bool translated = false;
    quint64 generation = 0;
    sql::TranslatedStatement translation;
    std::vector<std::unique_ptr<StoreStatement>> prepared; // one per step, made on first run
    std::unique_ptr<StoreStatement> rowProbe;               // made on first run
};

struct Database::CompiledText
{
    std::vector<Compiled> statements;
    bool writesStoredData = false; // some statement changes a table of the catalogue
    int lastRowsStatement = -1;    // the last statement that returns rows
};

namespace {

// Makes a prepared statement ready to run again, also when a run fails.
class StatementReset
{
public:
    explicit StatementReset(StoreStatement& statement) : m_statement(statement) {}
    ~StatementReset() { m_statement.reset(); }
    StatementReset(const StatementReset&) = delete;
    StatementReset& operator=(const StatementReset&) = delete;

private:
    StoreStatement& m_statement;
};

} // namespace

// ---- Query ----

Query::Query(Database* database, QString text) : m_database(database), m_text(std::move(text)) {}

Query& Query::bind(const QString& name, const QVariant& value)
{
    // Callers bind the same names in the same spelling run after run; the
    // exact comparison finds them without folding case.
    for (auto& [key, v] : m_values) {
        if (key == name) {
            v = value;
            return *this;
        }
    }
    for (auto& [key, v] : m_values) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            v = value;
            return *this;
        }
    }
    m_values.emplace_back(name, value);
    return *this;
}

Query& Query::bind(const Params& params)
{
    for (const auto& [name, value] : params)
        bind(name, value);
    return *this;
}

void Query::clearBindings() { m_values.clear(); }

ResultSet Query::exec() { return m_database->run(m_text, m_values, true); }

qint64 Query::execCommand() { return m_database->run(m_text, m_values, false).rowsAffected(); }

qint64 Query::execBatch(const std::vector<Params>& rows) { return m_database->runBatch(m_text, m_values, rows); }

// ---- Database ----

Database::Database(std::unique_ptr<Store> store, const Catalogue& catalogue, const Clock& clock)
    : m_store(std::move(store)), m_catalogue(catalogue), m_clock(clock)
{
    registerMoneyType();
}

Database::~Database()
{
    if (m_inTransaction) {
        try {
            m_store->rollback();
        } catch (...) {
            // The connection is closing; the store discards the work anyway.
        }
    }
    m_recordLocks.reset();
    m_cache.clear();
}

RecordLocks& Database::recordLocks()
{
    if (!m_recordLocks)
        m_recordLocks = RecordLocks::create(*this);
    return *m_recordLocks;
}

const TableDef* Database::persistentTable(QStringView name) const { return m_catalogue.table(name); }

const TableDef* Database::memoryTable(QStringView name) const
{
    const auto it = m_memoryTables.constFind(name.toString().toLower());
    return it == m_memoryTables.constEnd() ? nullptr : &*it;
}

namespace {

// Whether a statement changes a table of the catalogue, as opposed to
// reading or working on the session's own memory tables.
bool writesStoredData(const sql::Statement& statement, const sql::SchemaLookup& schema)
{
    const auto stored = [&schema](const sql::TableRef& table) {
        return !table.memory && schema.persistentTable(table.name) != nullptr;
    };
    if (const auto* s = std::get_if<sql::InsertStmt>(&statement))
        return stored(s->table);
    if (const auto* s = std::get_if<sql::UpdateStmt>(&statement))
        return stored(s->table);
    if (const auto* s = std::get_if<sql::DeleteStmt>(&statement))
        return stored(s->table);
    if (const auto* s = std::get_if<sql::EmptyTableStmt>(&statement))
        return !s->memory && schema.persistentTable(s->name) != nullptr;
    return false;
}

bool returnsRows(const sql::Statement& statement)
{
    const auto* select = std::get_if<sql::SelectPtr>(&statement);
    return select && (*select)->intoMemory.isEmpty();
}

} // namespace

std::shared_ptr<Database::CompiledText> Database::compiledText(const QString& text)
{
    const auto it = m_cache.constFind(text);
    if (it != m_cache.constEnd())
        return *it;
    auto compiled = std::make_shared<CompiledText>();
    for (sql::ParsedStatement& parsed : sql::parseStatements(text)) {
        compiled->writesStoredData = compiled->writesStoredData || writesStoredData(parsed.statement, *this);
        if (returnsRows(parsed.statement))
            compiled->lastRowsStatement = int(compiled->statements.size());
        Compiled c;
        c.parsed = std::move(parsed);
        compiled->statements.push_back(std::move(c));
    }
    // Screens build many one-off texts; keep the cache from growing without end.
    if (m_cache.size() > 2000)
        m_cache.clear();
    m_cache.insert(text, compiled);
    return compiled;
}

Database::Compiled& Database::compiled(CompiledText& text, size_t index)
{
    Compiled& c = text.statements[index];
    const bool stale = c.translated && !c.translation.memoryTablesUsed.isEmpty() && c.generation != m_memoryGeneration;
    if (!c.translated || stale) {
        c.prepared.clear();
        c.rowProbe.reset();
        c.translation = sql::translate(c.parsed, dialect(), *this);
        c.generation = m_memoryGeneration;
        c.translated = true;
    }
    return c;
}

class Database::StatementScope
{
public:
    // local: the statement writes only the session's memory tables.
    StatementScope(Database& db, bool needed, bool local = false) : m_db(db)
    {
        if (!needed)
            return;
        if (m_db.m_inTransaction) {
            m_db.m_store->exec(QStringLiteral("SAVEPOINT kb_statement"));
            m_savepoint = true;
        } else {
            if (local)
                m_db.m_store->beginLocal();
            else
                m_db.m_store->begin();
            m_transaction = true;
        }
    }
    ~StatementScope()
    {
        try {
            if (m_transaction)
                m_db.m_store->rollback();
            else if (m_savepoint)
                m_db.m_store->exec(QStringLiteral("ROLLBACK TO kb_statement; RELEASE kb_statement"));
        } catch (const DbError&) {
            // The failure that brought us here is what the caller needs to see.
        }
    }
    void close()
    {
        if (m_transaction)
            m_db.m_store->commit();
        else if (m_savepoint)
            m_db.m_store->exec(QStringLiteral("RELEASE kb_statement"));
        m_transaction = m_savepoint = false;
    }

private:
    Database& m_db;
    bool m_savepoint = false;
    bool m_transaction = false;
};

namespace {

// Gives back what a statement held of the rows it changed, once the
// statement is over, however it ended.
class StatementRowHold
{
public:
    StatementRowHold() = default;
    ~StatementRowHold()
    {
        if (!m_locks)
            return;
        try {
            m_locks->releaseStatementRows();
        } catch (const DbError&) {
            // Closing the session gives them back at the latest.
        }
    }
    StatementRowHold(const StatementRowHold&) = delete;
    StatementRowHold& operator=(const StatementRowHold&) = delete;
    void hold(RecordLocks& locks, const QString& table, const std::function<std::vector<qint64>()>& probe)
    {
        m_locks = &locks;
        locks.holdStatementRows(table, probe);
    }

private:
    RecordLocks* m_locks = nullptr;
};

} // namespace

std::vector<qint64> Database::probeRows(Compiled& c, const std::vector<std::vector<QVariant>>& runs)
{
    const sql::StoreSql& probe = *c.translation.rowProbe;
    if (!c.rowProbe)
        c.rowProbe = m_store->prepare(probe.text);
    StoreStatement& stmt = *c.rowProbe;
    std::vector<qint64> rows;
    for (const std::vector<QVariant>& values : runs) {
        const StatementReset reset(stmt);
        for (size_t p = 0; p < probe.params.size(); ++p)
            stmt.bind(int(p), values[probe.params[p]], c.translation.params[probe.params[p]].type);
        stmt.execute();
        while (stmt.next())
            rows.push_back(stmt.value(0, FieldType::Int).toLongLong());
    }
    return rows;
}

StoreStatement& Database::preparedStep(Compiled& c, size_t step)
{
    if (c.prepared.size() != c.translation.steps.size())
        c.prepared.resize(c.translation.steps.size());
    if (!c.prepared[step])
        c.prepared[step] = m_store->prepare(c.translation.steps[step].text);
    return *c.prepared[step];
}

namespace {

// The value named by a parameter: the exact spelling first (callers mostly
// use the statement's own), then without regard to case.
const QVariant* findValue(const Params& params, const QString& name)
{
    for (const auto& [key, value] : params)
        if (key == name)
            return &value;
    for (const auto& [key, value] : params)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return &value;
    return nullptr;
}

} // namespace

QVariant Database::paramValue(const sql::ParamInfo& info, const Params& params, const Params* fallback) const
{
    switch (info.source) {
    case sql::ParamSource::CurrentDate: return m_clock.today();
    case sql::ParamSource::CurrentTime:
    case sql::ParamSource::CurrentTimestamp: return m_clock.now();
    case sql::ParamSource::Caller: break;
    }
    const QVariant* value = findValue(params, info.name);
    if (!value && fallback)
        value = findValue(*fallback, info.name);
    if (!value)
        throw DbError(DbErrorCode::ParameterType, QStringLiteral("Parameter :%1 has no value").arg(info.name));
    return toCanonical(*value, info.type, info.name);
}

ResultSet Database::execute(const QString& text, const Params& params) { return run(text, params, true); }

ResultSet Database::execute(const QString& text, const Params& params, RowSink& sink)
{
    return run(text, params, false, &sink);
}

ResultSet Database::run(const QString& text, const Params& params, bool keepRows, RowSink* sink)
{
    const std::shared_ptr<CompiledText> compiledStatements = compiledText(text);
    const size_t count = compiledStatements->statements.size();
    std::optional<TransactionGuard> unit;
    if (count > 1 && compiledStatements->writesStoredData && !m_inTransaction)
        unit.emplace(*this);
    ResultSet result;
    for (size_t i = 0; i < count; ++i) {
        Compiled& c = compiled(*compiledStatements, i);
        ResultSet one;
        RowSink* rows = int(i) == compiledStatements->lastRowsStatement ? sink : nullptr;
        runStatement(c, c.parsed.text, params, one, keepRows, rows);
        if (one.hasRows() || !result.hasRows())
            result = std::move(one);
    }
    if (unit)
        unit->commit();
    return result;
}

void Database::runStatement(Compiled& c, const QString& statementText, const Params& params, ResultSet& result,
                            bool keepRows, RowSink* sink)
{
    const sql::TranslatedStatement& t = c.translation;
    if (!t.writesTable.isEmpty())
        checkWrite(t.writesTable);
    try {
        // Every value is checked before anything runs, so a wrong one changes nothing.
        std::vector<QVariant> values;
        values.reserve(t.params.size());
        for (const sql::ParamInfo& info : t.params)
            values.push_back(paramValue(info, params));
        // Rows another workstation holds in edit are waited for, then the
        // statement fails, rather than changing a row under its editor. The
        // data directory holds them before its write lock is taken, so the
        // editor can still post meanwhile; the server holds them inside the
        // statement's transaction.
        const bool server = dialect() == Dialect::PostgreSQL;
        StatementRowHold rowHold;
        const auto holdRows = [&] {
            if (t.rowProbe)
                rowHold.hold(recordLocks(), t.writesTable, [&] { return probeRows(c, {values}); });
        };
        if (!server)
            holdRows();
        // Several steps run as one; on the server, a failing statement inside
        // a transaction must not take the whole transaction down with it.
        StatementScope scope(*this, t.steps.size() > 1 || (server && (m_inTransaction || t.rowProbe)),
                             t.writesTable.isEmpty() && !t.memoryTablesUsed.isEmpty());
        if (server)
            holdRows();
        for (size_t s = 0; s < t.steps.size(); ++s) {
            const sql::StoreSql& step = t.steps[s];
            StoreStatement& stmt = preparedStep(c, s);
            const StatementReset reset(stmt);
            for (size_t p = 0; p < step.params.size(); ++p) {
                const sql::ParamInfo& info = t.params[step.params[p]];
                stmt.bind(int(p), values[step.params[p]], info.type);
            }
            if (step.returnsRows && sink)
                stmt.stream();
            else
                stmt.execute();
            if (step.returnsRows) {
                result = ResultSet(t.columns);
                result.setHasRows(true);
                const int n = int(t.columns.size());
                if (sink)
                    sink->begin(t.columns);
                while (stmt.next()) {
                    if (!keepRows && !sink)
                        continue;
                    QVariantList row;
                    row.reserve(n);
                    for (int col = 0; col < n; ++col)
                        row.append(stmt.value(col, t.columns[col].type));
                    if (sink)
                        sink->row(row);
                    else
                        result.appendRow(std::move(row));
                }
            } else if (step.countsRows) {
                result.setRowsAffected(stmt.rowsAffected());
            }
        }
        scope.close();
    } catch (const DbError& e) {
        throw DbError(e.code(), e.message(), statementText);
    }
    applyMemoryEffects(t);
}

qint64 Database::runBatch(const QString& text, const Params& common, const std::vector<Params>& rows)
{
    const std::shared_ptr<CompiledText> compiledStatements = compiledText(text);
    if (compiledStatements->statements.size() != 1)
        throw DbError(DbErrorCode::Other, QStringLiteral("A batch runs exactly one statement"), text);
    Compiled& c = compiled(*compiledStatements, 0);
    const sql::TranslatedStatement& t = c.translation;
    if (t.returnsRows)
        throw DbError(DbErrorCode::Other, QStringLiteral("A batch cannot run a select"), text);
    if (!t.writesTable.isEmpty())
        checkWrite(t.writesTable);
    qint64 changed = 0;
    try {
        // Every value of every run is checked before anything runs.
        std::vector<std::vector<QVariant>> values;
        values.reserve(rows.size());
        for (const Params& row : rows) {
            // A run's own values win over the common ones.
            std::vector<QVariant> rowValues;
            rowValues.reserve(t.params.size());
            for (const sql::ParamInfo& info : t.params)
                rowValues.push_back(paramValue(info, row, &common));
            values.push_back(std::move(rowValues));
        }
        const bool server = dialect() == Dialect::PostgreSQL;
        StatementRowHold rowHold;
        const auto holdRows = [&] {
            if (t.rowProbe)
                rowHold.hold(recordLocks(), t.writesTable, [&] { return probeRows(c, values); });
        };
        if (!server)
            holdRows();
        // A batch into a memory table, such as a run's working table, leaves
        // the data's write lock alone.
        StatementScope scope(*this, true, t.writesTable.isEmpty() && !t.memoryTablesUsed.isEmpty());
        if (server)
            holdRows();
        for (size_t s = 0; s < t.steps.size(); ++s) {
            const sql::StoreSql& step = t.steps[s];
            StoreStatement& stmt = preparedStep(c, s);
            const StatementReset reset(stmt);
            if (step.params.empty() && !t.params.empty()) {
                // A step that takes no values, such as moving a row-key counter,
                // runs once for the whole batch.
                stmt.execute();
                continue;
            }
            std::vector<FieldType> types;
            for (int index : step.params)
                types.push_back(t.params[index].type);
            // Most steps take every value in the statement's own order; only
            // the others need their values picked out.
            bool inOrder = step.params.size() == t.params.size();
            for (size_t k = 0; inOrder && k < step.params.size(); ++k)
                inOrder = step.params[k] == int(k);
            std::vector<std::vector<QVariant>> picked;
            if (!inOrder) {
                picked.reserve(values.size());
                for (const auto& rowValues : values) {
                    std::vector<QVariant> v;
                    v.reserve(step.params.size());
                    for (int index : step.params)
                        v.push_back(rowValues[index]);
                    picked.push_back(std::move(v));
                }
            }
            const qint64 n = stmt.executeMany(inOrder ? values : picked, types);
            if (step.countsRows)
                changed += n;
        }
        scope.close();
    } catch (const DbError& e) {
        throw DbError(e.code(), e.message(), c.parsed.text);
    }
    applyMemoryEffects(t);
    return changed;
}

void Database::applyMemoryEffects(const sql::TranslatedStatement& t)
{
    if (t.createsMemoryTable) {
        m_memoryTables.insert(t.createsMemoryTable->name().toLower(), *t.createsMemoryTable);
        ++m_memoryGeneration;
    }
    if (!t.dropsMemoryTable.isEmpty()) {
        m_memoryTables.remove(t.dropsMemoryTable.toLower());
        ++m_memoryGeneration;
    }
}

void Database::dropMemoryTables()
{
    const auto tables = m_memoryTables;
    for (const TableDef& def : tables)
        m_store->exec(QStringLiteral("DROP TABLE IF EXISTS ") +
                      sql::quoteIdentifier(sql::physicalTableName(def.name(), true, dialect()), dialect()));
    m_memoryTables.clear();
    ++m_memoryGeneration;
}

void Database::startTransaction(TransactionKind kind)
{
    if (m_inTransaction)
        throw DbError(DbErrorCode::Other, QStringLiteral("A transaction is already active"));
    if (kind == TransactionKind::MemoryOnly)
        m_store->beginLocal();
    else
        m_store->begin();
    m_inTransaction = true;
}

void Database::commit()
{
    if (!m_inTransaction)
        throw DbError(DbErrorCode::Other, QStringLiteral("No transaction is active"));
    m_store->commit();
    m_inTransaction = false;
}

void Database::rollback()
{
    if (!m_inTransaction)
        return;
    m_inTransaction = false;
    m_store->rollback();
    // Memory tables made inside the transaction are gone with it.
    QHash<QString, TableDef> kept;
    for (auto it = m_memoryTables.cbegin(); it != m_memoryTables.cend(); ++it)
        if (m_store->tableExists(sql::physicalTableName(it.value().name(), true, dialect())))
            kept.insert(it.key(), it.value());
    m_memoryTables = kept;
    ++m_memoryGeneration;
}

TransactionGuard::~TransactionGuard()
{
    if (!m_done) {
        try {
            m_database.rollback();
        } catch (...) {
            // Rolling back during unwinding must not throw; the store drops
            // the work when the connection ends in any case.
        }
    }
}

void TransactionGuard::commit()
{
    m_database.commit();
    m_done = true;
}

// ---- tables ----

namespace {

struct TableTarget
{
    const TableDef* def = nullptr;
    bool memory = false;
};

} // namespace

static TableTarget findTable(const Database& db, const QString& name)
{
    if (const TableDef* def = db.persistentTable(name))
        return {def, false};
    if (const TableDef* def = db.memoryTable(name))
        return {def, true};
    throw DbError(DbErrorCode::UnknownName, QStringLiteral("Table %1 does not exist").arg(name));
}

bool Database::exists(const QString& table)
{
    if (const TableDef* def = persistentTable(table))
        return m_store->tableExists(def->name());
    return memoryTable(table) != nullptr;
}

void Database::checkWrite(const QString& table) const
{
    if (!mayWrite() && persistentTable(table))
        throw DbError(DbErrorCode::AccessDenied, m_writeRefusal);
}

void Database::createTable(const TableDef& table)
{
    checkWrite(table.name());
    for (const QString& ddl : sql::createTableSql(table, dialect(), false, false))
        m_store->exec(ddl);
}

void Database::deleteTable(const QString& table)
{
    const TableTarget target = findTable(*this, table);
    if (target.memory) {
        execute(QStringLiteral("DROP TABLE IF EXISTS MEMORY ") + sql::quoteIdentifier(target.def->name(), dialect()));
        return;
    }
    checkWrite(target.def->name());
    m_store->exec(QStringLiteral("DROP TABLE IF EXISTS ") + sql::quoteIdentifier(target.def->name(), dialect()));
    m_cache.clear();
}

void Database::emptyTable(const QString& table)
{
    const TableTarget target = findTable(*this, table);
    execute(QStringLiteral("DELETE FROM %1%2")
                .arg(target.memory ? QStringLiteral("MEMORY ") : QString(), target.def->name()));
}

qint64 Database::recordCount(const QString& table)
{
    const TableTarget target = findTable(*this, table);
    const ResultSet r = execute(QStringLiteral("SELECT COUNT(*) AS N FROM %1%2")
                                    .arg(target.memory ? QStringLiteral("MEMORY ") : QString(), target.def->name()));
    return r.value(0, 0).toLongLong();
}

void Database::exportTable(const QString& table, const QString& path)
{
    const TableTarget target = findTable(*this, table);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
    QTextStream out(&file);
    CsvWriter csv(out);
    execute(QStringLiteral("SELECT * FROM %1%2").arg(target.memory ? QStringLiteral("MEMORY ") : QString(), target.def->name()),
            {}, csv);
    out.flush();
    if (out.status() != QTextStream::Ok || !file.flush())
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot write %1: %2").arg(path, file.errorString()));
}

qint64 Database::importTable(const QString& table, const QString& path)
{
    const TableTarget target = findTable(*this, table);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw DbError(DbErrorCode::Other, QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()));
    QTextStream in(&file);
    CsvRecord header;
    if (!readCsvRecord(in, header))
        return 0;
    QStringList names;
    QStringList placeholders;
    for (const QString& name : header.fields) {
        if (!target.def->column(name))
            throw DbError(DbErrorCode::UnknownName,
                          QStringLiteral("Column %1 of %2 does not exist in table %3").arg(name, path, target.def->name()));
        names.append(name);
        placeholders.append(QLatin1Char(':') + QStringLiteral("p%1").arg(placeholders.size()));
    }
    Query insert = query(QStringLiteral("INSERT INTO %1%2 (%3) VALUES (%4)")
                             .arg(target.memory ? QStringLiteral("MEMORY ") : QString(), target.def->name(),
                                  names.join(QLatin1String(", ")), placeholders.join(QLatin1String(", "))));
    // All rows or none.
    std::optional<TransactionGuard> guard;
    if (!m_inTransaction)
        guard.emplace(*this);
    qint64 count = 0;
    CsvRecord record;
    while (readCsvRecord(in, record)) {
        if (record.fields.size() == 1 && record.fields.front().isEmpty() && !record.quoted.front())
            continue; // a blank line
        if (record.fields.size() != names.size())
            throw DbError(DbErrorCode::Other, QStringLiteral("Line %1 of %2 has %3 fields; the header has %4")
                                                  .arg(count + 2)
                                                  .arg(path)
                                                  .arg(record.fields.size())
                                                  .arg(names.size()));
        for (qsizetype i = 0; i < names.size(); ++i) {
            const bool null = record.fields[i].isEmpty() && !record.quoted[i];
            insert.bind(placeholders[i].mid(1), null ? QVariant() : QVariant(record.fields[i]));
        }
        insert.execCommand();
        ++count;
    }
    if (guard)
        guard->commit();
    return count;
}

} // namespace kb
