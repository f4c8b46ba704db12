#pragma once

#include "sql/Ast.h"
#include "sql/Lexer.h"

namespace kb::sql {

// How deep a statement may nest: every level of parentheses, sub-select,
// function call, NOT or sign, and every operator of a chain such as
// a + b + c, counts one. The bound keeps reading, translating and freeing a
// statement within a small, fixed stack, whatever the text; no statement a
// screen or a user writes comes near it. AND and OR chains are read as one
// level however long they are, as lists of conditions are.
inline constexpr int MaxNesting = 128;
// The longest statement text read, in characters.
inline constexpr qsizetype MaxStatementLength = 4 * 1024 * 1024;
// The longest store text one statement may translate to.
inline constexpr qsizetype MaxTranslatedLength = 1024 * 1024;

// Reads the statement dialect into syntax trees. A text may hold several
// statements separated by ";"; empty statements are skipped.
// Throws DbError(Syntax) with the position and the text on malformed input,
// and on a text beyond the bounds above.
std::vector<ParsedStatement> parseStatements(const QString& text);

// Maps a type name of CREATE TABLE or CAST ("VarChar", "Integer", "Money"...)
// to a catalogue type; Unknown for a name it does not know.
FieldType typeFromName(const QString& name);

} // namespace kb::sql
