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

// Saves take their Deliv_IDs from the counter as one block (first to last
// of the journal line) and may move it one past the block; the numbers of a
// save and of every draw are all different.
void checkDraws(const QList<QStringList>& draws, const QList<QStringList>& saves, const Counters& before,
                const Counters& after, int unjournaled, QStringList& problems)
{
    QMap<QString, QSet<qint64>> seen;
    const auto take = [&](const QString& counter, qint64 number, const char* how) {
        if (seen[counter].contains(number))
            problems << QStringLiteral("%1 %2 was handed out twice (%3)").arg(counter).arg(number).arg(QLatin1String(how));
        seen[counter].insert(number);
        // The Deliv_ID counter holds the next number to use, the others the last one used.
        const qint64 low = counter == QLatin1String("DELIV_ID") ? before.value(counter) - 1 : before.value(counter);
        if (number <= low || number > after.value(counter))
            problems << QStringLiteral("%1 %2 lies outside what the counter handed out").arg(counter).arg(number);
    };
    for (const QStringList& line : draws)
        take(line.value(1), line.value(2).toLongLong(), "draw");
    for (const QStringList& line : saves)
        for (qint64 id = line.value(2).toLongLong(); id <= line.value(3).toLongLong(); ++id)
            take(QStringLiteral("DELIV_ID"), id, "save");
    for (const QString& counter : CounterColumns) {
        // A save killed after its commit took a whole run's block unjournaled.
        const qint64 slack = counter == QLatin1String("DELIV_ID") ? saves.size() + qint64(unjournaled) * PoolSize : 0;
        const qint64 gone = after.value(counter) - before.value(counter) - seen.value(counter).size();
        if (gone < 0 || gone > unjournaled + slack)
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

// Every date saved holds the deliveries of one save: one row for each
// client of the pool, numbered inside a block a save of that date took, and
// no MealCrdt row of an earlier save of the date is left behind.
void checkSaves(Database& db, const QList<QStringList>& saves, int unjournaled, QStringList& problems)
{
    QMap<QDate, QList<std::pair<qint64, qint64>>> blocks;
    for (const QStringList& line : saves) {
        blocks[QDate::fromString(line.value(1), Qt::ISODate)].append(
            {line.value(2).toLongLong(), line.value(3).toLongLong()});
        if (line.value(4).toInt() != PoolSize)
            problems << QStringLiteral("the save of %1 wrote %2 deliveries, not %3").arg(line.value(1), line.value(4)).arg(PoolSize);
    }
    for (int day = 0; day < SaveDays; ++day) {
        const QDate date = SaveDatesFrom.addDays(day);
        const Params on = {{QStringLiteral("Date"), date}};
        const ResultSet rows = db.execute(
            QStringLiteral("select Person_ID, Deliv_ID from Deliveri where Deliv_Dt = :Date order by Person_ID"), on);
        if (!blocks.contains(date)) {
            if (rows.rowCount() > 0 && unjournaled == 0)
                problems << QStringLiteral("%1 holds %2 deliveries but was never saved").arg(date.toString(Qt::ISODate)).arg(rows.rowCount());
            continue;
        }
        QMap<qint64, int> perPerson;
        QSet<qint64> ids;
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            ++perPerson[rows.value(r, 0).toLongLong()];
            const qint64 id = rows.value(r, 1).toLongLong();
            ids.insert(id);
            bool inBlock = false;
            for (const auto& [first, last] : blocks.value(date))
                inBlock = inBlock || (id >= first && id <= last);
            if (!inBlock && unjournaled == 0)
                problems << QStringLiteral("delivery %1 of %2 was numbered by no save of that date").arg(id).arg(date.toString(Qt::ISODate));
        }
        for (int person = 1; person <= PoolSize; ++person)
            if (perPerson.value(person) != 1)
                problems << QStringLiteral("client %1 has %2 deliveries on %3 after the saves")
                                .arg(person)
                                .arg(perPerson.value(person))
                                .arg(date.toString(Qt::ISODate));
        if (perPerson.size() != PoolSize)
            problems << QStringLiteral("%1 holds deliveries of %2 clients, not %3").arg(date.toString(Qt::ISODate)).arg(perPerson.size()).arg(PoolSize);
        const ResultSet items = db.execute(QStringLiteral("select distinct Deliv_ID from MealCrdt where Deliv_Dt = :Date"), on);
        for (qsizetype r = 0; r < items.rowCount(); ++r)
            if (!ids.contains(items.value(r, 0).toLongLong()))
                problems << QStringLiteral("MealCrdt of %1 keeps delivery %2 of a replaced save")
                                .arg(date.toString(Qt::ISODate))
                                .arg(items.value(r, 0).toLongLong());
    }
}

// Every suspension journaled stands once, no client's suspensions overlap,
// and none stands that no worker journaled.
void checkSuspensions(Database& db, const QList<QStringList>& added, int unjournaled, QStringList& problems)
{
    const ResultSet rows = db.execute(
        QStringLiteral("select Person_ID, Stop_Dt, Resume_Dt from Suspends where Person_ID between 1 and :Pool "
                       "order by Person_ID, Stop_Dt"),
        {{QStringLiteral("Pool"), PoolSize}});
    QMap<QString, int> stored;
    qsizetype reaching = -1; // of the client's rows so far, the one that resumes last
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QString key = rows.value(r, 0).toString() + QLatin1Char(' ') + rows.value(r, 1).toDate().toString(Qt::ISODate) +
                            QLatin1Char(' ') + rows.value(r, 2).toDate().toString(Qt::ISODate);
        ++stored[key];
        if (reaching < 0 || rows.value(reaching, 0) != rows.value(r, 0)) {
            reaching = r;
            continue;
        }
        // Ordered by stop date: a row overlaps an earlier one when it stops
        // before the latest resume of those.
        if (rows.value(r, 1).toDate() < rows.value(reaching, 2).toDate())
            problems << QStringLiteral("client %1 has overlapping suspensions: %2-%3 and %4-%5")
                            .arg(rows.value(r, 0).toString(), rows.value(reaching, 1).toDate().toString(Qt::ISODate),
                                 rows.value(reaching, 2).toDate().toString(Qt::ISODate),
                                 rows.value(r, 1).toDate().toString(Qt::ISODate),
                                 rows.value(r, 2).toDate().toString(Qt::ISODate));
        if (rows.value(r, 2).toDate() > rows.value(reaching, 2).toDate())
            reaching = r;
    }
    QSet<QString> journaled;
    for (const QStringList& line : added) {
        const QString key = line.value(1) + QLatin1Char(' ') + line.value(2) + QLatin1Char(' ') + line.value(3);
        journaled.insert(key);
        if (stored.value(key) != 1)
            problems << QStringLiteral("the suspension %1 is there %2 times").arg(key).arg(stored.value(key));
    }
    int unexplained = 0;
    for (auto it = stored.cbegin(); it != stored.cend(); ++it)
        if (!journaled.contains(it.key()))
            unexplained += it.value();
    if (unexplained > unjournaled)
        problems << QStringLiteral("%1 suspensions are in the data that no worker journaled").arg(unexplained);
}

// Every relationship journaled stands once, for its client, with the
// individual made with it; one of a killed worker may stand unjournaled.
void checkRelationships(Database& db, const QList<QStringList>& related, int unjournaled,
                        QStringList& problems)
{
    const ResultSet stored =
        db.execute(QStringLiteral("select Relationships.Person_ID, Relationships.Relationship, "
                                  "Individuals.Last_Name from Relationships "
                                  "left join Individuals on Relationships.Indiv_ID = Individuals.Indiv_ID"));
    QMap<QString, int> seen; // "person token" -> rows
    for (qsizetype r = 0; r < stored.rowCount(); ++r) {
        const QString token = stored.value(r, 1).toString();
        if (stored.value(r, 2).toString() != token)
            problems << QStringLiteral("the relationship %1 lost its individual").arg(token);
        ++seen[stored.value(r, 0).toString() + QLatin1Char(' ') + token];
    }
    for (const QStringList& line : related) {
        const int rows = seen.take(line.value(1) + QLatin1Char(' ') + line.value(2));
        if (rows != 1)
            problems << QStringLiteral("the relationship %1 stands %2 times").arg(line.value(2)).arg(rows);
    }
    if (seen.size() > unjournaled)
        problems
            << QStringLiteral("%1 relationships are in the data that no worker journaled").arg(seen.size());
}

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

// Whatever the workers held must be free: every row of the pool and of
// IDNOS can be locked, and the tables opened exclusively.
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
    rowsOf(QStringLiteral("Suspends"));
    for (const QString& table : {QStringLiteral("Clients"), QStringLiteral("IDNOS"), QStringLiteral("History")}) {
        try {
            locks.openTable(&owner, table, true);
            locks.closeTable(&owner, table, true);
        } catch (const DbError& e) {
            problems << QStringLiteral("table %1 is still held: %2").arg(table, e.message());
        }
    }
}

// Every dated delivery journaled stands under the RecordID its worker got
// back, with that worker's client and date; rows no worker journaled can
// only be those of killed workers.
void checkDated(Database& db, const QList<QStringList>& added, int unjournaled, QStringList& problems)
{
    QSet<qint64> ids;
    for (const QStringList& line : added) {
        const qint64 id = line.value(3).toLongLong();
        if (ids.contains(id)) problems << QStringLiteral("dated delivery %1 was handed to two workers").arg(id);
        ids.insert(id);
        const ResultSet row =
            db.execute(QStringLiteral("select Person_ID, Deliv_Date from EpisodicDeliveries where RecordID = :Id"),
                       {{QStringLiteral("Id"), id}});
        if (row.isEmpty() || row.value(0, 0).toString() != line.value(1) ||
            row.value(0, 1).toDate().toString(Qt::ISODate) != line.value(2))
            problems << QStringLiteral("dated delivery %1 is not the one of client %2 on %3 that was added")
                            .arg(id)
                            .arg(line.value(1), line.value(2));
    }
    const qint64 stored = db.execute(QStringLiteral("select count(*) from EpisodicDeliveries")).value(0, 0).toLongLong();
    const qint64 unexplained = stored - qint64(added.size());
    if (unexplained < 0 || unexplained > unjournaled)
        problems << QStringLiteral("%1 dated deliveries are stored but %2 were added").arg(stored).arg(added.size());
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
    // Active clients of one service and route, due every day of every week,
    // so that each is in the run of every date.
    db.execute(QStringLiteral("Insert into Services (Service_ID, Service_Desc, Service_Type) values (1, 'Hot Meals', 'D')"));
    db.execute(QStringLiteral("Insert into Routes (Route_ID, Route_Desc) values ('R1', 'Route R1')"));
    db.execute(QStringLiteral("Insert into Items (Item_ID, Meal_Item, Number_Meals, Number_Labels) values (10, 'Hot Lunch', 1, 1)"));
    for (const char* day : {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"})
        db.execute(QStringLiteral("Insert into Defdels (Person_ID, Service_ID, Del_Day, Item_ID, Quantity, Sort_Order) "
                                  "values (0, 1, :Day, 10, 1, 1)"),
                   {{QStringLiteral("Day"), QString::fromLatin1(day)}});
    Query insert = db.query(QStringLiteral(
        "Insert into Clients (PERSON_ID, CLIENT_ID, LAST_NAME, FIRST_NAME, USER_DEF3, STATUS, DELIVERY_TYPE, "
        "ONGOING_FREQUENCY, SVCS_USED, START_DTE, DEF_RTE, DEF_STOP, MONDAY, TUESDAY, WEDNESDAY, THURSDAY, FRIDAY, "
        "SATURDAY, SUNDAY) values (:Person, :Client, 'start', 'start', 0, 'A', 'O', 'A', 1, :Start, 'R1', :Person, "
        "True, True, True, True, True, True, True)"));
    for (int person = 1; person <= PoolSize; ++person)
        insert.bind(QStringLiteral("Person"), person)
            .bind(QStringLiteral("Client"), QString::number(person))
            .bind(QStringLiteral("Start"), QDate(2024, 1, 1))
            .execCommand();
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
    // Saves number their deliveries from the counter on, past these.
    db.execute(QStringLiteral("Update IDNOS set DELIV_ID = :Next"), {{QStringLiteral("Next"), id + 1}});
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
    checkDraws(byOperation.value(QStringLiteral("draw")), byOperation.value(QStringLiteral("save")), before,
               readCounters(db), unjournaled, verdict.problems);
    checkEdits(db, byOperation.value(QStringLiteral("edit")) + byOperation.value(QStringLiteral("update")), unjournaled,
               verdict.problems);
    checkHistory(db, byOperation.value(QStringLiteral("history")), unjournaled, verdict.problems);
    checkMisses(db, byOperation.value(QStringLiteral("miss")), unjournaled, verdict.problems);
    checkDated(db, byOperation.value(QStringLiteral("dated")), unjournaled, verdict.problems);
    checkSaves(db, byOperation.value(QStringLiteral("save")), unjournaled, verdict.problems);
    checkSuspensions(db, byOperation.value(QStringLiteral("suspend")), unjournaled, verdict.problems);
    checkRelationships(db, byOperation.value(QStringLiteral("relate")), unjournaled, verdict.problems);
    checkHouseholds(db, verdict.problems);
    checkLocksFree(db, verdict.problems);
    return verdict;
}

} // namespace kb::stress
