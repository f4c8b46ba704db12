#include "StressOperations.h"

#include "StressWorker.h"

#include "MessageError.h"
#include "TFormRunPrepare.h"
#include "confirmation/GivenItemConfirmation.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"
#include "dated/DatedDeliveries.h"
#include "dialogs/GivenRunDialogs.h"
#include "households/HouseholdActions.h"
#include "individuals/TFormIndividual.h"
#include "individuals/TFormRelationship.h"
#include "missed/MissRecorder.h"
#include "records/History.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "session/TDataModule1.h"
#include "store/Database.h"
#include "store/DbError.h"
#include "suspensions/ClientSuspensions.h"
#include "suspensions/TFormAddSuspension.h"

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

// A number from IDNOS, as a new person or client takes one. (Deliv_ID is
// drawn by saving a run, which takes a block of them.)
void drawNumber(StressWorker& w)
{
    static const QString counters[] = {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID")};
    const QString& counter = counters[w.random().bounded(2)];
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

// The run of a date of the week prepared and saved, as the run screen does
// it: two workstations saving one date at once must leave the deliveries of
// one save only, one per client, and numbers no one else drew.
void saveRun(StressWorker& w)
{
    const QDate date = SaveDatesFrom.addDays(w.random().bounded(SaveDays));
    GivenItemConfirmation all = GivenItemConfirmation::all();
    GivenRunDialogs dialogs;
    TFormRunPrepare form(w.db(), w.data().session(), w.ui());
    form.setItemConfirmation(&all);
    form.setDialogs(&dialogs);
    form.FormShow();
    struct Close
    {
        TFormRunPrepare& form;
        ~Close() { form.FormClose(); }
    } close{form};
    form.SetPrepareDate(date);
    form.ActionPrepare();
    // The screen tells its failures; a save that met another workstation's
    // is rolled back whole and given up, as a user would try again later.
    const std::optional<SaveResult> saved = form.ActionSaveData();
    if (!saved) {
        w.conflict(QStringLiteral("save"));
        return;
    }
    w.journal({QStringLiteral("save"), date.toString(Qt::ISODate), QString::number(saved->firstDelivId),
               QString::number(saved->lastDelivId), QString::number(saved->deliveries)});
}

// A suspension added on the client window: the client is held in edit while
// the user looks at its suspensions and adds one that covers none of the
// days of another, through the suspension rules, in one transaction. Holding
// the client is what keeps two workstations from adding overlapping ones.
void addSuspension(StressWorker& w)
{
    const int person = w.pickClient();
    const QDate stop = SuspendDatesFrom.addDays(w.random().bounded(SuspendDays));
    const QDate resume = stop.addDays(1 + w.random().bounded(14));
    TableDataSet& clients = w.clients();
    if (!clients.locate(QStringLiteral("PERSON_ID"), person))
        throw std::runtime_error("a client of the pool is missing");
    try {
        clients.edit();
    } catch (const Abort&) {
        w.conflict(QStringLiteral("suspend"));
        return;
    }
    struct Release
    {
        TableDataSet& clients;
        ~Release()
        {
            if (clients.state() != DataSet::State::Browse)
                clients.cancel();
        }
    } release{clients};
    const Params dates = {{QStringLiteral("Person"), person},
                          {QStringLiteral("Stop"), stop},
                          {QStringLiteral("Resume"), resume}};
    if (w.db()
            .execute(QStringLiteral("select count(*) from Suspends where Person_ID = :Person and Stop_Dt < :Resume "
                                    "and Resume_Dt > :Stop"),
                     dates)
            .value(0, 0)
            .toLongLong() > 0)
        return;
    try {
        TransactionGuard transaction(w.db());
        ClientSuspensions page(w.services(), w.ui(), w.data().session(), w.data().clock(), clients);
        page.open();
        page.editor().setShowForm([&](TFormAddSuspension& form) {
            form.setStopDate(stop);
            form.setResumeDate(resume);
            return true;
        });
        // The editor tells its failures (another workstation in the way)
        // and the transaction is rolled back.
        if (!page.editor().EditHolds(SuspensionEditor::Mode::Add)) {
            w.conflict(QStringLiteral("suspend"));
            return;
        }
        transaction.commit();
    } catch (const DbError& e) {
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("suspend"));
        return;
    }
    w.journal({QStringLiteral("suspend"), QString::number(person), stop.toString(Qt::ISODate),
               resume.toString(Qt::ISODate)});
}

// A dated delivery added for a client of the pool, as the delivery
// screens and the dated command add one: two workstations adding for the
// same client at once must each get back their own row.
void addDated(StressWorker& w)
{
    const int person = w.pickClient();
    const QDate date = MissDatesFrom.addDays(w.random().bounded(MissDays));
    const std::optional<DatedClient> client = DatedClient::byPersonId(w.db(), person);
    if (!client) throw std::runtime_error("a client of the pool is missing");
    qint64 id = 0;
    try {
        TransactionGuard transaction(w.db());
        id = DatedDeliveries(w.db(), w.ui(), w.userFullName()).add(*client, client->kind(), date);
        transaction.commit();
    } catch (const DbError& e) {
        if (!e.isLockConflict())
            throw;
        w.conflict(QStringLiteral("dated"));
        return;
    }
    w.journal({QStringLiteral("dated"), QString::number(person), date.toString(Qt::ISODate), QString::number(id)});
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
        {QStringLiteral("dated"), 10, addDated},
        {QStringLiteral("save"), 4, saveRun},
        {QStringLiteral("suspend"), 8, addSuspension},
        {QStringLiteral("relate"), 5, relateClient},
        {QStringLiteral("household"), 10, moveHousehold},
    };
    return operations;
}

} // namespace kb::stress
