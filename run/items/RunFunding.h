#pragma once

#include <QHash>
#include <QString>

namespace kb {

class Database;

// The funding of every row of the run's working table at once, by its
// RecordID: what the funding statement of the weekday gives the row, one
// statement for the whole run. The client's first FundUses row (by its
// RecordID) of the row's service or of all services (Service_ID 0) that is
// true on the weekday gives its Fund_CD, empty when that is null. A row that
// no FundUses row covers is left out: it takes its service's default.
QHash<qint64, QString> fundingOfRun(Database& db, int dayOfWeek);

} // namespace kb
