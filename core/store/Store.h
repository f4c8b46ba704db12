#pragma once

#include "catalogue/FieldType.h"
#include "sql/Dialect.h"

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace kb {

// One prepared statement of a store. Values are bound by position (0-based)
// with the type the statement expects; rows are read with the type the
// catalogue gives the column.
class StoreStatement
{
public:
    virtual ~StoreStatement() = default;
    virtual void bind(int position, const QVariant& value, FieldType type) = 0;
    // Runs the statement. For a query, rows are then read with next().
    virtual void execute() = 0;
    // Runs a query whose rows are read once, in order: they arrive as next()
    // asks for them instead of all at once. Until the last is read or
    // reset() is called, the connection runs nothing else.
    virtual void stream() { execute(); }
    virtual bool next() = 0;
    virtual QVariant value(int column, FieldType type) = 0;
    virtual int columnCount() const = 0;
    virtual qint64 rowsAffected() const = 0;
    // Ends the current run so the statement can run again.
    virtual void reset() = 0;
    // Runs a statement that returns no rows once for each set of values and
    // tells how many rows all runs changed. Stores that can, send the runs
    // together rather than one round trip each.
    virtual qint64 executeMany(const std::vector<std::vector<QVariant>>& rows, const std::vector<FieldType>& types);
};

// A connection to one store: the embedded file store or a database server.
// Every failure is a DbError carrying the store's message and the statement.
class Store
{
public:
    virtual ~Store() = default;
    virtual Dialect dialect() const = 0;
    virtual std::unique_ptr<StoreStatement> prepare(const QString& sql) = 0;
    virtual void exec(const QString& sql) = 0;
    virtual void begin() = 0;
    // A transaction for work on the session's own memory tables only: the
    // file store then leaves the data's write lock alone, so the work runs
    // beside another session's transaction.
    virtual void beginLocal() { begin(); }
    virtual void commit() = 0;
    virtual void rollback() = 0;
    virtual bool tableExists(const QString& physicalName) = 0;
    // The row identity the store gave the last row this connection inserted
    // without naming it; data sets use it to fetch a posted row back.
    virtual qint64 lastInsertRowId();
};

} // namespace kb
