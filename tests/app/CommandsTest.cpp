// The headless commands end to end: the real executable on real data.

#include "RunCommand.h"
#include "TempDataDir.h"

#include "store/PostgresStore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using kb::test::runKettlebrook;

namespace {

TEST(InitCommand, MakesADataDirectoryAndRefusesAnExistingOne)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("agency"));
    auto made = runKettlebrook({QStringLiteral("init"), path});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    auto count = runKettlebrook({QStringLiteral("--data"), path, QStringLiteral("sql"),
                                 QStringLiteral("select count(*) as N from Config")});
    EXPECT_EQ(count.out, "N\n1\n");

    runKettlebrook({QStringLiteral("--data"), path, QStringLiteral("sql"),
                    QStringLiteral("Insert into Clients (Person_ID, Last_Name) values (1, 'Kept')")});
    auto again = runKettlebrook({QStringLiteral("init"), path});
    EXPECT_NE(again.exitCode, 0);
    EXPECT_TRUE(again.err.contains(QLatin1String("already a data directory"))) << again.err.toStdString();
    auto kept = runKettlebrook({QStringLiteral("--data"), path, QStringLiteral("sql"),
                                QStringLiteral("select Last_Name from Clients")});
    EXPECT_EQ(kept.out, "Last_Name\nKept\n");

    auto missing = runKettlebrook({QStringLiteral("--data"), dir.filePath(QStringLiteral("none")),
                                   QStringLiteral("sql"), QStringLiteral("select 1 from Config")});
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_TRUE(missing.err.contains(QLatin1String("does not exist"))) << missing.err.toStdString();
}

class SqlCommand : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
    }
    test::CommandResult sql(const QStringList& words)
    {
        return runKettlebrook(data->commandLocation() + QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"),
                                                                     QStringLiteral("sql")} +
                              words);
    }
    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(SqlCommand, PrintsCsvOfTheLastSelectOrTheRowCount)
{
    auto inserted = sql({QStringLiteral(
        "Insert into Clients (Person_ID, Client_ID, Last_Name, First_Name, DOB, Monday, Income_Month, Def_Stop, "
        "Add_Dte) values (1, '1.0', 'Baker, Jr', 'Ann \"A\"', '1940-03-05', True, 1200.5, 2.5, null), (2, '2.0', "
        "'Cole', '', null, False, null, null, null)")});
    ASSERT_EQ(inserted.exitCode, 0) << inserted.err.toStdString();
    EXPECT_EQ(inserted.out, "2\n");
    auto rows = sql({QStringLiteral("Update Clients set Edit_Dte = Current_Date where Person_ID = :P; "
                                    "select Person_ID, Last_Name, First_Name, DOB, Monday, Income_Month, Def_Stop, "
                                    "Edit_Dte, Add_Dte from Clients order by Person_ID"),
                     QStringLiteral("--param"), QStringLiteral("P=1")});
    ASSERT_EQ(rows.exitCode, 0) << rows.err.toStdString();
    EXPECT_EQ(rows.out, "Person_ID,Last_Name,First_Name,DOB,Monday,Income_Month,Def_Stop,Edit_Dte,Add_Dte\n"
                        "1,\"Baker, Jr\",\"Ann \"\"A\"\"\",1940-03-05,true,1200.50,2.5,2024-03-06,\n"
                        "2,Cole,\"\",,false,,,,\n");
    auto stamped = sql({QStringLiteral("select Tran_Date from History"), QStringLiteral("--param"),
                        QStringLiteral("Unused=1")});
    EXPECT_EQ(stamped.out, "Tran_Date\n");
}

TEST_P(SqlCommand, ErrorsGoToStandardErrorWithANonZeroExit)
{
    auto bad = sql({QStringLiteral("select Colour from Clients")});
    EXPECT_NE(bad.exitCode, 0);
    EXPECT_TRUE(bad.out.isEmpty());
    EXPECT_TRUE(bad.err.contains(QLatin1String("Colour"))) << bad.err.toStdString();
    auto type = sql({QStringLiteral("select * from Clients where DOB = :D"), QStringLiteral("--param"),
                     QStringLiteral("D=yesterday")});
    EXPECT_NE(type.exitCode, 0);
    EXPECT_TRUE(type.err.contains(QLatin1String(":D"))) << type.err.toStdString();
}

TEST_P(SqlCommand, OneCallIsOneUnitAndEveryRowIsARecord)
{
    auto failed = sql({QStringLiteral("Insert into Clients (Person_ID, Last_Name) values (1, 'Ames'); "
                                      "Delete from History; Update IDNOS set Person_ID = 1; "
                                      "Insert into Clients (Person_ID, Last_Nme) values (2, 'Bell')")});
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.err.contains(QLatin1String("Last_Nme"))) << failed.err.toStdString();
    auto unchanged = sql({QStringLiteral("select count(*) as N from Clients union all select Person_ID from IDNOS")});
    EXPECT_EQ(unchanged.out, "N\n0\n0\n");

    // A row whose only column is empty is still a line a CSV reader counts.
    auto nulls = sql({QStringLiteral("select Null as Note from Config union all select 'x' from Config")});
    ASSERT_EQ(nulls.exitCode, 0) << nulls.err.toStdString();
    EXPECT_EQ(nulls.out, "Note\n\"\"\nx\n");
}

// Drops the first column (the working table's own row numbers) of a CSV text.
QString withoutFirstColumn(const QString& csv)
{
    QStringList lines = csv.split(u'\n');
    for (QString& line : lines)
        line = line.mid(line.indexOf(u',') + 1);
    return lines.join(u'\n');
}

TEST(PrepareCommandOnBothStores, TheSameAgencyGivesTheSameRun)
{
    KB_REQUIRE_STORE(test::StoreKind::PostgreSQL);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("agency"));
    const QString schema = QStringLiteral("kbt_prepare_%1").arg(QCoreApplication::applicationPid());
    const QString server = test::postgresTestAddress() + QLatin1Char('#') + schema;
    const QStringList demo = {QStringLiteral("--today"), QStringLiteral("2024-03-06"), QStringLiteral("init")};
    const QStringList tail = {QStringLiteral("--demo"), QStringLiteral("400"), QStringLiteral("--seed"), QStringLiteral("7")};
    ASSERT_EQ(runKettlebrook(demo + QStringList{path} + tail).exitCode, 0);
    const auto made = runKettlebrook(QStringList{QStringLiteral("--server"), server} + demo + tail);
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();

    const QStringList prepare = {QStringLiteral("--user"), QStringLiteral("keeperin"), QStringLiteral("prepare"),
                                 QStringLiteral("2024-03-11")};
    const auto local = runKettlebrook(QStringList{QStringLiteral("--data"), path} + prepare);
    const auto remote = runKettlebrook(QStringList{QStringLiteral("--server"), server} + prepare);
    PostgresStore(ServerAddress::parse(test::postgresTestAddress()))
        .exec(QStringLiteral("DROP SCHEMA IF EXISTS \"%1\" CASCADE").arg(schema));
    ASSERT_EQ(local.exitCode, 0) << local.err.toStdString();
    ASSERT_EQ(remote.exitCode, 0) << remote.err.toStdString();
    EXPECT_GT(local.out.count(u'\n'), 100);
    EXPECT_EQ(withoutFirstColumn(remote.out), withoutFirstColumn(local.out));
    EXPECT_EQ(remote.err, local.err);
}

INSTANTIATE_TEST_SUITE_P(Stores, SqlCommand, ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
