#pragma once

#include <QString>

namespace kb {

// The column types of the table catalogue. Every store maps them to its own
// storage; the statement layer uses them to translate expressions (text
// joining, date arithmetic, exact money) and to read values back.
enum class FieldType {
    String,   // text of at most `width` characters
    SmallInt, // 16-bit signed
    Int,      // 32-bit signed
    Float,    // double precision
    Currency, // exact money, four decimals
    Bool,
    Date,     // no time of day
    DateTime,
    Memo,     // text of any length
    Blob,     // bytes of any length
    AutoInc,  // int assigned by the store on insert
    Unknown,  // an expression whose type cannot be told (null literal, ...)
};

QString fieldTypeName(FieldType type);
bool isNumeric(FieldType type);
bool isInteger(FieldType type);
bool isText(FieldType type);

} // namespace kb
