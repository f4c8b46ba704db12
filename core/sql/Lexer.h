#pragma once

#include <QList>
#include <QString>

namespace kb::sql {

enum class TokenKind {
    Identifier,   // a bare word: keyword or name
    QuotedName,   // "text": a name or, in expressions, a string
    String,       // 'text'
    Number,
    Parameter,    // :Name
    Symbol,       // ( ) , . ; + - * / = < > <= >= <> != ||
    End,
};

struct Token
{
    TokenKind kind = TokenKind::End;
    QString text;      // unquoted text; upper-case symbols
    qsizetype begin = 0; // offsets into the statement text
    qsizetype end = 0;

    bool isWord(QLatin1StringView word) const
    {
        return kind == TokenKind::Identifier && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QLatin1StringView symbol) const { return kind == TokenKind::Symbol && text == symbol; }
};

// Splits a statement text into tokens; comments (-- and /* */) are dropped.
// Throws DbError(Syntax) on an unterminated string or a stray character.
QList<Token> tokenize(const QString& text);

} // namespace kb::sql
