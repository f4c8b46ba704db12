// The record services every screen stands on: numbering from IDNOS between
// processes, the shared reactions to engine errors on post, edit and delete,
// the data set actions, stored statements, stamping and History.

#include "DataSetFixture.h"
#include "ScriptedUserInterface.h"

#include "records/DataSetActions.h"
#include "records/History.h"
#include "MessageError.h"
#include "records/RecordServices.h"
#include "records/UniqueId.h"
#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"

#include <algorithm>
#include <csignal>
#include <functional>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace kb;
using Kind = kb::test::ScriptedUserInterface::Kind;

namespace {

// A user whose answer to a question comes with something done first, the
// way another workstation lets go of a row while the question is open.
class ActingUserInterface final : public UserInterface
{
public:
    std::function<Answer(const QString&)> onQuestion = [](const QString&) { return Answer::No; };
    QStringList questions;
    QStringList told;

    void information(const QString& text) override { told.append(text); }
    void warning(const QString& text) override { told.append(text); }
    void error(const QString& text) override { told.append(text); }
    Answer question(const QString& text, Buttons) override
    {
        questions.append(text);
        return onQuestion(text);
    }
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}
};

// A forked child that runs work in its own session, writes what it returns
// to a pipe, and is waited for (or killed) when the test ends.
class ChildProcess
{
public:
    ~ChildProcess()
    {
        stop();
        if (m_out >= 0) close(m_out);
    }

    // Kills the child if it still runs.
    void stop()
    {
        if (m_pid > 0) {
            kill(m_pid, SIGKILL);
            waitpid(m_pid, nullptr, 0);
            m_pid = -1;
        }
    }

    // work writes its results through the callback; the child ends after it.
    void start(std::function<void(const std::function<void(qint32)>&)> work)
    {
        int fds[2];
        ASSERT_EQ(pipe(fds), 0);
        m_pid = fork();
        ASSERT_GE(m_pid, 0);
        if (m_pid == 0) {
            close(fds[0]);
            int status = 0;
            try {
                work([&](qint32 value) { (void)!write(fds[1], &value, sizeof value); });
            } catch (const std::exception& e) {
                fprintf(stderr, "child failed: %s\n", e.what());
                status = 1;
            } catch (...) {
                status = 1;
            }
            close(fds[1]);
            _exit(status);
        }
        close(fds[1]);
        m_out = fds[0];
    }

    // Reads one value the child wrote; false when it ended instead.
    bool read(qint32& value) { return ::read(m_out, &value, sizeof value) == ssize_t(sizeof value); }

    std::vector<qint32> readAll()
    {
        std::vector<qint32> values;
        qint32 value = 0;
        while (read(value))
            values.push_back(value);
        return values;
    }

    // The child's exit code once it has ended.
    int wait()
    {
        int status = 0;
        const pid_t ended = waitpid(m_pid, &status, 0);
        m_pid = -1;
        if (ended < 0) return -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t m_pid = -1;
    int m_out = -1;
};

class RecordServicesTest : public test::DataSetFixture
{
protected:
    int counter(const QString& column)
    {
        return db().execute(QStringLiteral("select %1 from IDNOS").arg(column)).value(0, 0).toInt();
    }
};

TEST_P(RecordServicesTest, NumbersStartAtOneAndAnEmptyCounterCountsAsZero)
{
    EXPECT_EQ(GetUniqueID(db(), QStringLiteral("PERSON_ID")), 1);
    EXPECT_EQ(GetUniqueID(db(), QStringLiteral("PERSON_ID")), 2);
    db().execute(QStringLiteral("Update IDNOS set CLIENT_ID = null"));
    EXPECT_EQ(GetUniqueID(db(), QStringLiteral("CLIENT_ID")), 1);
    EXPECT_EQ(counter(QStringLiteral("CLIENT_ID")), 1);
    EXPECT_EQ(counter(QStringLiteral("PERSON_ID")), 2);
    // Nothing of IDNOS stays held afterwards.
    auto other = otherSession();
    EXPECT_EQ(GetUniqueID(*other, QStringLiteral("PERSON_ID")), 3);
}

TEST_P(RecordServicesTest, TwoProcessesGetDistinctConsecutiveNumbers)
{
    constexpr int PerProcess = 1000;
    const int before = counter(QStringLiteral("DELIV_ID"));
    auto work = [this](const std::function<void(qint32)>& report) {
        auto session = data->openAnother();
        // Each try waits for the lock a little; the 100 tries cover the rest.
        session->recordLocks().setRetries(50, 1);
        for (int i = 0; i < PerProcess; ++i)
            report(GetUniqueID(*session, QStringLiteral("DELIV_ID")));
    };
    ChildProcess first;
    ChildProcess second;
    first.start(work);
    second.start(work);
    const std::vector<qint32> a = first.readAll();
    const std::vector<qint32> b = second.readAll();
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    ASSERT_EQ(a.size(), size_t(PerProcess));
    ASSERT_EQ(b.size(), size_t(PerProcess));
    // Each process sees its own numbers rise.
    EXPECT_TRUE(std::is_sorted(a.begin(), a.end()));
    EXPECT_TRUE(std::is_sorted(b.begin(), b.end()));
    std::set<qint32> all(a.begin(), a.end());
    all.insert(b.begin(), b.end());
    ASSERT_EQ(all.size(), size_t(2 * PerProcess)) << "a number was handed out twice";
    EXPECT_EQ(*all.begin(), before + 1);
    EXPECT_EQ(*all.rbegin(), before + 2 * PerProcess);
    EXPECT_EQ(counter(QStringLiteral("DELIV_ID")), before + 2 * PerProcess);
}

TEST_P(RecordServicesTest, ARowHeldThroughEveryTryFailsAndLeavesTheCounter)
{
    const int before = GetUniqueID(db(), QStringLiteral("PERSON_ID"));
    ChildProcess holder;
    holder.start([this](const std::function<void(qint32)>& report) {
        auto session = data->openAnother();
        TableDataSet idnos(*session, QStringLiteral("IDNOS"));
        idnos.open();
        idnos.edit();
        idnos.setFieldValue(u"PERSON_ID", 999);
        report(1);
        pause(); // holds the row until it is killed
    });
    qint32 ready = 0;
    ASSERT_TRUE(holder.read(ready));

    db().recordLocks().setRetries(1, 0);
    try {
        GetUniqueID(db(), QStringLiteral("PERSON_ID"), UniqueIdTries{100, 3});
        ADD_FAILURE() << "a number was handed out while another process held IDNOS";
    } catch (const MessageError& e) {
        EXPECT_EQ(e.message(), "Cannot get next unique number. (btGetUniqueNumber)");
    }
    EXPECT_EQ(counter(QStringLiteral("PERSON_ID")), before);
    // The failed call gave everything back: once the holder is gone numbering goes on.
    holder.stop();
    EXPECT_EQ(GetUniqueID(db(), QStringLiteral("PERSON_ID")), before + 1);
}

TEST_P(RecordServicesTest, ADuplicateKeyLeavesTheRecordInEditWithItsMessage)
{
    test::ScriptedUserInterface ui;
    RecordServices services(db(), ui);
    db().execute(QStringLiteral("Insert into Zips (Zip, City) values ('12345', 'Ashby')"));
    TableDataSet zips(db(), QStringLiteral("Zips"));
    services.installErrorHooks(zips);
    zips.open();
    zips.append();
    zips.setFieldValue(u"ZIP", QStringLiteral("12345"));
    zips.setFieldValue(u"CITY", QStringLiteral("Barton"));
    EXPECT_THROW(zips.post(), Abort);
    EXPECT_EQ(zips.state(), DataSet::State::Insert);
    EXPECT_EQ(zips.fieldValue(u"CITY").toString(), "Barton");
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Not able to save this record- it creates a duplicated Code."});
    // The user corrects the code and the same record saves.
    zips.setFieldValue(u"ZIP", QStringLiteral("12346"));
    zips.post();
    EXPECT_EQ(db().recordCount(QStringLiteral("Zips")), 2);

    // The maintenance screens' copy says the same, and everything else
    // comes with the engine's own text.
    ui.clear();
    services.installMaintenanceErrorHooks(zips);
    zips.edit();
    zips.setFieldValue(u"ZIP", QStringLiteral("12345"));
    EXPECT_THROW(zips.post(), Abort);
    EXPECT_EQ(zips.state(), DataSet::State::Edit);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"Not able to save this record- it creates a duplicated Code."});
    zips.cancel();
}

TEST_P(RecordServicesTest, OtherEngineErrorsAreUnableToSaveWithTheEngineText)
{
    test::ScriptedUserInterface ui;
    RecordServices services(db(), ui);
    TableDataSet locations(db(), QStringLiteral("Locatns"));
    services.installErrorHooks(locations);
    locations.open();
    locations.append();
    locations.setFieldValue(u"LOCATION", QStringLiteral("Hall")); // LOCATION_ID is required
    EXPECT_THROW(locations.post(), Abort);
    EXPECT_EQ(locations.state(), DataSet::State::Insert);
    const QStringList errors = ui.texts(Kind::Error);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(errors[0].startsWith(QLatin1String("Unable to save this record. ")))
        << errors[0].toStdString();
    EXPECT_GT(errors[0].size(), QStringLiteral("Unable to save this record. ").size());

    // The maintenance copy words it the same way.
    ui.clear();
    services.installMaintenanceErrorHooks(locations);
    EXPECT_THROW(locations.post(), Abort);
    ASSERT_EQ(ui.texts(Kind::Error).size(), 1);
    EXPECT_TRUE(ui.texts(Kind::Error)[0].startsWith(QLatin1String("Unable to save this record. ")));
}

TEST_P(RecordServicesTest, ALockedRowAsksAndYesRetriesNoAbandons)
{
    addClients();
    auto other = otherSession();
    TableDataSet theirs(*other, QStringLiteral("Clients"));
    theirs.open();
    ASSERT_TRUE(theirs.locate(QStringLiteral("Person_ID"), 2));
    theirs.edit();

    db().recordLocks().setRetries(2, 1);
    ActingUserInterface ui;
    RecordServices services(db(), ui);
    TableDataSet mine(db(), QStringLiteral("Clients"));
    services.installErrorHooks(mine);
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 2));

    // No abandons the edit.
    EXPECT_THROW(mine.edit(), Abort);
    EXPECT_EQ(mine.state(), DataSet::State::Browse);
    EXPECT_EQ(ui.questions,
              QStringList{"The record you are trying to edit is currently locked, do you want to try to "
                          "edit this record again?"});

    // Yes tries again; the other workstation has let go meanwhile.
    ui.questions.clear();
    ui.onQuestion = [&](const QString&) {
        theirs.cancel();
        return Answer::Yes;
    };
    mine.edit();
    EXPECT_EQ(mine.state(), DataSet::State::Edit);
    EXPECT_EQ(ui.questions.size(), 1);
    mine.setFieldValue(u"Last_Name", QStringLiteral("Mine"));
    mine.post();
    EXPECT_EQ(lastName(*other, 2), "Mine");

    // A delete of a held row asks its own question; Yes retries.
    theirs.refresh();
    ASSERT_TRUE(theirs.locate(QStringLiteral("Person_ID"), 3));
    theirs.edit();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 3));
    ui.questions.clear();
    ui.onQuestion = [](const QString&) { return Answer::No; };
    EXPECT_THROW(mine.remove(), Abort);
    EXPECT_EQ(ui.questions,
              QStringList{"This record is being updated by another user, would you like to retry the "
                          "delete operation ?"});
    EXPECT_EQ(db().recordCount(QStringLiteral("Clients")), 4);
    ui.onQuestion = [&](const QString&) {
        theirs.cancel();
        return Answer::Yes;
    };
    mine.remove();
    EXPECT_EQ(db().recordCount(QStringLiteral("Clients")), 3);
}

TEST_P(RecordServicesTest, LockQuestionsOfAPostAnswerYesWithRetryNoWithAbandon)
{
    test::ScriptedUserInterface ui;
    RecordServices services(db(), ui);
    TableDataSet zips(db(), QStringLiteral("Zips"));
    ui.answerNext(Answer::Yes);
    ui.answerNext(Answer::No);
    const DbError recordLocked(DbErrorCode::RecordLocked, QStringLiteral("locked"));
    const DbError tableLocked(DbErrorCode::TableLocked, QStringLiteral("locked"));
    EXPECT_EQ(services.TablePostError(zips, recordLocked), DataSet::ErrorAction::Retry);
    EXPECT_EQ(services.TablePostError(zips, tableLocked), DataSet::ErrorAction::Abort);
    EXPECT_EQ(
        ui.texts(Kind::Question),
        (QStringList{"The record you are trying to edit is currently locked, do you want to try to edit this "
                     "record again?",
                     "The table you are trying to edit is currently locked, do you want to try to edit this "
                     "record again?"}));
    // An edit knows no duplicate key; it is one of the other errors there.
    ui.clear();
    EXPECT_EQ(services.TableEditError(zips, DbError(DbErrorCode::DuplicateKey, QStringLiteral("dup"))),
              DataSet::ErrorAction::Abort);
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"Unable to edit this record. dup"});
    // A delete says anything but a held row in the engine's own words.
    ui.clear();
    EXPECT_EQ(services.TableDeleteError(zips, DbError(DbErrorCode::Other, QStringLiteral("disk full"))),
              DataSet::ErrorAction::Abort);
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"disk full"});
}

TEST_P(RecordServicesTest, ARecordChangedByAnotherIsRefreshedAndTriedAgain)
{
    addClients();
    test::ScriptedUserInterface ui;
    RecordServices services(db(), ui);
    auto other = otherSession();
    const QString changed =
        QStringLiteral("The record you are trying to edit has been modified since it was last "
                       "retrieved, the record will now be refreshed");

    TableDataSet mine(db(), QStringLiteral("Clients"));
    services.installErrorHooks(mine);
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 1));
    // Changed between reading and editing: the edit re-reads and goes on.
    other->execute(QStringLiteral("Update Clients set First_Name = 'Alma' where Person_ID = 1"));
    mine.edit();
    EXPECT_EQ(mine.state(), DataSet::State::Edit);
    EXPECT_EQ(mine.fieldValue(u"First_Name").toString(), "Alma");
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{changed});

    // A plain statement of another workstation meets the row in edit: it
    // waits the session's retries and fails, and changes nothing under the
    // editor, whose post then goes through as typed.
    ui.clear();
    mine.setFieldValue(u"Last_Name", QStringLiteral("Amesbury"));
    other->recordLocks().setRetries(3, 10);
    try {
        other->execute(QStringLiteral("Update Clients set First_Name = 'Anna' where Person_ID = 1"));
        ADD_FAILURE() << "the statement changed a row held in edit";
    } catch (const DbError& e) {
        EXPECT_EQ(e.code(), DbErrorCode::RecordLocked);
    }
    mine.post();
    EXPECT_TRUE(ui.texts(Kind::Information).isEmpty());
    EXPECT_EQ(lastName(*other, 1), "Amesbury");
    EXPECT_EQ(other->execute(QStringLiteral("select First_Name from Clients where Person_ID = 1"))
                  .value(0, 0)
                  .toString(),
              "Alma");
    // Once the row is free the statement runs.
    other->execute(QStringLiteral("Update Clients set First_Name = 'Anna' where Person_ID = 1"));
    EXPECT_EQ(other->execute(QStringLiteral("select First_Name from Clients where Person_ID = 1"))
                  .value(0, 0)
                  .toString(),
              "Anna");
}

TEST_P(RecordServicesTest, ForeignFaultsAreShownAndReported)
{
    test::ScriptedUserInterface ui;
    RecordServices services(db(), ui);
    QStringList reported;
    services.setFailureReport([&](const QString& message) { reported.append(message); });
    services.reportForeignError(MessageError(QStringLiteral("Out of paper")));
    EXPECT_EQ(ui.texts(Kind::Error), QStringList{"Out of paper"});
    EXPECT_EQ(reported, QStringList{"Out of paper"});
}

TEST_P(RecordServicesTest, ActionsOpenRefreshCloseAndMakeReadOnly)
{
    TableDataSet zips(db(), QStringLiteral("Zips"));
    QueryDataSet query(db(), QStringLiteral("select * from Zips where City = :City"));
    query.setParam(QStringLiteral("City"), QStringLiteral("Ashby"));
    query.setRequestLive(true);
    SetOneTable(zips, QStringLiteral("O"));
    SetOneQuery(query, QStringLiteral("O"));
    EXPECT_TRUE(zips.isActive());
    EXPECT_TRUE(query.isActive());
    EXPECT_TRUE(zips.isEmpty());

    db().execute(QStringLiteral("Insert into Zips (Zip, City) values ('12345', 'Ashby')"));
    SetOneTable(zips, QStringLiteral("R"));
    SetOneQuery(query, QStringLiteral("R"));
    EXPECT_EQ(zips.recordCount(), 1);
    EXPECT_EQ(query.recordCount(), 1);

    TableDataSet race(db(), QStringLiteral("Race"));
    SetAllTables(QStringLiteral("RO"), {&zips, &race});
    EXPECT_TRUE(zips.isActive() && race.isActive());
    EXPECT_TRUE(zips.isReadOnly() && race.isReadOnly());
    EXPECT_FALSE(zips.canModify());
    SetOneQuery(query, QStringLiteral("RO"));
    EXPECT_TRUE(query.isActive() && query.isReadOnly());

    SetAllTables(QStringLiteral("C"), {&zips, &race});
    SetOneQuery(query, QStringLiteral("C"));
    EXPECT_FALSE(zips.isActive() || race.isActive() || query.isActive());
    EXPECT_THROW(SetOneTable(zips, QStringLiteral("X")), MessageError);
}

TEST_P(RecordServicesTest, StoredStatementsAreReadByName)
{
    db().execute(QStringLiteral("Insert into Queries (Query_Name, Query_Lines) values ('EXECUTE_ON_OPEN', "
                                "'Update Config set Mapping = ''N''')"));
    EXPECT_EQ(GetSQLStatement(db(), QStringLiteral("EXECUTE_ON_OPEN")), "Update Config set Mapping = 'N'");
    EXPECT_TRUE(GetSQLStatement(db(), QStringLiteral("EXECUTE_ON_CLOSE")).isEmpty());
}

TEST_P(RecordServicesTest, GenericStampSetsLastUpdated)
{
    TableDataSet conditions(db(), QStringLiteral("Conditions"));
    conditions.setHook(DataSet::Hook::BeforePost, GenericDatasetBeforePost);
    conditions.open();
    conditions.append();
    conditions.setFieldValue(u"Condition", QStringLiteral("Homebound"));
    conditions.post();
    EXPECT_EQ(conditions.fieldValue(u"Last_Updated").toDateTime(), test::fixedNow());
}

TEST_P(RecordServicesTest, HistoryTakesTheStatementsColumnsAndCutsLongEvents)
{
    const QString longEvent =
        QStringLiteral("Saved deliveries for 03/06/2024, all routes, 123 deliveries in all");
    ASSERT_GT(longEvent.size(), 50);
    QueryInsertHistory(db(), QStringLiteral("Pat Clerk"),
                       HistoryEntry{12, QStringLiteral("1012"), longEvent, QDate(2024, 3, 5)});
    QueryInsertHistory(db(), QStringLiteral("Pat Clerk"),
                       HistoryEntry{{}, {}, QStringLiteral("Signed in"), {}});

    const ResultSet rows = db().execute(QStringLiteral(
        "select Person_ID, Client_ID, Tran_Date, User, Event, Event_Date from History order by RecordID"));
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.value(0, 0).toInt(), 12);
    EXPECT_EQ(rows.value(0, 1).toString(), "1012");
    EXPECT_EQ(rows.value(0, 2).toDateTime(), test::fixedNow());
    EXPECT_EQ(rows.value(0, 3).toString(), "Pat Clerk");
    EXPECT_EQ(rows.value(0, 4).toString(), longEvent.left(50));
    EXPECT_EQ(rows.value(0, 5).toDate(), QDate(2024, 3, 5));
    // An event of the system has no person.
    EXPECT_TRUE(rows.value(1, 0).isNull());
    EXPECT_TRUE(rows.value(1, 1).isNull());
    EXPECT_EQ(rows.value(1, 4).toString(), "Signed in");
}

INSTANTIATE_TEST_SUITE_P(Stores, RecordServicesTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
