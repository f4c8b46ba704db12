#pragma once

#include "sql/Ast.h"
#include "sql/Translation.h"

namespace kb::sql {

// What the translator needs to know of the tables a statement names.
class SchemaLookup
{
public:
    virtual ~SchemaLookup() = default;
    virtual const TableDef* persistentTable(QStringView name) const = 0;
    virtual const TableDef* memoryTable(QStringView name) const = 0;
};

// Turns one parsed dialect statement into the store's SQL. Column types come
// from the schema, so that text joining, date arithmetic, exact money and
// truthful result types come out the same on every store.
// Throws DbError(UnknownName) for a table or column that does not exist and
// DbError(Syntax) for a form the store cannot express.
TranslatedStatement translate(const ParsedStatement& statement, Dialect dialect, const SchemaLookup& schema);

// The store's name of a table: catalogue tables keep their spelling, memory
// tables get a private prefix.
QString physicalTableName(const QString& name, bool memory, Dialect dialect);
QString quoteIdentifier(const QString& name, Dialect dialect);

// The pseudo-column by which a statement names a stored row's identity:
// `select KB_ROWID, * from Clients`, `update Clients ... where KB_ROWID = :Row`.
inline constexpr const char* RowIdColumn = "KB_ROWID";
// The store's expression for it.
QString rowIdentity(const TableDef& table, Dialect dialect);

// DDL for a table of the catalogue (or a memory table) and its indexes.
QStringList createTableSql(const TableDef& table, Dialect dialect, bool memory, bool ifNotExists);

} // namespace kb::sql
