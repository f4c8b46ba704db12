#pragma once

#include <QString>

#include <vector>

namespace kb {

class Database;

// A client's new route and stop on the day being ordered.
struct StopChange
{
    qint64 personId = 0;
    QString route;
    double stop = 0;
};

// The one way an ordered route reaches the database: the clients' route and
// stop columns of the day (the default ones for day 0, the weekday's for 1
// to 7, whichever way each client came onto the route), and, when asked,
// the same route and stop on the clients' dated deliveries from today on
// (on that weekday only for a weekday). All of it is one transaction: on a
// failure nothing is written and the error goes on to the caller.
class OrderRoutesWriteBack
{
public:
    static void apply(Database& db, int dayIndex, const std::vector<StopChange>& changes, bool includeEpisodics);
};

} // namespace kb
