#include "sql/Translator.h"

#include "sql/Parser.h"
#include "store/DbError.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace kb::sql {

namespace {

constexpr QChar ParamOpen = QChar(0x01);
constexpr QChar ParamClose = QChar(0x02);

// A translated expression: the store's text and what the schema says of it.
struct Tx
{
    QString sql;
    FieldType type = FieldType::Unknown;
    int width = 0;
    int param = -1;            // a lone parameter, whose type may still be inferred
    bool nullLiteral = false;
    bool stringLiteral = false;
    QString literalText;       // for string literals
};

struct ScopeTable
{
    QString visible;  // the name statements use for it: alias or table name
    QString physical; // the store's table name
    TableDef def;
};

struct Scope
{
    std::vector<ScopeTable> tables;
    const Scope* parent = nullptr;
    bool grouped = false;
    QSet<QString> groupKeys; // "visible.column" lower-case, and grouped expression texts
};

bool isDateLiteral(const QString& text)
{
    static const QRegularExpression re(QStringLiteral("^\\d{4}-\\d{2}-\\d{2}$"));
    return re.match(text).hasMatch();
}

bool isAggregateName(const QString& upperName)
{
    return upperName == QLatin1String("COUNT") || upperName == QLatin1String("SUM") ||
           upperName == QLatin1String("AVG") || upperName == QLatin1String("MIN") ||
           upperName == QLatin1String("MAX");
}

bool isDateType(FieldType t) { return t == FieldType::Date || t == FieldType::DateTime; }

// The parameter naming convention says what a value is: d for a date, n for
// a number. Names that speak of a date count as dates too.
FieldType typeFromParamName(const QString& name)
{
    if (name.size() > 1 && name[1].isUpper()) {
        if (name[0] == u'd')
            return FieldType::Date;
        if (name[0] == u'n')
            return FieldType::Float;
    }
    const QString lower = name.toLower();
    if (lower.contains(QLatin1String("date")) || lower.endsWith(QLatin1String("_dt")) ||
        lower.endsWith(QLatin1String("dte")))
        return FieldType::Date;
    return FieldType::Float;
}

QString capitalised(const QString& word)
{
    if (word.isEmpty())
        return word;
    return word.left(1).toUpper() + word.mid(1).toLower();
}

class Translator
{
public:
    Translator(Dialect dialect, const SchemaLookup& schema, const QString& text)
        : m_dialect(dialect), m_schema(schema), m_text(text)
    {
    }

    TranslatedStatement run(const Statement& statement)
    {
        std::visit([this](const auto& s) { translateStatement(s); }, statement);
        finalize();
        return std::move(m_result);
    }

private:
    Dialect m_dialect;
    const SchemaLookup& m_schema;
    const QString& m_text;
    TranslatedStatement m_result;
    std::vector<QString> m_steps;
    std::vector<bool> m_stepRowsFlags;
    std::vector<bool> m_stepCountFlags;
    QString m_rowProbe; // see TranslatedStatement::rowProbe

    // The rows a write to a stored table will change, by their identity.
    void probeRows(const ScopeTable& target, const QString& from, const QStringList& conditions)
    {
        if (m_result.writesTable.isEmpty())
            return;
        m_rowProbe = QStringLiteral("SELECT %1.%2 FROM %3")
                         .arg(ident(target.visible), rowIdentity(target.def, m_dialect), tableSql(target));
        if (!from.isEmpty())
            m_rowProbe += QStringLiteral(", ") + from;
        if (!conditions.isEmpty())
            m_rowProbe += QStringLiteral(" WHERE ") + conditions.join(QLatin1String(" AND "));
    }

    bool pg() const { return m_dialect == Dialect::PostgreSQL; }

    [[noreturn]] void unknown(const QString& message) const
    {
        throw DbError(DbErrorCode::UnknownName, message, m_text);
    }
    [[noreturn]] void syntax(const QString& message) const
    {
        throw DbError(DbErrorCode::Syntax, message, m_text);
    }

    QString ident(const QString& name) const { return quoteIdentifier(name, m_dialect); }
    QString aliasName(const QString& name) const
    {
        return QLatin1Char('"') + QString(name).replace(u'"', QLatin1String("\"\"")) + QLatin1Char('"');
    }
    // A column of a table in scope. The columns of a derived table carry the
    // names its select gave them, as written, so they are named the same way.
    QString columnSql(const ScopeTable& table, const QString& column) const
    {
        const bool derived = table.physical.startsWith(u'(');
        return ident(table.visible) + QLatin1Char('.') + (derived ? aliasName(column) : ident(column));
    }

    void addStep(const QString& sql, bool returnsRows = false, bool countsRows = true)
    {
        m_steps.push_back(sql);
        m_stepRowsFlags.push_back(returnsRows);
        m_stepCountFlags.push_back(countsRows);
    }

    // ---- parameters ----

    int paramIndex(const QString& name, ParamSource source)
    {
        for (size_t i = 0; i < m_result.params.size(); ++i)
            if (m_result.params[i].source == source &&
                m_result.params[i].name.compare(name, Qt::CaseInsensitive) == 0)
                return int(i);
        m_result.params.push_back({name, FieldType::Unknown, source});
        if (source == ParamSource::CurrentDate)
            m_result.params.back().type = FieldType::Date;
        else if (source == ParamSource::CurrentTimestamp)
            m_result.params.back().type = FieldType::DateTime;
        else if (source == ParamSource::CurrentTime)
            m_result.params.back().type = FieldType::DateTime;
        return int(m_result.params.size() - 1);
    }

    QString marker(int index) const
    {
        return QString(ParamOpen) + QString::number(index) + QString(ParamClose);
    }

    // Gives an untyped parameter the type of what it meets.
    void inferParam(Tx& tx, FieldType type)
    {
        if (tx.param < 0 || type == FieldType::Unknown)
            return;
        ParamInfo& p = m_result.params[tx.param];
        if (p.type == FieldType::Unknown) {
            p.type = type == FieldType::AutoInc ? FieldType::Int : type;
            tx.type = p.type;
        }
    }

    FieldType paramType(const Tx& tx) const
    {
        return tx.param >= 0 ? m_result.params[tx.param].type : tx.type;
    }

    void finalize()
    {
        for (size_t s = 0; s < m_steps.size(); ++s)
            m_result.steps.push_back(storeSql(m_steps[s], m_stepRowsFlags[s], m_stepCountFlags[s]));
        if (!m_rowProbe.isEmpty())
            m_result.rowProbe = storeSql(m_rowProbe, true, false);
    }

    // The store's text of a step: parameter markers become the store's
    // placeholders, numbered by first use.
    StoreSql storeSql(const QString& sql, bool returnsRows, bool countsRows) const
    {
        static const QRegularExpression re(QStringLiteral("\\x01(\\d+)\\x02"));
        StoreSql step;
        step.returnsRows = returnsRows;
        step.countsRows = countsRows;
        QString out;
        qsizetype last = 0;
        auto it = re.globalMatch(sql);
        while (it.hasNext()) {
            const auto m = it.next();
            out += QStringView(sql).mid(last, m.capturedStart() - last);
            const int index = m.captured(1).toInt();
            int position = -1;
            for (size_t k = 0; k < step.params.size(); ++k)
                if (step.params[k] == index)
                    position = int(k);
            if (position < 0) {
                step.params.push_back(index);
                position = int(step.params.size() - 1);
            }
            out += placeholder(position, m_result.params[index].type);
            last = m.capturedEnd();
        }
        out += QStringView(sql).mid(last);
        step.text = out;
        return step;
    }

    QString placeholder(int position, FieldType type) const
    {
        if (!pg())
            return QStringLiteral("?%1").arg(position + 1);
        const QString p = QStringLiteral("$%1").arg(position + 1);
        switch (type) {
        case FieldType::String:
        case FieldType::Memo: return QStringLiteral("CAST(%1 AS text)").arg(p);
        case FieldType::SmallInt:
        case FieldType::Int:
        case FieldType::AutoInc: return QStringLiteral("CAST(%1 AS integer)").arg(p);
        case FieldType::Float: return QStringLiteral("CAST(%1 AS double precision)").arg(p);
        case FieldType::Currency: return QStringLiteral("CAST(%1 AS numeric)").arg(p);
        case FieldType::Bool: return QStringLiteral("CAST(%1 AS boolean)").arg(p);
        case FieldType::Date: return QStringLiteral("CAST(%1 AS date)").arg(p);
        case FieldType::DateTime: return QStringLiteral("CAST(%1 AS timestamp)").arg(p);
        case FieldType::Blob: return QStringLiteral("CAST(%1 AS bytea)").arg(p);
        case FieldType::Unknown: break;
        }
        return p;
    }

    // ---- tables and scopes ----

    ScopeTable resolveTable(const TableRef& ref, const Scope* outer)
    {
        ScopeTable t;
        t.visible = ref.visibleName();
        if (ref.subquery) {
            Scope inner;
            inner.parent = outer;
            std::vector<OutputColumn> columns;
            const QString sql = selectSql(*ref.subquery, outer, &columns);
            TableDef def(ref.alias);
            for (const OutputColumn& c : columns)
                def.add({c.name, c.type, c.width});
            t.def = def;
            t.physical = QLatin1Char('(') + sql + QLatin1Char(')');
            return t;
        }
        const TableDef* def = nullptr;
        bool memory = ref.memory;
        if (!memory)
            def = m_schema.persistentTable(ref.name);
        if (!def) {
            def = m_schema.memoryTable(ref.name);
            if (def)
                memory = true;
        }
        if (!def) {
            if (ref.memory)
                unknown(QStringLiteral("Memory table %1 does not exist").arg(ref.name));
            unknown(QStringLiteral("Table %1 does not exist").arg(ref.name));
        }
        if (memory)
            m_result.memoryTablesUsed.append(ref.name.toLower());
        t.def = *def;
        // Every stored row can be named by its row identity, as data sets do.
        t.def.add({QString::fromLatin1(RowIdColumn), FieldType::Int});
        t.physical = ident(physicalTableName(def->name(), memory, m_dialect));
        return t;
    }

    QString tableSql(const ScopeTable& t) const
    {
        if (t.physical.startsWith(u'('))
            return t.physical + QLatin1String(" AS ") + ident(t.visible);
        const QString plain = ident(t.def.name());
        if (t.physical == plain && t.visible.compare(t.def.name(), Qt::CaseInsensitive) == 0)
            return t.physical;
        return t.physical + QLatin1String(" AS ") + ident(t.visible);
    }

    struct Resolved
    {
        const ScopeTable* table = nullptr;
        const ColumnDef* column = nullptr;
        bool outer = false;
    };

    Resolved resolveColumn(const Scope& scope, const QString& qualifier, const QString& name) const
    {
        for (const Scope* s = &scope; s; s = s->parent) {
            for (const ScopeTable& t : s->tables) {
                if (!qualifier.isEmpty() && t.visible.compare(qualifier, Qt::CaseInsensitive) != 0 &&
                    t.def.name().compare(qualifier, Qt::CaseInsensitive) != 0)
                    continue;
                if (const ColumnDef* c = t.def.column(name))
                    return {&t, c, s != &scope};
                if (!qualifier.isEmpty())
                    unknown(QStringLiteral("Column %1 does not exist in table %2").arg(name, t.def.name()));
            }
        }
        if (!qualifier.isEmpty())
            unknown(QStringLiteral("Table or alias %1 is not part of the statement").arg(qualifier));
        unknown(QStringLiteral("Column %1 does not exist").arg(name));
    }

    // ---- expressions ----

    struct ExprContext
    {
        const Scope* scope = nullptr;
        bool inAggregate = false;
    };

    // The parser bounds how deep a statement nests, and with it how deep
    // translation recurses; the count here keeps that promise visible.
    int m_depth = 0;

    Tx tx(const ExprPtr& e, const ExprContext& ctx)
    {
        if (++m_depth > 2 * MaxNesting) {
            m_depth = 0;
            syntax(QStringLiteral("The statement nests too deeply to translate"));
        }
        Tx t = translateExpr(*e, ctx);
        --m_depth;
        // Some conversions repeat their operand (a float shown as text names
        // it four times), so nesting them grows the text geometrically; a
        // hostile statement must meet a bound, not exhaust memory and time.
        if (t.sql.size() > MaxTranslatedLength) {
            m_depth = 0;
            syntax(QStringLiteral("The statement is too large to translate"));
        }
        return t;
    }

    Tx translateExpr(const Expr& e, const ExprContext& ctx)
    {
        switch (e.kind) {
        case ExprKind::Literal: return literal(e);
        case ExprKind::Param: {
            Tx t;
            t.param = paramIndex(e.name, ParamSource::Caller);
            t.type = m_result.params[t.param].type;
            t.sql = marker(t.param);
            return t;
        }
        case ExprKind::CurrentDate:
        case ExprKind::CurrentTime:
        case ExprKind::CurrentTimestamp: {
            const ParamSource source = e.kind == ExprKind::CurrentDate   ? ParamSource::CurrentDate
                                       : e.kind == ExprKind::CurrentTime ? ParamSource::CurrentTime
                                                                         : ParamSource::CurrentTimestamp;
            Tx t;
            const int index = paramIndex(QStringLiteral("__clock"), source);
            t.type = m_result.params[index].type;
            t.sql = marker(index);
            return t;
        }
        case ExprKind::Column: return column(e, ctx);
        case ExprKind::Star: syntax(QStringLiteral("* is allowed only in a select list or Count(*)"));
        case ExprKind::Unary: {
            Tx operand = tx(e.args[0], ctx);
            Tx t;
            if (e.op == QLatin1String("NOT")) {
                t.sql = QStringLiteral("(NOT %1)").arg(operand.sql);
                t.type = FieldType::Bool;
            } else {
                inferParam(operand, FieldType::Float);
                t.sql = QStringLiteral("(-%1)").arg(operand.sql);
                t.type = operand.type;
            }
            return t;
        }
        case ExprKind::Binary: return binary(e, ctx);
        case ExprKind::IsNull: {
            Tx operand = tx(e.args[0], ctx);
            Tx t;
            t.type = FieldType::Bool;
            t.sql = QStringLiteral("(%1 IS %2NULL)").arg(operand.sql, e.negated ? QStringLiteral("NOT ") : QString());
            return t;
        }
        case ExprKind::InList: {
            Tx left = tx(e.args[0], ctx);
            QStringList items;
            for (size_t i = 1; i < e.args.size(); ++i) {
                Tx item = tx(e.args[i], ctx);
                unify(left, item);
                items.append(item.sql);
            }
            Tx t;
            t.type = FieldType::Bool;
            t.sql = QStringLiteral("(%1 %2IN (%3))")
                        .arg(left.sql, e.negated ? QStringLiteral("NOT ") : QString(), items.join(QLatin1String(", ")));
            return t;
        }
        case ExprKind::InSelect: {
            Tx left = tx(e.args[0], ctx);
            std::vector<OutputColumn> columns;
            const QString sub = selectSql(*e.select, ctx.scope, &columns);
            if (columns.size() != 1)
                syntax(QStringLiteral("A sub-select after IN must return one column"));
            inferParam(left, columns.front().type);
            QString leftSql = left.sql;
            if (!pg() && left.type == FieldType::DateTime && columns.front().type == FieldType::Date)
                leftSql = QStringLiteral("date(%1)").arg(leftSql);
            Tx t;
            t.type = FieldType::Bool;
            t.sql = QStringLiteral("(%1 %2IN (%3))")
                        .arg(leftSql, e.negated ? QStringLiteral("NOT ") : QString(), sub);
            return t;
        }
        case ExprKind::Between: {
            Tx value = tx(e.args[0], ctx);
            Tx low = tx(e.args[1], ctx);
            Tx high = tx(e.args[2], ctx);
            unify(value, low);
            unify(value, high);
            Tx t;
            t.type = FieldType::Bool;
            t.sql = QStringLiteral("(%1 %2BETWEEN %3 AND %4)")
                        .arg(value.sql, e.negated ? QStringLiteral("NOT ") : QString(), low.sql, high.sql);
            return t;
        }
        case ExprKind::Exists: {
            const QString sub = selectSql(*e.select, ctx.scope, nullptr);
            Tx t;
            t.type = FieldType::Bool;
            t.sql = QStringLiteral("(%1EXISTS (%2))").arg(e.negated ? QStringLiteral("NOT ") : QString(), sub);
            return t;
        }
        case ExprKind::Subquery: {
            std::vector<OutputColumn> columns;
            const QString sub = selectSql(*e.select, ctx.scope, &columns);
            if (columns.size() != 1)
                syntax(QStringLiteral("A sub-select used as a value must return one column"));
            Tx t;
            t.type = columns.front().type;
            t.width = columns.front().width;
            t.sql = QLatin1Char('(') + sub + QLatin1Char(')');
            return t;
        }
        case ExprKind::Function: return function(e, ctx);
        case ExprKind::If:
        case ExprKind::IfNull: {
            Tx test = tx(e.args[0], ctx);
            Tx a = tx(e.args[1], ctx);
            Tx b = tx(e.args[2], ctx);
            unifyBranches(a, b);
            Tx t;
            t.type = a.type != FieldType::Unknown ? a.type : b.type;
            t.width = std::max(a.width, b.width);
            if (e.kind == ExprKind::If)
                t.sql = QStringLiteral("(CASE WHEN %1 THEN %2 ELSE %3 END)").arg(test.sql, a.sql, b.sql);
            else
                t.sql = QStringLiteral("(CASE WHEN %1 IS NULL THEN %2 ELSE %3 END)").arg(test.sql, a.sql, b.sql);
            return t;
        }
        case ExprKind::Case: return caseExpr(e, ctx);
        case ExprKind::Pos: {
            Tx needle = tx(e.args[0], ctx);
            Tx haystack = tx(e.args[1], ctx);
            inferParam(needle, FieldType::String);
            inferParam(haystack, FieldType::String);
            Tx t;
            t.type = FieldType::Int;
            t.sql = pg() ? QStringLiteral("strpos(%1, %2)").arg(asText(haystack), asText(needle))
                         : QStringLiteral("instr(%1, %2)").arg(haystack.sql, needle.sql);
            return t;
        }
        case ExprKind::Substring: {
            Tx text = tx(e.args[0], ctx);
            inferParam(text, FieldType::String);
            Tx from = tx(e.args[1], ctx);
            inferParam(from, FieldType::Int);
            Tx t;
            t.type = FieldType::String;
            if (e.args.size() > 2) {
                Tx length = tx(e.args[2], ctx);
                inferParam(length, FieldType::Int);
                t.sql = QStringLiteral("substr(%1, %2, %3)").arg(asText(text), asInt(from), asInt(length));
                t.width = e.args[2]->kind == ExprKind::Literal ? e.args[2]->value.toInt() : text.width;
            } else {
                t.sql = QStringLiteral("substr(%1, %2)").arg(asText(text), asInt(from));
                t.width = text.width;
            }
            return t;
        }
        case ExprKind::Extract: return extract(e, ctx);
        case ExprKind::Cast: return cast(e, ctx);
        case ExprKind::Trim: {
            Tx text = tx(e.args[0], ctx);
            inferParam(text, FieldType::String);
            Tx t;
            t.type = FieldType::String;
            t.width = text.width;
            QString chars;
            if (e.args.size() > 1 && e.args[1]) {
                Tx c = tx(e.args[1], ctx);
                chars = c.sql;
            }
            if (pg()) {
                t.sql = QStringLiteral("trim(%1 %2 FROM %3)")
                            .arg(e.op, chars.isEmpty() ? QStringLiteral("' '") : chars, asText(text));
            } else {
                const QString fn = e.op == QLatin1String("LEADING")    ? QStringLiteral("ltrim")
                                   : e.op == QLatin1String("TRAILING") ? QStringLiteral("rtrim")
                                                                       : QStringLiteral("trim");
                t.sql = chars.isEmpty() ? QStringLiteral("%1(%2)").arg(fn, text.sql)
                                        : QStringLiteral("%1(%2, %3)").arg(fn, text.sql, chars);
            }
            return t;
        }
        }
        syntax(QStringLiteral("Unsupported expression"));
    }

    Tx literal(const Expr& e) const
    {
        Tx t;
        switch (e.literal) {
        case LiteralKind::String:
            t.type = FieldType::String;
            t.width = int(e.value.size());
            t.stringLiteral = true;
            t.literalText = e.value;
            t.sql = QLatin1Char('\'') + QString(e.value).replace(u'\'', QLatin1String("''")) + QLatin1Char('\'');
            break;
        case LiteralKind::Integer:
            t.type = FieldType::Int;
            t.sql = e.value;
            break;
        case LiteralKind::Float:
            t.type = FieldType::Float;
            t.sql = e.value;
            break;
        case LiteralKind::Bool:
            t.type = FieldType::Bool;
            t.sql = pg() ? e.value : (e.value == QLatin1String("TRUE") ? QStringLiteral("1") : QStringLiteral("0"));
            break;
        case LiteralKind::Null:
            t.nullLiteral = true;
            t.sql = QStringLiteral("NULL");
            break;
        }
        return t;
    }

    Tx column(const Expr& e, const ExprContext& ctx)
    {
        if (!ctx.scope)
            unknown(QStringLiteral("Column %1 does not exist").arg(e.name));
        const Resolved r = resolveColumn(*ctx.scope, e.qualifier, e.name);
        Tx t;
        t.type = r.column->type == FieldType::AutoInc ? FieldType::Int : r.column->type;
        t.width = r.column->width;
        if (r.column->name == QLatin1String(RowIdColumn))
            t.sql = ident(r.table->visible) + QLatin1Char('.') + rowIdentity(r.table->def, m_dialect);
        else
            t.sql = columnSql(*r.table, r.column->name);
        // Columns that a grouped select neither groups nor aggregates take
        // the value of one of the group's rows, on every store alike.
        if (ctx.scope->grouped && !ctx.inAggregate && !r.outer) {
            const QString key = (r.table->visible + QLatin1Char('.') + r.column->name).toLower();
            if (!ctx.scope->groupKeys.contains(key))
                t.sql = groupValue(t.sql, t.type);
        }
        return t;
    }

    QString groupValue(const QString& sql, FieldType type) const
    {
        if (pg() && type == FieldType::Bool)
            return QStringLiteral("bool_or(%1)").arg(sql);
        return QStringLiteral("MIN(%1)").arg(sql);
    }

    // Scaled money in SQLite is kept in ten-thousandths.
    bool scaledMoney(FieldType t) const { return !pg() && t == FieldType::Currency; }

    QString unscale(const Tx& t) const
    {
        return scaledMoney(t.type) ? QStringLiteral("(%1 / 10000.0)").arg(t.sql) : t.sql;
    }

    QString scale(const Tx& t) const
    {
        if (pg() || t.type == FieldType::Currency)
            return t.sql;
        if (isInteger(t.type))
            return QStringLiteral("(%1 * 10000)").arg(t.sql);
        return QStringLiteral("CAST(ROUND(%1 * 10000) AS INTEGER)").arg(t.sql);
    }

    QString asText(const Tx& t) const
    {
        if (isText(t.type) || t.stringLiteral)
            return t.sql;
        if (t.type == FieldType::Unknown && t.param < 0)
            return t.sql;
        if (pg())
            return QStringLiteral("CAST(%1 AS text)").arg(t.sql);
        if (t.type == FieldType::Float)
            return QStringLiteral("(CASE WHEN %1 = CAST(%1 AS INTEGER) THEN CAST(CAST(%1 AS INTEGER) AS TEXT) ELSE "
                                  "CAST(%1 AS TEXT) END)")
                .arg(t.sql);
        if (t.type == FieldType::Currency)
            return QStringLiteral("CAST(%1 AS TEXT)").arg(unscale(t));
        return t.sql;
    }

    QString asInt(const Tx& t) const
    {
        if (pg() && !isInteger(t.type) && t.param < 0)
            return QStringLiteral("CAST(%1 AS integer)").arg(t.sql);
        return t.sql;
    }

    QString asDate(const Tx& t) const
    {
        if (t.stringLiteral)
            return pg() ? QStringLiteral("DATE %1").arg(t.sql) : t.sql;
        return t.sql;
    }

    // Makes two operands comparable: parameters take the other side's type,
    // money literals are scaled, date texts become dates.
    void unify(Tx& a, Tx& b)
    {
        inferParam(a, paramType(b));
        inferParam(b, paramType(a));
        if (scaledMoney(a.type) && isNumeric(b.type) && b.type != FieldType::Currency) {
            b.sql = scale(b);
            b.type = FieldType::Currency;
        } else if (scaledMoney(b.type) && isNumeric(a.type) && a.type != FieldType::Currency) {
            a.sql = scale(a);
            a.type = FieldType::Currency;
        }
        if (!pg()) {
            // Date-times are kept with their time; a date compares as midnight.
            if (a.type == FieldType::DateTime && b.type == FieldType::Date && !b.stringLiteral)
                b.sql = QStringLiteral("datetime(%1)").arg(b.sql);
            else if (b.type == FieldType::DateTime && a.type == FieldType::Date && !a.stringLiteral)
                a.sql = QStringLiteral("datetime(%1)").arg(a.sql);
        } else {
            if (isDateType(a.type) && b.stringLiteral && isDateLiteral(b.literalText))
                b.sql = asDate(b);
            else if (isDateType(b.type) && a.stringLiteral && isDateLiteral(a.literalText))
                a.sql = asDate(a);
        }
    }

    // The two results of IF and IFNULL must be of one type.
    void unifyBranches(Tx& a, Tx& b)
    {
        if (a.nullLiteral || b.nullLiteral) {
            inferParam(a, b.type);
            inferParam(b, a.type);
            return;
        }
        unify(a, b);
        if (pg()) {
            // Mixed number kinds need one type in a CASE.
            if (isNumeric(a.type) && isNumeric(b.type) && a.type != b.type) {
                if (a.type == FieldType::Float || b.type == FieldType::Float) {
                    a.sql = QStringLiteral("CAST(%1 AS double precision)").arg(a.sql);
                    b.sql = QStringLiteral("CAST(%1 AS double precision)").arg(b.sql);
                    a.type = b.type = FieldType::Float;
                }
            } else if (isText(a.type) != isText(b.type) && (isText(a.type) || isText(b.type)) &&
                       a.type != FieldType::Unknown && b.type != FieldType::Unknown) {
                a.sql = asText(a);
                b.sql = asText(b);
                a.type = b.type = FieldType::String;
            }
        }
    }

    // The terms of an AND or OR chain, grouped in halves: the store then
    // reads a list of thousands of conditions a dozen levels deep, well
    // within its parser's stack and its limit on expression depth.
    QString balanced(const QStringList& terms, qsizetype from, qsizetype to, const QString& op) const
    {
        if (to - from == 1)
            return terms[from];
        const qsizetype middle = from + (to - from) / 2;
        return QStringLiteral("(%1 %2 %3)").arg(balanced(terms, from, middle, op), op, balanced(terms, middle, to, op));
    }

    // "Lower(column) >= Lower(x)" compares without regard to case. SQLite's
    // lower() and its NOCASE collation both fold ASCII letters only, so
    // there the comparison is written on the column with that collation,
    // which lets a case-insensitive index of the column serve it; on
    // PostgreSQL lower(column) already matches such an index.
    QString caseFreeOperand(const Expr& e, const Tx& a, const ExprContext& ctx)
    {
        const auto isLower = [](const ExprPtr& x) {
            return x && x->kind == ExprKind::Function && x->op == QLatin1String("LOWER") && x->args.size() == 1;
        };
        if (pg() || !isLower(e.args[0]) || !isLower(e.args[1]) || e.args[0]->args[0]->kind != ExprKind::Column)
            return a.sql;
        const Tx column = tx(e.args[0]->args[0], ctx);
        if (!isText(column.type)) return a.sql;
        return column.sql + QStringLiteral(" COLLATE NOCASE");
    }

    Tx binary(const Expr& e, const ExprContext& ctx)
    {
        const QString& op = e.op;
        Tx t;
        if (op == QLatin1String("AND") || op == QLatin1String("OR")) {
            QStringList terms;
            terms.reserve(qsizetype(e.args.size()));
            for (const ExprPtr& term : e.args)
                terms.append(tx(term, ctx).sql);
            t.type = FieldType::Bool;
            t.sql = balanced(terms, 0, terms.size(), op);
            return t;
        }
        Tx a = tx(e.args[0], ctx);
        Tx b = tx(e.args[1], ctx);
        if (op == QLatin1String("LIKE")) {
            inferParam(a, FieldType::String);
            inferParam(b, FieldType::String);
            t.type = FieldType::Bool;
            QString sql = QStringLiteral("(%1 %2LIKE %3").arg(asText(a), e.negated ? QStringLiteral("NOT ") : QString(),
                                                              asText(b));
            if (e.args.size() > 2)
                sql += QStringLiteral(" ESCAPE ") + tx(e.args[2], ctx).sql;
            t.sql = sql + QLatin1Char(')');
            return t;
        }
        if (op == QLatin1String("=") || op == QLatin1String("<>") || op == QLatin1String("<") ||
            op == QLatin1String(">") || op == QLatin1String("<=") || op == QLatin1String(">=")) {
            t.type = FieldType::Bool;
            // "x = Null" in the dialect asks whether x is empty.
            if (b.nullLiteral && (op == QLatin1String("=") || op == QLatin1String("<>"))) {
                t.sql = QStringLiteral("(%1 IS %2NULL)").arg(a.sql, op == QLatin1String("<>") ? QStringLiteral("NOT ") : QString());
                return t;
            }
            if (a.nullLiteral && (op == QLatin1String("=") || op == QLatin1String("<>"))) {
                t.sql = QStringLiteral("(%1 IS %2NULL)").arg(b.sql, op == QLatin1String("<>") ? QStringLiteral("NOT ") : QString());
                return t;
            }
            unify(a, b);
            if (pg() && ((a.type == FieldType::Bool) != (b.type == FieldType::Bool)) && a.type != FieldType::Unknown &&
                b.type != FieldType::Unknown) {
                // A boolean compared with 0/1.
                if (a.type == FieldType::Bool)
                    b.sql = QStringLiteral("CAST(%1 AS boolean)").arg(asInt(b));
                else
                    a.sql = QStringLiteral("CAST(%1 AS boolean)").arg(asInt(a));
            }
            t.sql = QStringLiteral("(%1 %2 %3)").arg(caseFreeOperand(e, a, ctx), op, b.sql);
            return t;
        }
        if (op == QLatin1String("||"))
            return concat(a, b);
        if (op == QLatin1String("+") || op == QLatin1String("-"))
            return additive(op, a, b);
        if (op == QLatin1String("*") || op == QLatin1String("/") || op == QLatin1String("MOD") ||
            op == QLatin1String("DIV"))
            return multiplicative(op, a, b);
        syntax(QStringLiteral("Unknown operator %1").arg(op));
    }

    Tx concat(Tx& a, Tx& b)
    {
        inferParam(a, FieldType::String);
        inferParam(b, FieldType::String);
        Tx t;
        t.type = FieldType::String;
        t.width = (a.width && b.width) ? a.width + b.width : 0;
        // An empty part leaves the rest of the text standing.
        t.sql = QStringLiteral("(COALESCE(%1, '') || COALESCE(%2, ''))").arg(asText(a), asText(b));
        return t;
    }

    bool actsAsDate(const Tx& t) const
    {
        return isDateType(t.type) || (t.stringLiteral && isDateLiteral(t.literalText));
    }

    Tx additive(const QString& op, Tx& a, Tx& b)
    {
        const bool plus = op == QLatin1String("+");
        // Text joined with +.
        if ((isText(a.type) && !actsAsDate(a)) || (isText(b.type) && !actsAsDate(b)) ||
            (a.stringLiteral && !isDateType(b.type) && !isNumeric(b.type)) ||
            (b.stringLiteral && !isDateType(a.type) && !isNumeric(a.type))) {
            if (plus)
                return concat(a, b);
        }
        // Dates: date ± days, date - date.
        if (a.param >= 0 && paramType(a) == FieldType::Unknown && isDateType(b.type))
            inferParam(a, plus ? FieldType::Int : FieldType::Date);
        if (b.param >= 0 && paramType(b) == FieldType::Unknown && actsAsDate(a))
            inferParam(b, plus ? FieldType::Float : typeFromParamName(m_result.params[b.param].name));
        if (actsAsDate(a) && actsAsDate(b) && !plus)
            return dateDifference(a, b);
        if (actsAsDate(a) && (isNumeric(b.type) || b.type == FieldType::Unknown))
            return dateShift(a, b, plus);
        if (plus && actsAsDate(b) && isNumeric(a.type))
            return dateShift(b, a, true);

        inferParam(a, b.type == FieldType::Unknown ? FieldType::Float : b.type);
        inferParam(b, a.type == FieldType::Unknown ? FieldType::Float : a.type);
        Tx t;
        if (a.type == FieldType::Currency || b.type == FieldType::Currency) {
            t.type = FieldType::Currency;
            t.sql = QStringLiteral("(%1 %2 %3)").arg(scale(a), op, scale(b));
            return t;
        }
        t.type = (a.type == FieldType::Float || b.type == FieldType::Float) ? FieldType::Float
                 : (isInteger(a.type) && isInteger(b.type))                  ? FieldType::Int
                                                                              : FieldType::Float;
        if (a.type == FieldType::Unknown && b.type == FieldType::Unknown)
            t.type = FieldType::Unknown;
        t.sql = QStringLiteral("(%1 %2 %3)").arg(a.sql, op, b.sql);
        return t;
    }

    Tx dateShift(const Tx& date, const Tx& days, bool plus)
    {
        Tx t;
        t.type = date.type == FieldType::DateTime ? FieldType::DateTime : FieldType::Date;
        const QString sign = plus ? QStringLiteral("+") : QStringLiteral("-");
        const QString n = unscale(days);
        if (pg()) {
            if (t.type == FieldType::DateTime)
                t.sql = QStringLiteral("(%1 %2 (%3) * INTERVAL '1 day')").arg(date.sql, sign, n);
            else
                t.sql = QStringLiteral("(%1 %2 CAST(%3 AS integer))").arg(asDate(date), sign, n);
        } else {
            const QString fn = t.type == FieldType::DateTime ? QStringLiteral("datetime") : QStringLiteral("date");
            t.sql = QStringLiteral("%1(julianday(%2) %3 (%4))").arg(fn, date.sql, sign, n);
        }
        return t;
    }

    Tx dateDifference(const Tx& a, const Tx& b)
    {
        Tx t;
        const bool withTime = a.type == FieldType::DateTime || b.type == FieldType::DateTime;
        t.type = withTime ? FieldType::Float : FieldType::Int;
        if (pg()) {
            if (withTime)
                t.sql = QStringLiteral("(EXTRACT(EPOCH FROM (CAST(%1 AS timestamp) - CAST(%2 AS timestamp))) / 86400.0)")
                            .arg(asDate(a), asDate(b));
            else
                t.sql = QStringLiteral("(%1 - %2)").arg(asDate(a), asDate(b));
        } else {
            if (withTime)
                t.sql = QStringLiteral("(julianday(%1) - julianday(%2))").arg(a.sql, b.sql);
            else
                t.sql = QStringLiteral("CAST(ROUND(julianday(%1) - julianday(%2)) AS INTEGER)").arg(a.sql, b.sql);
        }
        return t;
    }

    Tx multiplicative(const QString& op, Tx& a, Tx& b)
    {
        inferParam(a, b.type == FieldType::Unknown ? FieldType::Float : b.type);
        inferParam(b, a.type == FieldType::Unknown ? FieldType::Float : a.type);
        Tx t;
        if (op == QLatin1String("MOD") || op == QLatin1String("DIV")) {
            t.type = FieldType::Int;
            t.sql = op == QLatin1String("MOD") ? QStringLiteral("(%1 %% %2)").arg(asInt(a), asInt(b))
                                               : QStringLiteral("(%1 / %2)").arg(asInt(a), asInt(b));
            if (!pg())
                t.sql = QStringLiteral("CAST(%1 AS INTEGER)").arg(t.sql);
            return t;
        }
        const bool money = a.type == FieldType::Currency || b.type == FieldType::Currency;
        if (money && !pg()) {
            if (op == QLatin1String("*")) {
                t.type = FieldType::Currency;
                if (a.type == FieldType::Currency && b.type == FieldType::Currency)
                    t.sql = QStringLiteral("CAST(ROUND(%1 * %2 / 10000.0) AS INTEGER)").arg(a.sql, b.sql);
                else if (isInteger(a.type) || isInteger(b.type))
                    t.sql = QStringLiteral("(%1 * %2)").arg(a.sql, b.sql);
                else
                    t.sql = QStringLiteral("CAST(ROUND(%1 * %2) AS INTEGER)").arg(a.sql, b.sql);
            } else if (a.type == FieldType::Currency && b.type != FieldType::Currency) {
                t.type = FieldType::Currency;
                t.sql = QStringLiteral("CAST(ROUND(%1 * 1.0 / %2) AS INTEGER)").arg(a.sql, b.sql);
            } else {
                t.type = FieldType::Float;
                t.sql = QStringLiteral("(%1 * 1.0 / %2)").arg(scale(a), scale(b));
            }
            return t;
        }
        if (money) {
            t.type = op == QLatin1String("/") && a.type == b.type ? FieldType::Float : FieldType::Currency;
            if (op == QLatin1String("/") && a.type != FieldType::Currency)
                t.type = FieldType::Float;
            t.sql = QStringLiteral("(%1 %2 %3)").arg(a.sql, op, b.sql);
            if (t.type == FieldType::Currency)
                t.sql = QStringLiteral("ROUND(%1, 4)").arg(t.sql);
            return t;
        }
        if (op == QLatin1String("/")) {
            // Division gives a fraction, as users expect of 7 / 2.
            t.type = FieldType::Float;
            t.sql = pg() ? QStringLiteral("(CAST(%1 AS double precision) / %2)").arg(a.sql, b.sql)
                         : QStringLiteral("(CAST(%1 AS REAL) / %2)").arg(a.sql, b.sql);
            return t;
        }
        t.type = (isInteger(a.type) && isInteger(b.type)) ? FieldType::Int : FieldType::Float;
        t.sql = QStringLiteral("(%1 * %2)").arg(a.sql, b.sql);
        return t;
    }

    Tx function(const Expr& e, const ExprContext& ctx)
    {
        const QString& name = e.op;
        Tx t;
        if (isAggregateName(name)) {
            ExprContext inner = ctx;
            inner.inAggregate = true;
            const QString distinct = e.distinct ? QStringLiteral("DISTINCT ") : QString();
            if (name == QLatin1String("COUNT")) {
                t.type = FieldType::Int;
                if (e.args.empty() || e.args[0]->kind == ExprKind::Star)
                    t.sql = QStringLiteral("COUNT(*)");
                else
                    t.sql = QStringLiteral("COUNT(%1%2)").arg(distinct, tx(e.args[0], inner).sql);
                if (pg())
                    t.sql = QStringLiteral("CAST(%1 AS integer)").arg(t.sql);
                return t;
            }
            if (e.args.size() != 1)
                syntax(QStringLiteral("%1 takes one value").arg(name));
            Tx arg = tx(e.args[0], inner);
            inferParam(arg, FieldType::Float);
            t.type = arg.type;
            t.width = arg.width;
            if (name == QLatin1String("AVG")) {
                if (scaledMoney(arg.type)) {
                    t.sql = QStringLiteral("CAST(ROUND(AVG(%1%2)) AS INTEGER)").arg(distinct, arg.sql);
                } else {
                    t.type = arg.type == FieldType::Currency ? FieldType::Currency : FieldType::Float;
                    t.sql = QStringLiteral("AVG(%1%2)").arg(distinct, arg.sql);
                }
                return t;
            }
            if (name == QLatin1String("SUM")) {
                if (isInteger(arg.type))
                    t.type = FieldType::Int;
                t.sql = QStringLiteral("SUM(%1%2)").arg(distinct, arg.sql);
                if (pg() && isInteger(arg.type))
                    t.sql = QStringLiteral("CAST(%1 AS bigint)").arg(t.sql);
                return t;
            }
            if (pg() && arg.type == FieldType::Bool)
                t.sql = QStringLiteral("%1(%2)").arg(name == QLatin1String("MIN") ? QStringLiteral("bool_and")
                                                                                  : QStringLiteral("bool_or"),
                                                     arg.sql);
            else
                t.sql = QStringLiteral("%1(%2%3)").arg(name, distinct, arg.sql);
            return t;
        }
        std::vector<Tx> args;
        for (const ExprPtr& a : e.args)
            args.push_back(tx(a, ctx));
        auto need = [&](size_t low, size_t high) {
            if (args.size() < low || args.size() > high)
                syntax(QStringLiteral("Wrong number of values for %1").arg(name));
        };
        if (name == QLatin1String("UPPER") || name == QLatin1String("LOWER")) {
            need(1, 1);
            inferParam(args[0], FieldType::String);
            t.type = args[0].type == FieldType::Memo ? FieldType::Memo : FieldType::String;
            t.width = args[0].width;
            t.sql = QStringLiteral("%1(%2)").arg(name, asText(args[0]));
            return t;
        }
        if (name == QLatin1String("LENGTH") || name == QLatin1String("CHAR_LENGTH")) {
            need(1, 1);
            t.type = FieldType::Int;
            t.sql = QStringLiteral("length(%1)").arg(asText(args[0]));
            return t;
        }
        if (name == QLatin1String("ROUND")) {
            need(1, 2);
            Tx& v = args[0];
            inferParam(v, FieldType::Float);
            const QString digits = args.size() > 1 ? args[1].sql : QStringLiteral("0");
            t.type = v.type;
            if (scaledMoney(v.type)) {
                t.sql = QStringLiteral("CAST(ROUND(%1 / 10000.0, %2) * 10000 AS INTEGER)").arg(v.sql, digits);
            } else if (pg()) {
                Tx noDigits;
                noDigits.sql = QStringLiteral("0");
                noDigits.type = FieldType::Int;
                t.sql = QStringLiteral("ROUND(CAST(%1 AS numeric), %2)").arg(v.sql, asInt(args.size() > 1 ? args[1] : noDigits));
                if (v.type != FieldType::Currency)
                    t.sql = QStringLiteral("CAST(%1 AS double precision)").arg(t.sql);
                if (isInteger(v.type))
                    t.type = FieldType::Float;
            } else {
                t.sql = QStringLiteral("ROUND(%1, %2)").arg(v.sql, digits);
                if (isInteger(v.type))
                    t.type = FieldType::Float;
            }
            return t;
        }
        if (name == QLatin1String("ABS")) {
            need(1, 1);
            t.type = args[0].type;
            t.sql = QStringLiteral("ABS(%1)").arg(args[0].sql);
            return t;
        }
        if (name == QLatin1String("COALESCE") || name == QLatin1String("NULLIF")) {
            need(2, 64);
            for (size_t i = 1; i < args.size(); ++i)
                unifyBranches(args[0], args[i]);
            QStringList parts;
            for (const Tx& a : args)
                parts.append(a.sql);
            t.type = args[0].type;
            t.width = args[0].width;
            t.sql = QStringLiteral("%1(%2)").arg(name, parts.join(QLatin1String(", ")));
            return t;
        }
        syntax(QStringLiteral("Unknown function %1").arg(name));
    }

    Tx caseExpr(const Expr& e, const ExprContext& ctx)
    {
        size_t i = 0;
        QString sql = QStringLiteral("(CASE");
        Tx operand;
        if (e.caseHasOperand) {
            operand = tx(e.args[i++], ctx);
            sql += QLatin1Char(' ') + operand.sql;
        }
        const size_t end = e.args.size() - (e.caseHasElse ? 1 : 0);
        std::vector<Tx> results;
        std::vector<QString> tests;
        for (; i + 1 < end + 1 && i < end; i += 2) {
            Tx test = tx(e.args[i], ctx);
            if (e.caseHasOperand)
                unify(operand, test);
            tests.push_back(test.sql);
            results.push_back(tx(e.args[i + 1], ctx));
        }
        if (e.caseHasElse)
            results.push_back(tx(e.args.back(), ctx));
        for (size_t k = 1; k < results.size(); ++k)
            unifyBranches(results[0], results[k]);
        for (size_t k = 0; k < tests.size(); ++k)
            sql += QStringLiteral(" WHEN %1 THEN %2").arg(tests[k], results[k].sql);
        if (e.caseHasElse)
            sql += QStringLiteral(" ELSE ") + results.back().sql;
        sql += QStringLiteral(" END)");
        Tx t;
        t.sql = sql;
        for (const Tx& r : results) {
            if (t.type == FieldType::Unknown)
                t.type = r.type;
            t.width = std::max(t.width, r.width);
        }
        return t;
    }

    Tx extract(const Expr& e, const ExprContext& ctx)
    {
        Tx date = tx(e.args[0], ctx);
        inferParam(date, FieldType::Date);
        Tx t;
        t.type = FieldType::Int;
        const QString& part = e.op;
        if (pg()) {
            QString field = part;
            if (part == QLatin1String("DAYOFWEEK") || part == QLatin1String("WEEKDAY"))
                field = QStringLiteral("ISODOW"); // Monday 1 to Sunday 7
            else if (part == QLatin1String("DAYOFYEAR"))
                field = QStringLiteral("DOY");
            else if (part == QLatin1String("WEEK"))
                field = QStringLiteral("WEEK");
            t.sql = QStringLiteral("CAST(EXTRACT(%1 FROM %2) AS integer)").arg(field, asDate(date));
            return t;
        }
        QString format;
        if (part == QLatin1String("YEAR"))
            format = QStringLiteral("%Y");
        else if (part == QLatin1String("MONTH"))
            format = QStringLiteral("%m");
        else if (part == QLatin1String("DAY"))
            format = QStringLiteral("%d");
        else if (part == QLatin1String("HOUR"))
            format = QStringLiteral("%H");
        else if (part == QLatin1String("MINUTE"))
            format = QStringLiteral("%M");
        else if (part == QLatin1String("SECOND"))
            format = QStringLiteral("%S");
        else if (part == QLatin1String("DAYOFYEAR"))
            format = QStringLiteral("%j");
        else if (part == QLatin1String("WEEK"))
            format = QStringLiteral("%W");
        else if (part == QLatin1String("DAYOFWEEK") || part == QLatin1String("WEEKDAY")) {
            t.sql = QStringLiteral("((CAST(strftime('%w', %1) AS INTEGER) + 6) % 7 + 1)").arg(date.sql);
            return t;
        } else {
            syntax(QStringLiteral("Unknown date part %1").arg(part));
        }
        t.sql = QStringLiteral("CAST(strftime('%1', %2) AS INTEGER)").arg(format, date.sql);
        return t;
    }

    Tx cast(const Expr& e, const ExprContext& ctx)
    {
        Tx v = tx(e.args[0], ctx);
        Tx t;
        t.type = e.castType;
        t.width = e.castWidth;
        switch (e.castType) {
        case FieldType::String:
        case FieldType::Memo: {
            inferParam(v, FieldType::String);
            QString text = asText(v);
            if (!pg() && v.type == FieldType::Bool)
                text = QStringLiteral("(CASE WHEN %1 THEN 'TRUE' ELSE 'FALSE' END)").arg(v.sql);
            if (pg() && v.type == FieldType::Float)
                text = QStringLiteral("CAST(%1 AS text)").arg(v.sql);
            t.sql = e.castWidth > 0 ? QStringLiteral("substr(%1, 1, %2)").arg(text).arg(e.castWidth) : text;
            return t;
        }
        case FieldType::SmallInt:
        case FieldType::Int:
        case FieldType::AutoInc:
            t.type = FieldType::Int;
            inferParam(v, FieldType::Float);
            // The whole part, cut toward zero, as the dialect does.
            if (scaledMoney(v.type))
                t.sql = QStringLiteral("(%1 / 10000)").arg(v.sql);
            else if (pg())
                t.sql = (v.type == FieldType::Float || v.type == FieldType::Currency)
                            ? QStringLiteral("CAST(TRUNC(%1) AS integer)").arg(v.sql)
                            : (isText(v.type) ? QStringLiteral("CAST(TRUNC(CAST(%1 AS numeric)) AS integer)").arg(v.sql)
                                              : QStringLiteral("CAST(%1 AS integer)").arg(v.sql));
            else
                t.sql = QStringLiteral("CAST(%1 AS INTEGER)").arg(v.sql);
            return t;
        case FieldType::Float:
            inferParam(v, FieldType::Float);
            t.sql = pg() ? QStringLiteral("CAST(%1 AS double precision)").arg(v.sql)
                         : QStringLiteral("CAST(%1 AS REAL)").arg(unscale(v));
            return t;
        case FieldType::Currency:
            inferParam(v, FieldType::Currency);
            t.sql = pg() ? QStringLiteral("CAST(%1 AS numeric(19,4))").arg(v.sql) : scale(v);
            return t;
        case FieldType::Bool:
            inferParam(v, FieldType::Bool);
            t.sql = pg() ? QStringLiteral("CAST(%1 AS boolean)").arg(v.sql)
                         : QStringLiteral("(CASE WHEN %1 THEN 1 ELSE 0 END)").arg(v.sql);
            return t;
        case FieldType::Date:
            inferParam(v, FieldType::Date);
            t.sql = pg() ? QStringLiteral("CAST(%1 AS date)").arg(v.sql) : QStringLiteral("date(%1)").arg(v.sql);
            return t;
        case FieldType::DateTime:
            inferParam(v, FieldType::DateTime);
            t.sql = pg() ? QStringLiteral("CAST(%1 AS timestamp)").arg(v.sql)
                         : QStringLiteral("datetime(%1)").arg(v.sql);
            return t;
        case FieldType::Blob:
        case FieldType::Unknown: break;
        }
        syntax(QStringLiteral("Cannot cast to that type"));
    }

    // Makes a value fit a column it is written to: parameters take the
    // column's type, money is scaled, and text is cut to the column's width.
    QString coerce(Tx& value, const ColumnDef& column)
    {
        const FieldType target = column.type == FieldType::AutoInc ? FieldType::Int : column.type;
        inferParam(value, target);
        const FieldType source = paramType(value);
        QString sql = value.sql;
        if (value.nullLiteral)
            return sql;
        if (target == FieldType::Currency && !pg() && source != FieldType::Currency && source != FieldType::Unknown)
            return scale(value);
        if (target != FieldType::Currency && scaledMoney(source)) {
            sql = isInteger(target) ? QStringLiteral("(%1 / 10000)").arg(sql) : unscale(value);
            return sql;
        }
        if (target == FieldType::String && column.width > 0 && (value.width == 0 || value.width > column.width)) {
            return QStringLiteral("substr(%1, 1, %2)").arg(asText(value)).arg(column.width);
        }
        if (target == FieldType::Memo && !isText(source) && source != FieldType::Unknown)
            return asText(value);
        if (isInteger(target) && (source == FieldType::Float || source == FieldType::Currency) && value.param < 0)
            return pg() ? QStringLiteral("CAST(TRUNC(%1) AS integer)").arg(sql)
                        : QStringLiteral("CAST(%1 AS INTEGER)").arg(sql);
        if (target == FieldType::Date && source == FieldType::DateTime)
            return pg() ? QStringLiteral("CAST(%1 AS date)").arg(sql) : QStringLiteral("date(%1)").arg(sql);
        if (target == FieldType::DateTime && source == FieldType::Date && !value.stringLiteral)
            return pg() ? QStringLiteral("CAST(%1 AS timestamp)").arg(sql) : QStringLiteral("datetime(%1)").arg(sql);
        if (pg() && target == FieldType::Bool && isInteger(source))
            return QStringLiteral("CAST(%1 AS boolean)").arg(sql);
        if (pg() && (target == FieldType::Date || target == FieldType::DateTime) && value.stringLiteral)
            return QStringLiteral("CAST(%1 AS %2)").arg(sql, target == FieldType::Date ? QStringLiteral("date")
                                                                                        : QStringLiteral("timestamp"));
        return sql;
    }

    // ---- select ----

    QString outputName(const SelectItem& item) const
    {
        if (!item.alias.isEmpty())
            return item.alias;
        const Expr& e = *item.expr;
        if (e.kind == ExprKind::Column)
            return e.name;
        if (e.kind == ExprKind::Function && isAggregateName(e.op)) {
            QString arg = e.args.empty() ? QStringLiteral("*") : e.args[0]->sourceText.trimmed();
            if (e.distinct)
                arg.prepend(QStringLiteral("DISTINCT "));
            return capitalised(e.op) + QStringLiteral(" Of ") + arg;
        }
        return e.sourceText.trimmed();
    }

    void collectGroupKeys(const SelectCore& core, Scope& scope, const ExprContext& ctx)
    {
        for (const ExprPtr& g : core.groupBy) {
            if (g->kind == ExprKind::Column) {
                // A group-by name may also be an alias of the select list.
                bool isAlias = false;
                for (const SelectItem& item : core.items) {
                    if (!item.alias.isEmpty() && item.alias.compare(g->name, Qt::CaseInsensitive) == 0 &&
                        g->qualifier.isEmpty()) {
                        isAlias = true;
                        if (item.expr->kind == ExprKind::Column) {
                            const Resolved r = resolveColumn(scope, item.expr->qualifier, item.expr->name);
                            scope.groupKeys.insert((r.table->visible + QLatin1Char('.') + r.column->name).toLower());
                        }
                    }
                }
                if (isAlias)
                    continue;
                const Resolved r = resolveColumn(scope, g->qualifier, g->name);
                scope.groupKeys.insert((r.table->visible + QLatin1Char('.') + r.column->name).toLower());
            }
        }
        (void)ctx;
    }

    static bool containsAggregate(const Expr& e)
    {
        if (e.kind == ExprKind::Function && isAggregateName(e.op))
            return true;
        for (const ExprPtr& a : e.args)
            if (a && containsAggregate(*a))
                return true;
        return false;
    }

    struct CoreResult
    {
        QString sql;
        std::vector<OutputColumn> columns;
        std::vector<QString> itemSql; // translated select items, for ORDER BY by alias
        Scope scope;
    };

    CoreResult translateCore(const SelectCore& core, const Scope* outer)
    {
        CoreResult r;
        Scope& scope = r.scope;
        scope.parent = outer;
        QString from;
        for (const JoinItem& j : core.from)
            scope.tables.push_back(resolveTable(j.table, outer));
        ExprContext ctx{&scope, false};
        // ON conditions may use every table joined so far.
        for (size_t i = 0; i < core.from.size(); ++i) {
            const JoinItem& j = core.from[i];
            const QString table = tableSql(scope.tables[i]);
            switch (j.type) {
            case JoinType::First: from = table; break;
            case JoinType::Cross: from += QStringLiteral(" CROSS JOIN ") + table; break;
            case JoinType::Inner: from += QStringLiteral(" INNER JOIN ") + table; break;
            case JoinType::Left: from += QStringLiteral(" LEFT OUTER JOIN ") + table; break;
            case JoinType::Right: from += QStringLiteral(" RIGHT OUTER JOIN ") + table; break;
            }
            if (j.on)
                from += QStringLiteral(" ON ") + tx(j.on, ctx).sql;
        }
        bool anyAggregate = false;
        for (const SelectItem& item : core.items)
            anyAggregate = anyAggregate || containsAggregate(*item.expr);
        // WHERE is read before grouping.
        QString where;
        if (core.where)
            where = tx(core.where, ctx).sql;
        QStringList groupBy;
        if (!core.groupBy.empty() || anyAggregate) {
            collectGroupKeys(core, scope, ctx);
            for (const ExprPtr& g : core.groupBy) {
                // A group-by name may refer to a select-list alias.
                bool done = false;
                if (g->kind == ExprKind::Column && g->qualifier.isEmpty()) {
                    for (const SelectItem& item : core.items) {
                        if (!item.alias.isEmpty() && item.alias.compare(g->name, Qt::CaseInsensitive) == 0 &&
                            !scope.tables.empty() && !findColumnAnywhere(scope, g->name)) {
                            ExprContext plain{&scope, true};
                            groupBy.append(tx(item.expr, plain).sql);
                            done = true;
                            break;
                        }
                    }
                }
                if (!done) {
                    ExprContext plain{&scope, true};
                    groupBy.append(tx(g, plain).sql);
                }
            }
            scope.grouped = true;
        }
        QStringList items;
        QSet<QString> usedNames;
        for (const SelectItem& item : core.items) {
            if (item.expr->kind == ExprKind::Star) {
                for (const ScopeTable& t : scope.tables) {
                    if (!item.expr->qualifier.isEmpty() &&
                        t.visible.compare(item.expr->qualifier, Qt::CaseInsensitive) != 0 &&
                        t.def.name().compare(item.expr->qualifier, Qt::CaseInsensitive) != 0)
                        continue;
                    for (const ColumnDef& c : t.def.columns()) {
                        if (c.name == QLatin1String(RowIdColumn))
                            continue;
                        QString sql = columnSql(t, c.name);
                        const FieldType type = c.type == FieldType::AutoInc ? FieldType::Int : c.type;
                        if (scope.grouped &&
                            !scope.groupKeys.contains((t.visible + QLatin1Char('.') + c.name).toLower()))
                            sql = groupValue(sql, type);
                        const QString name = uniqueName(c.name, usedNames);
                        items.append(sql + QLatin1String(" AS ") + aliasName(name));
                        r.itemSql.push_back(sql);
                        r.columns.push_back({name, type, c.width});
                    }
                }
                continue;
            }
            Tx value = tx(item.expr, ctx);
            if (value.param >= 0 && paramType(value) == FieldType::Unknown)
                inferParam(value, FieldType::String);
            const QString name = uniqueName(outputName(item), usedNames);
            items.append(value.sql + QLatin1String(" AS ") + aliasName(name));
            r.itemSql.push_back(value.sql);
            r.columns.push_back({name, paramType(value), value.width});
        }
        QString sql = QStringLiteral("SELECT ");
        if (core.distinct)
            sql += QStringLiteral("DISTINCT ");
        sql += items.join(QLatin1String(", "));
        if (!from.isEmpty())
            sql += QStringLiteral(" FROM ") + from;
        if (!where.isEmpty())
            sql += QStringLiteral(" WHERE ") + where;
        if (!groupBy.isEmpty())
            sql += QStringLiteral(" GROUP BY ") + groupBy.join(QLatin1String(", "));
        if (core.having)
            sql += QStringLiteral(" HAVING ") + tx(core.having, ctx).sql;
        r.sql = sql;
        return r;
    }

    bool findColumnAnywhere(const Scope& scope, const QString& name) const
    {
        for (const ScopeTable& t : scope.tables)
            if (t.def.column(name))
                return true;
        return false;
    }

    static QString uniqueName(const QString& name, QSet<QString>& used)
    {
        QString candidate = name;
        for (int n = 1; used.contains(candidate.toLower()); ++n)
            candidate = name + QLatin1Char('_') + QString::number(n);
        used.insert(candidate.toLower());
        return candidate;
    }

    QString orderSuffix(const OrderItem& o) const
    {
        QString s = o.descending ? QStringLiteral(" DESC") : QString();
        // Empty values sort first, on every store.
        if (pg())
            s += o.descending ? QStringLiteral(" NULLS LAST") : QStringLiteral(" NULLS FIRST");
        return s;
    }

    // NOCASE sorts texts without regard to case; on other types it has no
    // meaning and is left out.
    QString nocase(const QString& sql, bool on, FieldType type) const
    {
        if (!on || !isText(type))
            return sql;
        return pg() ? QStringLiteral("lower(%1)").arg(sql) : sql + QStringLiteral(" COLLATE NOCASE");
    }

    QString selectSql(const SelectStmt& s, const Scope* outer, std::vector<OutputColumn>* columnsOut)
    {
        std::vector<CoreResult> cores;
        for (const SelectCore& core : s.cores)
            cores.push_back(translateCore(core, outer));
        std::vector<OutputColumn> columns = cores.front().columns;
        for (size_t i = 1; i < cores.size(); ++i) {
            if (cores[i].columns.size() != columns.size())
                syntax(QStringLiteral("The selects of a union must have the same number of columns"));
            for (size_t c = 0; c < columns.size(); ++c) {
                if (columns[c].type == FieldType::Unknown)
                    columns[c].type = cores[i].columns[c].type;
                columns[c].width = std::max(columns[c].width, cores[i].columns[c].width);
            }
        }
        QString sql;
        QString orderBy;
        // PostgreSQL sorts a distinct select only by what it selects, so a
        // sort without case over its columns sorts the result from outside,
        // as a union's is.
        const bool sortOutside =
            cores.size() == 1 && pg() && s.cores.front().distinct &&
            std::any_of(s.orderBy.begin(), s.orderBy.end(), [](const OrderItem& o) { return o.nocase; }) &&
            std::all_of(s.orderBy.begin(), s.orderBy.end(),
                        [&](const OrderItem& o) { return outputPosition(*o.expr, columns) >= 0; });
        if (cores.size() == 1 && !sortOutside) {
            sql = cores.front().sql;
            QStringList parts;
            for (const OrderItem& o : s.orderBy) {
                QString expr;
                FieldType type = FieldType::Unknown;
                const Expr& e = *o.expr;
                const int position = outputPosition(e, columns);
                if (position >= 0 && !(e.kind == ExprKind::Column && findColumnIn(cores.front().scope, e))) {
                    expr = cores.front().itemSql[position];
                    type = columns[position].type;
                } else {
                    ExprContext ctx{&cores.front().scope, false};
                    const Tx t = tx(o.expr, ctx);
                    expr = t.sql;
                    type = t.type;
                }
                parts.append(nocase(expr, o.nocase, type) + orderSuffix(o));
            }
            if (!parts.isEmpty())
                orderBy = QStringLiteral(" ORDER BY ") + parts.join(QLatin1String(", "));
        } else {
            for (size_t i = 0; i < cores.size(); ++i) {
                if (i > 0)
                    sql += s.unionAll[i - 1] ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION ");
                sql += cores[i].sql;
            }
            if (!s.orderBy.empty() || s.top) {
                // Sorting a union works on its result columns.
                QStringList parts;
                for (const OrderItem& o : s.orderBy) {
                    const int position = outputPosition(*o.expr, columns);
                    if (position < 0)
                        syntax(QStringLiteral("ORDER BY of a union must name one of its columns"));
                    parts.append(nocase(QStringLiteral("u.") + aliasName(columns[position].name), o.nocase,
                                        columns[position].type) +
                                 orderSuffix(o));
                }
                sql = QStringLiteral("SELECT * FROM (") + sql + QStringLiteral(") AS u");
                if (!parts.isEmpty())
                    orderBy = QStringLiteral(" ORDER BY ") + parts.join(QLatin1String(", "));
            }
        }
        sql += orderBy;
        if (s.top)
            sql += QStringLiteral(" LIMIT ") + QString::number(*s.top);
        if (columnsOut)
            *columnsOut = columns;
        return sql;
    }

    bool findColumnIn(const Scope& scope, const Expr& e) const
    {
        for (const ScopeTable& t : scope.tables) {
            if (!e.qualifier.isEmpty() && t.visible.compare(e.qualifier, Qt::CaseInsensitive) != 0)
                continue;
            if (t.def.column(e.name))
                return !e.qualifier.isEmpty() || true;
        }
        return false;
    }

    // ORDER BY may name a result column or give its position.
    int outputPosition(const Expr& e, const std::vector<OutputColumn>& columns) const
    {
        if (e.kind == ExprKind::Literal && e.literal == LiteralKind::Integer) {
            const int n = e.value.toInt();
            if (n >= 1 && n <= int(columns.size()))
                return n - 1;
            syntax(QStringLiteral("ORDER BY position %1 is out of range").arg(n));
        }
        if (e.kind == ExprKind::Column && e.qualifier.isEmpty()) {
            for (size_t i = 0; i < columns.size(); ++i)
                if (columns[i].name.compare(e.name, Qt::CaseInsensitive) == 0)
                    return int(i);
        }
        if (e.kind == ExprKind::Column && !e.qualifier.isEmpty()) {
            for (size_t i = 0; i < columns.size(); ++i)
                if (columns[i].name.compare(e.name, Qt::CaseInsensitive) == 0)
                    return int(i);
        }
        return -1;
    }

    // ---- statements ----

    void translateStatement(const SelectPtr& s)
    {
        std::vector<OutputColumn> columns;
        const QString sql = selectSql(*s, nullptr, &columns);
        if (!s->intoMemory.isEmpty()) {
            TableDef def(s->intoMemory);
            for (const OutputColumn& c : columns) {
                ColumnDef col{c.name, c.type == FieldType::Unknown ? FieldType::String : c.type, c.width};
                if (col.type == FieldType::String && col.width == 0)
                    col.width = 255;
                def.add(col);
            }
            const QString physical = ident(physicalTableName(s->intoMemory, true, m_dialect));
            addStep(QStringLiteral("DROP TABLE IF EXISTS ") + physical, false, false);
            for (const QString& ddl : createTableSql(def, m_dialect, true, false))
                addStep(ddl, false, false);
            QStringList names;
            for (const ColumnDef& c : def.columns())
                names.append(ident(c.name));
            addStep(QStringLiteral("INSERT INTO %1 (%2) %3").arg(physical, names.join(QLatin1String(", ")), sql));
            m_result.createsMemoryTable = def;
            m_result.memoryTablesUsed.append(s->intoMemory.toLower());
            return;
        }
        addStep(sql, true);
        m_result.returnsRows = true;
        m_result.columns = columns;
    }

    ScopeTable targetTable(const TableRef& ref)
    {
        ScopeTable t = resolveTable(ref, nullptr);
        if (!ref.memory && !m_schema.persistentTable(ref.name))
            ; // a memory table named without the keyword
        else if (!ref.memory)
            m_result.writesTable = t.def.name();
        return t;
    }

    void translateStatement(const InsertStmt& s)
    {
        const ScopeTable target = targetTable(s.table);
        std::vector<const ColumnDef*> columns;
        if (s.columns.isEmpty()) {
            for (const ColumnDef& c : target.def.columns())
                if (c.type != FieldType::AutoInc && c.name != QLatin1String(RowIdColumn))
                    columns.push_back(&c);
        } else {
            for (const QString& name : s.columns) {
                const ColumnDef* c = target.def.column(name);
                if (!c)
                    unknown(QStringLiteral("Column %1 does not exist in table %2").arg(name, target.def.name()));
                columns.push_back(c);
            }
        }
        QStringList names;
        for (const ColumnDef* c : columns)
            names.append(ident(c->name));
        const QString physical = target.physical;
        QString sql = QStringLiteral("INSERT INTO %1 (%2) ").arg(physical, names.join(QLatin1String(", ")));
        Scope empty;
        ExprContext ctx{&empty, false};
        if (s.select) {
            std::vector<OutputColumn> out;
            // Re-translate the select with each item coerced to its column.
            const QString inner = selectSql(*s.select, nullptr, &out);
            if (out.size() != columns.size())
                syntax(QStringLiteral("INSERT names %1 columns but the select gives %2").arg(columns.size()).arg(out.size()));
            QStringList coerced;
            for (size_t i = 0; i < columns.size(); ++i) {
                Tx v;
                v.sql = QStringLiteral("s.") + aliasName(out[i].name);
                v.type = out[i].type;
                v.width = out[i].width;
                coerced.append(coerce(v, *columns[i]));
            }
            sql += QStringLiteral("SELECT %1 FROM (%2) AS s").arg(coerced.join(QLatin1String(", ")), inner);
        } else {
            QStringList rows;
            for (const auto& row : s.rows) {
                if (row.size() != columns.size())
                    syntax(QStringLiteral("INSERT names %1 columns but gives %2 values").arg(columns.size()).arg(row.size()));
                QStringList values;
                for (size_t i = 0; i < row.size(); ++i) {
                    Tx v = tx(row[i], ctx);
                    values.append(coerce(v, *columns[i]));
                }
                rows.append(QLatin1Char('(') + values.join(QLatin1String(", ")) + QLatin1Char(')'));
            }
            sql += QStringLiteral("VALUES ") + rows.join(QLatin1String(", "));
        }
        addStep(sql);
        // Rows that bring their own row key leave the server's counter behind;
        // move it past them so later rows do not collide.
        for (const ColumnDef* c : columns) {
            if (pg() && c->type == FieldType::AutoInc) {
                const QString table = target.physical;
                addStep(QStringLiteral("SELECT setval(pg_get_serial_sequence('%1', '%2'), GREATEST((SELECT "
                                       "MAX(%3) FROM %4), 1))")
                            .arg(QString(table).replace(u'\'', QLatin1String("''")), c->name.toLower(),
                                 ident(c->name), table),
                        false, false);
            }
        }
    }

    void translateStatement(const UpdateStmt& s)
    {
        ScopeTable target = targetTable(s.table);
        Scope scope;
        scope.tables.push_back(target);
        QString from;
        QStringList joinConditions;
        if (!s.from.empty()) {
            // UPDATE t SET ... FROM t JOIN other ON ...: the target is not
            // repeated in the store's FROM and the joins become conditions.
            size_t start = 0;
            const JoinItem& first = s.from.front();
            if (!first.table.subquery && first.table.name.compare(s.table.name, Qt::CaseInsensitive) == 0) {
                start = 1;
                if (!first.table.alias.isEmpty() && s.table.alias.isEmpty()) {
                    scope.tables.front().visible = first.table.alias;
                    target.visible = first.table.alias;
                }
            }
            std::vector<ScopeTable> others;
            for (size_t i = start; i < s.from.size(); ++i)
                scope.tables.push_back(resolveTable(s.from[i].table, nullptr));
            ExprContext ctx{&scope, false};
            for (size_t i = start; i < s.from.size(); ++i) {
                const JoinItem& j = s.from[i];
                if (j.type == JoinType::Left || j.type == JoinType::Right)
                    syntax(QStringLiteral("Outer joins are not supported in UPDATE"));
                from += (from.isEmpty() ? QString() : QStringLiteral(", ")) + tableSql(scope.tables[i - start + 1]);
                if (j.on)
                    joinConditions.append(tx(j.on, ctx).sql);
            }
        }
        ExprContext ctx{&scope, false};
        QStringList sets;
        for (const auto& [name, expr] : s.assignments) {
            const ColumnDef* c = target.def.column(name);
            if (!c)
                unknown(QStringLiteral("Column %1 does not exist in table %2").arg(name, target.def.name()));
            Tx v = tx(expr, ctx);
            sets.append(ident(c->name) + QLatin1String(" = ") + coerce(v, *c));
        }
        QString sql = QStringLiteral("UPDATE ") + tableSqlForWrite(target) + QStringLiteral(" SET ") +
                      sets.join(QLatin1String(", "));
        if (!from.isEmpty())
            sql += QStringLiteral(" FROM ") + from;
        if (s.where)
            joinConditions.append(tx(s.where, ctx).sql);
        if (!joinConditions.isEmpty())
            sql += QStringLiteral(" WHERE ") + joinConditions.join(QLatin1String(" AND "));
        addStep(sql);
        probeRows(target, from, joinConditions);
    }

    QString tableSqlForWrite(const ScopeTable& t) const { return tableSql(t); }

    void translateStatement(const DeleteStmt& s)
    {
        const ScopeTable target = targetTable(s.table);
        Scope scope;
        scope.tables.push_back(target);
        ExprContext ctx{&scope, false};
        QString sql = QStringLiteral("DELETE FROM ") + tableSqlForWrite(target);
        QStringList conditions;
        if (s.where)
            conditions.append(tx(s.where, ctx).sql);
        if (!conditions.isEmpty())
            sql += QStringLiteral(" WHERE ") + conditions.front();
        addStep(sql);
        probeRows(target, {}, conditions);
    }

    void translateStatement(const CreateTableStmt& s)
    {
        if (!s.memory)
            syntax(QStringLiteral("Statements may create memory tables only; the data directory's tables come with it"));
        const TableDef* existing = m_schema.memoryTable(s.name);
        if (existing && s.ifNotExists)
            return;
        if (existing)
            throw DbError(DbErrorCode::Other, QStringLiteral("Memory table %1 already exists").arg(s.name), m_text);
        TableDef def(s.name);
        for (const ColumnDef& c : s.columns)
            def.add(c);
        if (!s.primaryKey.isEmpty())
            def.addIndex({QStringLiteral("PRIMARY"), s.primaryKey, true, false, true});
        for (const QString& ddl : createTableSql(def, m_dialect, true, s.ifNotExists))
            addStep(ddl);
        m_result.createsMemoryTable = def;
        m_result.memoryTablesUsed.append(s.name.toLower());
    }

    void translateStatement(const CreateIndexStmt& s)
    {
        const TableDef* def = s.table.memory ? m_schema.memoryTable(s.table.name) : nullptr;
        if (!def && !s.table.memory)
            def = m_schema.memoryTable(s.table.name);
        if (!def) {
            if (m_schema.persistentTable(s.table.name))
                syntax(QStringLiteral("The indexes of the data directory's tables are fixed"));
            unknown(QStringLiteral("Memory table %1 does not exist").arg(s.table.name));
        }
        m_result.memoryTablesUsed.append(def->name().toLower());
        const QString table = physicalTableName(def->name(), true, m_dialect);
        QStringList columns;
        for (const IndexColumn& c : s.columns) {
            const ColumnDef* column = def->column(c.name);
            if (!column)
                unknown(QStringLiteral("Column %1 does not exist in table %2").arg(c.name, def->name()));
            QString sql = ident(column->name);
            if (c.nocase || s.nocase)
                sql = pg() ? QStringLiteral("(lower(%1))").arg(sql) : sql + QStringLiteral(" COLLATE NOCASE");
            if (c.descending)
                sql += QStringLiteral(" DESC");
            if (pg())
                sql += c.descending ? QStringLiteral(" NULLS LAST") : QStringLiteral(" NULLS FIRST");
            columns.append(sql);
        }
        addStep(QStringLiteral("CREATE %1INDEX %2%3 ON %4 (%5)")
                    .arg(s.unique ? QStringLiteral("UNIQUE ") : QString(),
                         s.ifNotExists ? QStringLiteral("IF NOT EXISTS ") : QString(),
                         ident(table + QLatin1Char('_') + s.name), ident(table), columns.join(QLatin1String(", "))));
    }

    void translateStatement(const DropTableStmt& s)
    {
        if (!s.memory && m_schema.persistentTable(s.name))
            syntax(QStringLiteral("The data directory's tables cannot be dropped by a statement"));
        const TableDef* def = m_schema.memoryTable(s.name);
        if (!def && !s.ifExists)
            unknown(QStringLiteral("Memory table %1 does not exist").arg(s.name));
        addStep(QStringLiteral("DROP TABLE IF EXISTS ") + ident(physicalTableName(s.name, true, m_dialect)));
        m_result.dropsMemoryTable = s.name;
        m_result.memoryTablesUsed.append(s.name.toLower());
    }

    void translateStatement(const DropIndexStmt& s)
    {
        const TableDef* def = m_schema.memoryTable(s.table.name);
        if (!def) {
            if (s.ifExists)
                return;
            unknown(QStringLiteral("Memory table %1 does not exist").arg(s.table.name));
        }
        const QString table = physicalTableName(def->name(), true, m_dialect);
        addStep(QStringLiteral("DROP INDEX %1%2").arg(s.ifExists ? QStringLiteral("IF EXISTS ") : QString(),
                                                      ident(table + QLatin1Char('_') + s.name)));
    }

    void translateStatement(const EmptyTableStmt& s)
    {
        TableRef ref;
        ref.name = s.name;
        ref.memory = s.memory;
        const ScopeTable target = targetTable(ref);
        addStep(QStringLiteral("DELETE FROM ") + target.physical);
        probeRows(target, {}, {});
    }
};

QString columnTypeSql(const ColumnDef& c, Dialect dialect, bool primaryAutoInc)
{
    const bool pg = dialect == Dialect::PostgreSQL;
    switch (c.type) {
    case FieldType::String:
        return pg ? QStringLiteral("varchar(%1)").arg(std::max(c.width, 1))
                  : QStringLiteral("VARCHAR(%1)").arg(std::max(c.width, 1));
    case FieldType::SmallInt: return pg ? QStringLiteral("smallint") : QStringLiteral("SMALLINT");
    case FieldType::Int: return pg ? QStringLiteral("integer") : QStringLiteral("INTEGER");
    case FieldType::Float: return pg ? QStringLiteral("double precision") : QStringLiteral("DOUBLE");
    // SQLite keeps money as whole ten-thousandths (integer affinity).
    case FieldType::Currency: return pg ? QStringLiteral("numeric(19,4)") : QStringLiteral("MONEY_INT");
    case FieldType::Bool: return pg ? QStringLiteral("boolean") : QStringLiteral("BOOLEAN_INT");
    // Dates are ISO texts in SQLite, which sort and compare as dates.
    case FieldType::Date: return pg ? QStringLiteral("date") : QStringLiteral("DATE_TEXT");
    case FieldType::DateTime: return pg ? QStringLiteral("timestamp(0)") : QStringLiteral("TIMESTAMP_TEXT");
    case FieldType::Memo: return pg ? QStringLiteral("text") : QStringLiteral("MEMO_TEXT");
    case FieldType::Blob: return pg ? QStringLiteral("bytea") : QStringLiteral("BLOB");
    case FieldType::AutoInc:
        if (primaryAutoInc)
            return pg ? QStringLiteral("integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY")
                      : QStringLiteral("INTEGER PRIMARY KEY AUTOINCREMENT");
        return pg ? QStringLiteral("integer") : QStringLiteral("INTEGER");
    case FieldType::Unknown: break;
    }
    return pg ? QStringLiteral("text") : QStringLiteral("TEXT");
}

} // namespace

QString rowIdentity(const TableDef& table, Dialect dialect)
{
    if (dialect == Dialect::SQLite)
        return QStringLiteral("rowid");
    if (const ColumnDef* autoinc = table.autoIncColumn())
        return quoteIdentifier(autoinc->name, dialect);
    return quoteIdentifier(QStringLiteral("kb_rowid"), dialect);
}

QString quoteIdentifier(const QString& name, Dialect dialect)
{
    // PostgreSQL folds names to lower case; quoting keeps reserved words such
    // as User usable as column names.
    const QString n = dialect == Dialect::PostgreSQL ? name.toLower() : name;
    return QLatin1Char('"') + QString(n).replace(u'"', QLatin1String("\"\"")) + QLatin1Char('"');
}

QString physicalTableName(const QString& name, bool memory, Dialect dialect)
{
    (void)dialect;
    return memory ? QStringLiteral("mem_") + name.toLower() : name;
}

QStringList createTableSql(const TableDef& table, Dialect dialect, bool memory, bool ifNotExists)
{
    const QString physical = physicalTableName(table.name(), memory, dialect);
    const ColumnDef* autoinc = table.autoIncColumn();
    QStringList columns;
    for (const ColumnDef& c : table.columns()) {
        QString def = quoteIdentifier(c.name, dialect) + QLatin1Char(' ') +
                      columnTypeSql(c, dialect, autoinc && &c == autoinc);
        if (c.required && c.type != FieldType::AutoInc)
            def += QStringLiteral(" NOT NULL");
        columns.append(def);
    }
    // The server has no row number of its own; a table without a row key
    // gets a hidden one, so that every row can be named.
    if (dialect == Dialect::PostgreSQL && !autoinc)
        columns.append(QStringLiteral("\"kb_rowid\" bigint GENERATED BY DEFAULT AS IDENTITY UNIQUE"));
    QStringList statements;
    QString create = memory ? QStringLiteral("CREATE TEMP TABLE ") : QStringLiteral("CREATE TABLE ");
    if (ifNotExists)
        create += QStringLiteral("IF NOT EXISTS ");
    statements.append(create + quoteIdentifier(physical, dialect) + QStringLiteral(" (") +
                      columns.join(QLatin1String(", ")) + QLatin1Char(')'));
    for (const IndexDef& index : table.indexes()) {
        // The autoinc column is already the row key.
        if (index.primary && autoinc && index.columns.size() == 1 &&
            index.columns.front().compare(autoinc->name, Qt::CaseInsensitive) == 0)
            continue;
        QStringList parts;
        for (const QString& column : index.columns) {
            const ColumnDef* c = table.column(column);
            const QString name = quoteIdentifier(c ? c->name : column, dialect);
            const bool text = c && isText(c->type);
            QString part = name;
            if (index.caseInsensitive && text)
                part = dialect == Dialect::PostgreSQL ? QStringLiteral("(lower(%1))").arg(name)
                                                      : name + QStringLiteral(" COLLATE NOCASE");
            // Ordered reads put empty values first (see orderSuffix); an index
            // kept in that order on the server can then serve them, with a
            // limit, without sorting the whole table.
            if (dialect == Dialect::PostgreSQL)
                part += QStringLiteral(" NULLS FIRST");
            parts.append(part);
        }
        const bool unique = index.unique || index.primary;
        const QString indexName = physical.toLower() + QLatin1Char('_') + index.name.toLower();
        statements.append(QStringLiteral("CREATE %1INDEX %2%3 ON %4 (%5)")
                              .arg(unique ? QStringLiteral("UNIQUE ") : QString(),
                                   ifNotExists ? QStringLiteral("IF NOT EXISTS ") : QString(),
                                   quoteIdentifier(indexName, dialect), quoteIdentifier(physical, dialect),
                                   parts.join(QLatin1String(", "))));
    }
    return statements;
}

TranslatedStatement translate(const ParsedStatement& statement, Dialect dialect, const SchemaLookup& schema)
{
    Translator translator(dialect, schema, statement.text);
    return translator.run(statement.statement);
}

} // namespace kb::sql
