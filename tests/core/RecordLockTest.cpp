// Pessimistic record locks between sessions and between processes on one
// data directory or one server database: a row in edit is held until post
// or cancel, a dead process frees its rows, and conflicts reach the caller
// with the engine codes the record services react to.

#include "DataSetFixture.h"
#include "RunCommand.h"

#include "dataset/QueryDataSet.h"
#include "dataset/TableDataSet.h"

#include <QElapsedTimer>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace kb;

namespace {

// A child process, started by fork(), that runs a script of steps against
// its own session and tells the parent after each one; it is killed when
// the test ends.
class Workstation
{
public:
    Workstation() = default;
    ~Workstation()
    {
        if (m_pid > 0) {
            kill(m_pid, SIGKILL);
            waitpid(m_pid, nullptr, 0);
        }
        for (int fd : {m_toChild, m_fromChild})
            if (fd >= 0) close(fd);
    }

    // step(n) runs in the child for n = 0, 1, 2 ... each time the parent
    // calls go(); a false from it ends the child.
    template <typename Step> void start(Step step)
    {
        int down[2];
        int up[2];
        ASSERT_EQ(pipe(down), 0);
        ASSERT_EQ(pipe(up), 0);
        m_pid = fork();
        ASSERT_GE(m_pid, 0);
        if (m_pid == 0) {
            close(down[1]);
            close(up[0]);
            char result = 0;
            try {
                for (int n = 0;; ++n) {
                    char command = 0;
                    if (read(down[0], &command, 1) != 1) break;
                    result = step(n) ? 1 : 0;
                    (void)!write(up[1], &result, 1);
                    if (!result) break;
                }
            } catch (...) {
                result = 0;
                (void)!write(up[1], &result, 1);
            }
            _exit(0);
        }
        close(down[0]);
        close(up[1]);
        m_toChild = down[1];
        m_fromChild = up[0];
    }

    // Runs the child's next step and tells whether it went well.
    bool go()
    {
        const char command = 1;
        if (write(m_toChild, &command, 1) != 1) return false;
        char result = 0;
        return read(m_fromChild, &result, 1) == 1 && result == 1;
    }

    void killNow()
    {
        kill(m_pid, SIGKILL);
        int status = 0;
        waitpid(m_pid, &status, 0);
        m_pid = -1;
        EXPECT_TRUE(WIFSIGNALED(status));
    }

private:
    pid_t m_pid = -1;
    int m_toChild = -1;
    int m_fromChild = -1;
};

class RecordLockTest : public test::DataSetFixture
{
protected:
    void SetUp() override
    {
        DataSetFixture::SetUp();
        if (IsSkipped()) return;
        addClients();
    }

    int clientCount(Database& session, const QString& where)
    {
        return session.execute(QStringLiteral("select count(*) as N from Clients where ") + where)
            .value(0, 0)
            .toInt();
    }

    // A child that opens Clients in its own session and edits Person_ID 2
    // (done when this returns), and posts the change at its next step.
    void startEditingChild(Workstation& child)
    {
        child.start([this](int step) {
            static std::unique_ptr<Database> session;
            static std::unique_ptr<TableDataSet> clients;
            if (step == 0) {
                session = data->openAnother();
                clients = std::make_unique<TableDataSet>(*session, QStringLiteral("Clients"));
                clients->open();
                if (!clients->locate(QStringLiteral("Person_ID"), 2)) return false;
                clients->edit();
                clients->setFieldValue(u"Last_Name", QStringLiteral("Child"));
                return true;
            }
            clients->post();
            return true;
        });
        ASSERT_TRUE(child.go());
    }

    // Clients open in the main session, standing on one person.
    std::unique_ptr<TableDataSet> clientAt(int personId)
    {
        auto clients = std::make_unique<TableDataSet>(db(), QStringLiteral("Clients"));
        clients->open();
        EXPECT_TRUE(clients->locate(QStringLiteral("Person_ID"), personId));
        return clients;
    }
};

TEST_P(RecordLockTest, AnotherProcessHoldsTheRowUntilItPosts)
{
    Workstation child;
    startEditingChild(child);
    auto held = clientAt(2);
    TableDataSet& clients = *held;
    // The session's own retries: 15 tries, 100 ms apart.
    EXPECT_EQ(db().recordLocks().retryCount(), 15);
    EXPECT_EQ(db().recordLocks().retryWaitMs(), 100);
    try {
        clients.edit();
        ADD_FAILURE() << "the edit of a row held by another process went through";
    } catch (const DbError& e) {
        EXPECT_EQ(e.code(), DbErrorCode::RecordLocked);
        EXPECT_TRUE(e.message().contains(QLatin1String("Clients"))) << e.message().toStdString();
    }
    EXPECT_EQ(clients.state(), DataSet::State::Browse);
    // Other rows of the table stay free.
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 3));
    clients.edit();
    clients.cancel();

    ASSERT_TRUE(child.go()); // the child posts
    ASSERT_TRUE(clients.locate(QStringLiteral("Person_ID"), 2));
    // The set read the row before the child's post.
    EXPECT_EQ(test::engineCodeOf([&] { clients.edit(); }), 8708);
    clients.refresh();
    EXPECT_EQ(clients.fieldValue(u"Last_Name").toString(), "Child");
    test::editAndPost(clients, u"Last_Name", QStringLiteral("Parent"));
    EXPECT_EQ(lastName(db(), 2), "Parent");
}

TEST_P(RecordLockTest, AKilledProcessDoesNotLeaveItsLockBehind)
{
    Workstation child;
    startEditingChild(child);
    auto held = clientAt(2);
    TableDataSet& clients = *held;
    db().recordLocks().setRetries(1, 0);
    EXPECT_EQ(test::engineCodeOf([&] { clients.edit(); }), 10258);

    child.killNow();
    // The server may take a moment to see the connection gone: up to 5 s.
    db().recordLocks().setRetries(50, 100);
    clients.edit();
    EXPECT_EQ(clients.state(), DataSet::State::Edit);
    clients.cancel();
    EXPECT_EQ(lastName(db(), 2), "Bell");
}

TEST_P(RecordLockTest, APlainStatementOfAnotherProcessWaitsForTheEditAndFails)
{
    auto held = clientAt(4);
    TableDataSet& clients = *held;
    clients.edit();
    clients.setFieldValue(u"First_Name", QStringLiteral("Dora"));

    Workstation child;
    std::unique_ptr<Database> session;
    child.start([this, &session](int step) {
        if (!session) {
            session = data->openAnother();
            session->recordLocks().setRetries(3, 10);
        }
        const auto update = [&] {
            session->execute(QStringLiteral("Update Clients set Zip = '99999' where Person_ID = 4"));
        };
        // While the row is in edit the statement is refused; afterwards it runs.
        return test::engineCodeOf(update) == (step == 0 ? 10258 : 0);
    });
    ASSERT_TRUE(child.go());

    clients.post();
    const ResultSet row =
        db().execute(QStringLiteral("select First_Name, Zip from Clients where Person_ID = 4"));
    EXPECT_EQ(row.value(0, 0).toString(), "Dora");
    EXPECT_TRUE(row.value(0, 1).isNull());
    ASSERT_TRUE(child.go());
    EXPECT_EQ(
        db().execute(QStringLiteral("select Zip from Clients where Person_ID = 4")).value(0, 0).toString(),
        "99999");
}

TEST_P(RecordLockTest, SessionsAndDataSetsOfOneProcessConflictToo)
{
    auto other = otherSession();
    TableDataSet mine(db(), QStringLiteral("Clients"));
    TableDataSet theirs(*other, QStringLiteral("Clients"));
    TableDataSet sameSession(db(), QStringLiteral("Clients"));
    db().recordLocks().setRetries(2, 10);
    for (TableDataSet* set : {&mine, &theirs, &sameSession}) {
        set->open();
        ASSERT_TRUE(set->locate(QStringLiteral("Person_ID"), 1));
    }
    mine.edit();
    EXPECT_EQ(test::engineCodeOf([&] { theirs.edit(); }), 10258);
    EXPECT_EQ(test::engineCodeOf([&] { sameSession.edit(); }), 10258);
    EXPECT_EQ(test::engineCodeOf([&] { theirs.remove(); }), 10258);
    mine.setFieldValue(u"Last_Name", QStringLiteral("Mine"));
    mine.post();
    theirs.refresh();
    theirs.edit();
    EXPECT_EQ(theirs.fieldValue(u"Last_Name").toString(), "Mine");
    // Closing a set frees its row.
    theirs.close();
    sameSession.refresh();
    sameSession.edit();
    sameSession.cancel();
}

TEST_P(RecordLockTest, LocksNameExactlyOneRowOfOneTable)
{
    auto other = otherSession();
    RecordLocks& mine = db().recordLocks();
    RecordLocks& theirs = other->recordLocks();
    int owner = 0;
    EXPECT_TRUE(mine.tryLock(&owner, QStringLiteral("Clients"), 1));
    EXPECT_TRUE(mine.tryLock(&owner, QStringLiteral("clients"), 1)); // held already
    EXPECT_TRUE(mine.isLocked(&owner, QStringLiteral("Clients"), 1));
    EXPECT_FALSE(theirs.tryLock(&owner, QStringLiteral("Clients"), 1));
    EXPECT_TRUE(theirs.tryLock(&owner, QStringLiteral("Clients"), 2));
    EXPECT_TRUE(theirs.tryLock(&owner, QStringLiteral("Deliveri"), 1));
    EXPECT_TRUE(theirs.tryLock(&owner, QStringLiteral("Clients"), qint64(1) << 30));
    mine.unlock(&owner, QStringLiteral("Clients"), 1);
    EXPECT_TRUE(theirs.tryLock(&owner, QStringLiteral("Clients"), 1));
    theirs.unlockAll(&owner);
    EXPECT_TRUE(mine.tryLock(&owner, QStringLiteral("Deliveri"), 1));
    mine.unlockAll();
    EXPECT_TRUE(theirs.tryLock(&owner, QStringLiteral("Deliveri"), 1));
}

TEST_P(RecordLockTest, ExclusiveOpensAndTableLocksGiveTheirCodes)
{
    auto other = otherSession();
    TableDataSet alone(db(), QStringLiteral("Clients"));
    alone.setExclusive(true);
    alone.open();

    TableDataSet shared(*other, QStringLiteral("Clients"));
    EXPECT_EQ(test::engineCodeOf([&] { shared.open(); }), 11013);
    EXPECT_FALSE(shared.isActive());
    // A live result does not open the table, but its edit meets the table lock.
    QueryDataSet live(*other, QStringLiteral("select Person_ID, Last_Name from Clients"));
    live.setRequestLive(true);
    live.open();
    EXPECT_EQ(test::engineCodeOf([&] { live.edit(); }), 10241);
    // The session itself may open it beside its exclusive open.
    TableDataSet again(db(), QStringLiteral("Clients"));
    again.open();
    again.close();

    alone.close();
    shared.open();
    live.edit();
    live.cancel();
    EXPECT_EQ(test::engineCodeOf([&] { alone.open(); }), 11013);
    shared.close();
    alone.open();
    EXPECT_TRUE(alone.isActive());
}

// Statements and rows held in edit: a statement of another workstation that
// meets a row in edit waits the session's retries and then fails with the
// record-locked code, changing nothing; rows nobody holds are changed.
TEST_P(RecordLockTest, AStatementMeetingARowInEditWaitsAndFails)
{
    auto other = otherSession();
    TableDataSet mine(db(), QStringLiteral("Clients"));
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 3));
    mine.edit();
    mine.setFieldValue(u"First_Name", QStringLiteral("Cyrus"));

    const QStringList refused = {
        QStringLiteral("Update Clients set Status = 'I' where Status = 'A'"),
        QStringLiteral("Update Clients set Status = 'I' where Person_ID = 3"),
        QStringLiteral("Delete from Clients where Last_Name like 'C%'"),
        QStringLiteral("Delete from Clients"),
        QStringLiteral("Empty table Clients"),
        QStringLiteral(
            "Update Clients set Race = r.RACE_CD from Clients c join Race r on r.RACE_CD = c.Race"),
        // One text of several statements: the first one is undone with the failing one.
        QStringLiteral("Update Clients set Last_Name = 'X' where Person_ID = 1; Delete from Clients where "
                       "Person_ID = 3"),
    };
    for (const QString& text : refused)
        EXPECT_EQ(test::engineCodeOf([&] { other->execute(text); }), int(DbErrorCode::RecordLocked))
            << text.toStdString();
    EXPECT_EQ(clientCount(*other, QStringLiteral("Status = 'A'")), 3);
    EXPECT_EQ(lastName(*other, 1), QStringLiteral("Ames"));
    EXPECT_EQ(clientCount(*other, QStringLiteral("Person_ID > 0")), 4);

    // A statement inside another workstation's transaction fails alike and
    // leaves the transaction usable.
    {
        TransactionGuard guard(*other);
        EXPECT_EQ(test::engineCodeOf([&] { other->execute(refused[1]); }), int(DbErrorCode::RecordLocked));
        other->execute(QStringLiteral("Update Clients set Status = 'I' where Person_ID = 4"));
        guard.commit();
    }
    EXPECT_EQ(clientCount(*other, QStringLiteral("Status = 'I'")), 2);

    // Rows nobody holds are changed.
    other->execute(QStringLiteral("Update Clients set Last_Name = 'Abbot' where Person_ID = 1"));
    EXPECT_EQ(lastName(db(), 1), QStringLiteral("Abbot"));

    // Nothing of a failed or finished statement stays held: the other
    // workstation can edit the rows it touched.
    TableDataSet theirs(*other, QStringLiteral("Clients"));
    theirs.open();
    ASSERT_TRUE(theirs.locate(QStringLiteral("Person_ID"), 1));
    test::editAndPost(theirs, u"First_Name", QStringLiteral("Abe"));

    // The editor's post goes through with what was typed.
    mine.post();
    EXPECT_EQ(
        other->execute(QStringLiteral("select First_Name, Status from Clients where Person_ID = 3")).row(0),
        (QVariantList{QStringLiteral("Cyrus"), QStringLiteral("A")}));
    EXPECT_EQ(test::engineCodeOf([&] { other->execute(refused[1]); }), 0);
}

// A statement over many rows (a run's save deletes thousands) cannot lock
// each row on the server, whose lock table is small: it still meets a row in
// edit, and still leaves alone the rows nobody holds.
TEST_P(RecordLockTest, AStatementOverManyRowsMeetsTheOneInEdit)
{
    auto other = otherSession();
    for (int id = 100; id < 400; ++id)
        db().execute(
            QStringLiteral("insert into Clients (Person_ID, Last_Name, Status) values (:id, 'Many', 'A')"),
            {{QStringLiteral("id"), id}});
    TableDataSet mine(db(), QStringLiteral("Clients"));
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 250));
    mine.edit();
    mine.setFieldValue(u"First_Name", QStringLiteral("Held"));

    const QString all = QStringLiteral("Update Clients set Status = 'I' where Last_Name = 'Many'");
    EXPECT_EQ(test::engineCodeOf([&] { other->execute(all); }), int(DbErrorCode::RecordLocked));
    EXPECT_EQ(clientCount(*other, QStringLiteral("Status = 'I'")), 1);

    // The rows around the one in edit are changed, many at once.
    other->execute(
        QStringLiteral("Update Clients set Status = 'I' where Last_Name = 'Many' and Person_ID <> 250"));
    EXPECT_EQ(clientCount(db(), QStringLiteral("Status = 'I'")), 300);

    mine.post();
    other->execute(QStringLiteral("Delete from Clients where Last_Name = 'Many'"));
    EXPECT_EQ(clientCount(db(), QStringLiteral("Person_ID >= 100")), 0);

    // After the statements the table is free to edit again.
    TableDataSet again(db(), QStringLiteral("Clients"));
    again.open();
    ASSERT_TRUE(again.locate(QStringLiteral("Person_ID"), 1));
    test::editAndPost(again, u"First_Name", QStringLiteral("Free"));
}

TEST_P(RecordLockTest, TheSqlCommandWaitsTheSessionsRetriesThenSaysTheRowIsLocked)
{
    db().execute(QStringLiteral("Insert into History (Event) values ('Kept')"));
    TableDataSet mine(db(), QStringLiteral("Clients"));
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 2));
    mine.edit();
    QElapsedTimer timer;
    timer.start();
    const auto run = test::runKettlebrook(
        data->commandLocation() +
        QStringList{QStringLiteral("sql"), QStringLiteral("Delete from History; Delete from Clients")});
    const qint64 waited = timer.elapsed();
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith(QLatin1String("Record locked by another user in table Clients")))
        << run.err.toStdString();
    // 15 tries, 100 ms apart.
    EXPECT_GE(waited, 1300);
    EXPECT_EQ(clientCount(db(), QStringLiteral("Person_ID > 0")), 4);
    EXPECT_EQ(db().recordCount(QStringLiteral("History")), 1);
    mine.cancel();
}

INSTANTIATE_TEST_SUITE_P(Stores, RecordLockTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
