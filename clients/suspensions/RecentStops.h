#pragma once

#include "store/ResultSet.h"

#include <QDate>

namespace kb {

class Database;

// Who on the delivery list of a date has been stopped or suspended since
// that list was made: the clients with a delivery saved for the date who,
// by changes entered on or after the recency date, have a stop date on or
// after the delivery date, a suspension covering it, or a status changed
// from active to stopped.
//
// The rows are the clients' rows (every column of Clients) by default
// route, with Changes beside them: the kinds of change that put each
// client on the list ("Stop date", "Suspension", "Stopped"), joined by ", ".
class RecentStops
{
public:
    static ResultSet select(Database& db, const QDate& stopDate, const QDate& recencyDate);
    // The date the report is for when a delivery list of it was saved;
    // null otherwise.
    static QDate deliveryDate(Database& db, const QDate& stopDate);
};

} // namespace kb
