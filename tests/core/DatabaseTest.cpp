// The engine session: transactions that leave no trace, table operations,
// and a new data directory's starting rows, on both stores.

#include "session/DataDirectory.h"
#include "store/DbError.h"
#include "Money.h"
#include "TempDataDir.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace kb;

namespace {

class DatabaseTest : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
    }
    Database& db() { return data->db(); }
    qint64 count(const QString& table) { return db().recordCount(table); }

    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(DatabaseTest, NewDataHasTheWholeCatalogueAndStartingRows)
{
    for (const TableDef& table : db().catalogue().tables())
        EXPECT_TRUE(db().exists(table.name())) << table.name().toStdString();
    EXPECT_EQ(count(QStringLiteral("Config")), 1);
    EXPECT_EQ(count(QStringLiteral("IDNOS")), 1);
    EXPECT_GT(count(QStringLiteral("Race")), 0);
    const ResultSet counters = db().execute(QStringLiteral("select Person_ID, Client_ID, Deliv_ID from IDNOS"));
    EXPECT_EQ(counters.value(0, 0).toInt(), 0);
    EXPECT_EQ(db().execute(QStringLiteral("select ADVANCE_PREP_DAYS from Config")).value(0, 0).toInt(), 1);
}

TEST_P(DatabaseTest, RollbackUndoesEveryTableAndCommitKeepsIt)
{
    {
        TransactionGuard guard(db());
        EXPECT_TRUE(db().inTransaction());
        db().execute(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name) values (1, '1.0', 'Ames')"));
        db().execute(QStringLiteral("Insert into Deliveri (Deliv_ID, Person_ID, Deliv_Dt) values (1, 1, '2024-03-06')"));
        db().execute(QStringLiteral("Update IDNOS set Person_ID = 1"));
        db().execute(QStringLiteral("Insert into Routes (Route_ID) values ('R1')"));
        // A failing statement inside the transaction does not end it.
        EXPECT_THROW(db().execute(QStringLiteral("Insert into Routes (Route_ID) values ('R1')")), DbError);
        db().execute(QStringLiteral("Insert into Mealcrdt (Deliv_ID, Person_ID) values (1, 1)"));
        EXPECT_EQ(count(QStringLiteral("Mealcrdt")), 1);
        // The guard rolls back when it goes out of scope without commit.
    }
    EXPECT_FALSE(db().inTransaction());
    EXPECT_EQ(count(QStringLiteral("Clients")), 0);
    EXPECT_EQ(count(QStringLiteral("Deliveri")), 0);
    EXPECT_EQ(count(QStringLiteral("Mealcrdt")), 0);
    EXPECT_EQ(count(QStringLiteral("Routes")), 0);
    EXPECT_EQ(db().execute(QStringLiteral("select Person_ID from IDNOS")).value(0, 0).toInt(), 0);

    {
        TransactionGuard guard(db());
        db().execute(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name) values (2, '2.0', 'Bell')"));
        db().execute(QStringLiteral("Insert into Deliveri (Deliv_ID, Person_ID) values (2, 2)"));
        EXPECT_THROW(db().startTransaction(), DbError);
        guard.commit();
    }
    auto other = data->openAnother();
    EXPECT_EQ(other->recordCount(QStringLiteral("Clients")), 1);
    EXPECT_EQ(other->recordCount(QStringLiteral("Deliveri")), 1);
}

TEST_P(DatabaseTest, AProcessKilledInATransactionLeavesNoTrace)
{
    // Make sure everything the parent holds is on disk before the fork.
    db().execute(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name) values (1, '1.0', 'Ames')"));
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        close(ready[0]);
        try {
            auto session = data->openAnother();
            session->startTransaction();
            session->execute(QStringLiteral("Insert into Clients (Person_ID, Client_ID, Last_Name) values (2, '2.0', 'Bell')"));
            session->execute(QStringLiteral("Insert into Deliveri (Deliv_ID, Person_ID) values (7, 2)"));
            session->execute(QStringLiteral("Update Clients set Last_Name = 'Changed'"));
            const char byte = 1;
            (void)!write(ready[1], &byte, 1);
            pause(); // killed here, mid-transaction
        } catch (...) {
        }
        _exit(1);
    }
    close(ready[1]);
    char byte = 0;
    ASSERT_EQ(read(ready[0], &byte, 1), 1);
    close(ready[0]);
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));

    auto after = data->openAnother();
    EXPECT_EQ(after->recordCount(QStringLiteral("Clients")), 1);
    EXPECT_EQ(after->recordCount(QStringLiteral("Deliveri")), 0);
    EXPECT_EQ(after->execute(QStringLiteral("select Last_Name from Clients")).value(0, 0).toString(), "Ames");
    // The data stays writable for the others.
    after->execute(QStringLiteral("Update Clients set Last_Name = 'Again'"));
}

TEST_P(DatabaseTest, TableOperationsAndCsvRoundTrip)
{
    db().execute(QStringLiteral(
        "Insert into Pricing (Person_ID, Fund_CD, Method, Unit, Amount, Date_Created, Last_Update, Created_By) values "
        "(0, 'OAA', 'F', 'L', 4.25, '2024-03-01', '2024-03-01 08:15:00', 'Pat, \"the\" clerk'), "
        "(3, 'PVT', 'P', '12', 0.0001, null, null, '')"));
    EXPECT_EQ(count(QStringLiteral("Pricing")), 2);

    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("pricing.csv"));
    db().exportTable(QStringLiteral("Pricing"), file);
    QFile csv(file);
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(csv.readAll());
    EXPECT_TRUE(text.startsWith(QLatin1String("RecordID,Person_ID,Fund_CD,Service_ID,Method,Unit,Item_ID,Amount")))
        << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("4.25,Pat, \"the\" clerk,2024-03-01,2024-03-01 08:15:00"))
                || text.contains(QLatin1String("4.25,\"Pat, \"\"the\"\" clerk\",2024-03-01,2024-03-01 08:15:00")))
        << text.toStdString();

    db().emptyTable(QStringLiteral("Pricing"));
    EXPECT_EQ(count(QStringLiteral("Pricing")), 0);
    EXPECT_EQ(db().importTable(QStringLiteral("Pricing"), file), 2);
    const ResultSet back = db().execute(QStringLiteral(
        "select Amount, Created_By, Date_Created, Last_Update from Pricing order by Person_ID"));
    ASSERT_EQ(back.rowCount(), 2);
    EXPECT_EQ(back.value(0, 0).value<Money>().toString(), "4.25");
    EXPECT_EQ(back.value(0, 1).toString(), "Pat, \"the\" clerk");
    EXPECT_EQ(back.value(0, 3).toDateTime(), QDateTime(QDate(2024, 3, 1), QTime(8, 15)));
    EXPECT_EQ(back.value(1, 0).value<Money>().toString(), "0.0001");
    // An empty text stays empty and a null stays null.
    EXPECT_FALSE(back.value(1, 1).isNull());
    EXPECT_TRUE(back.value(1, 2).isNull());

    // A file with a column the table lacks is refused and imports nothing.
    const QString bad = dir.filePath(QStringLiteral("bad.csv"));
    QFile badFile(bad);
    ASSERT_TRUE(badFile.open(QIODevice::WriteOnly));
    badFile.write("Person_ID,Colour\n1,red\n");
    badFile.close();
    EXPECT_THROW(db().importTable(QStringLiteral("Pricing"), bad), DbError);
    EXPECT_EQ(count(QStringLiteral("Pricing")), 2);

    // Memory tables take the same operations.
    db().execute(QStringLiteral("Create Table if not exists Memory Scratch (Code VarChar(3), N Integer)"));
    EXPECT_TRUE(db().exists(QStringLiteral("Scratch")));
    db().execute(QStringLiteral("Insert into Memory Scratch (Code, N) values ('a', 1), ('b', 2)"));
    EXPECT_EQ(count(QStringLiteral("Scratch")), 2);
    db().deleteTable(QStringLiteral("Scratch"));
    EXPECT_FALSE(db().exists(QStringLiteral("Scratch")));
    EXPECT_THROW(db().recordCount(QStringLiteral("Nowhere")), DbError);
}

TEST_P(DatabaseTest, RowKeysAreAssignedAndNeverCollideWithGivenOnes)
{
    db().execute(QStringLiteral("Insert into History (RecordID, Event) values (10, 'given')"));
    db().execute(QStringLiteral("Insert into History (Event) values ('assigned')"));
    const ResultSet r = db().execute(QStringLiteral("select RecordID from History order by RecordID"));
    ASSERT_EQ(r.rowCount(), 2);
    EXPECT_EQ(r.value(0, 0).toInt(), 10);
    EXPECT_GT(r.value(1, 0).toInt(), 10);
}

INSTANTIATE_TEST_SUITE_P(Stores, DatabaseTest,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

TEST(DataDirectoryTest, InitRefusesAnExistingDataDirectoryAndChangesNothing)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("agency"));
    FixedClock clock(test::fixedNow());
    {
        auto db = createDataDirectory(path, clock);
        db->execute(QStringLiteral("Insert into Clients (Person_ID, Last_Name) values (1, 'Kept')"));
    }
    EXPECT_TRUE(isDataDirectory(path));
    EXPECT_THROW(createDataDirectory(path, clock), DbError);
    auto db = openDataDirectory(path, clock);
    EXPECT_EQ(db->recordCount(QStringLiteral("Clients")), 1);

    // A folder holding other files is not taken over either.
    const QString other = dir.filePath(QStringLiteral("other"));
    QDir().mkpath(other);
    QFile stray(other + QStringLiteral("/notes.txt"));
    ASSERT_TRUE(stray.open(QIODevice::WriteOnly));
    stray.close();
    EXPECT_THROW(createDataDirectory(other, clock), DbError);
    EXPECT_FALSE(isDataDirectory(other));
    EXPECT_THROW(openDataDirectory(other, clock), DbError);
    EXPECT_THROW(openDataDirectory(dir.filePath(QStringLiteral("missing")), clock), DbError);
}

} // namespace
