#pragma once

#include "sql/Ast.h"
#include "sql/Lexer.h"

namespace kb::sql {

// Reads the statement dialect into syntax trees. A text may hold several
// statements separated by ";"; empty statements are skipped.
// Throws DbError(Syntax) with the position and the text on malformed input.
std::vector<ParsedStatement> parseStatements(const QString& text);

// Maps a type name of CREATE TABLE or CAST ("VarChar", "Integer", "Money"...)
// to a catalogue type; Unknown for a name it does not know.
FieldType typeFromName(const QString& name);

} // namespace kb::sql
