#include "sql/Lexer.h"

#include "store/DbError.h"

namespace kb::sql {

namespace {

bool isNameStart(QChar c) { return c.isLetter() || c == u'_' || c == u'$' || c == u'#'; }
bool isNamePart(QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'$' || c == u'#'; }

[[noreturn]] void fail(const QString& message, const QString& text)
{
    throw DbError(DbErrorCode::Syntax, message, text);
}

} // namespace

QList<Token> tokenize(const QString& text)
{
    QList<Token> tokens;
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = text[i];
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (c == u'-' && i + 1 < n && text[i + 1] == u'-') {
            while (i < n && text[i] != u'\n')
                ++i;
            continue;
        }
        if (c == u'/' && i + 1 < n && text[i + 1] == u'*') {
            const qsizetype close = text.indexOf(QLatin1String("*/"), i + 2);
            if (close < 0)
                fail(QStringLiteral("Unterminated comment in statement"), text);
            i = close + 2;
            continue;
        }
        Token t;
        t.begin = i;
        if (c == u'\'' || c == u'"') {
            const QChar quote = c;
            QString value;
            ++i;
            bool closed = false;
            while (i < n) {
                if (text[i] == quote) {
                    if (i + 1 < n && text[i + 1] == quote) {
                        value += quote;
                        i += 2;
                        continue;
                    }
                    ++i;
                    closed = true;
                    break;
                }
                value += text[i++];
            }
            if (!closed)
                fail(QStringLiteral("Unterminated quoted text in statement"), text);
            t.kind = quote == u'\'' ? TokenKind::String : TokenKind::QuotedName;
            t.text = value;
        } else if (c.isDigit() || (c == u'.' && i + 1 < n && text[i + 1].isDigit())) {
            while (i < n && text[i].isDigit())
                ++i;
            if (i < n && text[i] == u'.' && !(i + 1 < n && isNameStart(text[i + 1]))) {
                ++i;
                while (i < n && text[i].isDigit())
                    ++i;
            }
            if (i < n && (text[i] == u'e' || text[i] == u'E') && i + 1 < n &&
                (text[i + 1].isDigit() || ((text[i + 1] == u'-' || text[i + 1] == u'+') && i + 2 < n &&
                                           text[i + 2].isDigit()))) {
                i += 2;
                while (i < n && text[i].isDigit())
                    ++i;
            }
            t.kind = TokenKind::Number;
            t.text = text.mid(t.begin, i - t.begin);
        } else if (c == u':' && i + 1 < n && isNameStart(text[i + 1])) {
            ++i;
            const qsizetype start = i;
            while (i < n && isNamePart(text[i]))
                ++i;
            t.kind = TokenKind::Parameter;
            t.text = text.mid(start, i - start);
        } else if (isNameStart(c)) {
            while (i < n && isNamePart(text[i]))
                ++i;
            t.kind = TokenKind::Identifier;
            t.text = text.mid(t.begin, i - t.begin);
        } else if (c == u'[') {
            // [name] is another way to quote a name.
            const qsizetype close = text.indexOf(u']', i + 1);
            if (close < 0)
                fail(QStringLiteral("Unterminated [name] in statement"), text);
            t.kind = TokenKind::QuotedName;
            t.text = text.mid(i + 1, close - i - 1);
            i = close + 1;
        } else {
            static const QLatin1StringView twoChar[] = {QLatin1StringView("<="), QLatin1StringView(">="),
                                                        QLatin1StringView("<>"), QLatin1StringView("!="),
                                                        QLatin1StringView("||")};
            t.kind = TokenKind::Symbol;
            bool matched = false;
            if (i + 1 < n) {
                const QString pair = text.mid(i, 2);
                for (auto sym : twoChar) {
                    if (pair == sym) {
                        t.text = pair == QLatin1String("!=") ? QStringLiteral("<>") : pair;
                        i += 2;
                        matched = true;
                        break;
                    }
                }
            }
            if (!matched) {
                if (QStringLiteral("(),.;+-*/=<>").contains(c)) {
                    t.text = QString(c);
                    ++i;
                } else {
                    fail(QStringLiteral("Unexpected character '%1' at position %2 in statement")
                             .arg(c)
                             .arg(i + 1),
                         text);
                }
            }
        }
        t.end = i;
        tokens.append(t);
    }
    Token end;
    end.kind = TokenKind::End;
    end.begin = end.end = n;
    tokens.append(end);
    return tokens;
}

} // namespace kb::sql
