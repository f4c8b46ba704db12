#include "DemoAgency.h"

#include "TempDataDir.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <algorithm>
#include <cmath>

namespace {

using kb::Database;
using kb::Params;

QVariant scalar(Database& db, const QString& text, const Params& params = {})
{
    const kb::ResultSet rows = db.execute(text, params);
    return rows.isEmpty() ? QVariant() : rows.value(0, 0);
}

qint64 count(Database& db, const QString& text, const Params& params = {})
{
    return scalar(db, text, params).toLongLong();
}

// All rows of a statement as text, to compare two agencies cell by cell.
QString dump(Database& db, const QString& text)
{
    const kb::ResultSet rows = db.execute(text);
    QStringList lines;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        QStringList cells;
        for (int c = 0; c < rows.columnCount(); ++c)
            cells << rows.value(r, c).toString();
        lines << cells.join(u'|');
    }
    return lines.join(u'\n');
}

QString fingerprint(Database& db)
{
    return dump(db, QStringLiteral("select * from Clients order by Person_ID")) + u'\n' +
           dump(db, QStringLiteral(
                        "select count(*), sum(Number_Meals), sum(Number_Labels), sum(Stop) from Deliveri")) +
           u'\n' + dump(db, QStringLiteral("select count(*), sum(Quantity), sum(Item_ID) from Mealcrdt")) +
           u'\n' + dump(db, QStringLiteral("select * from EpisodicDeliveries order by RecordID")) + u'\n' +
           dump(db, QStringLiteral("select * from Suspends order by RecordID")) + u'\n' +
           dump(db, QStringLiteral("select * from Address_Overrides order by RecordID")) + u'\n' +
           dump(db, QStringLiteral("select * from Defdels order by RecordID")) + u'\n' +
           dump(db, QStringLiteral("select count(*) from History")) + u'\n' +
           dump(db, QStringLiteral("select * from Individuals order by INDIV_ID")) + u'\n' +
           dump(db, QStringLiteral("select * from Relationships order by RecordID")) + u'\n' +
           dump(db, QStringLiteral("select * from List_Members order by List_ID, Person_ID")) + u'\n' +
           dump(db, QStringLiteral("select * from IDNOS"));
}

// One agency of 1000 clients, shared by the tests that only read it.
class DemoAgencyTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        dir = new kb::test::TempDataDir;
        kb::DemoOptions options;
        options.clients = 1000;
        options.seed = 11;
        summary = kb::generateDemoAgency(dir->db(), options);
    }
    static void TearDownTestSuite()
    {
        delete dir;
        dir = nullptr;
    }
    Database& db() { return dir->db(); }

    static kb::test::TempDataDir* dir;
    static kb::DemoSummary summary;
};

kb::test::TempDataDir* DemoAgencyTest::dir = nullptr;
kb::DemoSummary DemoAgencyTest::summary;

TEST(DemoAgencySeed, SameSeedGivesTheSameAgency)
{
    kb::test::TempDataDir first;
    kb::test::TempDataDir second;
    kb::DemoOptions options;
    options.clients = 300;
    options.seed = 42;
    const kb::DemoSummary a = kb::generateDemoAgency(first.db(), options);
    const kb::DemoSummary b = kb::generateDemoAgency(second.db(), options);
    EXPECT_EQ(a.clients, b.clients);
    EXPECT_EQ(a.episodicDeliveries, b.episodicDeliveries);
    EXPECT_EQ(a.deliveries, b.deliveries);
    EXPECT_EQ(fingerprint(first.db()), fingerprint(second.db()));
}

TEST(DemoAgencySeed, AnotherSeedGivesAnotherAgency)
{
    kb::test::TempDataDir first;
    kb::test::TempDataDir second;
    kb::DemoOptions options;
    options.clients = 300;
    options.seed = 42;
    kb::generateDemoAgency(first.db(), options);
    options.seed = 43;
    kb::generateDemoAgency(second.db(), options);
    EXPECT_NE(dump(first.db(), QStringLiteral("select * from Clients order by Person_ID")),
              dump(second.db(), QStringLiteral("select * from Clients order by Person_ID")));
}

TEST(DemoAgencySeed, RefusesADirectoryThatHasData)
{
    kb::test::TempDataDir dir;
    kb::DemoOptions options;
    options.clients = 20;
    kb::generateDemoAgency(dir.db(), options);
    EXPECT_ANY_THROW(kb::generateDemoAgency(dir.db(), options));
    EXPECT_EQ(count(dir.db(), QStringLiteral("select count(*) from Clients")), 20);
}

TEST(DemoAgencySeed, NoClientsGivesTheCodeTablesOnly)
{
    kb::test::TempDataDir dir;
    kb::DemoOptions options;
    options.clients = 0;
    const kb::DemoSummary summary = kb::generateDemoAgency(dir.db(), options);
    EXPECT_EQ(summary.clients, 0);
    EXPECT_EQ(count(dir.db(), QStringLiteral("select count(*) from Clients")), 0);
    EXPECT_GT(count(dir.db(), QStringLiteral("select count(*) from Services")), 0);
    EXPECT_GT(count(dir.db(), QStringLiteral("select count(*) from Routes")), 0);
}

TEST_F(DemoAgencyTest, SummaryMatchesTheTables)
{
    EXPECT_EQ(summary.clients, 1000);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients")), 1000);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from EpisodicDeliveries")),
              summary.episodicDeliveries);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Deliveri")), summary.deliveries);
    EXPECT_GT(summary.episodicDeliveries, 0);
    EXPECT_GT(summary.deliveries, 1000);
}

TEST_F(DemoAgencyTest, CountersStandAtOrAboveTheNumbersUsed)
{
    const kb::ResultSet idnos =
        db().execute(QStringLiteral("select PERSON_ID, CLIENT_ID, DELIV_ID, Suspension_Group_ID from IDNOS"));
    ASSERT_EQ(idnos.rowCount(), 1);
    EXPECT_GE(idnos.value(0, 0).toLongLong(),
              count(db(), QStringLiteral("select max(Person_ID) from Clients")));
    // The delivery counter holds the next number a save takes.
    EXPECT_GT(idnos.value(0, 2).toLongLong(),
              count(db(), QStringLiteral("select max(Deliv_ID) from Deliveri")));
    EXPECT_GE(idnos.value(0, 3).toLongLong(),
              count(db(), QStringLiteral("select max(Group_ID) from Suspends")));
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Suspends where Group_ID > 0")), 0);

    qint64 highestClient = 0;
    const kb::ResultSet ids = db().execute(QStringLiteral("select Client_ID from Clients"));
    for (qsizetype r = 0; r < ids.rowCount(); ++r)
        highestClient = std::max(highestClient, ids.value(r, 0).toString().section(u'.', 0, 0).toLongLong());
    EXPECT_EQ(idnos.value(0, 1).toLongLong(), highestClient);
}

TEST_F(DemoAgencyTest, ClientNumbersAreUniqueAndDependentsFollowTheirGuardian)
{
    EXPECT_EQ(count(db(), QStringLiteral("select count(distinct Client_ID) from Clients")), 1000);
    EXPECT_EQ(count(db(), QStringLiteral("select count(distinct Person_ID) from Clients")), 1000);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients where Client_ID is null")), 0);
    const kb::ResultSet dependents =
        db().execute(QStringLiteral("select Client_ID, Household_ID from Clients where Dependent = 'Y'"));
    EXPECT_GT(dependents.rowCount(), 0);
    for (qsizetype r = 0; r < dependents.rowCount(); ++r) {
        const QString id = dependents.value(r, 0).toString();
        EXPECT_NE(id.section(u'.', 1), QStringLiteral("0")) << id.toStdString();
        const QString guardian = id.section(u'.', 0, 0) + QStringLiteral(".0");
        EXPECT_EQ(
            count(db(),
                  QStringLiteral("select count(*) from Clients where Client_ID = :Id and Household_ID = :H"),
                  {{QStringLiteral("Id"), guardian}, {QStringLiteral("H"), dependents.value(r, 1)}}),
            1)
            << id.toStdString();
    }
}

TEST_F(DemoAgencyTest, EveryServiceUsedIsADeliveryService)
{
    EXPECT_EQ(
        count(db(), QStringLiteral("select count(*) from Clients where Svcs_Used > 0 and Svcs_Used not in "
                                   "(select Service_ID from Services where Service_Type = 'D')")),
        0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Clients where Svcs_Used > 0")), 900);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Services where Service_Type = 'D' and "
                                         "Mutl_Excl = False")),
              0);
    for (const char* type : {"C", "M", "O"})
        EXPECT_GT(count(db(), QStringLiteral("select count(*) from Services where Service_Type = :T"),
                        {{QStringLiteral("T"), QString::fromLatin1(type)}}),
                  0)
            << type;
}

TEST_F(DemoAgencyTest, EveryRouteReferencedExists)
{
    QStringList columns = {QStringLiteral("Def_Rte")};
    for (const char* day : {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"})
        columns << QString::fromLatin1(day) + QStringLiteral("_Rte");
    for (const QString& column : columns)
        EXPECT_EQ(
            count(db(), QStringLiteral("select count(*) from Clients where %1 is not null and %1 not in "
                                       "(select Route_ID from Routes)")
                            .arg(column)),
            0)
            << column.toStdString();
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients where Def_Rte is null")), 0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from EpisodicDeliveries where Route not in "
                                         "(select Route_ID from Routes)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Address_Overrides where Route is not null and "
                                         "Route not in (select Route_ID from Routes)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Deliveri where Route_ID not in "
                                         "(select Route_ID from Routes)")),
              0);
    // Weekday routes of their own, some entered without a stop.
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Clients where Fri_Rte is not null and "
                                         "Fri_Rte <> Def_Rte")),
              0);
    EXPECT_GT(count(db(), QStringLiteral(
                              "select count(*) from Clients where (Mon_Rte is not null and Mon_Stop is "
                              "null) or (Tue_Rte is not null and Tue_Stop is null) or (Wed_Rte is not "
                              "null and Wed_Stop is null) or (Thu_Rte is not null and Thu_Stop is null) "
                              "or (Fri_Rte is not null and Fri_Stop is null) or (Sat_Rte is not null and "
                              "Sat_Stop is null)")),
              0);
}

TEST_F(DemoAgencyTest, HouseholdMembersShareAWholeStop)
{
    const kb::ResultSet members = db().execute(QStringLiteral(
        "select m.Household_ID, c.Household_ID, c.Def_Rte, c.Def_Stop from Household_Members m join "
        "Clients c on m.Person_ID = c.Person_ID order by m.Household_ID"));
    ASSERT_GT(members.rowCount(), 0);
    for (qsizetype r = 0; r < members.rowCount(); ++r) {
        EXPECT_EQ(members.value(r, 0).toInt(), members.value(r, 1).toInt());
        const double stop = members.value(r, 3).toDouble();
        EXPECT_NE(stop, std::floor(stop)) << "a household member has a fractional stop";
        if (r > 0 && members.value(r, 0) == members.value(r - 1, 0)) {
            EXPECT_EQ(members.value(r, 2), members.value(r - 1, 2));
            EXPECT_EQ(std::floor(stop), std::floor(members.value(r - 1, 3).toDouble()));
        }
    }
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients where Household_ID > 0")),
              members.rowCount());
}

TEST_F(DemoAgencyTest, HouseholdsHaveOneHeadAndEachClientOneHousehold)
{
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Households")), 0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Households h where (select count(*) from "
                                         "Household_Members m where m.Household_ID = h.Household_ID) < 2")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Households h where (select count(*) from "
                                         "Household_Members m where m.Household_ID = h.Household_ID and "
                                         "m.Head_of_Household = True) <> 1")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Household_Members m where (select count(*) from "
                                         "Household_Members o where o.Person_ID = m.Person_ID) > 1")),
              0);
    // Members of one household live at one address.
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Household_Members m join Clients c on "
                                         "m.Person_ID = c.Person_ID join Household_Members hm on "
                                         "hm.Household_ID = m.Household_ID and hm.Head_of_Household = True "
                                         "join Clients h on h.Person_ID = hm.Person_ID where "
                                         "c.Address1 <> h.Address1")),
              0);
}

TEST_F(DemoAgencyTest, IndividualsRelationshipsAndListsHoldTogether)
{
    const qint64 individuals = count(db(), QStringLiteral("select count(*) from Individuals"));
    const qint64 relationships = count(db(), QStringLiteral("select count(*) from Relationships"));
    // Of 1000 clients, about half have someone around them.
    EXPECT_GT(individuals, 200);
    EXPECT_GT(relationships, 400);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Relationships r where not exists (select 1 from "
                                         "Individuals i where i.Indiv_ID = r.Indiv_ID)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Relationships r where not exists (select 1 from "
                                         "Clients c where c.Person_ID = r.Person_ID)")),
              0);
    // Nobody is kept who is related to no client.
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Individuals i where not exists (select 1 from "
                                         "Relationships r where r.Indiv_ID = i.Indiv_ID)")),
              0);
    // Every name is one the agency configured.
    const QStringList configured =
        scalar(db(), QStringLiteral("select Relationship_List from Config")).toString().split(u'\n');
    const kb::ResultSet names =
        db().execute(QStringLiteral("select distinct Relationship from Relationships order by Relationship"));
    QStringList used;
    for (qsizetype r = 0; r < names.rowCount(); ++r)
        used << names.value(r, 0).toString();
    for (const QString& name : used)
        EXPECT_TRUE(configured.contains(name)) << name.toStdString();
    for (const char* name : {"Daughter", "Son", "Physician", "Case Worker", "Bill-To"})
        EXPECT_TRUE(used.contains(QString::fromLatin1(name))) << name;
    // A physician sees many of the agency's clients.
    EXPECT_GT(count(db(), QStringLiteral("select max(n) from (select count(*) as n from Relationships where "
                                         "Relationship = 'Physician' group by Indiv_ID) t")),
              3);
    // A bill goes to at most one person, who is also a relative.
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from (select Person_ID from Relationships where "
                                         "Relationship = 'Bill-To' group by Person_ID having count(*) > 1) t")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Relationships b where b.Relationship = 'Bill-To' "
                                         "and not exists (select 1 from Relationships r where r.Person_ID = "
                                         "b.Person_ID and r.Indiv_ID = b.Indiv_ID and r.Relationship <> "
                                         "'Bill-To')")),
              0);

    EXPECT_GE(count(db(), QStringLiteral("select count(*) from Lists where Reason = 'LST'")), 3);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from List_Members")), 300);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from List_Members m where not exists (select 1 from "
                                         "Lists l where l.Record_ID = m.List_ID)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from List_Members m where not exists (select 1 from "
                                         "Clients c where c.Person_ID = m.Person_ID and c.Client_ID = "
                                         "m.Client_ID)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from (select List_ID, Person_ID from List_Members "
                                         "group by List_ID, Person_ID having count(*) > 1) t")),
              0);
}

TEST_F(DemoAgencyTest, EachOverrideTypeAndFrequencyIsPresent)
{
    for (const char* type : {"O", "T", "D", "M"})
        EXPECT_GT(count(db(),
                        QStringLiteral("select count(*) from Address_Overrides where Override_Type = :T"),
                        {{QStringLiteral("T"), QString::fromLatin1(type)}}),
                  0)
            << type;
    for (const char* frequency : {"A", "O", "E", "1", "2", "3", "4"})
        EXPECT_GT(count(db(),
                        QStringLiteral("select count(*) from Clients where Ongoing_Frequency = :F and "
                                       "Status = 'A' and Delivery_Type = 'O'"),
                        {{QStringLiteral("F"), QString::fromLatin1(frequency)}}),
                  0)
            << frequency;
    for (const char* status : {"A", "I", "S", "W", "N"})
        EXPECT_GT(count(db(), QStringLiteral("select count(*) from Clients where Status = :S"),
                        {{QStringLiteral("S"), QString::fromLatin1(status)}}),
                  0)
            << status;
}

TEST_F(DemoAgencyTest, SomeActiveClientsAreSuspendedToday)
{
    EXPECT_GT(count(db(),
                    QStringLiteral("select count(*) from Suspends s join Clients c on s.Person_ID = "
                                   "c.Person_ID where c.Status = 'A' and s.Stop_Dt <= :Today and "
                                   "s.Resume_Dt > :Today and s.Tran_Type = 'SUSP' and s.Valid = True"),
                    {{QStringLiteral("Today"), QDate(2024, 3, 6)}}),
              0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Suspends where Resume_Dt <= :Today"),
                    {{QStringLiteral("Today"), QDate(2024, 3, 6)}}),
              0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Suspends where Stop_Dt > :Today"),
                    {{QStringLiteral("Today"), QDate(2024, 3, 6)}}),
              0);
}

TEST_F(DemoAgencyTest, MondaySelectionFindsMostActiveClients)
{
    // The ongoing selection of a run, for the Monday after the clock's date.
    const QString monday = QStringLiteral(
        "Select Person_ID, Client_ID, First_Name, Mid_Name, Last_Name, Svcs_Used, Household_ID, Cuisine_ID, "
        "Diet_Restr, Org_Client, Cold_Bag_ID, "
        " Ongoing_Frequency, Address1, Address2, City, State, ZIP, Latitude, Longitude, Cross_Street, "
        " IfNull(Mon_Rte then Def_Rte else Mon_Rte) as Route_ID, "
        " IfNull(Mon_Rte then Def_Stop else Mon_Stop) as Stop  "
        "from Clients where (status='A') and (Delivery_Type='O') and (Client_ID is not Null) and Start_Dte "
        "<= "
        ":Deliv_Date and (Stop_Dte > :Deliv_Date or Stop_Dte is null)"
        "and (Svcs_Used > 0) and (Monday = True) and not (Client_ID in (Select Client_ID from Suspends where "
        "Stop_Dt <= :Deliv_Date and Resume_Dt > :Deliv_Date))");
    const QDate date(2024, 3, 11);
    const kb::ResultSet rows = db().execute(monday, {{QStringLiteral("Deliv_Date"), date}});
    EXPECT_GT(rows.rowCount(), 450);
    qsizetype missingRoute = 0;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        if (rows.value(r, QStringView(u"Route_ID")).toString().trimmed().isEmpty()) ++missingRoute;
    EXPECT_EQ(missingRoute, 0);
}

TEST_F(DemoAgencyTest, SavedRunsHoldTheirItemsAndHistory)
{
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Mealcrdt where Deliv_ID not in "
                                         "(select Deliv_ID from Deliveri)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(distinct Deliv_ID) from Deliveri")),
              count(db(), QStringLiteral("select count(*) from Deliveri")));
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Deliveri where Number_Labels < 1")), 0);
    for (const char* status : {"M", "E", "C"})
        EXPECT_GT(count(db(), QStringLiteral("select count(*) from Deliveri where Delivery_Status = :S"),
                        {{QStringLiteral("S"), QString::fromLatin1(status)}}),
                  0)
            << status;
    for (const char* type : {"OD", "ED", "SD"})
        EXPECT_GT(count(db(), QStringLiteral("select count(*) from Deliveri where Delivery_Type = :T"),
                        {{QStringLiteral("T"), QString::fromLatin1(type)}}),
                  0)
            << type;

    // Each saved date has its history line with the number of deliveries.
    const kb::ResultSet dates = db().execute(
        QStringLiteral("select Deliv_Dt, count(*) from Deliveri group by Deliv_Dt order by Deliv_Dt"));
    ASSERT_GT(dates.rowCount(), 10);
    for (qsizetype r = 0; r < dates.rowCount(); ++r) {
        const QDate date = dates.value(r, 0).toDate();
        const QString text = QStringLiteral("Saved %1 All Delivery Types, %2 names.")
                                 .arg(date.toString(QStringLiteral("M/d/yyyy")))
                                 .arg(dates.value(r, 1).toLongLong());
        EXPECT_EQ(count(db(),
                        QStringLiteral("select count(*) from History where Event = :E and Event_Date = :D"),
                        {{QStringLiteral("E"), text}, {QStringLiteral("D"), date}}),
                  1)
            << text.toStdString();
    }
    // Dated deliveries on saved dates were fulfilled; those ahead were not.
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from EpisodicDeliveries where Fulfilled = 'Y'")),
              0);
    EXPECT_EQ(count(db(),
                    QStringLiteral("select count(*) from EpisodicDeliveries where Fulfilled = 'Y' and "
                                   "Deliv_Date > :Today"),
                    {{QStringLiteral("Today"), QDate(2024, 3, 6)}}),
              0);
}

TEST_F(DemoAgencyTest, ItemListsOfEachKindExist)
{
    // Service defaults, clients' own standing lists and lines of one dated
    // delivery, the last pointing at their delivery.
    EXPECT_GT(
        count(db(), QStringLiteral("select count(*) from Defdels where Person_ID = 0 and Deliv_ID is null")),
        0);
    EXPECT_GT(
        count(db(), QStringLiteral("select count(*) from Defdels where Person_ID > 0 and Deliv_ID is null")),
        0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Defdels where Deliv_ID is not null")), 0);
    EXPECT_EQ(
        count(db(), QStringLiteral("select count(*) from Defdels where Deliv_ID is not null and Deliv_ID not "
                                   "in (select RecordID from EpisodicDeliveries)")),
        0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Defdels where Item_ID not in "
                                         "(select Item_ID from Items)")),
              0);
    EXPECT_LE(count(db(), QStringLiteral("select count(*) from Diet")), 31);
}

TEST_F(DemoAgencyTest, EpisodicClientsHaveDatedDeliveriesAroundToday)
{
    const Params today = {{QStringLiteral("Today"), QDate(2024, 3, 6)}};
    EXPECT_GT(
        count(db(),
              QStringLiteral("select count(*) from EpisodicDeliveries e join Clients c on e.Person_ID = "
                             "c.Person_ID where e.Schedule_Type = 'E' and c.Delivery_Type = 'E' and "
                             "e.Deliv_Date > :Today"),
              today),
        0);
    EXPECT_GT(count(db(),
                    QStringLiteral("select count(*) from EpisodicDeliveries where Schedule_Type = 'E' and "
                                   "Deliv_Date < :Today"),
                    today),
              0);
    EXPECT_GT(count(db(), QStringLiteral(
                              "select count(*) from EpisodicDeliveries e join Clients c on e.Person_ID = "
                              "c.Person_ID where e.Schedule_Type = 'S' and c.Delivery_Type = 'O'")),
              0);
    EXPECT_GT(
        count(db(), QStringLiteral("select count(*) from EpisodicDeliveries where Delivery_Type = 'W'")), 0);
}

TEST_F(DemoAgencyTest, StaffHaveEveryAccessLevel)
{
    for (const char* level : {"W", "A", "R", "O"})
        EXPECT_GT(
            count(db(),
                  QStringLiteral("select count(*) from Staff where Access_Level = :L and Active = True"),
                  {{QStringLiteral("L"), QString::fromLatin1(level)}}),
            0)
            << level;
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Staff where Active = False")), 0);
    EXPECT_GT(
        count(db(), QStringLiteral("select count(*) from Staff where User_ID is not null and Access_Level is "
                                   "null")),
        0);
}

TEST_F(DemoAgencyTest, AddressesLieAroundTheCityInKnownTowns)
{
    EXPECT_EQ(
        count(db(), QStringLiteral("select count(*) from Clients where Zip not in (select Zip from Zips)")),
        0);
    const kb::ResultSet range = db().execute(
        QStringLiteral("select min(Latitude), max(Latitude), min(Longitude), max(Longitude) from Clients"));
    // About 15 km either way of the centre.
    EXPECT_LT(range.value(0, 1).toDouble() - range.value(0, 0).toDouble(), 0.3);
    EXPECT_LT(range.value(0, 3).toDouble() - range.value(0, 2).toDouble(), 0.4);
    EXPECT_EQ(count(db(), QStringLiteral(
                              "select count(*) from Clients where Race not in (select Race_Cd from Race)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients where Dob > :Oldest60"),
                    {{QStringLiteral("Oldest60"), QDate(1964, 3, 6)}}),
              0);
}

TEST_F(DemoAgencyTest, ApplicationsFundingUsesAndRatesHoldTogether)
{
    // Every client on a delivery service has applied for it, with the
    // service's documents and conditions.
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Clients c where c.Svcs_Used > 0 and c.Org_Client <> 'Y' "
                                         "and not exists (select * from ServiceApps a where a.Person_ID = c.Person_ID "
                                         "and a.Service_ID = c.Svcs_Used)")),
              0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from DocUses d where not exists (select * from ServiceDocs s "
                                         "where s.Service_ID = d.Service_ID and s.Doc_ID = d.Doc_ID)")),
              0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from ConditionUses")), 0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from ServiceApps where App_Status = 'W'")), 0);
    // No client has two funding sources for one service on one weekday,
    // an "All Services" row counting for every service.
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        EXPECT_EQ(count(db(), QStringLiteral("select count(*) from FundUses a join FundUses b on a.Person_ID = "
                                             "b.Person_ID and a.RecordID < b.RecordID and (a.Service_ID = b.Service_ID "
                                             "or a.Service_ID = 0 or b.Service_ID = 0) where a.%1 = True and b.%1 = True")
                                  .arg(QLatin1String(day))),
                  0)
            << day;
    // Clients' own rates are of a source they use; pledges are the clients'.
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Pricing where Person_ID > 0 and Method = 'F'")), 0);
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Pricing p where p.Person_ID > 0 and p.Method = 'F' and "
                                         "not exists (select * from FundUses f where f.Person_ID = p.Person_ID and "
                                         "f.Fund_CD = p.Fund_CD)")),
              0);
    EXPECT_GT(count(db(), QStringLiteral("select count(*) from Pricing where Method = 'P'")), 0);
    // Every delivery service has a default list.
    EXPECT_EQ(count(db(), QStringLiteral("select count(*) from Services s where s.Service_Type = 'D' and not exists "
                                         "(select * from Defdels d where d.Person_ID = 0 and d.Service_ID = "
                                         "s.Service_ID and d.Deliv_ID is null)")),
              0);
}

} // namespace
