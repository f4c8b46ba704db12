#include "sql/Parser.h"

#include "store/DbError.h"

#include <QSet>

#include <algorithm>

namespace kb::sql {

namespace {

// Words that end an expression or a name and so can never be an alias.
const QSet<QString>& reservedWords()
{
    static const QSet<QString> words = {
        QStringLiteral("SELECT"), QStringLiteral("FROM"),   QStringLiteral("WHERE"),   QStringLiteral("GROUP"),
        QStringLiteral("ORDER"),  QStringLiteral("HAVING"), QStringLiteral("UNION"),   QStringLiteral("TOP"),
        QStringLiteral("INTO"),   QStringLiteral("ON"),     QStringLiteral("JOIN"),    QStringLiteral("LEFT"),
        QStringLiteral("RIGHT"),  QStringLiteral("INNER"),  QStringLiteral("OUTER"),   QStringLiteral("CROSS"),
        QStringLiteral("FULL"),   QStringLiteral("AS"),     QStringLiteral("AND"),     QStringLiteral("OR"),
        QStringLiteral("NOT"),    QStringLiteral("THEN"),   QStringLiteral("ELSE"),    QStringLiteral("END"),
        QStringLiteral("WHEN"),   QStringLiteral("DESC"),   QStringLiteral("DESCENDING"), QStringLiteral("ASC"),
        QStringLiteral("ASCENDING"), QStringLiteral("NOCASE"), QStringLiteral("LIMIT"), QStringLiteral("SET"),
        QStringLiteral("VALUES"), QStringLiteral("IS"),     QStringLiteral("IN"),      QStringLiteral("LIKE"),
        QStringLiteral("BETWEEN"), QStringLiteral("BY"),    QStringLiteral("NOJOINOPTIMIZE"),
        QStringLiteral("JOINOPTIMIZECOSTS"), QStringLiteral("FOR"), QStringLiteral("ESCAPE"),
    };
    return words;
}

class Parser
{
public:
    Parser(const QString& text, QList<Token> tokens) : m_text(text), m_tokens(std::move(tokens)) {}

    std::vector<ParsedStatement> parseAll()
    {
        std::vector<ParsedStatement> result;
        while (!atEnd()) {
            if (peek().isSymbol(QLatin1StringView(";"))) {
                next();
                continue;
            }
            const qsizetype begin = peek().begin;
            Statement s = parseStatement();
            const qsizetype end = m_tokens[m_pos - 1].end;
            if (!atEnd() && !peek().isSymbol(QLatin1StringView(";")))
                fail(QStringLiteral("Expected end of statement"));
            result.push_back({std::move(s), m_text.mid(begin, end - begin)});
        }
        return result;
    }

private:
    const QString& m_text;
    QList<Token> m_tokens;
    qsizetype m_pos = 0;
    int m_depth = 0; // recursion levels now open

    // One level of recursion, refused beyond MaxNesting before the stack
    // could run out.
    class Descent
    {
    public:
        explicit Descent(Parser& parser) : m_parser(parser)
        {
            if (++m_parser.m_depth > MaxNesting) {
                --m_parser.m_depth;
                m_parser.tooDeep();
            }
        }
        ~Descent() { --m_parser.m_depth; }
        Descent(const Descent&) = delete;
        Descent& operator=(const Descent&) = delete;

    private:
        Parser& m_parser;
    };

    [[noreturn]] void tooDeep() const
    {
        fail(QStringLiteral("The statement nests more than %1 levels deep (parentheses, sub-selects, functions or "
                            "operators in a row); write it with fewer levels")
                 .arg(MaxNesting));
    }

    const Token& peek(int ahead = 0) const
    {
        const qsizetype i = std::min(m_pos + ahead, m_tokens.size() - 1);
        return m_tokens[i];
    }
    const Token& next() { return m_tokens[std::min(m_pos++, m_tokens.size() - 1)]; }
    bool atEnd() const { return peek().kind == TokenKind::End; }

    [[noreturn]] void fail(const QString& what) const
    {
        const Token& t = peek();
        const QString near = t.kind == TokenKind::End ? QStringLiteral("the end")
                                                      : QStringLiteral("'%1'").arg(m_text.mid(t.begin, t.end - t.begin));
        throw DbError(DbErrorCode::Syntax,
                      QStringLiteral("%1 near %2 at position %3").arg(what, near).arg(t.begin + 1), m_text);
    }

    bool acceptWord(const char* word)
    {
        if (peek().isWord(QLatin1StringView(word))) {
            next();
            return true;
        }
        return false;
    }
    void expectWord(const char* word)
    {
        if (!acceptWord(word))
            fail(QStringLiteral("Expected %1").arg(QLatin1StringView(word)));
    }
    bool acceptSymbol(const char* symbol)
    {
        if (peek().isSymbol(QLatin1StringView(symbol))) {
            next();
            return true;
        }
        return false;
    }
    void expectSymbol(const char* symbol)
    {
        if (!acceptSymbol(symbol))
            fail(QStringLiteral("Expected '%1'").arg(QLatin1StringView(symbol)));
    }
    bool isReserved(const Token& t) const
    {
        return t.kind == TokenKind::Identifier && reservedWords().contains(t.text.toUpper());
    }
    QString expectName(const char* what)
    {
        const Token& t = peek();
        if ((t.kind == TokenKind::Identifier && !isReserved(t)) || t.kind == TokenKind::QuotedName) {
            next();
            return t.text;
        }
        fail(QStringLiteral("Expected %1").arg(QLatin1StringView(what)));
    }
    // An optional alias: AS name, or a bare name that is no keyword.
    QString parseAlias()
    {
        if (acceptWord("AS")) {
            const Token& t = peek();
            if (t.kind == TokenKind::Identifier || t.kind == TokenKind::QuotedName || t.kind == TokenKind::String) {
                next();
                return t.text;
            }
            fail(QStringLiteral("Expected a name after AS"));
        }
        const Token& t = peek();
        if ((t.kind == TokenKind::Identifier && !isReserved(t)) || t.kind == TokenKind::QuotedName) {
            next();
            return t.text;
        }
        return {};
    }

    Statement parseStatement()
    {
        if (peek().isWord(QLatin1StringView("SELECT")) || peek().isSymbol(QLatin1StringView("(")))
            return parseSelect();
        if (acceptWord("INSERT"))
            return parseInsert();
        if (acceptWord("UPDATE"))
            return parseUpdate();
        if (acceptWord("DELETE"))
            return parseDelete();
        if (acceptWord("CREATE"))
            return parseCreate();
        if (acceptWord("DROP"))
            return parseDrop();
        if (acceptWord("EMPTY")) {
            expectWord("TABLE");
            EmptyTableStmt s;
            s.memory = acceptWord("MEMORY");
            s.name = expectName("a table name");
            return s;
        }
        fail(QStringLiteral("Expected a statement"));
    }

    TableRef parseTableName()
    {
        TableRef ref;
        ref.memory = acceptWord("MEMORY");
        ref.name = expectName("a table name");
        // A table named by its file, "MemTableLabels.dat", is the table.
        if (ref.name.size() > 4 && ref.name.endsWith(QLatin1String(".dat"), Qt::CaseInsensitive))
            ref.name.chop(4);
        // A database qualifier ("Memory".name or db.name) is dropped.
        if (peek().isSymbol(QLatin1StringView(".")) &&
            (peek(1).kind == TokenKind::Identifier || peek(1).kind == TokenKind::QuotedName)) {
            if (ref.name.compare(QLatin1String("MEMORY"), Qt::CaseInsensitive) == 0)
                ref.memory = true;
            next();
            ref.name = next().text;
        }
        return ref;
    }

    TableRef parseTableRef()
    {
        TableRef ref;
        if (acceptSymbol("(")) {
            ref.subquery = parseSelectBody();
            expectSymbol(")");
            ref.alias = parseAlias();
            if (ref.alias.isEmpty())
                fail(QStringLiteral("A derived table needs a name"));
            return ref;
        }
        ref = parseTableName();
        ref.alias = parseAlias();
        return ref;
    }

    std::vector<JoinItem> parseFromList()
    {
        std::vector<JoinItem> items;
        JoinItem first;
        first.table = parseTableRef();
        items.push_back(std::move(first));
        for (;;) {
            JoinItem item;
            if (acceptSymbol(",")) {
                item.type = JoinType::Cross;
            } else if (acceptWord("CROSS")) {
                expectWord("JOIN");
                item.type = JoinType::Cross;
            } else if (acceptWord("LEFT")) {
                acceptWord("OUTER");
                expectWord("JOIN");
                item.type = JoinType::Left;
            } else if (acceptWord("RIGHT")) {
                acceptWord("OUTER");
                expectWord("JOIN");
                item.type = JoinType::Right;
            } else if (acceptWord("INNER")) {
                expectWord("JOIN");
                item.type = JoinType::Inner;
            } else if (acceptWord("JOIN")) {
                item.type = JoinType::Inner;
            } else {
                break;
            }
            item.table = parseTableRef();
            if (item.type != JoinType::Cross) {
                expectWord("ON");
                item.on = parseExpr();
            }
            items.push_back(std::move(item));
        }
        return items;
    }

    SelectPtr parseSelect()
    {
        SelectPtr s = parseSelectBody();
        return s;
    }

    SelectCore parseSelectCore(SelectStmt& stmt)
    {
        if (acceptSymbol("(")) {
            // A parenthesised select inside a union.
            SelectPtr inner = parseSelectBody();
            expectSymbol(")");
            if (inner->cores.size() != 1 || !inner->orderBy.empty())
                fail(QStringLiteral("Nested unions are not supported"));
            return inner->cores.front();
        }
        expectWord("SELECT");
        SelectCore core;
        if (acceptWord("DISTINCT"))
            core.distinct = true;
        else
            acceptWord("ALL");
        if (acceptWord("TOP")) {
            const Token& t = next();
            if (t.kind != TokenKind::Number)
                fail(QStringLiteral("Expected a number after TOP"));
            stmt.top = t.text.toLongLong();
        }
        do {
            SelectItem item;
            item.expr = parseExpr();
            if (item.expr->kind != ExprKind::Star)
                item.alias = parseAlias();
            core.items.push_back(std::move(item));
        } while (acceptSymbol(","));
        if (acceptWord("INTO")) {
            const bool memory = acceptWord("MEMORY");
            QString name = expectName("a table name");
            if (peek().isSymbol(QLatin1StringView("."))) {
                next();
                name = expectName("a table name");
            }
            if (!memory)
                fail(QStringLiteral("Only SELECT INTO MEMORY tables is supported"));
            stmt.intoMemory = name;
        }
        if (acceptWord("FROM"))
            core.from = parseFromList();
        // Optimiser hints of the dialect carry no meaning here.
        while (acceptWord("NOJOINOPTIMIZE") || acceptWord("JOINOPTIMIZECOSTS")) {
        }
        if (acceptWord("WHERE"))
            core.where = parseExpr();
        while (acceptWord("NOJOINOPTIMIZE") || acceptWord("JOINOPTIMIZECOSTS")) {
        }
        if (acceptWord("GROUP")) {
            expectWord("BY");
            do
                core.groupBy.push_back(parseExpr());
            while (acceptSymbol(","));
        }
        if (acceptWord("HAVING"))
            core.having = parseExpr();
        return core;
    }

    SelectPtr parseSelectBody()
    {
        const Descent descent(*this);
        auto stmt = std::make_shared<SelectStmt>();
        stmt->cores.push_back(parseSelectCore(*stmt));
        while (acceptWord("UNION")) {
            stmt->unionAll.push_back(acceptWord("ALL"));
            stmt->cores.push_back(parseSelectCore(*stmt));
        }
        if (acceptWord("ORDER")) {
            expectWord("BY");
            do {
                OrderItem item;
                item.expr = parseExpr();
                for (;;) {
                    if (acceptWord("DESC") || acceptWord("DESCENDING"))
                        item.descending = true;
                    else if (acceptWord("ASC") || acceptWord("ASCENDING"))
                        item.descending = false;
                    else if (acceptWord("NOCASE"))
                        item.nocase = true;
                    else
                        break;
                }
                stmt->orderBy.push_back(std::move(item));
            } while (acceptSymbol(","));
        }
        while (acceptWord("NOJOINOPTIMIZE")) {
        }
        if (acceptWord("TOP") || acceptWord("LIMIT")) {
            const Token& t = next();
            if (t.kind != TokenKind::Number)
                fail(QStringLiteral("Expected a number after TOP"));
            stmt->top = t.text.toLongLong();
        }
        measure(*stmt);
        return stmt;
    }

    // The height of a select: one above the deepest expression or
    // sub-select it holds.
    void measure(SelectStmt& stmt) const
    {
        int height = 0;
        const auto take = [&height](const ExprPtr& e) {
            if (e)
                height = std::max(height, e->height);
        };
        for (const SelectCore& core : stmt.cores) {
            for (const SelectItem& item : core.items)
                take(item.expr);
            for (const JoinItem& join : core.from) {
                take(join.on);
                if (join.table.subquery)
                    height = std::max(height, join.table.subquery->height);
            }
            take(core.where);
            for (const ExprPtr& g : core.groupBy)
                take(g);
            take(core.having);
        }
        for (const OrderItem& item : stmt.orderBy)
            take(item.expr);
        stmt.height = height + 1;
        if (stmt.height > MaxNesting)
            tooDeep();
    }

    InsertStmt parseInsert()
    {
        expectWord("INTO");
        InsertStmt s;
        s.table = parseTableName();
        acceptWord("FIELDS");
        if (acceptSymbol("(")) {
            do
                s.columns.append(expectName("a column name"));
            while (acceptSymbol(","));
            expectSymbol(")");
        }
        if (acceptWord("VALUES")) {
            do {
                expectSymbol("(");
                std::vector<ExprPtr> row;
                do
                    row.push_back(parseExpr());
                while (acceptSymbol(","));
                expectSymbol(")");
                s.rows.push_back(std::move(row));
            } while (acceptSymbol(","));
        } else if (peek().isWord(QLatin1StringView("SELECT")) || peek().isSymbol(QLatin1StringView("("))) {
            s.select = parseSelectBody();
        } else {
            fail(QStringLiteral("Expected VALUES or SELECT"));
        }
        return s;
    }

    UpdateStmt parseUpdate()
    {
        UpdateStmt s;
        s.table = parseTableName();
        if (!peek().isWord(QLatin1StringView("SET")))
            s.table.alias = parseAlias();
        expectWord("SET");
        do {
            QString column = expectName("a column name");
            if (acceptSymbol("."))
                column = expectName("a column name"); // table.column: the table is the target
            expectSymbol("=");
            s.assignments.emplace_back(column, parseExpr());
        } while (acceptSymbol(","));
        if (acceptWord("FROM"))
            s.from = parseFromList();
        if (acceptWord("WHERE"))
            s.where = parseExpr();
        return s;
    }

    DeleteStmt parseDelete()
    {
        acceptWord("FROM");
        DeleteStmt s;
        s.table = parseTableName();
        if (!peek().isWord(QLatin1StringView("WHERE")))
            s.table.alias = parseAlias();
        if (acceptWord("WHERE"))
            s.where = parseExpr();
        return s;
    }

    bool parseIfNotExists()
    {
        if (acceptWord("IF")) {
            expectWord("NOT");
            expectWord("EXISTS");
            return true;
        }
        return false;
    }

    ColumnDef parseColumnType(const QString& name)
    {
        ColumnDef c;
        c.name = name;
        const Token typeToken = next();
        if (typeToken.kind != TokenKind::Identifier)
            fail(QStringLiteral("Expected a column type"));
        QString typeName = typeToken.text;
        // Two-word types.
        if (typeName.compare(QLatin1String("DOUBLE"), Qt::CaseInsensitive) == 0)
            acceptWord("PRECISION");
        c.type = typeFromName(typeName);
        if (c.type == FieldType::Unknown)
            fail(QStringLiteral("Unknown column type %1").arg(typeName));
        if (acceptSymbol("(")) {
            const Token& w = next();
            if (w.kind != TokenKind::Number)
                fail(QStringLiteral("Expected a width"));
            c.width = w.text.toInt();
            if (acceptSymbol(","))
                next();
            expectSymbol(")");
        }
        if (c.type == FieldType::String && c.width == 0)
            c.width = typeName.compare(QLatin1String("CHAR"), Qt::CaseInsensitive) == 0 ? 1 : 255;
        for (;;) {
            if (acceptWord("NOT")) {
                expectWord("NULL");
                c.required = true;
            } else if (acceptWord("NULL")) {
            } else if (acceptWord("DESCRIPTION")) {
                next();
            } else if (acceptWord("PRIMARY")) {
                expectWord("KEY");
            } else {
                break;
            }
        }
        return c;
    }

    Statement parseCreate()
    {
        bool unique = false;
        bool nocase = false;
        for (;;) {
            if (acceptWord("UNIQUE"))
                unique = true;
            else if (acceptWord("NOCASE"))
                nocase = true;
            else
                break;
        }
        if (acceptWord("TABLE")) {
            CreateTableStmt s;
            s.ifNotExists = parseIfNotExists();
            const TableRef ref = parseTableName();
            s.memory = ref.memory;
            s.name = ref.name;
            expectSymbol("(");
            do {
                if (acceptWord("PRIMARY")) {
                    expectWord("KEY");
                    if (peek().kind == TokenKind::QuotedName || peek().kind == TokenKind::Identifier) {
                        if (!peek().isSymbol(QLatin1StringView("(")))
                            next(); // key name
                    }
                    expectSymbol("(");
                    do
                        s.primaryKey.append(expectName("a column name"));
                    while (acceptSymbol(","));
                    expectSymbol(")");
                    continue;
                }
                const QString name = expectName("a column name");
                s.columns.push_back(parseColumnType(name));
            } while (acceptSymbol(","));
            expectSymbol(")");
            return s;
        }
        expectWord("INDEX");
        CreateIndexStmt s;
        s.unique = unique;
        s.nocase = nocase;
        s.ifNotExists = parseIfNotExists();
        s.name = expectName("an index name");
        expectWord("ON");
        s.table = parseTableName();
        expectSymbol("(");
        do {
            IndexColumn column;
            column.name = expectName("a column name");
            for (;;) {
                if (acceptWord("DESC") || acceptWord("DESCENDING"))
                    column.descending = true;
                else if (acceptWord("ASC") || acceptWord("ASCENDING"))
                    column.descending = false;
                else if (acceptWord("NOCASE"))
                    column.nocase = true;
                else
                    break;
            }
            s.columns.push_back(column);
        } while (acceptSymbol(","));
        expectSymbol(")");
        return s;
    }

    Statement parseDrop()
    {
        if (acceptWord("TABLE")) {
            DropTableStmt s;
            if (acceptWord("IF")) {
                expectWord("EXISTS");
                s.ifExists = true;
            }
            const TableRef ref = parseTableName();
            s.memory = ref.memory;
            s.name = ref.name;
            return s;
        }
        expectWord("INDEX");
        DropIndexStmt s;
        if (acceptWord("IF")) {
            expectWord("EXISTS");
            s.ifExists = true;
        }
        // DROP INDEX table.name
        s.table = parseTableName();
        if (acceptSymbol(".")) {
            s.name = expectName("an index name");
        } else {
            s.name = s.table.name;
            s.table = {};
            if (acceptWord("ON"))
                s.table = parseTableName();
        }
        return s;
    }

    // ---- expressions ----

    ExprPtr make(ExprKind kind, qsizetype begin)
    {
        auto e = std::make_shared<Expr>();
        e->kind = kind;
        e->sourceText = m_text.mid(begin, m_tokens[m_pos - 1].end - begin);
        return e;
    }
    // Completes a node once its parts are read: its text and its height,
    // which may not pass MaxNesting however the node was built.
    void finish(const ExprPtr& e, qsizetype begin)
    {
        e->sourceText = m_text.mid(begin, m_tokens[m_pos - 1].end - begin).trimmed();
        int height = 0;
        for (const ExprPtr& a : e->args)
            if (a)
                height = std::max(height, a->height);
        if (e->select)
            height = std::max(height, e->select->height);
        e->height = height + 1;
        if (e->height > MaxNesting)
            tooDeep();
    }

    ExprPtr parseExpr()
    {
        const Descent descent(*this);
        return parseOr();
    }

    ExprPtr binary(const QString& op, ExprPtr left, ExprPtr right, qsizetype begin)
    {
        auto e = std::make_shared<Expr>();
        e->kind = ExprKind::Binary;
        e->op = op;
        e->args = {std::move(left), std::move(right)};
        finish(e, begin);
        return e;
    }

    // a OR b OR c (and the same of AND) is one node with all the terms, so
    // a long list of conditions adds one level, not one per term.
    template <typename Term> ExprPtr parseChain(const char* word, Term term)
    {
        const qsizetype begin = peek().begin;
        ExprPtr first = term();
        if (!peek().isWord(QLatin1StringView(word)))
            return first;
        auto e = std::make_shared<Expr>();
        e->kind = ExprKind::Binary;
        e->op = QString::fromLatin1(word);
        e->args.push_back(std::move(first));
        while (acceptWord(word))
            e->args.push_back(term());
        finish(e, begin);
        return e;
    }

    ExprPtr parseOr()
    {
        return parseChain("OR", [this] { return parseAnd(); });
    }

    ExprPtr parseAnd()
    {
        return parseChain("AND", [this] { return parseNot(); });
    }

    ExprPtr parseNot()
    {
        const qsizetype begin = peek().begin;
        if (acceptWord("NOT")) {
            const Descent descent(*this);
            auto e = std::make_shared<Expr>();
            e->kind = ExprKind::Unary;
            e->op = QStringLiteral("NOT");
            e->args = {parseNot()};
            finish(e, begin);
            return e;
        }
        return parseComparison();
    }

    ExprPtr parseComparison()
    {
        const qsizetype begin = peek().begin;
        ExprPtr left = parseAdditive();
        for (;;) {
            const Token& t = peek();
            if (t.kind == TokenKind::Symbol &&
                (t.text == QLatin1String("=") || t.text == QLatin1String("<>") || t.text == QLatin1String("<") ||
                 t.text == QLatin1String(">") || t.text == QLatin1String("<=") || t.text == QLatin1String(">="))) {
                const QString op = next().text;
                left = binary(op, left, parseAdditive(), begin);
                continue;
            }
            bool negated = false;
            if (t.isWord(QLatin1StringView("NOT")) &&
                (peek(1).isWord(QLatin1StringView("LIKE")) || peek(1).isWord(QLatin1StringView("IN")) ||
                 peek(1).isWord(QLatin1StringView("BETWEEN")))) {
                next();
                negated = true;
            }
            if (acceptWord("LIKE")) {
                ExprPtr e = binary(QStringLiteral("LIKE"), left, parseAdditive(), begin);
                e->negated = negated;
                if (acceptWord("ESCAPE")) {
                    e->args.push_back(parseAdditive());
                    finish(e, begin);
                }
                left = e;
                continue;
            }
            if (acceptWord("IN")) {
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->negated = negated;
                if (peek().isWord(QLatin1StringView("SELECT"))) {
                    e->kind = ExprKind::InSelect;
                    e->args = {left};
                    e->select = parseSelectBody();
                } else {
                    e->kind = ExprKind::InList;
                    e->args = {left};
                    do
                        e->args.push_back(parseExpr());
                    while (acceptSymbol(","));
                }
                expectSymbol(")");
                finish(e, begin);
                left = e;
                continue;
            }
            if (acceptWord("BETWEEN")) {
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Between;
                e->negated = negated;
                ExprPtr low = parseAdditive();
                expectWord("AND");
                ExprPtr high = parseAdditive();
                e->args = {left, low, high};
                finish(e, begin);
                left = e;
                continue;
            }
            if (negated)
                fail(QStringLiteral("Expected LIKE, IN or BETWEEN after NOT"));
            if (acceptWord("IS")) {
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::IsNull;
                e->negated = acceptWord("NOT");
                expectWord("NULL");
                e->args = {left};
                finish(e, begin);
                left = e;
                continue;
            }
            return left;
        }
    }

    ExprPtr parseAdditive()
    {
        const qsizetype begin = peek().begin;
        ExprPtr left = parseMultiplicative();
        for (;;) {
            const Token& t = peek();
            if (t.isSymbol(QLatin1StringView("+")) || t.isSymbol(QLatin1StringView("-")) ||
                t.isSymbol(QLatin1StringView("||"))) {
                const QString op = next().text;
                left = binary(op, left, parseMultiplicative(), begin);
            } else {
                return left;
            }
        }
    }

    ExprPtr parseMultiplicative()
    {
        const qsizetype begin = peek().begin;
        ExprPtr left = parseUnary();
        for (;;) {
            const Token& t = peek();
            if (t.isSymbol(QLatin1StringView("*")) || t.isSymbol(QLatin1StringView("/"))) {
                const QString op = next().text;
                left = binary(op, left, parseUnary(), begin);
            } else if (t.isWord(QLatin1StringView("MOD")) || t.isWord(QLatin1StringView("DIV"))) {
                const QString op = next().text.toUpper();
                left = binary(op, left, parseUnary(), begin);
            } else {
                return left;
            }
        }
    }

    ExprPtr parseUnary()
    {
        const qsizetype begin = peek().begin;
        if (peek().isSymbol(QLatin1StringView("-")) || peek().isSymbol(QLatin1StringView("+"))) {
            const Descent descent(*this);
            return parseSigned(begin);
        }
        return parsePrimary();
    }

    ExprPtr parseSigned(qsizetype begin)
    {
        if (acceptSymbol("-")) {
            ExprPtr operand = parseUnary();
            if (operand->kind == ExprKind::Literal &&
                (operand->literal == LiteralKind::Integer || operand->literal == LiteralKind::Float)) {
                operand->value.prepend(u'-');
                finish(operand, begin);
                return operand;
            }
            auto e = std::make_shared<Expr>();
            e->kind = ExprKind::Unary;
            e->op = QStringLiteral("-");
            e->args = {operand};
            finish(e, begin);
            return e;
        }
        expectSymbol("+");
        return parseUnary();
    }

    ExprPtr literal(LiteralKind kind, const QString& value, qsizetype begin)
    {
        auto e = std::make_shared<Expr>();
        e->kind = ExprKind::Literal;
        e->literal = kind;
        e->value = value;
        finish(e, begin);
        return e;
    }

    // IF(c THEN a ELSE b) and IFNULL(x THEN y ELSE z) share one shape.
    ExprPtr parseThenElse(ExprKind kind, qsizetype begin)
    {
        expectSymbol("(");
        auto e = std::make_shared<Expr>();
        e->kind = kind;
        ExprPtr first = parseExpr();
        if (acceptSymbol(",")) {
            // The comma form IFNULL(x, y) reads as "x unless null, then y".
            ExprPtr second = parseExpr();
            expectSymbol(")");
            if (kind == ExprKind::IfNull) {
                e->args = {first, second, first};
            } else {
                expectSymbol(",");
                e->args = {first, second, parseExpr()};
            }
            finish(e, begin);
            return e;
        }
        expectWord("THEN");
        ExprPtr thenExpr = parseExpr();
        ExprPtr elseExpr;
        if (acceptWord("ELSE"))
            elseExpr = parseExpr();
        else
            elseExpr = literal(LiteralKind::Null, {}, peek().begin);
        expectSymbol(")");
        e->args = {first, thenExpr, elseExpr};
        finish(e, begin);
        return e;
    }

    ExprPtr parsePrimary()
    {
        const qsizetype begin = peek().begin;
        const Token t = peek();
        switch (t.kind) {
        case TokenKind::String:
            next();
            return literal(LiteralKind::String, t.text, begin);
        case TokenKind::Number:
            next();
            return literal(t.text.contains(u'.') || t.text.contains(u'e', Qt::CaseInsensitive)
                               ? LiteralKind::Float
                               : LiteralKind::Integer,
                           t.text, begin);
        case TokenKind::Parameter: {
            next();
            auto e = std::make_shared<Expr>();
            e->kind = ExprKind::Param;
            e->name = t.text;
            finish(e, begin);
            return e;
        }
        case TokenKind::QuotedName:
            next();
            // "text" followed by a dot names a table; elsewhere the dialect
            // reads double-quoted text as a string.
            if (peek().isSymbol(QLatin1StringView(".")))
                return parseColumnAfterQualifier(t.text, begin);
            return literal(LiteralKind::String, t.text, begin);
        case TokenKind::Symbol:
            if (t.text == QLatin1String("(")) {
                next();
                if (peek().isWord(QLatin1StringView("SELECT"))) {
                    auto e = std::make_shared<Expr>();
                    e->kind = ExprKind::Subquery;
                    e->select = parseSelectBody();
                    expectSymbol(")");
                    finish(e, begin);
                    return e;
                }
                ExprPtr inner = parseExpr();
                expectSymbol(")");
                finish(inner, begin);
                return inner;
            }
            if (t.text == QLatin1String("*")) {
                next();
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Star;
                finish(e, begin);
                return e;
            }
            fail(QStringLiteral("Expected an expression"));
        case TokenKind::End:
            fail(QStringLiteral("Expected an expression"));
        case TokenKind::Identifier:
            break;
        }

        const QString word = t.text.toUpper();
        const bool call = peek(1).isSymbol(QLatin1StringView("("));
        if (word == QLatin1String("NULL")) {
            next();
            return literal(LiteralKind::Null, {}, begin);
        }
        if (word == QLatin1String("TRUE") || word == QLatin1String("FALSE")) {
            next();
            return literal(LiteralKind::Bool, word, begin);
        }
        if (word == QLatin1String("CURRENT_DATE") || word == QLatin1String("CURRENT_TIME") ||
            word == QLatin1String("CURRENT_TIMESTAMP")) {
            next();
            if (call) { // tolerate Current_Date()
                next();
                expectSymbol(")");
            }
            auto e = std::make_shared<Expr>();
            e->kind = word == QLatin1String("CURRENT_DATE")   ? ExprKind::CurrentDate
                      : word == QLatin1String("CURRENT_TIME") ? ExprKind::CurrentTime
                                                              : ExprKind::CurrentTimestamp;
            finish(e, begin);
            return e;
        }
        if (word == QLatin1String("CASE"))
            return parseCase(begin);
        if (word == QLatin1String("EXISTS") && call) {
            next();
            expectSymbol("(");
            auto e = std::make_shared<Expr>();
            e->kind = ExprKind::Exists;
            e->select = parseSelectBody();
            expectSymbol(")");
            finish(e, begin);
            return e;
        }
        if (call) {
            if (word == QLatin1String("IF")) {
                next();
                return parseThenElse(ExprKind::If, begin);
            }
            if (word == QLatin1String("IFNULL")) {
                next();
                return parseThenElse(ExprKind::IfNull, begin);
            }
            if (word == QLatin1String("POS") || word == QLatin1String("POSITION")) {
                next();
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Pos;
                ExprPtr needle = parseAdditive();
                if (!acceptWord("IN"))
                    expectSymbol(",");
                e->args = {needle, parseAdditive()};
                expectSymbol(")");
                finish(e, begin);
                return e;
            }
            if (word == QLatin1String("SUBSTRING") || word == QLatin1String("SUBSTR")) {
                next();
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Substring;
                e->args.push_back(parseExpr());
                if (!acceptWord("FROM"))
                    expectSymbol(",");
                e->args.push_back(parseExpr());
                if (acceptWord("FOR") || acceptSymbol(","))
                    e->args.push_back(parseExpr());
                expectSymbol(")");
                finish(e, begin);
                return e;
            }
            if (word == QLatin1String("EXTRACT")) {
                next();
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Extract;
                const Token& part = next();
                if (part.kind != TokenKind::Identifier)
                    fail(QStringLiteral("Expected a date part"));
                e->op = part.text.toUpper();
                expectWord("FROM");
                e->args = {parseExpr()};
                expectSymbol(")");
                finish(e, begin);
                return e;
            }
            if (word == QLatin1String("CAST")) {
                next();
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Cast;
                e->args = {parseExpr()};
                expectWord("AS");
                const ColumnDef type = parseColumnType(QString());
                e->castType = type.type;
                e->castWidth = type.width;
                expectSymbol(")");
                finish(e, begin);
                return e;
            }
            if (word == QLatin1String("TRIM")) {
                next();
                expectSymbol("(");
                auto e = std::make_shared<Expr>();
                e->kind = ExprKind::Trim;
                e->op = QStringLiteral("BOTH");
                if (acceptWord("BOTH"))
                    e->op = QStringLiteral("BOTH");
                else if (acceptWord("LEADING"))
                    e->op = QStringLiteral("LEADING");
                else if (acceptWord("TRAILING"))
                    e->op = QStringLiteral("TRAILING");
                ExprPtr first;
                if (!peek().isWord(QLatin1StringView("FROM")))
                    first = parseExpr();
                if (acceptWord("FROM")) {
                    e->args = {parseExpr(), first};
                } else {
                    e->args = {first};
                }
                expectSymbol(")");
                finish(e, begin);
                return e;
            }
            next();
            expectSymbol("(");
            auto e = std::make_shared<Expr>();
            e->kind = ExprKind::Function;
            e->op = word;
            if (!acceptSymbol(")")) {
                if (acceptWord("DISTINCT"))
                    e->distinct = true;
                do
                    e->args.push_back(parseExpr());
                while (acceptSymbol(",") || (word == QLatin1String("ROUND") && acceptWord("TO")));
                expectSymbol(")");
            }
            finish(e, begin);
            return e;
        }
        if (isReserved(t))
            fail(QStringLiteral("Expected an expression"));
        next();
        if (peek().isSymbol(QLatin1StringView(".")))
            return parseColumnAfterQualifier(t.text, begin);
        auto e = std::make_shared<Expr>();
        e->kind = ExprKind::Column;
        e->name = t.text;
        finish(e, begin);
        return e;
    }

    ExprPtr parseColumnAfterQualifier(const QString& qualifier, qsizetype begin)
    {
        expectSymbol(".");
        auto e = std::make_shared<Expr>();
        e->qualifier = qualifier;
        if (acceptSymbol("*")) {
            e->kind = ExprKind::Star;
        } else {
            e->kind = ExprKind::Column;
            const Token& t = next();
            if (t.kind != TokenKind::Identifier && t.kind != TokenKind::QuotedName)
                fail(QStringLiteral("Expected a column name"));
            e->name = t.text;
        }
        finish(e, begin);
        return e;
    }

    ExprPtr parseCase(qsizetype begin)
    {
        next();
        auto e = std::make_shared<Expr>();
        e->kind = ExprKind::Case;
        if (!peek().isWord(QLatin1StringView("WHEN"))) {
            e->caseHasOperand = true;
            e->args.push_back(parseExpr());
        }
        while (acceptWord("WHEN")) {
            e->args.push_back(parseExpr());
            expectWord("THEN");
            e->args.push_back(parseExpr());
        }
        if (acceptWord("ELSE")) {
            e->caseHasElse = true;
            e->args.push_back(parseExpr());
        }
        expectWord("END");
        finish(e, begin);
        return e;
    }
};

} // namespace

FieldType typeFromName(const QString& name)
{
    const QString n = name.toUpper();
    if (n == QLatin1String("CHAR") || n == QLatin1String("VARCHAR") || n == QLatin1String("STRING") ||
        n == QLatin1String("TEXT") || n == QLatin1String("CHARACTER"))
        return FieldType::String;
    if (n == QLatin1String("SMALLINT") || n == QLatin1String("WORD"))
        return FieldType::SmallInt;
    if (n == QLatin1String("INTEGER") || n == QLatin1String("INT") || n == QLatin1String("LONGINT") ||
        n == QLatin1String("LARGEINT") || n == QLatin1String("BIGINT"))
        return FieldType::Int;
    if (n == QLatin1String("FLOAT") || n == QLatin1String("DOUBLE") || n == QLatin1String("REAL") ||
        n == QLatin1String("NUMERIC") || n == QLatin1String("DECIMAL") || n == QLatin1String("BCD"))
        return FieldType::Float;
    if (n == QLatin1String("MONEY") || n == QLatin1String("CURRENCY"))
        return FieldType::Currency;
    if (n == QLatin1String("BOOLEAN") || n == QLatin1String("BOOL") || n == QLatin1String("BIT") ||
        n == QLatin1String("LOGICAL"))
        return FieldType::Bool;
    if (n == QLatin1String("DATE"))
        return FieldType::Date;
    if (n == QLatin1String("TIMESTAMP") || n == QLatin1String("DATETIME") || n == QLatin1String("TIME"))
        return FieldType::DateTime;
    if (n == QLatin1String("MEMO") || n == QLatin1String("CLOB"))
        return FieldType::Memo;
    if (n == QLatin1String("BLOB") || n == QLatin1String("GRAPHIC") || n == QLatin1String("BYTES") ||
        n == QLatin1String("VARBYTES"))
        return FieldType::Blob;
    if (n == QLatin1String("AUTOINC") || n == QLatin1String("AUTOINCREMENT"))
        return FieldType::AutoInc;
    return FieldType::Unknown;
}

std::vector<ParsedStatement> parseStatements(const QString& text)
{
    if (text.size() > MaxStatementLength)
        throw DbError(DbErrorCode::Syntax,
                      QStringLiteral("The statement text has %1 characters; at most %2 are read")
                          .arg(text.size())
                          .arg(MaxStatementLength));
    Parser parser(text, tokenize(text));
    return parser.parseAll();
}

} // namespace kb::sql
