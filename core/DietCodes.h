#pragma once

#include <QString>
#include <QStringList>

namespace kb {

class Database;

// aDietCodes: for each row of Diet, element Diet_ID - 1 holds Diet_Code; the
// list is as long as Diet has rows, so a Diet_ID beyond that is left out.
QStringList loadDietCodes(Database& db);

// The codes of the bits of a diet mask, lowest bit first, joined with the
// separator (" / " on screens and labels, "/" in History); bits beyond the
// list are ignored and a mask of 0 or less gives "".
QString ConvertDietCode(qint64 mask, const QStringList& aDietCodes, const QString& separator = QStringLiteral(" / "));

} // namespace kb
