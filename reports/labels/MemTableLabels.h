#pragma once

#include "store/ResultSet.h"

#include <QString>

namespace kb {
class Database;
}

namespace kb::reports {

// The labels of a run whose deliveries need more than one label each: every
// delivery copied in as many times as it has labels, in the session's
// memory table MemTableLabels, so that the copies of one delivery print
// together in the chosen order. The table is made on first use and dropped
// when the report screen closes.
class MemTableLabels
{
public:
    static QString tableName() { return QStringLiteral("MemTableLabels"); }

    // Makes the table and its indexes when the session lacks them.
    static void ensure(Database& db);
    // Empties it for a new run.
    static void empty(Database& db);
    // Appends the rows of the label statement, as many as it has, in its
    // order: the columns the table keeps (not DOW, Preferences nor
    // Label3_Created); a service or diet mask that is null goes in as 0.
    static void MoveToMemData(Database& db, const ResultSet& rows);

    // The index of a sort order of the label list: DateRouteStopClientID,
    // Client_ID, Last_First, Diet_Descr_Client_ID, Diet_Descr_Last; the
    // route order for a sort the table has no index for.
    static QString indexName(int sortOrder);
    // Whether the table has an index for the sort order.
    static bool hasIndexFor(int sortOrder);
    // The rows in the order of the index, each with the delivery's third
    // special meal flag, which the table does not keep, looked up beside it.
    static ResultSet rows(Database& db, const QString& index);
};

} // namespace kb::reports
