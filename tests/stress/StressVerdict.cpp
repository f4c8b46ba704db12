#include "StressVerdict.h"

#include "StressWorker.h"

#include "dataset/RecordLocks.h"
#include "store/Database.h"
#include "store/DbError.h"

#include "missed/MissEventText.h"

#include <QMap>
#include <QSet>

namespace kb::stress {

namespace {

const QStringList CounterColumns = {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("DELIV_ID")};

void checkDraws(const QList<QStringList>& draws, const Counters& before, const Counters& after, int unjournaled,
                QStringList& problems)
{
    QMap<QString, QSet<qint64>> seen;
    for (const QStringList& line : draws) {
        const QString& counter = line.value(1);
        const qint64 number = line.value(2).toLongLong();
        if (seen[counter].contains(number))
            problems << QStringLiteral("%1 %2 was drawn twice").arg(counter).arg(number);
        seen[counter].insert(number);
        if (number <= before.value(counter) || number > after.value(counter))
            problems << QStringLiteral("%1 %2 lies outside what the counter handed out").arg(counter).arg(number);
    }
    for (const QString& counter : CounterColumns) {
        const qint64 gone = after.value(counter) - before.value(counter) - seen.value(counter).size();
        if (gone < 0 || gone > unjournaled)
            problems << QStringLiteral("%1 went up by %2 but %3 numbers were drawn")
                            .arg(counter)
                            .arg(after.value(counter) - before.value(counter))
                            .arg(seen.value(counter).size());
    }
}

void checkEdits(Database& db, const QList<QStringList>& edits, int unjournaled, QStringList& problems)
{
    QMap<int, int> count;
    QMap<int, QSet<QString>> tokens;
    for (const QStringList& line : edits) {
        const int person = line.value(1).toInt();
        ++count[person];
        tokens[person].insert(line.value(2));
    }
    const ResultSet rows =
        db.execute(QStringLiteral("select PERSON_ID, USER_DEF3, LAST_NAME, FIRST_NAME from Clients where PERSON_ID "
                                  "between 1 and :Pool order by PERSON_ID"),
                   {{QStringLiteral("Pool"), PoolSize}});
    if (rows.rowCount() != PoolSize)
        problems << QStringLiteral("%1 clients of the pool are left, not %2").arg(rows.rowCount()).arg(PoolSize);
    int unexplained = 0;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const int person = rows.value(r, 0).toInt();
        const int edits = rows.value(r, 1).toInt();
        const QString last = rows.value(r, 2).toString();
        const QString first = rows.value(r, 3).toString();
        if (last != first)
            problems << QStringLiteral("client %1 was half changed: %2 / %3").arg(person).arg(last, first);
        if (edits < count.value(person))
            problems << QStringLiteral("client %1 lost edits: %2 made, %3 kept").arg(person).arg(count.value(person)).arg(edits);
        unexplained += edits - count.value(person);
        // The last edit of a row is one of those journaled, or one whose
        // worker was killed before it could journal it.
        const bool known = tokens.value(person).contains(last) || (edits == 0 && last == QLatin1String("start"));
        if (!known && unjournaled == 0)
            problems << QStringLiteral("client %1 holds %2, which no edit wrote").arg(person).arg(last);
    }
    if (unexplained > unjournaled)
        problems << QStringLiteral("%1 more edits are in the data than were made").arg(unexplained - unjournaled);
}

void checkHistory(Database& db, const QList<QStringList>& written, int unjournaled, QStringList& problems)
{
    const ResultSet rows = db.execute(
        QStringLiteral("select Event, count(*) as N from History where Event like 'stress %' group by Event"));
    QMap<QString, int> stored;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        stored.insert(rows.value(r, 0).toString().mid(7), rows.value(r, 1).toInt());
    for (const QStringList& line : written) {
        const int n = stored.value(line.value(1));
        if (n != 1)
            problems << QStringLiteral("history %1 is there %2 times").arg(line.value(1)).arg(n);
    }
    if (stored.size() - written.size() > unjournaled || stored.size() < written.size())
        problems << QStringLiteral("%1 stress events are in History, %2 were written").arg(stored.size()).arg(written.size());
}

// Every miss journaled stands once: its status on the deliveries of the date
// and one History row; a client and date marked by two workers at once is
// recorded by one of them only.
void checkMisses(Database& db, const QList<QStringList>& misses, int unjournaled, QStringList& problems)
{
    QMap<QString, QString> journaled; // "person date" -> M or E
    for (const QStringList& line : misses) {
        const QString key = line.value(1) + QLatin1Char(' ') + line.value(2);
        if (journaled.contains(key))
            problems << QStringLiteral("the miss of %1 was recorded twice").arg(key);
        journaled.insert(key, line.value(3));
    }
    const ResultSet statuses = db.execute(
        QStringLiteral("select Person_ID, Deliv_Dt, Delivery_Status from Deliveri where Person_ID between 1 and :Pool"),
        {{QStringLiteral("Pool"), PoolSize}});
    int unexplained = 0;
    for (qsizetype r = 0; r < statuses.rowCount(); ++r) {
        const QString key = statuses.value(r, 0).toString() + QLatin1Char(' ') +
                            statuses.value(r, 1).toDate().toString(Qt::ISODate);
        const QString status = statuses.value(r, 2).toString();
        if (journaled.contains(key) && journaled.value(key) != status)
            problems << QStringLiteral("the miss of %1 was journaled %2 but the delivery stands at '%3'")
                            .arg(key, journaled.value(key), status);
        if (!journaled.contains(key) && !status.isEmpty())
            ++unexplained;
    }
    const ResultSet events =
        db.execute(QStringLiteral("select Person_ID, Event_Date, count(*) as N from History where Event like :Miss "
                                  "and Person_ID between 1 and :Pool group by Person_ID, Event_Date"),
                   {{QStringLiteral("Miss"), QStringLiteral("%Missed Delivery%")}, {QStringLiteral("Pool"), PoolSize}});
    QMap<QString, int> stored;
    for (qsizetype r = 0; r < events.rowCount(); ++r)
        stored.insert(events.value(r, 0).toString() + QLatin1Char(' ') +
                          events.value(r, 1).toDate().toString(Qt::ISODate),
                      events.value(r, 2).toInt());
    for (auto it = journaled.cbegin(); it != journaled.cend(); ++it)
        if (stored.value(it.key()) != 1)
            problems << QStringLiteral("the miss of %1 is in History %2 times").arg(it.key()).arg(stored.value(it.key()));
    for (auto it = stored.cbegin(); it != stored.cend(); ++it)
        if (!journaled.contains(it.key()))
            unexplained += it.value();
    // A miss of a killed worker leaves its status and its History row.
    if (unexplained > 2 * unjournaled)
        problems << QStringLiteral("%1 miss marks are in the data that no worker journaled").arg(unexplained);
}

// Whatever the workers held must be free: every row of the pool and of
// IDNOS can be locked, and the tables opened exclusively.
// Every client's Household_ID has its one member row, and every member row
// its client's Household_ID: the household moves change both or neither.
void checkHouseholds(Database& db, QStringList& problems)
{
    QMap<qint64, qint64> linked; // Person_ID: Household_ID of Clients
    const ResultSet clients =
        db.execute(QStringLiteral("select Person_ID, Household_ID from Clients where Household_ID > 0"));
    for (qsizetype r = 0; r < clients.rowCount(); ++r)
        linked.insert(clients.value(r, 0).toLongLong(), clients.value(r, 1).toLongLong());
    QMap<qint64, QList<qint64>> rows; // Person_ID: Household_IDs of Household_Members
    const ResultSet members = db.execute(QStringLiteral("select Person_ID, Household_ID from Household_Members"));
    for (qsizetype r = 0; r < members.rowCount(); ++r)
        rows[members.value(r, 0).toLongLong()].append(members.value(r, 1).toLongLong());
    for (auto it = linked.cbegin(); it != linked.cend(); ++it)
        if (rows.value(it.key()) != QList<qint64>{it.value()})
            problems << QStringLiteral("client %1 is in household %2 but has the member rows of %3 household(s)")
                            .arg(it.key())
                            .arg(it.value())
                            .arg(rows.value(it.key()).size());
    for (auto it = rows.cbegin(); it != rows.cend(); ++it)
        if (!linked.contains(it.key()))
            problems << QStringLiteral("client %1 has a member row but no Household_ID").arg(it.key());
}

void checkLocksFree(Database& db, QStringList& problems)
{
    RecordLocks& locks = db.recordLocks();
    locks.setRetries(1, 0);
    const int owner = 0;
    const auto rowsOf = [&](const QString& table) {
        const ResultSet ids = db.execute(QStringLiteral("select KB_ROWID as Id from %1").arg(table));
        for (qsizetype r = 0; r < ids.rowCount(); ++r) {
            const qint64 id = ids.value(r, 0).toLongLong();
            if (!locks.tryLock(&owner, table, id))
                problems << QStringLiteral("row %1 of %2 is still locked").arg(id).arg(table);
            locks.unlock(&owner, table, id);
        }
    };
    rowsOf(QStringLiteral("Clients"));
    rowsOf(QStringLiteral("IDNOS"));
    rowsOf(QStringLiteral("Deliveri"));
    for (const QString& table : {QStringLiteral("Clients"), QStringLiteral("IDNOS"), QStringLiteral("History")}) {
        try {
            locks.openTable(&owner, table, true);
            locks.closeTable(&owner, table, true);
        } catch (const DbError& e) {
            problems << QStringLiteral("table %1 is still held: %2").arg(table, e.message());
        }
    }
}

} // namespace

Counters readCounters(Database& db)
{
    const ResultSet r = db.execute(QStringLiteral("select PERSON_ID, CLIENT_ID, DELIV_ID from IDNOS"));
    Counters counters;
    for (int c = 0; c < CounterColumns.size(); ++c)
        counters.insert(CounterColumns[c], r.value(0, c).toLongLong());
    return counters;
}

void preparePool(Database& db)
{
    TransactionGuard guard(db);
    Query insert = db.query(QStringLiteral("Insert into Clients (PERSON_ID, CLIENT_ID, LAST_NAME, FIRST_NAME, USER_DEF3) "
                                           "values (:Person, :Client, 'start', 'start', 0)"));
    for (int person = 1; person <= PoolSize; ++person)
        insert.bind(QStringLiteral("Person"), person).bind(QStringLiteral("Client"), QString::number(person)).execCommand();
    // A delivery of each client on each date the workers mark missed.
    Query delivery = db.query(QStringLiteral("Insert into Deliveri (Deliv_ID, Person_ID, Deliv_Dt, Delivery_Status) "
                                             "values (:Id, :Person, :Date, '')"));
    qint64 id = 0;
    for (int person = 1; person <= PoolSize; ++person)
        for (int day = 0; day < MissDays; ++day)
            delivery.bind(QStringLiteral("Id"), ++id)
                .bind(QStringLiteral("Person"), person)
                .bind(QStringLiteral("Date"), MissDatesFrom.addDays(day))
                .execCommand();
    guard.commit();
}

StressVerdict StressVerdict::check(Database& db, const QList<QList<QStringList>>& journals, const Counters& before,
                                   int unjournaled)
{
    StressVerdict verdict;
    QMap<QString, QList<QStringList>> byOperation;
    for (const QList<QStringList>& journal : journals)
        for (const QStringList& line : journal)
            if (!line.isEmpty())
                byOperation[line.front()].append(line);
    for (auto it = byOperation.cbegin(); it != byOperation.cend(); ++it)
        verdict.done.insert(it.key(), it.value().size());
    checkDraws(byOperation.value(QStringLiteral("draw")), before, readCounters(db), unjournaled, verdict.problems);
    checkEdits(db, byOperation.value(QStringLiteral("edit")) + byOperation.value(QStringLiteral("update")), unjournaled,
               verdict.problems);
    checkHistory(db, byOperation.value(QStringLiteral("history")), unjournaled, verdict.problems);
    checkMisses(db, byOperation.value(QStringLiteral("miss")), unjournaled, verdict.problems);
    checkHouseholds(db, verdict.problems);
    checkLocksFree(db, verdict.problems);
    return verdict;
}

} // namespace kb::stress
