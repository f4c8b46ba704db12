// The statement dialect, run against a real data directory: each form is
// checked with statements the system itself uses and the results they give.

#include "store/DbError.h"
#include "Money.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;

namespace {

class SqlDialect : public ::testing::TestWithParam<test::StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<test::TempDataDir>(GetParam());
        Database& db = data->db();
        Query client = db.query(QStringLiteral(
            "Insert into Clients (Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, DOB, Status, Delivery_Type, "
            "Def_Rte, Def_Stop, Mon_Rte, Mon_Stop, Monday, Svcs_Used, Start_Dte, Stop_Dte, Income_Month, Org_Client) "
            "values (:Person_ID, :Client_ID, :First, :Mid, :Last, :DOB, :Status, 'O', :DefRte, :DefStop, :MonRte, "
            ":MonStop, :Monday, 1, '2024-01-01', :Stop, :Income, :Org)"));
        struct Row
        {
            int person;
            const char* clientId;
            const char* first;
            const char* mid;
            const char* last;
            QDate dob;
            const char* status;
            const char* defRte;
            QVariant defStop;
            QVariant monRte;
            QVariant monStop;
            bool monday;
            QVariant stop;
            QVariant income;
            const char* org;
        };
        const Row rows[] = {
            {1, "1.0", "Ann", "", "Baker", QDate(1940, 3, 5), "A", "R1", 3.0, QVariant(), QVariant(), true, QVariant(),
             QStringLiteral("1200.50"), "N"},
            {2, "2.0", "bob", "J", "adams", QDate(1950, 7, 1), "A", "R1", 1.5, QStringLiteral("R2"), QVariant(), true,
             QDate(2024, 6, 1), QStringLiteral("800.25"), "N"},
            {3, "3.0", "Cy", "", "Zimmer", QDate(1930, 12, 31), "I", "R2", 2.0, QVariant(), QVariant(), false,
             QVariant(), QVariant(), "N"},
            {4, "4.0", "Dee", "", "Adams", QDate(1960, 1, 15), "A", "R2", QVariant(), QStringLiteral("R3"), 7.0, true,
             QDate(2024, 3, 4), QStringLiteral("0.1"), "Y"},
        };
        for (const Row& r : rows) {
            client.bind(QStringLiteral("Person_ID"), r.person)
                .bind(QStringLiteral("Client_ID"), QString::fromLatin1(r.clientId))
                .bind(QStringLiteral("First"), QString::fromLatin1(r.first))
                .bind(QStringLiteral("Mid"), QString::fromLatin1(r.mid))
                .bind(QStringLiteral("Last"), QString::fromLatin1(r.last))
                .bind(QStringLiteral("DOB"), r.dob)
                .bind(QStringLiteral("Status"), QString::fromLatin1(r.status))
                .bind(QStringLiteral("DefRte"), QString::fromLatin1(r.defRte))
                .bind(QStringLiteral("DefStop"), r.defStop)
                .bind(QStringLiteral("MonRte"), r.monRte)
                .bind(QStringLiteral("MonStop"), r.monStop)
                .bind(QStringLiteral("Monday"), r.monday)
                .bind(QStringLiteral("Stop"), r.stop)
                .bind(QStringLiteral("Income"), r.income)
                .bind(QStringLiteral("Org"), QString::fromLatin1(r.org));
            client.execCommand();
        }
        db.execute(QStringLiteral("Insert into Suspends (Person_ID, Client_ID, Tran_Type, Valid, Stop_Dt, Resume_Dt) "
                                  "values (1, '1.0', 'SUSP', True, '2024-03-01', '2024-03-11')"));
        db.execute(QStringLiteral(
            "Insert into Services (Service_ID, Sort_Order, Service_Desc, Service_Type, Mutl_Excl) values "
            "(1, 1, 'Home Delivered', 'D', True), (2, 2, 'Counseling', 'C', False)"));
        db.execute(QStringLiteral("Insert into Fundsrcs (Fund_ID, Fund_CD, Fund_Srce) values (4, 'OAA', 'Older "
                                  "Americans'), (9, 'CTY', 'County'), (2, 'PVT', 'Private')"));
    }

    ResultSet run(const QString& text, const Params& params = {}) { return data->db().execute(text, params); }
    QVariant scalar(const QString& text, const Params& params = {})
    {
        const ResultSet r = run(text, params);
        EXPECT_EQ(r.rowCount(), 1) << text.toStdString();
        return r.rowCount() ? r.value(0, 0) : QVariant();
    }
    QStringList column(const ResultSet& r, int c = 0)
    {
        QStringList values;
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            values.append(r.value(i, c).toString());
        return values;
    }

    std::unique_ptr<test::TempDataDir> data;
};

TEST_P(SqlDialect, ConditionalsAndNullSubstitutes)
{
    const ResultSet r = run(QStringLiteral(
        "select Client_ID, If(Status = 'A' then If(Org_Client = 'Y' then 'Org' else 'Person') else 'Off') as Kind, "
        "IfNull(Mon_Rte then Def_Rte else Mon_Rte) as Route_ID, IfNull(Mon_Rte then Def_Stop else Mon_Stop) as Stop, "
        "IfNull (Def_Stop then 0 else Def_Stop) as Def from Clients order by Client_ID"));
    ASSERT_EQ(r.rowCount(), 4);
    EXPECT_EQ(column(r, 1), (QStringList{"Person", "Person", "Off", "Org"}));
    EXPECT_EQ(column(r, 2), (QStringList{"R1", "R2", "R2", "R3"}));
    // A weekday route with an empty stop gives an empty stop, not the default.
    EXPECT_TRUE(r.value(1, 3).isNull());
    EXPECT_DOUBLE_EQ(r.value(0, 3).toDouble(), 3.0);
    EXPECT_DOUBLE_EQ(r.value(3, 3).toDouble(), 7.0);
    EXPECT_DOUBLE_EQ(r.value(3, 4).toDouble(), 0.0);
    EXPECT_EQ(r.columnType(3), FieldType::Float);
}

TEST_P(SqlDialect, TextFunctionsAndJoiningWithPlus)
{
    const ResultSet r = run(QStringLiteral(
        "select Pos('d' in Last_Name) as P, Substring(Last_Name from 1 for 1) as Initial, Upper(First_Name) as U, "
        "Trim(' ' + First_Name + '  ') as T, First_Name+' '+Substring(Last_Name from 1 for 1) as Name, "
        "Last_Name+', '+First_Name as Last_First, 'Rte: ' +Def_Rte+' Stop: '+Cast(Def_Stop as Char(10)) as RouteStop, "
        "Mid_Name + Last_Name as Joined from Clients where Person_ID = 2"));
    ASSERT_EQ(r.rowCount(), 1);
    EXPECT_EQ(r.value(0, QStringView(u"P")).toInt(), 2);
    EXPECT_EQ(r.value(0, QStringView(u"Initial")).toString(), "a");
    EXPECT_EQ(r.value(0, QStringView(u"U")).toString(), "BOB");
    EXPECT_EQ(r.value(0, QStringView(u"T")).toString(), "bob");
    EXPECT_EQ(r.value(0, QStringView(u"Name")).toString(), "bob a");
    EXPECT_EQ(r.value(0, QStringView(u"Last_First")).toString(), "adams, bob");
    EXPECT_EQ(r.value(0, QStringView(u"RouteStop")).toString(), "Rte: R1 Stop: 1.5");
    EXPECT_EQ(r.value(0, QStringView(u"Joined")).toString(), "Jadams");
    // A whole stop casts without decimals; an empty part leaves the rest.
    EXPECT_EQ(scalar(QStringLiteral("select 'Rte: ' +Def_Rte+' Stop: '+Cast(Def_Stop as Char(10)) from Clients "
                                    "where Person_ID = 3"))
                  .toString(),
              "Rte: R2 Stop: 2");
    EXPECT_EQ(scalar(QStringLiteral("select First_Name + ' ' + Mid_Name + Stop_Reason from Clients where Person_ID = 1"))
                  .toString(),
              "Ann ");
    EXPECT_EQ(scalar(QStringLiteral("select Cast(Def_Stop as Integer) from Clients where Person_ID = 1")).toInt(), 3);
    EXPECT_TRUE(scalar(QStringLiteral("select Cast(Mon_Stop as Integer) from Clients where Person_ID = 1")).isNull());
    EXPECT_EQ(scalar(QStringLiteral("select Cast(Def_Stop as Integer) from Clients where Person_ID = 2")).toInt(), 1);
}

TEST_P(SqlDialect, DatesArithmeticAndExtract)
{
    // Monday 4 March 2024 is 1, Sunday 10 March is 7.
    EXPECT_EQ(scalar(QStringLiteral("select Extract(DayOfWeek from Stop_Dte) from Clients where Person_ID = 4")).toInt(),
              1);
    EXPECT_EQ(scalar(QStringLiteral("select Extract(DAYOFWEEK from Stop_Dt + 9) from Suspends")).toInt(), 7);
    EXPECT_EQ(scalar(QStringLiteral("select Extract(Year from DOB) from Clients where Person_ID = 3")).toInt(), 1930);
    EXPECT_EQ(scalar(QStringLiteral("select Extract(Month from DOB) from Clients where Person_ID = 3")).toInt(), 12);
    // Date minus date gives days; a date text works as a date in arithmetic.
    EXPECT_EQ(scalar(QStringLiteral("select Resume_Dt - Stop_Dt from Suspends")).toInt(), 10);
    EXPECT_EQ(scalar(QStringLiteral("select Stop_Dt + 30 from Suspends")).toDate(), QDate(2024, 3, 31));
    EXPECT_EQ(scalar(QStringLiteral("select Stop_Dt - 1 from Suspends")).toDate(), QDate(2024, 2, 29));
    const double age = scalar(QStringLiteral("select ('2024-03-05' - DOB) / 365.25 from Clients where Person_ID = 1"))
                           .toDouble();
    EXPECT_NEAR(age, 84.0, 0.01);
    // Current_Date is the session clock's date.
    EXPECT_EQ(scalar(QStringLiteral("select Current_Date from Config")).toDate(), QDate(2024, 3, 6));
    EXPECT_EQ(scalar(QStringLiteral("select Current_Date - 2 from Config")).toDate(), QDate(2024, 3, 4));
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where Stop_Dte < Current_Date"))),
              QStringList{"4.0"});
    // Date literals compare as dates.
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where DOB >= '1950-01-01' order by DOB"))),
              (QStringList{"2.0", "4.0"}));
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Suspends where Stop_Dt <= :Deliv_Date and Resume_Dt > "
                                    ":Deliv_Date"),
                     {{QStringLiteral("Deliv_Date"), QDate(2024, 3, 11)}})
                  .toInt(),
              0);
}

TEST_P(SqlDialect, OrderingDescendingNocaseAndTop)
{
    EXPECT_EQ(column(run(QStringLiteral("select Last_Name from Clients order by Last_Name"))),
              (QStringList{"Adams", "Baker", "Zimmer", "adams"}));
    EXPECT_EQ(column(run(QStringLiteral("select Last_Name from Clients order by Last_Name nocase, First_Name"))),
              (QStringList{"Adams", "adams", "Baker", "Zimmer"}));
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients order by DOB descending"))),
              (QStringList{"4.0", "2.0", "1.0", "3.0"}));
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients order by DOB descending Top 2"))),
              (QStringList{"4.0", "2.0"}));
    EXPECT_EQ(column(run(QStringLiteral("select Top 1 Client_ID from Clients order by DOB"))), QStringList{"3.0"});
    // Ordering by an alias, with nocase.
    const ResultSet r = run(QStringLiteral(
        "Select Person_ID, Client_ID, Last_Name+', '+First_Name as Last_First from Clients where Client_ID > '' "
        "Order by Last_First NoCase"));
    EXPECT_EQ(column(r, 2), (QStringList{"adams, bob", "Adams, Dee", "Baker, Ann", "Zimmer, Cy"}));
    // A distinct select sorted without case by its qualified columns.
    EXPECT_EQ(column(run(QStringLiteral("Select Distinct Clients.Last_Name, Clients.First_Name from Clients "
                                        "order by Last_Name, First_Name nocase"))),
              (QStringList{"Adams", "Baker", "Zimmer", "adams"}));
    EXPECT_EQ(column(run(QStringLiteral("Select Distinct Clients.Last_Name, Clients.First_Name from Clients "
                                        "order by Last_Name nocase, First_Name nocase"))),
              (QStringList{"adams", "Adams", "Baker", "Zimmer"}));
    // Empty values sort first.
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients order by Stop_Dte, Client_ID"))),
              (QStringList{"1.0", "3.0", "4.0", "2.0"}));
}

TEST_P(SqlDialect, LikeIsCaseSensitiveAndDistinctWorks)
{
    EXPECT_EQ(column(run(QStringLiteral("select Last_Name from Clients where Last_Name like 'a%'"))),
              QStringList{"adams"});
    EXPECT_EQ(column(run(QStringLiteral("select Last_Name from Clients where Upper(Last_Name) like '%DAM%' order by "
                                        "Client_ID"))),
              (QStringList{"adams", "Adams"}));
    EXPECT_EQ(column(run(QStringLiteral("Select Distinct Def_Rte from Clients order by Def_Rte"))),
              (QStringList{"R1", "R2"}));
}

TEST_P(SqlDialect, SubSelectsJoinsAndUnions)
{
    // The run's ongoing selection for a Monday, as one text.
    const ResultSet ongoing = run(
        QStringLiteral("Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, Svcs_Used, Household_ID, "
                       "Cuisine_ID, Diet_Restr, Org_Client, Cold_Bag_ID, ") +
            QStringLiteral(" Ongoing_Frequency, Address1, Address2, City, State, ZIP, Latitude, Longitude, "
                           "Cross_Street, ") +
            QStringLiteral(" IfNull(Mon_Rte then Def_Rte else Mon_Rte) as Route_ID, ") +
            QStringLiteral(" IfNull(Mon_Rte then Def_Stop else Mon_Stop) as Stop  ") +
            QStringLiteral("from Clients where (status='A') and (Delivery_Type='O') and (Client_ID is not Null) and "
                           "Start_Dte <= :Deliv_Date and (Stop_Dte > :Deliv_Date or Stop_Dte is null)") +
            QStringLiteral("and (Svcs_Used > 0) and (Monday = True) and not (Client_ID in (Select Client_ID from "
                           "Suspends where Stop_Dt <= :Deliv_Date and Resume_Dt > :Deliv_Date))"),
        {{QStringLiteral("Deliv_Date"), QDate(2024, 3, 4)}});
    // 1 is suspended, 3 inactive, 4 stopped on that very day.
    EXPECT_EQ(column(ongoing, 1), QStringList{"2.0"});
    EXPECT_EQ(ongoing.value(0, QStringView(u"Route_ID")).toString(), "R2");

    // Left outer join keeps clients without a match; the unmatched side is empty.
    run(QStringLiteral("Insert into StopReasons (Stop_ID, Stop_Reason) values (50, 'Moved')"));
    run(QStringLiteral("Update Clients set Stop_Code = 50 where Person_ID = 4"));
    const ResultSet joined = run(QStringLiteral(
        "select client_id, StopReasons.Stop_Reason, Clients.stop_reason Note from clients left outer join stopreasons "
        "on clients.stop_code = stopreasons.stop_id where status='A' order by Client_ID"));
    EXPECT_EQ(column(joined, 1), (QStringList{"", "", "Moved"}));
    EXPECT_TRUE(joined.value(0, 1).isNull());
    EXPECT_EQ(joined.columnName(2), "Note");

    // A union sorted on its columns, and Top 1 after the order.
    const QString overrides = QStringLiteral(
        "select RecordID, Override_Type, Route, IfNull (Stop then 0 else Stop) as Stop, Address1, City, State, ZIP "
        "from address_overrides where Person_id = :Person_ID and Override_Type = 'D' and deliv_date = :Deliv_Date "
        "union select RecordID, Override_Type, Route, IfNull (Stop then 0 else Stop) as Stop, Address1, City, State, "
        "ZIP from address_overrides where Person_id = :Person_ID and Override_Type = 'T' and Effective_Date <= "
        ":Deliv_Date and (Expire_Date >=  :Deliv_Date or Expire_Date is Null) union select RecordID, Override_Type, "
        "Route, IfNull (Stop then 0 else Stop) as Stop, Address1, City, State, ZIP from address_overrides where "
        "Person_id = :Person_ID and Override_Type = 'O' and DOW = :DOW and Effective_Date <= :Deliv_Date and "
        "(Expire_Date >=  :Deliv_Date or Expire_Date is Null) order by Override_Type Top 1");
    run(QStringLiteral(
        "Insert into Address_Overrides (Person_ID, Override_Type, DOW, Effective_Date, Expire_Date, Deliv_Date, Route, "
        "Stop, Address1) values (2, 'T', null, '2024-03-01', '2024-03-04', null, 'T1', null, 'Temp St'), "
        "(2, 'O', 'MON', '2024-01-01', null, null, 'O1', 4, 'Weekly St'), "
        "(2, 'D', null, null, null, '2024-03-11', 'D1', 9, 'Date St')"));
    const Params monday = {{QStringLiteral("Person_ID"), 2},
                           {QStringLiteral("Deliv_Date"), QDate(2024, 3, 4)},
                           {QStringLiteral("DOW"), QStringLiteral("MON")}};
    ResultSet applied = run(overrides, monday);
    ASSERT_EQ(applied.rowCount(), 1);
    EXPECT_EQ(applied.value(0, QStringView(u"Override_Type")).toString(), "O");
    EXPECT_EQ(run(overrides, {{QStringLiteral("Person_ID"), 2},
                              {QStringLiteral("Deliv_Date"), QDate(2024, 3, 11)},
                              {QStringLiteral("DOW"), QStringLiteral("MON")}})
                  .value(0, QStringView(u"Route"))
                  .toString(),
              "D1");
    applied = run(overrides, {{QStringLiteral("Person_ID"), 2},
                              {QStringLiteral("Deliv_Date"), QDate(2024, 3, 2)},
                              {QStringLiteral("DOW"), QStringLiteral("SAT")}});
    EXPECT_EQ(applied.value(0, QStringView(u"Route")).toString(), "T1");
    // A null override stop is 0.
    EXPECT_DOUBLE_EQ(applied.value(0, QStringView(u"Stop")).toDouble(), 0.0);

    // Union without duplicates; the sub-select in a statement of another table.
    EXPECT_EQ(column(run(QStringLiteral("Select Person_ID from Clients where (Def_Rte = :Route_ID) or (Mon_Rte = "
                                        ":Route_ID) union Select Person_ID from Address_Overrides where Route = "
                                        ":Route_ID order by Person_ID"),
                         {{QStringLiteral("Route_ID"), QStringLiteral("R2")}})),
              (QStringList{"2", "3", "4"}));

    // A derived table's columns are named as its select names them, in any
    // case, also through * and a left join.
    const ResultSet derived = run(QStringLiteral(
        "select r.Request_ID, r.*, s.Stop_Reason from (select Person_ID as Request_ID, Client_ID as Visible_No, "
        "Stop_Code from Clients where Person_ID in (2, 4)) r left join StopReasons s on s.Stop_ID = r.Stop_Code "
        "order by r.Request_ID"));
    EXPECT_EQ(column(derived, 0), (QStringList{"2", "4"}));
    EXPECT_EQ(derived.columnName(2), "Visible_No");
    EXPECT_EQ(column(derived, 4), (QStringList{"", "Moved"}));
}

TEST_P(SqlDialect, AggregatesNamesAndLooseGrouping)
{
    const ResultSet r = run(QStringLiteral("select max( Fund_ID ), count(*), min(Fund_CD) from Fundsrcs"));
    EXPECT_EQ(r.columnName(0), "Max Of Fund_ID");
    EXPECT_EQ(r.columnName(1), "Count Of *");
    EXPECT_EQ(r.columnName(2), "Min Of Fund_CD");
    EXPECT_EQ(r.value(0, 0).toInt(), 9);
    EXPECT_EQ(r.value(0, 1).toInt(), 3);
    EXPECT_EQ(r.value(0, 2).toString(), "CTY");
    // A group by that leaves other selected columns ungrouped.
    const ResultSet grouped = run(QStringLiteral(
        "select Def_Rte, Last_Name, count(*) as N from Clients NoJoinOptimize group by Def_Rte order by Def_Rte"));
    ASSERT_EQ(grouped.rowCount(), 2);
    EXPECT_EQ(column(grouped, 0), (QStringList{"R1", "R2"}));
    EXPECT_EQ(column(grouped, 2), (QStringList{"2", "2"}));
    EXPECT_FALSE(grouped.value(0, 1).toString().isEmpty());
    const ResultSet joined = run(QStringLiteral(
        "Select Def_Rte, Service_Desc, Count(Person_ID) as Clients from Clients join Services on Clients.Svcs_Used = "
        "Services.Service_iD and (1=1) group by Def_Rte order by Clients descending, Def_Rte"));
    EXPECT_EQ(column(joined, 1), (QStringList{"Home Delivered", "Home Delivered"}));
}

TEST_P(SqlDialect, BooleansQuotesAndParameters)
{
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where Monday = False"))), QStringList{"3.0"});
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where Status = \"I\""))), QStringList{"3.0"});
    EXPECT_EQ(scalar(QStringLiteral("select Monday from Clients where Person_ID = 1")).typeId(), QMetaType::Bool);
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where Monday = :lMon and Status = :cStatus"),
                         {{QStringLiteral("lMon"), true}, {QStringLiteral("cStatus"), QStringLiteral("A")}})),
              (QStringList{"1.0", "2.0", "4.0"}));
    // x = Null asks whether x is empty.
    EXPECT_EQ(column(run(QStringLiteral("select Client_ID from Clients where (Mon_Rte = Null) order by Client_ID"))),
              (QStringList{"1.0", "3.0"}));
    // Text parameters are never pasted: quotes stay data.
    EXPECT_EQ(run(QStringLiteral("select Client_ID from Clients where Last_Name = :Name"),
                  {{QStringLiteral("Name"), QStringLiteral("x' or '1'='1")}})
                  .rowCount(),
              0);
}

TEST_P(SqlDialect, SeveralStatementsInOneTextAndCounts)
{
    const ResultSet r = run(QStringLiteral(
        "Update Clients set Status = 'S' where Person_ID = 4; Insert into History (Person_ID, Client_ID, Tran_Date, "
        "User, Event, Event_Date) Values (:Person_ID, :Client_ID, :Tran_Date, :User, :Event, :Event_Date); select "
        "Status, Event from Clients join History on Clients.Person_ID = History.Person_ID"),
                            {{QStringLiteral("Person_ID"), 4},
                             {QStringLiteral("Client_ID"), QStringLiteral("4.0")},
                             {QStringLiteral("Tran_Date"), test::fixedNow()},
                             {QStringLiteral("User"), QStringLiteral("Pat Smith")},
                             {QStringLiteral("Event"), QStringLiteral("Status changed from Active to Stopped.")},
                             {QStringLiteral("Event_Date"), QDate(2024, 3, 6)}});
    ASSERT_EQ(r.rowCount(), 1);
    EXPECT_EQ(r.value(0, 0).toString(), "S");
    EXPECT_EQ(run(QStringLiteral("Update Clients set Monday = True where Status = 'A'")).rowsAffected(), 2);
    EXPECT_EQ(scalar(QStringLiteral("select Tran_Date from History")).toDateTime(), test::fixedNow());
}

TEST_P(SqlDialect, TextsLongerThanTheirColumnAreCut)
{
    const QString longEvent = QStringLiteral("Started on Home Delivered Meals for the weekday and weekend routes");
    run(QStringLiteral("Insert into History (Person_ID, Event) values (1, :Event)"), {{QStringLiteral("Event"), longEvent}});
    EXPECT_EQ(scalar(QStringLiteral("select Event from History")).toString(), longEvent.left(50));
    run(QStringLiteral("Update History set Event = Event + ' and more and more and more and more'"));
    EXPECT_EQ(scalar(QStringLiteral("select Event from History")).toString().size(), 50);
    run(QStringLiteral("Update Clients set State = 'Massachusetts' where Person_ID = 1"));
    EXPECT_EQ(scalar(QStringLiteral("select State from Clients where Person_ID = 1")).toString(), "Ma");
}

TEST_P(SqlDialect, MoneyIsExact)
{
    // A thousand dimes add up to exactly 100.
    Query insert = data->db().query(QStringLiteral(
        "Insert into Pricing (Person_ID, Fund_CD, Method, Unit, Amount) values (0, 'OAA', 'F', 'L', :Amount)"));
    for (int i = 0; i < 1000; ++i)
        insert.bind(QStringLiteral("Amount"), QStringLiteral("0.1")).execCommand();
    const QVariant total = scalar(QStringLiteral("select Sum(Amount) from Pricing"));
    EXPECT_EQ(total.value<Money>(), Money::fromUnits(100 * Money::Scale));
    EXPECT_EQ(total.value<Money>().toString(), "100.00");
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Pricing where Amount = 0.1")).toInt(), 1000);
    EXPECT_EQ(scalar(QStringLiteral("select Amount * 3 from Pricing Top 1")).value<Money>().toString(), "0.30");
    EXPECT_EQ(scalar(QStringLiteral("select Amount + 1 from Pricing Top 1")).value<Money>().toString(), "1.10");
    EXPECT_EQ(scalar(QStringLiteral("select Income_Month from Clients where Person_ID = 1")).value<Money>().toString(),
              "1200.50");
    EXPECT_EQ(scalar(QStringLiteral("select Sum(Income_Month) from Clients")).value<Money>().toString(), "2000.85");
    EXPECT_DOUBLE_EQ(scalar(QStringLiteral("select Round(Income_Month, 0) from Clients where Person_ID = 2"))
                         .value<Money>()
                         .toDouble(),
                     800.0);
}

TEST_P(SqlDialect, MemoryTablesArePrivateToTheSession)
{
    run(QStringLiteral("Select Person_ID, Last_Name, Def_Stop into Memory StopDates from Clients where Status = 'A'"));
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Memory StopDates")).toInt(), 3);
    EXPECT_EQ(scalar(QStringLiteral("select Person_ID from Memory StopDates where Person_ID in (Select Person_ID "
                                    "from Suspends)"))
                  .toInt(),
              1);
    // Named without the keyword, it is found among the session's memory tables.
    EXPECT_EQ(run(QStringLiteral("Update StopDates set Def_Stop = 9 where Person_ID = 1")).rowsAffected(), 1);

    run(QStringLiteral("Create Table if not exists Memory DeliveryStatus (Person_ID Integer, Svcs_Used Integer, "
                       "Delivery_Type VarChar(2), Delivery_Status VarChar(1))"));
    run(QStringLiteral("Create Table if not exists Memory DeliveryStatus (Other Integer)")); // kept as it was
    run(QStringLiteral("Create Index if not exists MasterIndex on Memory DeliveryStatus (Person_ID, Svcs_Used, "
                       "Delivery_Type)"));
    run(QStringLiteral("Insert into Memory DeliveryStatus (Person_ID, Svcs_Used, Delivery_Type, Delivery_Status) "
                       "values (1, 1, 'ODX', 'M')"));
    EXPECT_EQ(scalar(QStringLiteral("select Delivery_Type from Memory DeliveryStatus")).toString(), "OD");

    // Another session does not see them.
    auto other = data->openAnother();
    EXPECT_THROW(other->execute(QStringLiteral("select * from Memory StopDates")), DbError);

    run(QStringLiteral(" Drop table if exists Memory DeliveryStatus "));
    run(QStringLiteral(" Drop table if exists Memory DeliveryStatus "));
    EXPECT_THROW(run(QStringLiteral("select * from Memory DeliveryStatus")), DbError);
    // A memory table made again with other columns is read with them.
    run(QStringLiteral("Select Client_ID as Code into Memory StopDates from Clients"));
    EXPECT_EQ(run(QStringLiteral("select * from Memory StopDates")).columnName(0), "Code");
}

TEST_P(SqlDialect, ErrorsAreClearAndChangeNothing)
{
    const auto expectError = [&](const QString& text, DbErrorCode code, const char* fragment, const Params& p = {}) {
        try {
            run(text, p);
            ADD_FAILURE() << "no error for " << text.toStdString();
        } catch (const DbError& e) {
            EXPECT_EQ(e.code(), code) << e.what();
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(QLatin1String(fragment), Qt::CaseInsensitive)) << e.what();
            EXPECT_TRUE(QString::fromUtf8(e.what()).contains(text.left(10))) << e.what();
        }
    };
    expectError(QStringLiteral("select from Clients"), DbErrorCode::Syntax, "near");
    expectError(QStringLiteral("select * from Clients where (Status = 'A'"), DbErrorCode::Syntax, "Expected");
    expectError(QStringLiteral("select * from Nowhere"), DbErrorCode::UnknownName, "Nowhere");
    expectError(QStringLiteral("select Colour from Clients"), DbErrorCode::UnknownName, "Colour");
    expectError(QStringLiteral("select x.Status from Clients c"), DbErrorCode::UnknownName, "x");
    expectError(QStringLiteral("Update Clients set Status = 'X'; Update Clients set Start_Dte = :D"),
                DbErrorCode::ParameterType, ":D", {{QStringLiteral("D"), QStringLiteral("soon")}});
    expectError(QStringLiteral("select * from Clients where Person_ID = :P"), DbErrorCode::ParameterType, ":P",
                {{QStringLiteral("P"), QStringLiteral("one")}});
    expectError(QStringLiteral("select * from Clients where Person_ID = :P"), DbErrorCode::ParameterType, "no value");
    // The first statement of the failing text ran; the one with the bad value did not.
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Clients where Start_Dte = '2024-01-01'")).toInt(), 4);
    // A duplicate key keeps the store's message and maps to its code.
    run(QStringLiteral("Insert into Race (Race_ID, Race_Cd, Race_Desc) values (99, 'Z', 'Test')"));
    expectError(QStringLiteral("Insert into Race (Race_ID, Race_Cd, Race_Desc) values (100, 'Z', 'Again')"),
                DbErrorCode::DuplicateKey, "UNIQUE");
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Race where Race_Cd = 'Z'")).toInt(), 1);
}

TEST_P(SqlDialect, CaseOfNamesDoesNotMatter)
{
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from CLIENTS where person_id = 1 and LAST_name = 'Baker'")).toInt(),
              1);
    run(QStringLiteral("Insert into MealCrdt (Deliv_ID, Person_ID) values (1, 1)"));
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Mealcrdt")).toInt(), 1);
    // History.User is an ordinary column despite the word.
    run(QStringLiteral("Insert into History (User, Event) values ('Pat', 'x')"));
    EXPECT_EQ(scalar(QStringLiteral("select User from history")).toString(), "Pat");
}

TEST_P(SqlDialect, UpdatesFromAJoinedMemoryTableAndOtherQuotedForms)
{
    // The import of geocoded positions: a memory table named in quotes,
    // joined into an update of the clients.
    run(QStringLiteral("DROP TABLE IF EXISTS Memory \"ALRData\"; CREATE TABLE IF NOT EXISTS Memory \"ALRData\" "
                       "(CustNum Integer, X Float, Y Float, GeoMethod Integer, StopType Integer)"));
    run(QStringLiteral("Insert into Memory ALRData (CustNum, X, Y, GeoMethod, StopType) values (1, -71.5, 42.25, 1, 1), "
                       "(2, 0, 0, 1, 1), (3, -70.0, 41.0, 2, 1)"));
    run(QStringLiteral("Update Clients set Clients.latitude = ALR.Y, clients.Longitude = ALR.X from clients join "
                       "memory ALRData ALR on Clients.Person_ID = ALR.CustNum where ALR.GeoMethod = 1 and "
                       "ALR.StopType = 1 and ALR.X <> 0 and ALR.Y <> 0;"));
    const ResultSet positions =
        run(QStringLiteral("select Person_ID, Latitude, Longitude from Clients order by Person_ID"));
    EXPECT_DOUBLE_EQ(positions.value(0, 1).toDouble(), 42.25);
    EXPECT_DOUBLE_EQ(positions.value(0, 2).toDouble(), -71.5);
    EXPECT_TRUE(positions.value(1, 1).isNull());
    EXPECT_TRUE(positions.value(2, 1).isNull());

    // "= Null" in an update of a memory table.
    run(QStringLiteral("Select Person_ID, Def_Stop as Stop into Memory MemMappingData from Clients"));
    EXPECT_EQ(run(QStringLiteral("Update memory MemMappingData set Stop = 0 where (Stop = Null)")).rowsAffected(), 1);
    EXPECT_EQ(scalar(QStringLiteral("select count(*) from Memory MemMappingData where Stop = 0")).toInt(), 1);

    // A memory table named by its file in quotes, as the label run empties it.
    EXPECT_EQ(run(QStringLiteral("Delete  from \"MemMappingData.dat\"")).rowsAffected(), 4);

    // The items wizard's insert with its "fields" word, and a working table
    // opened empty from a select that finds nothing.
    run(QStringLiteral("Insert into DefDels fields ( Person_ID, Service_ID, Del_Day, Quantity, Item_ID, Sort_Order ) "
                       "values ( :Person_ID, :Service_ID, :Del_Day, :Quantity, :Item_ID, :Sort_Order )"),
        {{QStringLiteral("Person_ID"), 2},
         {QStringLiteral("Service_ID"), 1},
         {QStringLiteral("Del_Day"), QStringLiteral("MON")},
         {QStringLiteral("Quantity"), 2},
         {QStringLiteral("Item_ID"), 30},
         {QStringLiteral("Sort_Order"), 1}});
    EXPECT_EQ(run(QStringLiteral("Select Item_ID, Quantity, Sort_Order from DefDels where Del_Day = 'XXX'")).rowCount(), 0);
    // Dates of one weekday, Monday 1, as a route change selects them.
    run(QStringLiteral("Insert into EpisodicDeliveries (Person_ID, Deliv_Date, Schedule_Type) values (2, '2024-03-11', "
                       "'S'), (2, '2024-03-12', 'S'), (2, '2024-03-17', 'S')"));
    EXPECT_EQ(run(QStringLiteral("Update EpisodicDeliveries set Route = :Route where Person_ID = :Person_ID and "
                                 "Deliv_Date >= Current_Date and Schedule_Type = :Schedule_Type and ( EXTRACT(DAYOFWEEK "
                                 "FROM Deliv_Date) = 1 or EXTRACT(DAYOFWEEK FROM Deliv_Date) = 7 )"),
                  {{QStringLiteral("Route"), QStringLiteral("R9")},
                   {QStringLiteral("Person_ID"), 2},
                   {QStringLiteral("Schedule_Type"), QStringLiteral("S")}})
                  .rowsAffected(),
              2);
    // The login activity list.
    run(QStringLiteral("Insert into History (Tran_Date, User, Event) values ('2024-03-05 09:00:00', 'Pat', 'Pat logged "
                       "into Kettlebrook'), ('2024-03-05 17:00:00', 'Pat', 'Pat logged out of Kettlebrook'), "
                       "('2024-02-01 09:00:00', 'Pat', 'Pat logged into Kettlebrook')"));
    const ResultSet logins = run(
        QStringLiteral("select event, tran_date, User, if(Pos('into' in Event) > 0 then 'Logged In' else 'Logged Out') as "
                       "Action from History where ((event like '%logged into%') or (event like '%logged out%')) and "
                       "Tran_Date > (Current_Date - :nPast_Days) order by User, Tran_Date descending nocase"),
        {{QStringLiteral("nPast_Days"), 1}});
    EXPECT_EQ(column(logins, 3), (QStringList{"Logged Out", "Logged In"}));
}

TEST_P(SqlDialect, EveryStoredRowHasAnIdentity)
{
    // Tables with and without a row key of their own, and memory tables.
    for (const QString& table : {QStringLiteral("Clients"), QStringLiteral("Alert_Recipients")}) {
        run(QStringLiteral("Delete from %1").arg(table));
        const QString column = table == QLatin1String("Clients") ? QStringLiteral("Person_ID") : QStringLiteral("Alert_ID");
        run(QStringLiteral("Insert into %1 (%2) values (7), (8)").arg(table, column));
        const ResultSet rows = run(QStringLiteral("select KB_ROWID, %2 from %1 order by %2").arg(table, column));
        ASSERT_EQ(rows.rowCount(), 2);
        EXPECT_NE(rows.value(0, 0), rows.value(1, 0));
        EXPECT_EQ(run(QStringLiteral("Update %1 set %2 = 9 where KB_ROWID = :Row").arg(table, column),
                      {{QStringLiteral("Row"), rows.value(1, 0)}})
                      .rowsAffected(),
                  1);
        EXPECT_EQ(column.isEmpty(), false);
        EXPECT_EQ(run(QStringLiteral("select %2 from %1 where KB_ROWID = :Row").arg(table, column),
                      {{QStringLiteral("Row"), rows.value(1, 0)}})
                      .value(0, 0)
                      .toInt(),
                  9);
        // The identity is no column of the table's own.
        EXPECT_EQ(run(QStringLiteral("select * from %1").arg(table)).columnIndex(u"KB_ROWID"), -1);
    }
    run(QStringLiteral("Select Person_ID into Memory M from Clients"));
    EXPECT_EQ(run(QStringLiteral("select KB_ROWID from Memory M")).rowCount(), 2);
}

INSTANTIATE_TEST_SUITE_P(Stores, SqlDialect, ::testing::Values(test::StoreKind::SQLite, test::StoreKind::PostgreSQL),
                         [](const auto& info) { return test::storeName(info.param); });

} // namespace
