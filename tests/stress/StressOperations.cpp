#include "StressOperations.h"

#include "StressWorker.h"

#include "MessageError.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "individuals/TFormIndividual.h"
#include "individuals/TFormRelationship.h"
#include "missed/MissRecorder.h"
#include "records/History.h"
#include "records/RecordServices.h"
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

// An outside individual added and related to a client, as the
// relationship screen saves them: both rows carry one token, so a
// relationship without its individual, or one saved twice, shows.
void relateClient(StressWorker& w)
{
    const int person = w.pickClient();
    const QString token = w.nextToken();
    try {
        // The new row matches the statement, so it stays in the set after its post.
        QueryDataSet individual(w.db(), QStringLiteral("select * from Individuals where Last_Name = :Token"));
        individual.setRequestLive(true);
        individual.setParam(QStringLiteral("Token"), token);
        w.services().installErrorHooks(individual);
        individual.open();
        TFormIndividual added(individual, w.ui(), w.db().clock(), w.userFullName().left(20),
                              QStringLiteral("USA"));
        added.Add();
        added.setValue(QStringLiteral("LAST_NAME"), token);
        added.Ok();
        TFormRelationship form(w.services(), w.ui(), w.db().clock(), w.userFullName(), person);
        form.EditRelationships(TFormRelationship::Mode::Add);
        form.setValue(QStringLiteral("Relationship"), token);
        form.setIndividual(individual.fieldValue(u"INDIV_ID").toLongLong());
        if (!form.Ok()) throw std::runtime_error("the relationship form refused a complete relationship");
    } catch (const Abort&) {
        w.conflict(QStringLiteral("relate"));
        return;
    } catch (const DbError& e) {
        if (!e.isLockConflict()) throw;
        w.conflict(QStringLiteral("relate"));
        return;
    }
    w.journal({QStringLiteral("relate"), QString::number(person), token});
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
        {QStringLiteral("relate"), 5, relateClient},
    };
    return operations;
}

} // namespace kb::stress
