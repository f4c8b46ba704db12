#pragma once

#include "Clock.h"
#include "store/ResultSet.h"
#include "store/RowSink.h"
#include "catalogue/Catalogue.h"
#include "sql/Translator.h"
#include "store/Store.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>
#include <utility>
#include <vector>

namespace kb {

// Named values for the :Name parameters of a statement.
using Params = std::vector<std::pair<QString, QVariant>>;

class Database;
class RecordLocks;

// A statement text made ready once and run many times with new values,
// the way screens run their queries.
class Query
{
public:
    Query() = default;
    Query(Database* database, QString text);

    const QString& text() const { return m_text; }
    // Sets :name for the following runs; a name the text lacks is ignored.
    Query& bind(const QString& name, const QVariant& value);
    Query& bind(const Params& params);
    void clearBindings();
    // Runs every statement of the text; the rows of the last select.
    ResultSet exec();
    // Runs the text and tells how many rows it changed.
    qint64 execCommand();
    // Runs a one-statement text once for each set of values, all or none,
    // sent to a server in batches; tells how many rows all runs changed.
    // The values bound with bind() apply to every run unless a set names them.
    qint64 execBatch(const std::vector<Params>& rows);

private:
    Database* m_database = nullptr;
    QString m_text;
    Params m_values;
};

// The engine session over one store: the dialect's statements, the
// catalogue, the memory tables private to this session, and transactions.
class Database final : public sql::SchemaLookup
{
public:
    Database(std::unique_ptr<Store> store, const Catalogue& catalogue, const Clock& clock);
    ~Database() override;

    Dialect dialect() const { return m_store->dialect(); }
    const Catalogue& catalogue() const { return m_catalogue; }
    const Clock& clock() const { return m_clock; }
    Store& store() { return *m_store; }
    // The session's pessimistic record locks, made on first use; they end
    // with the session.
    RecordLocks& recordLocks();

    // Runs the statements of a text in order with the named values; gives
    // the rows of the last statement that returns rows, or the count of rows
    // that the last statement changed. Several statements that change
    // stored data run as one: when a later one fails, none has changed
    // anything (outside a transaction; inside one, the caller decides).
    ResultSet execute(const QString& text, const Params& params = {});
    // The same, but the rows of the last statement that returns rows go to
    // sink as the store gives them, never held all at once; the result then
    // has the columns but no rows.
    ResultSet execute(const QString& text, const Params& params, RowSink& sink);
    Query query(const QString& text) { return Query(this, text); }

    // Who may change the stored tables in this session. Empty (the default)
    // lets every statement write; otherwise it is the message with which
    // every change to a stored table is refused (DbError AccessDenied), by
    // statements and data sets alike. Memory tables stay the session's own
    // scratch space whatever the level.
    void setWriteRefusal(const QString& message) { m_writeRefusal = message; }
    const QString& writeRefusal() const { return m_writeRefusal; }
    bool mayWrite() const { return m_writeRefusal.isEmpty() || m_exemptions > 0; }
    // Throws DbError(AccessDenied) with the refusal when the session may not
    // change the stored table.
    void checkWrite(const QString& table) const;

    // A transaction that changes only the session's memory tables while it
    // reads the stored ones (preparing a run): on a data directory it leaves
    // the data's write lock alone, so other workstations keep writing while
    // it runs, and it reads one snapshot of the data. A stored table changed
    // inside it may meet another workstation's write and fail.
    enum class TransactionKind { Write, MemoryOnly };

    void startTransaction(TransactionKind kind = TransactionKind::Write);
    void commit();
    void rollback();
    bool inTransaction() const { return m_inTransaction; }

    // Tables of the catalogue, and memory tables by their names.
    bool exists(const QString& table);
    void createTable(const TableDef& table);
    void deleteTable(const QString& table);
    void emptyTable(const QString& table);
    qint64 recordCount(const QString& table);
    // CSV with a header line of column names.
    void exportTable(const QString& table, const QString& path);
    qint64 importTable(const QString& table, const QString& path);

    const TableDef* persistentTable(QStringView name) const override;
    const TableDef* memoryTable(QStringView name) const override;
    // Drops every memory table of the session.
    void dropMemoryTables();

private:
    friend class Query;
    friend class AccessExemption;
    struct Compiled;
    struct CompiledText;

    std::shared_ptr<CompiledText> compiledText(const QString& text);
    Compiled& compiled(CompiledText& text, size_t index);
    StoreStatement& preparedStep(Compiled& c, size_t step);
    // The identities of the rows the statement will change, for each set of values.
    std::vector<qint64> probeRows(Compiled& c, const std::vector<std::vector<QVariant>>& runs);
    ResultSet run(const QString& text, const Params& params, bool keepRows, RowSink* sink = nullptr);
    qint64 runBatch(const QString& text, const Params& common, const std::vector<Params>& rows);
    // Opens a savepoint (inside a transaction) or a transaction of its own;
    // close() keeps the work, the destructor otherwise undoes it.
    class StatementScope;
    void runStatement(Compiled& statement, const QString& statementText, const Params& params, ResultSet& result,
                      bool keepRows, RowSink* sink);
    QVariant paramValue(const sql::ParamInfo& info, const Params& params, const Params* fallback = nullptr) const;
    void applyMemoryEffects(const sql::TranslatedStatement& t);

    std::unique_ptr<Store> m_store;
    const Catalogue& m_catalogue;
    const Clock& m_clock;
    bool m_inTransaction = false;
    QString m_writeRefusal;
    int m_exemptions = 0;
    quint64 m_memoryGeneration = 0;
    QHash<QString, TableDef> m_memoryTables; // by lower-case name
    QHash<QString, std::shared_ptr<CompiledText>> m_cache;
    // Declared after the store so it is released while the connection lives.
    std::unique_ptr<RecordLocks> m_recordLocks;
};

// The system's own bookkeeping that every user leaves behind whatever the
// level, such as the History rows of signing in and out: for as long as it
// lives the session's write refusal does not apply.
class AccessExemption
{
public:
    explicit AccessExemption(Database& database) : m_database(database) { ++m_database.m_exemptions; }
    ~AccessExemption() { --m_database.m_exemptions; }
    AccessExemption(const AccessExemption&) = delete;
    AccessExemption& operator=(const AccessExemption&) = delete;

private:
    Database& m_database;
};

// Starts a transaction and rolls it back when it goes out of scope without
// commit(), also when an error unwinds the work.
class TransactionGuard
{
public:
    explicit TransactionGuard(Database& database,
                              Database::TransactionKind kind = Database::TransactionKind::Write)
        : m_database(database)
    {
        m_database.startTransaction(kind);
    }
    ~TransactionGuard();
    TransactionGuard(const TransactionGuard&) = delete;
    TransactionGuard& operator=(const TransactionGuard&) = delete;
    void commit();

private:
    Database& m_database;
    bool m_done = false;
};

} // namespace kb
