#pragma once

#include "store/ResultSet.h"

#include <QDate>

namespace kb {

class Database;
class UserInterface;

// What a summary wrote.
struct MissedSummaryResult
{
    qint64 missedClients = 0;  // clients given a MISSED_DELIVERIES count
    qint64 excusedClients = 0; // clients given an EXCUSED_DELIVERIES count
};

// Rebuilds every client's MISSED_DELIVERIES and EXCUSED_DELIVERIES from the
// History entries made since a date (by Tran_Date, the moment of the entry,
// so a miss excused later counts by when it was excused), in one
// transaction: all counters go to null first, then the clients with misses
// in the period get their counts. An entry without a Client_ID, or whose
// Client_ID no client has, is passed over. Progress goes to the user
// interface with the utility's texts.
MissedSummaryResult summarizeMissedDeliveries(Database& db, UserInterface& ui, const QDate& since);

// The counters as they stand: Person_ID, Client_ID, MISSED_DELIVERIES and
// EXCUSED_DELIVERIES of the clients that have one, by Client_ID.
ResultSet missedCounters(Database& db);

} // namespace kb
