#include "StressOperations.h"

#include "StressWorker.h"

#include "MessageError.h"
#include "dataset/Abort.h"
#include "dataset/TableDataSet.h"
#include "households/HouseholdActions.h"
#include "missed/MissRecorder.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <stdexcept>

namespace kb::stress {

namespace {

// A client edited on screen: the row is put into edit (its lock), kept a
// moment, its edit counter raised and both names set to one new token,
// then posted through the record services. A half-applied or lost edit
// shows as names that differ or a counter behind the journal.
void editClient(StressWorker& w)
{
    TableDataSet& clients = w.clients();
    const int person = w.pickClient();
    if (!clients.locate(QStringLiteral("PERSON_ID"), person))
        throw std::runtime_error("a client of the pool is missing");
    try {
        clients.edit();
    } catch (const Abort&) {
        w.conflict(QStringLiteral("edit"));
        return;
    }
    w.pause();
    const QString token = w.nextToken();
    clients.setFieldValue(u"USER_DEF3", clients.fieldValue(u"USER_DEF3").toInt() + 1);
    clients.setFieldValue(u"LAST_NAME", token);
    clients.setFieldValue(u"FIRST_NAME", token);
    try {
        clients.post();
    } catch (const Abort&) {
        clients.cancel();
        w.conflict(QStringLiteral("post"));
        return;
    }
    w.journal({QStringLiteral("edit"), QString::number(person), token});
}

// The same change by a plain statement, as batch work and stored queries
// make it: it meets the rows others hold in edit.
void updateClient(StressWorker& w)
{
    const int person = w.pickClient();
    const QString token = w.nextToken();
    try {
        w.db().execute(QStringLiteral("Update Clients set USER_DEF3 = USER_DEF3 + 1, LAST_NAME = :Token, "
                                      "FIRST_NAME = :Token where PERSON_ID = :Person"),
                       {{QStringLiteral("Token"), token}, {QStringLiteral("Person"), person}});
    } catch (const DbError& e) {
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("update"));
        return;
    }
    w.journal({QStringLiteral("update"), QString::number(person), token});
}

// A number from IDNOS, as a new person, client or run takes one.
void drawNumber(StressWorker& w)
{
    static const QString counters[] = {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"),
                                       QStringLiteral("DELIV_ID")};
    const QString& counter = counters[w.random().bounded(3)];
    int number = 0;
    try {
        number = w.services().GetUniqueID(counter);
    } catch (const MessageError&) {
        w.conflict(QStringLiteral("draw"));
        return;
    }
    w.journal({QStringLiteral("draw"), counter, QString::number(number)});
}

// An event written to the log.
void writeHistory(StressWorker& w)
{
    const QString token = w.nextToken();
    try {
        QueryInsertHistory(w.db(), w.userFullName(), {{}, {}, QStringLiteral("stress ") + token, {}});
    } catch (const DbError& e) {
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("history"));
        return;
    }
    w.journal({QStringLiteral("history"), token});
}

// A delivery of the pool marked missed, or missed and excused, as the batch
// screen records it: two workstations marking the same client and date at
// once must leave one miss, with the status of the one journaled.
void markMissed(StressWorker& w)
{
    const qint64 person = w.pickClient();
    const QDate date = MissDatesFrom.addDays(w.random().bounded(MissDays));
    const bool excused = w.random().bounded(2) == 1;
    const MissedClient client = MissedClient::read(w.db(), person);
    qint64 recorded = 0;
    try {
        recorded = MissRecorder(w.db(), w.ui(), MissRecorder::Wording::Batch)
                       .recordConfirmed({{client, excused}}, date, w.userFullName());
    } catch (const DbError& e) {
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("miss"));
        return;
    }
    // A date already marked is told and left alone: nothing to journal.
    if (recorded == 1)
        w.journal({QStringLiteral("miss"), QString::number(person), date.toString(Qt::ISODate),
                   excused ? QStringLiteral("E") : QStringLiteral("M")});
}

// A client of the pool moved into one of a few households, or taken out of
// theirs, as the household screens do it: the member row and the client's
// Household_ID in one transaction. Workers moving the same client at once
// must never leave the two disagreeing.
void moveHousehold(StressWorker& w)
{
    TableDataSet& clients = w.clients();
    const int person = w.pickClient();
    if (!clients.locate(QStringLiteral("PERSON_ID"), person))
        throw std::runtime_error("a client of the pool is missing");
    clients.refreshRecord();
    SessionState session;
    session.userFullName = w.userFullName();
    const SystemClock clock;
    HouseholdActions households(w.services(), w.ui(), session, clock, clients);
    QString done;
    try {
        TransactionGuard transaction(w.db());
        if (clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() > 0) {
            households.removeCurrentClient();
            done = QStringLiteral("out");
        } else {
            const ResultSet existing =
                w.db().execute(QStringLiteral("Select Household_ID from Households order by Household_ID"));
            const qint64 household =
                existing.rowCount() < 3 ? households.createHousehold(QStringLiteral("stress household"))
                                        : existing.value(w.random().bounded(int(existing.rowCount())), 0).toLongLong();
            if (!households.addCurrentClient(household)) return;
            done = QString::number(household);
        }
        transaction.commit();
    } catch (const Abort&) {
        if (clients.state() != DataSet::State::Browse) clients.cancel();
        w.conflict(QStringLiteral("household"));
        return;
    } catch (const DbError& e) {
        if (clients.state() != DataSet::State::Browse) clients.cancel();
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("household"));
        return;
    }
    w.journal({QStringLiteral("household"), QString::number(person), done});
}

// A screen reading while others write.
void readClients(StressWorker& w)
{
    const ResultSet r = w.db().execute(QStringLiteral("select count(*) as N, sum(USER_DEF3) as Edits from Clients"));
    if (r.value(0, 0).toInt() < PoolSize)
        throw std::runtime_error("the pool of clients shrank");
}

} // namespace

const std::vector<StressOperation>& stressOperations()
{
    static const std::vector<StressOperation> operations = {
        {QStringLiteral("edit"), 35, editClient},
        {QStringLiteral("update"), 15, updateClient},
        {QStringLiteral("draw"), 25, drawNumber},
        {QStringLiteral("history"), 20, writeHistory},
        {QStringLiteral("read"), 5, readClients},
        {QStringLiteral("miss"), 10, markMissed},
        {QStringLiteral("household"), 10, moveHousehold},
    };
    return operations;
}

} // namespace kb::stress
