// Several statements of one text are one unit, and rows stream: a sink sees
// them one by one and the session stays usable when the sink gives up.

#include "CsvWriter.h"
#include "TempDataDir.h"
#include "store/DbError.h"

#include <QTextStream>

#include <gtest/gtest.h>

#include <stdexcept>

using namespace kb;

namespace {

class StatementUnit : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
    }
    Database& db() { return data->db(); }
    qint64 clients() { return db().recordCount(QStringLiteral("Clients")); }
    std::unique_ptr<test::TempDataDir> data;
};

// Counts rows and can be told to fail after some of them.
class CountingSink final : public RowSink
{
public:
    explicit CountingSink(qint64 failAfter = -1) : m_failAfter(failAfter) {}
    void begin(const std::vector<sql::OutputColumn>& columns) override { m_columns = columns; }
    void row(const QVariantList& values) override
    {
        if (m_rows == m_failAfter) throw std::runtime_error("the reader went away");
        m_last = values;
        ++m_rows;
    }
    qint64 m_failAfter;
    qint64 m_rows = 0;
    QVariantList m_last;
    std::vector<sql::OutputColumn> m_columns;
};

TEST_P(StatementUnit, ALaterFailureLeavesNothingOfTheEarlierStatements)
{
    const QString first =
        QStringLiteral("insert into Clients (Person_ID, Last_Name) values (1, 'Ames'); "
                       "update IDNOS set Person_ID = 99; "
                       "insert into Routes (Route_ID, Route_Desc) values ('R1', 'North'); ");
    // A failure when the statement runs, and one when it is read.
    EXPECT_THROW(
        db().execute(first +
                     QStringLiteral("insert into Routes (Route_ID, Route_Desc) values ('R1', 'South')")),
        DbError);
    EXPECT_THROW(
        db().execute(first + QStringLiteral("insert into Clients (Person_ID, Last_Nme) values (2, 'B')")),
        DbError);
    EXPECT_THROW(db().execute(first + QStringLiteral("select Colour from Clients")), DbError);
    EXPECT_EQ(clients(), 0);
    EXPECT_EQ(db().execute(QStringLiteral("select Person_ID from IDNOS")).value(0, 0).toInt(), 0);
    EXPECT_FALSE(db().inTransaction());

    // All of them together, when they all succeed; memory tables made on the way stay.
    db().execute(first +
                 QStringLiteral("select * into Memory Kept from Clients; select count(*) as N from Clients"));
    EXPECT_EQ(clients(), 1);
    EXPECT_EQ(db().recordCount(QStringLiteral("Kept")), 1);

    // Inside the caller's transaction the caller decides.
    {
        TransactionGuard guard(db());
        EXPECT_THROW(db().execute(QStringLiteral("insert into Clients (Person_ID) values (2); "
                                                 "insert into Routes (Route_ID) values ('R1')")),
                     DbError);
        guard.commit();
    }
    EXPECT_EQ(clients(), 2);
}

TEST_P(StatementUnit, RowsReachTheSinkOneByOne)
{
    db().execute(QStringLiteral("insert into Clients (Person_ID, Last_Name) values (1, 'A')"));
    db().execute(
        QStringLiteral("insert into Clients (Person_ID, Last_Name) select Person_ID + 1, Last_Name from "
                       "Clients"));
    for (int i = 0; i < 12; ++i) // 8192 rows
        db().execute(
            QStringLiteral("insert into Clients (Person_ID, Last_Name) select Person_ID + :N, Last_Name from "
                           "Clients"),
            {{QStringLiteral("N"), 2 << i}});
    CountingSink sink;
    const ResultSet result = db().execute(
        QStringLiteral(
            "select count(*) as N from Config; select Person_ID, Last_Name from Clients order by Person_ID"),
        {}, sink);
    EXPECT_EQ(sink.m_rows, 8192);
    EXPECT_EQ(sink.m_last.value(0).toInt(), 8192);
    ASSERT_EQ(sink.m_columns.size(), 2u);
    EXPECT_EQ(sink.m_columns[1].name, QStringLiteral("Last_Name"));
    EXPECT_TRUE(result.hasRows());
    EXPECT_EQ(result.rowCount(), 0);

    // A sink that gives up half-way leaves the session ready for the next statement.
    CountingSink quitter(100);
    EXPECT_THROW(db().execute(QStringLiteral("select Person_ID from Clients"), {}, quitter),
                 std::runtime_error);
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) as N from Clients")).value(0, 0).toInt(), 8192);
    {
        TransactionGuard guard(db());
        CountingSink inside(10);
        EXPECT_THROW(db().execute(QStringLiteral("select Person_ID from Clients"), {}, inside),
                     std::runtime_error);
        db().execute(QStringLiteral("delete from Clients where Person_ID > 10"));
        guard.commit();
    }
    EXPECT_EQ(db().recordCount(QStringLiteral("Clients")), 10);
}

TEST(CsvWriter, ALoneEmptyFieldStaysARecord)
{
    QString text;
    QTextStream out(&text);
    CsvWriter csv(out);
    csv.begin({{QStringLiteral("Note"), FieldType::String}});
    csv.row({QVariant()});
    csv.row({QStringLiteral("x")});
    csv.row({QString()});
    out.flush();
    EXPECT_EQ(text, QStringLiteral("Note\n\"\"\nx\n\"\"\n"));
    EXPECT_EQ(csv.rowsWritten(), 3);
}

INSTANTIATE_TEST_SUITE_P(Stores, StatementUnit,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
