#include "template/ExpressionParser.h"

#include <QStringList>

#include <cmath>

namespace kb::reports {

namespace {

struct Token
{
    enum class Type { End, Number, String, Name, Parameter, Symbol };
    Type type = Type::End;
    QString text;
    QVariant value;
};

class Lexer
{
public:
    explicit Lexer(QStringView text) : m_text(text) {}

    Token next()
    {
        while (m_pos < m_text.size() && m_text[m_pos].isSpace())
            ++m_pos;
        Token t;
        if (m_pos >= m_text.size())
            return t;
        const QChar c = m_text[m_pos];
        if (c.isDigit() || (c == u'.' && m_pos + 1 < m_text.size() && m_text[m_pos + 1].isDigit()))
            return number();
        if (c == u'\'')
            return string();
        if (c == u'$') {
            ++m_pos;
            t = name();
            if (t.text.isEmpty())
                throw ExpressionError(QStringLiteral("a parameter name must follow $"));
            t.type = Token::Type::Parameter;
            return t;
        }
        if (c.isLetter() || c == u'_')
            return name();
        if (c == u'[') return bracketedName();
        static const QStringList twoChar{QStringLiteral("<="), QStringLiteral(">="), QStringLiteral("<>"),
                                         QStringLiteral("!=")};
        const QString two = m_text.mid(m_pos, 2).toString();
        t.type = Token::Type::Symbol;
        if (twoChar.contains(two)) {
            t.text = two;
            m_pos += 2;
            return t;
        }
        if (QStringLiteral("+-*/%&=<>(),").contains(c)) {
            t.text = c;
            ++m_pos;
            return t;
        }
        throw ExpressionError(QStringLiteral("unexpected character '%1'").arg(c));
    }

private:
    Token number()
    {
        const qsizetype start = m_pos;
        bool dot = false;
        while (m_pos < m_text.size() && (m_text[m_pos].isDigit() || (m_text[m_pos] == u'.' && !dot))) {
            if (m_text[m_pos] == u'.')
                dot = true;
            ++m_pos;
        }
        Token t;
        t.type = Token::Type::Number;
        t.text = m_text.mid(start, m_pos - start).toString();
        if (m_pos < m_text.size() && (m_text[m_pos].isLetter() || m_text[m_pos] == u'_'))
            throw ExpressionError(QStringLiteral("'%1%2' is not a number").arg(t.text, m_text[m_pos]));
        bool ok = false;
        if (!dot) {
            const qlonglong n = t.text.toLongLong(&ok);
            if (ok) {
                t.value = n;
                return t;
            }
        }
        const double d = t.text.toDouble(&ok);
        if (!ok || !std::isfinite(d))
            throw ExpressionError(QStringLiteral("'%1' is not a number").arg(t.text));
        t.value = d;
        return t;
    }

    Token string()
    {
        ++m_pos;
        QString s;
        for (;;) {
            if (m_pos >= m_text.size())
                throw ExpressionError(QStringLiteral("a text in quotes is not closed"));
            const QChar c = m_text[m_pos++];
            if (c == u'\'') {
                if (m_pos < m_text.size() && m_text[m_pos] == u'\'') {
                    s += u'\'';
                    ++m_pos;
                    continue;
                }
                break;
            }
            s += c;
        }
        Token t;
        t.type = Token::Type::String;
        t.value = s;
        t.text = s;
        return t;
    }

    Token name()
    {
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && (m_text[m_pos].isLetterOrNumber() || m_text[m_pos] == u'_'))
            ++m_pos;
        Token t;
        t.type = Token::Type::Name;
        t.text = m_text.mid(start, m_pos - start).toString();
        // Pipe.Field is one name with a dot.
        if (m_pos + 1 < m_text.size() && m_text[m_pos] == u'.' &&
            (m_text[m_pos + 1].isLetter() || m_text[m_pos + 1] == u'_')) {
            ++m_pos;
            const qsizetype second = m_pos;
            while (m_pos < m_text.size() && (m_text[m_pos].isLetterOrNumber() || m_text[m_pos] == u'_'))
                ++m_pos;
            t.text += u'.' + m_text.mid(second, m_pos - second).toString();
        }
        return t;
    }

    // [Special One]: a field whose name holds blanks or other signs, as a
    // statement's "as 'Special One'" names it.
    Token bracketedName()
    {
        const qsizetype start = ++m_pos;
        while (m_pos < m_text.size() && m_text[m_pos] != u']')
            ++m_pos;
        if (m_pos >= m_text.size()) throw ExpressionError(QStringLiteral("a name in brackets is not closed"));
        Token t;
        t.type = Token::Type::Name;
        t.text = m_text.mid(start, m_pos - start).toString().trimmed();
        ++m_pos;
        if (t.text.isEmpty()) throw ExpressionError(QStringLiteral("the brackets hold no name"));
        return t;
    }

    QStringView m_text;
    qsizetype m_pos = 0;
};

class Parser
{
public:
    explicit Parser(QStringView text) : m_lexer(text) { advance(); }

    ExprPtr parseAll()
    {
        ExprPtr e = orExpr();
        if (m_token.type != Token::Type::End)
            throw ExpressionError(QStringLiteral("unexpected '%1' after the expression").arg(m_token.text));
        return e;
    }

private:
    void advance() { m_token = m_lexer.next(); }
    bool isSymbol(const char* s) const
    {
        return m_token.type == Token::Type::Symbol && m_token.text == QLatin1String(s);
    }
    bool isWord(const char* s) const
    {
        return m_token.type == Token::Type::Name && m_token.text.compare(QLatin1String(s), Qt::CaseInsensitive) == 0;
    }

    ExprPtr node(Expr::Kind kind)
    {
        if (++m_nodes > ExpressionParser::MaxNodes)
            throw ExpressionError(QStringLiteral("the expression is too long"));
        auto e = std::make_unique<Expr>();
        e->kind = kind;
        return e;
    }

    ExprPtr binary(Expr::Op op, ExprPtr left, ExprPtr right)
    {
        ExprPtr e = node(Expr::Kind::Binary);
        e->op = op;
        e->args.push_back(std::move(left));
        e->args.push_back(std::move(right));
        return e;
    }

    // Every level of the grammar passes through here, so the depth of the
    // recursion is bounded whatever the input.
    struct Depth
    {
        explicit Depth(int& d) : depth(d)
        {
            if (++depth > ExpressionParser::MaxDepth)
                throw ExpressionError(QStringLiteral("the expression is nested too deeply"));
        }
        ~Depth() { --depth; }
        int& depth;
    };

    ExprPtr orExpr()
    {
        Depth d(m_depth);
        ExprPtr left = andExpr();
        while (isWord("or")) {
            advance();
            left = binary(Expr::Op::Or, std::move(left), andExpr());
        }
        return left;
    }

    ExprPtr andExpr()
    {
        ExprPtr left = notExpr();
        while (isWord("and")) {
            advance();
            left = binary(Expr::Op::And, std::move(left), notExpr());
        }
        return left;
    }

    ExprPtr notExpr()
    {
        Depth d(m_depth);
        if (isWord("not")) {
            advance();
            ExprPtr e = node(Expr::Kind::Unary);
            e->op = Expr::Op::Not;
            e->args.push_back(notExpr());
            return e;
        }
        return comparison();
    }

    ExprPtr comparison()
    {
        ExprPtr left = additive();
        static const std::pair<const char*, Expr::Op> ops[] = {
            {"=", Expr::Op::Eq}, {"<>", Expr::Op::Ne}, {"!=", Expr::Op::Ne}, {"<", Expr::Op::Lt},
            {"<=", Expr::Op::Le}, {">", Expr::Op::Gt}, {">=", Expr::Op::Ge}};
        for (const auto& [symbol, op] : ops) {
            if (isSymbol(symbol)) {
                advance();
                return binary(op, std::move(left), additive());
            }
        }
        return left;
    }

    ExprPtr additive()
    {
        ExprPtr left = multiplicative();
        for (;;) {
            Expr::Op op = Expr::Op::None;
            if (isSymbol("+"))
                op = Expr::Op::Add;
            else if (isSymbol("-"))
                op = Expr::Op::Sub;
            else if (isSymbol("&"))
                op = Expr::Op::Concat;
            else
                return left;
            advance();
            left = binary(op, std::move(left), multiplicative());
        }
    }

    ExprPtr multiplicative()
    {
        ExprPtr left = unary();
        for (;;) {
            Expr::Op op = Expr::Op::None;
            if (isSymbol("*"))
                op = Expr::Op::Mul;
            else if (isSymbol("/"))
                op = Expr::Op::Div;
            else if (isSymbol("%"))
                op = Expr::Op::Mod;
            else
                return left;
            advance();
            left = binary(op, std::move(left), unary());
        }
    }

    ExprPtr unary()
    {
        Depth d(m_depth);
        if (isSymbol("-")) {
            advance();
            ExprPtr e = node(Expr::Kind::Unary);
            e->op = Expr::Op::Neg;
            e->args.push_back(unary());
            return e;
        }
        return primary();
    }

    ExprPtr primary()
    {
        switch (m_token.type) {
        case Token::Type::End:
            throw ExpressionError(QStringLiteral("the expression ends too early"));
        case Token::Type::Number:
        case Token::Type::String: {
            ExprPtr e = node(Expr::Kind::Literal);
            e->value = m_token.value;
            advance();
            return e;
        }
        case Token::Type::Parameter: {
            ExprPtr e = node(Expr::Kind::Parameter);
            e->name = m_token.text;
            advance();
            return e;
        }
        case Token::Type::Symbol:
            if (isSymbol("(")) {
                advance();
                ExprPtr e = orExpr();
                expect(")");
                return e;
            }
            throw ExpressionError(QStringLiteral("unexpected '%1'").arg(m_token.text));
        case Token::Type::Name:
            break;
        }
        const QString word = m_token.text;
        advance();
        if (isSymbol("("))
            return call(word);
        const QString lower = word.toLower();
        if (lower == QLatin1String("true") || lower == QLatin1String("false")) {
            ExprPtr e = node(Expr::Kind::Literal);
            e->value = lower == QLatin1String("true");
            return e;
        }
        if (lower == QLatin1String("null"))
            return node(Expr::Kind::Literal);
        if (lower == QLatin1String("page"))
            return node(Expr::Kind::PageNumber);
        if (lower == QLatin1String("pages"))
            return node(Expr::Kind::PageCount);
        const qsizetype dot = word.indexOf(u'.');
        if (dot > 0) {
            ExprPtr e = node(Expr::Kind::Field);
            e->pipe = word.left(dot);
            e->name = word.mid(dot + 1);
            return e;
        }
        ExprPtr e = node(Expr::Kind::Name);
        e->name = word;
        return e;
    }

    ExprPtr call(const QString& name)
    {
        if (name.contains(u'.'))
            throw ExpressionError(QStringLiteral("'%1' is not a function").arg(name));
        ExprPtr e = node(ExpressionParser::isAggregate(name) ? Expr::Kind::Aggregate : Expr::Kind::Call);
        e->name = name.toLower();
        advance(); // (
        if (isSymbol(")")) {
            advance();
            return e;
        }
        for (;;) {
            e->args.push_back(orExpr());
            if (isSymbol(",")) {
                advance();
                continue;
            }
            expect(")");
            return e;
        }
    }

    void expect(const char* symbol)
    {
        if (!isSymbol(symbol))
            throw ExpressionError(m_token.type == Token::Type::End
                                      ? QStringLiteral("'%1' is missing").arg(QLatin1String(symbol))
                                      : QStringLiteral("expected '%1', found '%2'")
                                            .arg(QLatin1String(symbol), m_token.text));
        advance();
    }

    Lexer m_lexer;
    Token m_token;
    int m_depth = 0;
    int m_nodes = 0;
};

// The place of the ':' that starts a format, outside quotes and brackets; -1 for none.
qsizetype formatColon(QStringView piece)
{
    bool quoted = false;
    int brackets = 0;
    for (qsizetype i = 0; i < piece.size(); ++i) {
        const QChar c = piece[i];
        if (c == u'\'')
            quoted = !quoted;
        else if (!quoted && c == u'(')
            ++brackets;
        else if (!quoted && c == u')')
            --brackets;
        else if (!quoted && brackets == 0 && c == u':')
            return i;
    }
    return -1;
}

} // namespace

namespace ExpressionParser {

bool isAggregate(QStringView name)
{
    static const QStringList names{QStringLiteral("sum"), QStringLiteral("count"), QStringLiteral("min"),
                                   QStringLiteral("max"), QStringLiteral("avg"), QStringLiteral("distinct")};
    return names.contains(name.toString(), Qt::CaseInsensitive);
}

ExprPtr parse(QStringView text)
{
    if (text.trimmed().isEmpty())
        throw ExpressionError(QStringLiteral("the expression is empty"));
    return Parser(text).parseAll();
}

TextTemplate parseText(QStringView text)
{
    TextTemplate result;
    QString literal;
    auto flushLiteral = [&] {
        if (!literal.isEmpty()) {
            TextPiece piece;
            piece.literal = literal;
            result.pieces.push_back(std::move(piece));
            literal.clear();
        }
    };
    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text[i];
        if (c == u'{' && i + 1 < text.size() && text[i + 1] == u'{') {
            literal += u'{';
            i += 2;
            continue;
        }
        if (c == u'}' && i + 1 < text.size() && text[i + 1] == u'}') {
            literal += u'}';
            i += 2;
            continue;
        }
        if (c == u'}')
            throw ExpressionError(QStringLiteral("a '}' without its '{' (write }} for the brace itself)"));
        if (c != u'{') {
            literal += c;
            ++i;
            continue;
        }
        // Find the closing brace outside quotes.
        qsizetype end = i + 1;
        bool quoted = false;
        while (end < text.size() && (quoted || text[end] != u'}')) {
            if (text[end] == u'\'')
                quoted = !quoted;
            ++end;
        }
        if (end >= text.size())
            throw ExpressionError(QStringLiteral("a '{' is not closed by '}'"));
        const QStringView inner = text.mid(i + 1, end - i - 1);
        const qsizetype colon = formatColon(inner);
        flushLiteral();
        TextPiece piece;
        piece.expr = parse(colon < 0 ? inner : inner.left(colon));
        if (colon >= 0)
            piece.format = inner.mid(colon + 1).toString();
        result.pieces.push_back(std::move(piece));
        i = end + 1;
    }
    flushLiteral();
    return result;
}

} // namespace ExpressionParser

} // namespace kb::reports
