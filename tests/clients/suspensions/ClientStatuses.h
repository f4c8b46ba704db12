#pragma once

#include "store/Database.h"

namespace kb::test {

// Every client's status code in Person_ID order, one letter each ("AASI"),
// so a test states in one line which clients a batch changed.
inline QString clientStatuses(Database& db)
{
    const ResultSet rows = db.execute(QStringLiteral("select Status from Clients order by Person_ID"));
    QString text;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        text += rows.value(r, 0).toString();
    return text;
}

} // namespace kb::test
