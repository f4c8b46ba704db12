#pragma once

#include "catalogue/TableDef.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace kb::sql {

struct SelectStmt;
struct Expr;
using ExprPtr = std::shared_ptr<Expr>;
using SelectPtr = std::shared_ptr<SelectStmt>;

enum class ExprKind {
    Literal,
    Param,
    Column,   // qualifier.name or name
    Star,     // * or qualifier.*
    Unary,    // op: "-", "NOT"
    Binary,   // op: + - * / || = <> < > <= >= LIKE; AND and OR take two or more args
    IsNull,   // args[0] IS [NOT] NULL
    InList,   // args[0] [NOT] IN (args[1..])
    InSelect, // args[0] [NOT] IN (select)
    Between,  // args[0] [NOT] BETWEEN args[1] AND args[2]
    Exists,   // [NOT] EXISTS (select)
    Subquery, // (select) as a value
    Function, // op: upper-cased name; args; distinct
    If,       // IF(args[0] THEN args[1] ELSE args[2])
    IfNull,   // IFNULL(args[0] THEN args[1] ELSE args[2])
    Case,     // CASE [args[0] when operand] WHEN.. THEN.. [ELSE]; see caseHasOperand/caseHasElse
    Pos,      // POS(args[0] IN args[1])
    Substring,// SUBSTRING(args[0] FROM args[1] [FOR args[2]])
    Extract,  // EXTRACT(op FROM args[0]); op upper-cased part
    Cast,     // CAST(args[0] AS castType)
    Trim,     // TRIM(op [args[1]] FROM args[0]); op BOTH/LEADING/TRAILING
    CurrentDate,
    CurrentTime,
    CurrentTimestamp,
};

enum class LiteralKind { String, Integer, Float, Bool, Null };

struct Expr
{
    ExprKind kind = ExprKind::Literal;
    QString op;
    QString name;      // column or parameter name
    QString qualifier; // table or alias before the dot
    LiteralKind literal = LiteralKind::Null;
    QString value;     // literal text; "TRUE"/"FALSE" for booleans
    bool negated = false;
    bool distinct = false;
    bool caseHasOperand = false;
    bool caseHasElse = false;
    FieldType castType = FieldType::Unknown;
    int castWidth = 0;
    std::vector<ExprPtr> args;
    SelectPtr select;
    QString sourceText; // as written, for naming unnamed columns
    int height = 1;     // levels of the tree below and including this node
};

struct TableRef
{
    QString name;
    bool memory = false;
    QString alias;
    SelectPtr subquery; // a derived table: (select ...) alias

    const QString& visibleName() const { return alias.isEmpty() ? name : alias; }
};

enum class JoinType { First, Inner, Left, Right, Cross };

struct JoinItem
{
    JoinType type = JoinType::First;
    TableRef table;
    ExprPtr on;
};

struct SelectItem
{
    ExprPtr expr;
    QString alias;
};

struct OrderItem
{
    ExprPtr expr;
    bool descending = false;
    bool nocase = false;
};

struct SelectCore
{
    bool distinct = false;
    std::vector<SelectItem> items;
    std::vector<JoinItem> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
};

struct SelectStmt
{
    std::vector<SelectCore> cores; // more than one: a union
    std::vector<bool> unionAll;    // between cores[i] and cores[i+1]
    std::vector<OrderItem> orderBy;
    std::optional<qint64> top;
    QString intoMemory; // SELECT ... INTO MEMORY name
    int height = 1;     // as Expr::height, over every expression the select holds
};

struct InsertStmt
{
    TableRef table;
    QStringList columns;
    std::vector<std::vector<ExprPtr>> rows;
    SelectPtr select;
};

struct UpdateStmt
{
    TableRef table;
    std::vector<std::pair<QString, ExprPtr>> assignments;
    std::vector<JoinItem> from; // UPDATE t SET ... FROM t JOIN other ON ...
    ExprPtr where;
};

struct DeleteStmt
{
    TableRef table;
    ExprPtr where;
};

struct CreateTableStmt
{
    bool ifNotExists = false;
    bool memory = false;
    QString name;
    std::vector<ColumnDef> columns;
    QStringList primaryKey;
};

struct IndexColumn
{
    QString name;
    bool descending = false;
    bool nocase = false;
};

struct CreateIndexStmt
{
    bool ifNotExists = false;
    bool unique = false;
    bool nocase = false;
    QString name;
    TableRef table;
    std::vector<IndexColumn> columns;
};

struct DropTableStmt
{
    bool ifExists = false;
    bool memory = false;
    QString name;
};

struct DropIndexStmt
{
    bool ifExists = false;
    TableRef table;
    QString name;
};

struct EmptyTableStmt
{
    bool memory = false;
    QString name;
};

using Statement = std::variant<SelectPtr, InsertStmt, UpdateStmt, DeleteStmt, CreateTableStmt, CreateIndexStmt,
                               DropTableStmt, DropIndexStmt, EmptyTableStmt>;

struct ParsedStatement
{
    Statement statement;
    QString text; // the statement's own text, without the separating ";"
};

} // namespace kb::sql
