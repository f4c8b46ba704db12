#include "dataset/QueryDataSet.h"

#include "sql/Lexer.h"
#include "sql/Parser.h"

namespace kb {

namespace {

bool isAggregate(const sql::ExprPtr& expr)
{
    if (!expr)
        return false;
    if (expr->kind == sql::ExprKind::Function &&
        (expr->op == QLatin1String("COUNT") || expr->op == QLatin1String("SUM") || expr->op == QLatin1String("MAX") ||
         expr->op == QLatin1String("MIN") || expr->op == QLatin1String("AVG")))
        return true;
    // A sub-select has aggregates of its own, which do not make this result one row.
    if (expr->kind == sql::ExprKind::Subquery || expr->kind == sql::ExprKind::InSelect || expr->kind == sql::ExprKind::Exists)
        return expr->args.empty() ? false : isAggregate(expr->args.front());
    for (const sql::ExprPtr& arg : expr->args)
        if (isAggregate(arg))
            return true;
    return false;
}

bool namesTable(const QString& qualifier, const sql::TableRef& table)
{
    return qualifier.isEmpty() || qualifier.compare(table.visibleName(), Qt::CaseInsensitive) == 0 ||
           qualifier.compare(table.name, Qt::CaseInsensitive) == 0;
}

} // namespace

QueryDataSet::QueryDataSet(Database& database, QString sql) : DataSet(database), m_sql(std::move(sql)) {}

void QueryDataSet::setSql(const QString& sql)
{
    if (isActive())
        throw DbError(DbErrorCode::Other, QStringLiteral("Close the data set before changing its statement"));
    m_sql = sql;
    m_analysed = false;
}

void QueryDataSet::setRequestLive(bool live)
{
    if (isActive())
        throw DbError(DbErrorCode::Other, QStringLiteral("Close the data set before asking for a live result"));
    m_requestLive = live;
    m_analysed = false;
}

void QueryDataSet::setParam(const QString& name, const QVariant& value)
{
    for (auto& [key, v] : m_params) {
        if (key.compare(name, Qt::CaseInsensitive) == 0) {
            v = value;
            return;
        }
    }
    m_params.emplace_back(name, value);
}

QVariant QueryDataSet::param(const QString& name) const
{
    for (const auto& [key, v] : m_params)
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return v;
    return {};
}

qint64 QueryDataSet::execSql() { return database().query(m_sql).bind(m_params).execCommand(); }

Params QueryDataSet::boundParams() const
{
    Params params = m_params;
    // A detail query takes its master's value through the parameter named
    // like its detail field.
    if (hasMaster())
        params.insert(params.begin(), {detailField(), masterValue()});
    return params;
}

void QueryDataSet::analyse()
{
    if (m_analysed)
        return;
    m_live = false;
    m_table.clear();
    m_columns.clear();
    m_fetchText = m_sql;
    m_rowText.clear();
    m_analysed = true;
    if (!m_requestLive)
        return;
    const std::vector<sql::ParsedStatement> parsed = sql::parseStatements(m_sql);
    if (parsed.size() != 1)
        return;
    const sql::SelectPtr* select = std::get_if<sql::SelectPtr>(&parsed.front().statement);
    if (!select || !*select)
        return;
    const sql::SelectStmt& s = **select;
    if (s.cores.size() != 1 || !s.intoMemory.isEmpty())
        return;
    const sql::SelectCore& core = s.cores.front();
    if (core.distinct || !core.groupBy.empty() || core.having || core.from.size() != 1 || core.from.front().table.subquery)
        return;
    const sql::TableRef& from = core.from.front().table;
    const TableDef* def = database().persistentTable(from.name);
    if (!def)
        def = database().memoryTable(from.name);
    if (!def)
        return;

    // The stored column behind each column of the result, in order.
    QStringList columns;
    bool hasRowId = false;
    for (const sql::SelectItem& item : core.items) {
        if (isAggregate(item.expr))
            return;
        if (item.expr->kind == sql::ExprKind::Star) {
            if (!namesTable(item.expr->qualifier, from))
                return;
            for (const ColumnDef& c : def->columns())
                columns.append(c.name);
        } else if (item.expr->kind == sql::ExprKind::Column && namesTable(item.expr->qualifier, from)) {
            const bool rowId = item.expr->name.compare(QLatin1String(sql::RowIdColumn), Qt::CaseInsensitive) == 0;
            hasRowId = hasRowId || (rowId && item.alias.isEmpty());
            const ColumnDef* c = rowId ? nullptr : def->column(item.expr->name);
            columns.append(c ? c->name : QString());
        } else {
            columns.append(QString());
        }
    }

    // The identities come first in the result, unless the text asks for them itself.
    const QList<sql::Token> tokens = sql::tokenize(m_sql);
    if (tokens.isEmpty() || !tokens.front().isWord(QLatin1StringView("SELECT")))
        return;
    if (!hasRowId) {
        qsizetype at = tokens.front().end;
        if (tokens.size() > 2 && tokens[1].isWord(QLatin1StringView("TOP")))
            at = tokens[2].end;
        m_fetchText = m_sql.left(at) + QStringLiteral(" KB_ROWID,") + m_sql.mid(at);
        columns.prepend(QString());
    }

    // One row by its identity: the statement's own condition, and the
    // identity, without its order.
    const QList<sql::Token> fetchTokens = sql::tokenize(m_fetchText);
    int depth = 0;
    bool seenFrom = false;
    qsizetype whereEnd = -1;
    qsizetype tail = m_fetchText.size();
    for (const sql::Token& t : fetchTokens) {
        if (t.isSymbol(QLatin1StringView("(")))
            ++depth;
        else if (t.isSymbol(QLatin1StringView(")")))
            --depth;
        if (depth != 0 || t.kind != sql::TokenKind::Identifier)
            continue;
        if (t.isWord(QLatin1StringView("FROM")))
            seenFrom = true;
        else if (seenFrom && whereEnd < 0 && t.isWord(QLatin1StringView("WHERE")))
            whereEnd = t.end;
        else if (seenFrom && (t.isWord(QLatin1StringView("ORDER")) || t.isWord(QLatin1StringView("TOP")) ||
                              t.isWord(QLatin1StringView("LIMIT")))) {
            tail = t.begin;
            break;
        }
    }
    if (whereEnd >= 0)
        m_rowText = m_fetchText.left(whereEnd) + QStringLiteral(" (KB_ROWID = :KbRow) and (") +
                    m_fetchText.mid(whereEnd, tail - whereEnd) + QStringLiteral(")");
    else
        m_rowText = m_fetchText.left(tail) + QStringLiteral(" where KB_ROWID = :KbRow");
    m_columns = columns;
    m_table = def->name();
    m_live = true;
}

ResultSet QueryDataSet::fetchAll()
{
    analyse();
    ResultSet result = database().execute(m_fetchText, boundParams());
    if (m_live && result.columnCount() != m_columns.size()) {
        // The result is not shaped as the text read; editing it would be guesswork.
        m_live = false;
    }
    return result;
}

ResultSet QueryDataSet::fetchRow(qint64 rowId)
{
    analyse();
    if (!m_live)
        throw DbError(DbErrorCode::Other, QStringLiteral("A result that is not live cannot read one row again"));
    Params params = boundParams();
    params.emplace_back(QStringLiteral("KbRow"), rowId);
    return database().execute(m_rowText, params);
}

QString QueryDataSet::sourceColumn(int column, const ResultSet& result) const
{
    (void)result;
    return column < m_columns.size() ? m_columns[column] : QString();
}

} // namespace kb
