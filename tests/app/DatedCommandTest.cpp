// The dated command through the real executable: a pattern written in one
// go and listed, its preview writing nothing, a single date checked against
// the client's calendar, and bad patterns and read-only users refused with
// nothing written.

#include "InsertRow.h"
#include "RunCommand.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;
using kb::test::runKettlebrook;

namespace {

class DatedCommand : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
        int id = 30;
        for (const char* level : {"W", "R"})
            test::insertRow(
                data->db(), QStringLiteral("Staff"),
                {{QStringLiteral("Staff_ID"), id++},
                 {QStringLiteral("User_ID"), QStringLiteral("user") + QLatin1String(level)},
                 {QStringLiteral("Staff_Name"), QStringLiteral("Level %1").arg(QLatin1String(level))},
                 {QStringLiteral("Access_Level"), QString::fromLatin1(level)},
                 {QStringLiteral("Active"), true}});
        test::insertRow(data->db(), QStringLiteral("Services"),
                        {{QStringLiteral("Service_ID"), 1},
                         {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                         {QStringLiteral("Service_Type"), QStringLiteral("D")}});
        test::insertRow(data->db(), QStringLiteral("Routes"),
                        {{QStringLiteral("Route_ID"), QStringLiteral("R1")},
                         {QStringLiteral("Route_Desc"), QStringLiteral("North")}});
        test::insertRow(data->db(), QStringLiteral("Clients"),
                        {{QStringLiteral("Person_ID"), 7},
                         {QStringLiteral("Client_ID"), QStringLiteral("C7")},
                         {QStringLiteral("Status"), QStringLiteral("A")},
                         {QStringLiteral("Delivery_Type"), QStringLiteral("E")},
                         {QStringLiteral("Svcs_Used"), 1},
                         {QStringLiteral("Start_Dte"), QDate(2024, 1, 1)},
                         {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                         {QStringLiteral("Def_Stop"), 3.0}});
    }
    test::CommandResult run(const QString& user, const QStringList& words)
    {
        return runKettlebrook(data->commandLocation() +
                              QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"),
                                          QStringLiteral("--user"), user, QStringLiteral("dated")} +
                              words);
    }
    qint64 rows()
    {
        return data->db()
            .execute(QStringLiteral("Select count(*) from EpisodicDeliveries"))
            .value(0, 0)
            .toLongLong();
    }

    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(DatedCommand, WritesAPatternInOneGoAndListsIt)
{
    const QStringList third = {QStringLiteral("add"),       QStringLiteral("C7"),
                               QStringLiteral("--date"),    QStringLiteral("2024-03-01"),
                               QStringLiteral("--pattern"), QStringLiteral("monthly:third:weekday"),
                               QStringLiteral("--until"),   QStringLiteral("2024-05-10"),
                               QStringLiteral("--limit"),   QStringLiteral("none")};
    const auto preview = run(QStringLiteral("userW"), third + QStringList{QStringLiteral("--preview")});
    ASSERT_EQ(preview.exitCode, 0) << preview.err.toStdString();
    EXPECT_EQ(preview.out,
              QStringLiteral("Deliv_Date,Route,Stop\n2024-03-05,R1,3\n2024-04-03,R1,3\n2024-05-03,R1,3\n"));
    EXPECT_EQ(rows(), 0);

    const auto added = run(QStringLiteral("userW"), third);
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_EQ(added.out.count(u'\n'), 4) << added.out.toStdString();
    EXPECT_TRUE(added.err.contains(QLatin1String("Finished creating 3 Scheduled Deliveries.")));
    const auto listed = run(QStringLiteral("userW"), {QStringLiteral("list"), QStringLiteral("C7")});
    ASSERT_EQ(listed.exitCode, 0);
    const QStringList lines = listed.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[1].contains(QLatin1String("2024-03-05,E,1,D,R1,3")));
    EXPECT_TRUE(lines[1].endsWith(QLatin1String("-1,Level W (AutoSched)")));

    // One date: inside the calendar only.
    const auto early = run(QStringLiteral("userW"), {QStringLiteral("add"), QStringLiteral("C7"),
                                                     QStringLiteral("--date"), QStringLiteral("2023-12-31")});
    EXPECT_EQ(early.exitCode, 1);
    EXPECT_TRUE(early.err.contains(QLatin1String("outside this client's calendar")));
    const auto one = run(QStringLiteral("userW"), {QStringLiteral("add"), QStringLiteral("C7"),
                                                   QStringLiteral("--date"), QStringLiteral("2024-03-07")});
    ASSERT_EQ(one.exitCode, 0) << one.err.toStdString();
    EXPECT_EQ(rows(), 4);
}

TEST_P(DatedCommand, BadPatternsAndReadOnlyUsersWriteNothing)
{
    const QStringList base = {QStringLiteral("add"), QStringLiteral("C7"), QStringLiteral("--date"),
                              QStringLiteral("2024-03-08"), QStringLiteral("--pattern")};
    const struct
    {
        QStringList words;
        const char* message;
    } refused[] = {
        {{QStringLiteral("daily:0")}, "The number of days between deliveries must be from 1 to 31."},
        {{QStringLiteral("weekly:0:MON")}, "The number of weeks between deliveries must be from 1 to 52."},
        {{QStringLiteral("daily"), QStringLiteral("--count"), QStringLiteral("366")},
         "The number of occurrences must be from 1 to 365."},
        {{QStringLiteral("daily"), QStringLiteral("--until"), QStringLiteral("2024-03-07")},
         "The end date (2024-03-07) is earlier than the start date (2024-03-08)."},
        {{QStringLiteral("daily"), QStringLiteral("--route"), QStringLiteral("R9")}, "There is no route R9."},
    };
    for (const auto& r : refused) {
        const auto result = run(QStringLiteral("userW"), base + r.words);
        EXPECT_EQ(result.exitCode, 1) << r.message;
        EXPECT_TRUE(result.err.contains(QLatin1String(r.message))) << result.err.toStdString();
        EXPECT_TRUE(result.out.isEmpty());
    }
    EXPECT_EQ(run(QStringLiteral("userW"), base + QStringList{QStringLiteral("hourly")}).exitCode, 2);
    EXPECT_EQ(run(QStringLiteral("userW"), {QStringLiteral("add"), QStringLiteral("C7")}).exitCode, 2);
    const auto nobody = run(QStringLiteral("userW"), {QStringLiteral("list"), QStringLiteral("C8")});
    EXPECT_EQ(nobody.exitCode, 1);
    const auto readOnly = run(QStringLiteral("userR"), base + QStringList{QStringLiteral("daily")});
    EXPECT_EQ(readOnly.exitCode, 1);
    EXPECT_EQ(rows(), 0);
}

TEST_P(DatedCommand, ShiftMovesASavedDateOnlyWhenToldYes)
{
    const QDate monday(2024, 3, 4);
    const QDate tuesday(2024, 3, 5);
    for (int id : {1, 2}) {
        test::insertRow(data->db(), QStringLiteral("Deliveri"),
                        {{QStringLiteral("Deliv_ID"), id},
                         {QStringLiteral("Deliv_Dt"), monday},
                         {QStringLiteral("DOW"), QStringLiteral("MON")},
                         {QStringLiteral("Person_ID"), 7},
                         {QStringLiteral("Svcs_Used"), 1}});
        test::insertRow(data->db(), QStringLiteral("MealCrdt"),
                        {{QStringLiteral("Deliv_ID"), id},
                         {QStringLiteral("Person_ID"), 7},
                         {QStringLiteral("Deliv_Dt"), monday},
                         {QStringLiteral("Service_ID"), 1}});
    }
    const auto on = [&](const char* table, const char* column, const QDate& date) {
        return data->db()
            .execute(QStringLiteral("Select count(*) from %1 where %2 = :D")
                         .arg(QLatin1String(table), QLatin1String(column)),
                     {{QStringLiteral("D"), date}})
            .value(0, 0)
            .toLongLong();
    };
    const QStringList shift = {QStringLiteral("shift"), QStringLiteral("--from"),
                               QStringLiteral("2024-03-04"), QStringLiteral("--to"),
                               QStringLiteral("2024-03-05")};

    // Without --yes the question is answered No: nothing moves.
    const auto asked = run(QStringLiteral("userW"), shift);
    EXPECT_EQ(asked.exitCode, 1);
    EXPECT_TRUE(asked.err.contains(QLatin1String("This will shift all 2 deliveries that fall on ")))
        << asked.err.toStdString();
    EXPECT_TRUE(asked.err.contains(QLatin1String("Proceed with shifting the deliveries?")));
    EXPECT_TRUE(asked.out.isEmpty());
    EXPECT_EQ(on("Deliveri", "Deliv_Dt", monday), 2);

    // A read-only user is refused before anything is asked.
    const auto readOnly = run(QStringLiteral("userR"), shift + QStringList{QStringLiteral("--yes")});
    EXPECT_EQ(readOnly.exitCode, 1);
    EXPECT_FALSE(readOnly.err.contains(QLatin1String("Proceed")));
    EXPECT_EQ(on("Deliveri", "Deliv_Dt", monday), 2);

    const auto moved = run(QStringLiteral("userW"), shift + QStringList{QStringLiteral("--yes")});
    ASSERT_EQ(moved.exitCode, 0) << moved.err.toStdString();
    EXPECT_EQ(moved.out, QStringLiteral("From,To,Shifted\n2024-03-04,2024-03-05,2\n"));
    EXPECT_TRUE(moved.err.contains(QLatin1String("2 deliveries successfully reassigned to ")));
    EXPECT_EQ(on("Deliveri", "Deliv_Dt", tuesday), 2);
    EXPECT_EQ(on("MealCrdt", "Deliv_Dt", tuesday), 2);
    EXPECT_EQ(on("MealCrdt", "Deliv_Dt", monday), 0);
    EXPECT_EQ(data->db()
                  .execute(QStringLiteral("Select count(*) from Deliveri where DOW = 'TUE'"))
                  .value(0, 0)
                  .toLongLong(),
              2);
    const ResultSet history = data->db().execute(
        QStringLiteral("Select Event, Person_ID from History where Event like 'Saved 2 deliv.%'"));
    ASSERT_EQ(history.rowCount(), 1);
    EXPECT_TRUE(history.value(0, 1).isNull() || history.value(0, 1).toLongLong() == 0);

    // The old date is empty now; old and equal dates are refused.
    const auto none = run(QStringLiteral("userW"), shift + QStringList{QStringLiteral("--yes")});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains(QLatin1String("There are no deliveries that fall on ")));
    const auto same = run(QStringLiteral("userW"),
                          {QStringLiteral("shift"), QStringLiteral("--from"), QStringLiteral("2024-03-05"),
                           QStringLiteral("--to"), QStringLiteral("2024-03-05"), QStringLiteral("--yes")});
    EXPECT_EQ(same.exitCode, 1);
    const auto old = run(QStringLiteral("userW"),
                         {QStringLiteral("shift"), QStringLiteral("--from"), QStringLiteral("2022-01-03"),
                          QStringLiteral("--to"), QStringLiteral("2024-03-05"), QStringLiteral("--yes")});
    EXPECT_EQ(old.exitCode, 1);
    EXPECT_TRUE(old.err.contains(QLatin1String("Both dates must be later than 2022-02-15")))
        << old.err.toStdString();
    EXPECT_EQ(on("Deliveri", "Deliv_Dt", tuesday), 2);

    // Bad words.
    EXPECT_EQ(run(QStringLiteral("userW"),
                  {QStringLiteral("shift"), QStringLiteral("--from"), QStringLiteral("2024-03-05")})
                  .exitCode,
              2);
    EXPECT_EQ(
        run(QStringLiteral("userW"), {QStringLiteral("list"), QStringLiteral("C7"), QStringLiteral("--yes")})
            .exitCode,
        2);
    EXPECT_EQ(run(QStringLiteral("userW"),
                  shift + QStringList{QStringLiteral("--date"), QStringLiteral("2024-03-05")})
                  .exitCode,
              2);
}

INSTANTIATE_TEST_SUITE_P(Stores, DatedCommand,
                         ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
