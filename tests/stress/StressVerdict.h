#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace kb {
class Database;
}

namespace kb::stress {

// The IDNOS counters the workers draw from, by column.
using Counters = QMap<QString, qint64>;
Counters readCounters(Database& db);

// Gives the shared clients their starting rows; run once on new data.
void preparePool(Database& db);

// What the workers' journals and the data say after a run, checked by a
// session of its own:
// - every number drawn from a counter is unique, and the counter went up by
//   exactly the numbers drawn;
// - every client edit is in the data whole: both names one token, the edit
//   counter equal to the edits journaled, none lost;
// - every history row written is there once;
// - every miss marked stands once, with its status, and no client's date is
//   marked by two workers;
// - every date whose run was saved holds one delivery per client of the
//   pool, from one save, and no item row of a save it replaced;
// - every suspension added stands once, and no client's suspensions overlap;
// - no lock is left: every row and table the workers used can be taken.
// unjournaled is how many pieces of work may have been committed without
// reaching a journal: one for each worker that was killed.
struct StressVerdict
{
    QStringList problems;       // empty when everything holds
    QMap<QString, qint64> done; // committed pieces of work by operation

    static StressVerdict check(Database& db, const QList<QList<QStringList>>& journals, const Counters& before,
                               int unjournaled);
};

} // namespace kb::stress
