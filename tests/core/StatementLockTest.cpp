// Statements and rows held in edit: a statement of another workstation that
// meets a row in edit waits the session's retries and then fails with the
// record-locked code, changing nothing; rows nobody holds, and rows the
// statement's own session holds, are changed as usual.

#include "DataSetFixture.h"
#include "RunCommand.h"

#include "dataset/TableDataSet.h"

#include <QElapsedTimer>

using namespace kb;

namespace {

class StatementLock : public test::DataSetFixture
{
protected:
    void SetUp() override
    {
        DataSetFixture::SetUp();
        if (IsSkipped())
            return;
        addClients();
    }
    int count(Database& session, const QString& where)
    {
        return session.execute(QStringLiteral("select count(*) as N from Clients where ") + where).value(0, 0).toInt();
    }
};

TEST_P(StatementLock, AStatementMeetingARowInEditWaitsAndFails)
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
        QStringLiteral("Update Clients set Race = r.RACE_CD from Clients c join Race r on r.RACE_CD = c.Race"),
        // One text of several statements: the first one is undone with the failing one.
        QStringLiteral("Update Clients set Last_Name = 'X' where Person_ID = 1; Delete from Clients where Person_ID = 3"),
    };
    for (const QString& text : refused)
        EXPECT_EQ(test::engineCodeOf([&] { other->execute(text); }), int(DbErrorCode::RecordLocked))
            << text.toStdString();
    EXPECT_EQ(count(*other, QStringLiteral("Status = 'A'")), 3);
    EXPECT_EQ(lastName(*other, 1), QStringLiteral("Ames"));
    EXPECT_EQ(count(*other, QStringLiteral("Person_ID > 0")), 4);

    // A statement inside another workstation's transaction fails alike and
    // leaves the transaction usable.
    {
        TransactionGuard guard(*other);
        EXPECT_EQ(test::engineCodeOf([&] { other->execute(refused[1]); }), int(DbErrorCode::RecordLocked));
        other->execute(QStringLiteral("Update Clients set Status = 'I' where Person_ID = 4"));
        guard.commit();
    }
    EXPECT_EQ(count(*other, QStringLiteral("Status = 'I'")), 2);

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
    EXPECT_EQ(other->execute(QStringLiteral("select First_Name, Status from Clients where Person_ID = 3")).row(0),
              (QVariantList{QStringLiteral("Cyrus"), QStringLiteral("A")}));
    EXPECT_EQ(test::engineCodeOf([&] { other->execute(refused[1]); }), 0);
}

TEST_P(StatementLock, TheSqlCommandWaitsTheSessionsRetriesThenSaysTheRowIsLocked)
{
    db().execute(QStringLiteral("Insert into History (Event) values ('Kept')"));
    TableDataSet mine(db(), QStringLiteral("Clients"));
    mine.open();
    ASSERT_TRUE(mine.locate(QStringLiteral("Person_ID"), 2));
    mine.edit();
    QElapsedTimer timer;
    timer.start();
    const auto run = test::runKettlebrook(data->commandLocation() +
                                          QStringList{QStringLiteral("sql"),
                                                      QStringLiteral("Delete from History; Delete from Clients")});
    const qint64 waited = timer.elapsed();
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.startsWith(QLatin1String("Record locked by another user in table Clients")))
        << run.err.toStdString();
    // 15 tries, 100 ms apart.
    EXPECT_GE(waited, 1300);
    EXPECT_EQ(count(db(), QStringLiteral("Person_ID > 0")), 4);
    EXPECT_EQ(db().recordCount(QStringLiteral("History")), 1);
    mine.cancel();
}

INSTANTIATE_TEST_SUITE_P(Stores, StatementLock,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
