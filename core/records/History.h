#pragma once

#include <QString>
#include <QVariant>

namespace kb {

class Database;

// One event for the log. An empty Person_ID and Client_ID mark an event of
// the system rather than of a client; Event_Date is the date the event
// concerns (null when it concerns none, as for signing in and out).
struct HistoryEntry
{
    QVariant personId;
    QVariant clientId;
    QString event;
    QVariant eventDate;
};

// Adds one row to History with Tran_Date the database clock's present date and
// time and User the signed-in user's full name. Event is cut to its column's
// width by the table.
void QueryInsertHistory(Database& db, const QString& userFullName, const HistoryEntry& entry);

} // namespace kb
