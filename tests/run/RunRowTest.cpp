// What each row of a prepared run holds: names, service, diet, household,
// and the address overrides that replace route, stop and address.

#include "AddressOverrides.h"
#include "selection/OriginDataSet.h"
#include "RunFixture.h"
#include "selection/RunStatements.h"

using namespace kb;
using namespace kb::test;

namespace {

using RunRow = RunFixture;

TEST_F(RunRow, NamesServiceDietAndHousehold)
{
    insertRow(db(), QStringLiteral("Households"), {{QStringLiteral("Household_Name"), QStringLiteral("Baker House")}});
    const qint64 household = db().execute(QStringLiteral("select Household_ID from Households")).value(0, 0).toLongLong();
    addClient(1, {{QStringLiteral("First_Name"), QStringLiteral(" ann ")},
                  {QStringLiteral("Mid_Name"), QStringLiteral("  ")},
                  {QStringLiteral("Last_Name"), QStringLiteral("baker")},
                  {QStringLiteral("Diet_Restr"), 5},
                  {QStringLiteral("Household_ID"), household},
                  {QStringLiteral("Org_Client"), QStringLiteral("Y")},
                  {QStringLiteral("Cuisine_ID"), 3}});
    addClient(2, {{QStringLiteral("Mid_Name"), QStringLiteral("J")},
                  {QStringLiteral("Diet_Restr"), 0},
                  {QStringLiteral("Svcs_Used"), 9},
                  {QStringLiteral("Household_ID"), 0}});
    addClient(3, {{QStringLiteral("Diet_Restr"), 2 + 16}}); // a bit beyond the three diets is ignored
    const ResultSet rows = prepare(monday, u'O');

    EXPECT_EQ(field(rows, 1, QStringLiteral("Full_Name")).toString(), "ann baker");
    EXPECT_EQ(field(rows, 1, QStringLiteral("First_Name")).toString(), " ANN ");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Last_Name")).toString(), "BAKER");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Pushpin_Name")).toString(), "ANN B");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Diet_Restr")).toInt(), 5);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Diet_Restrictions_Named")).toString(), "LS / LF");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Household_ID")).toLongLong(), household);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Household_Name")).toString(), "Baker House");
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Congregate")).toBool());
    EXPECT_EQ(field(rows, 1, QStringLiteral("Cuisine_ID")).toInt(), 3);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Services_Used_Named")).toString(), "Hot Meals");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Delivery_Date")).toDate(), monday);

    EXPECT_EQ(field(rows, 2, QStringLiteral("Full_Name")).toString(), "First2 J Last2");
    EXPECT_EQ(field(rows, 2, QStringLiteral("Diet_Restrictions_Named")).toString(), "");
    EXPECT_EQ(field(rows, 2, QStringLiteral("Services_Used_Named")).toString(), "Unknown");
    EXPECT_TRUE(field(rows, 2, QStringLiteral("Household_ID")).isNull());
    EXPECT_TRUE(field(rows, 2, QStringLiteral("Household_Name")).isNull());
    EXPECT_FALSE(field(rows, 2, QStringLiteral("Congregate")).toBool());
    EXPECT_EQ(field(rows, 2, QStringLiteral("Cuisine_ID")).toInt(), 0);
    EXPECT_EQ(field(rows, 2, QStringLiteral("AddressOverrideID")).toInt(), 0);
    EXPECT_FALSE(field(rows, 2, QStringLiteral("Address_Overridden")).toBool());
    EXPECT_EQ(field(rows, 2, QStringLiteral("Cross_Street")).toString(), "Oak Ave");
    EXPECT_DOUBLE_EQ(field(rows, 2, QStringLiteral("Latitude")).toDouble(), 40.02);
    EXPECT_EQ(field(rows, 3, QStringLiteral("Diet_Restrictions_Named")).toString(), "DB");
    EXPECT_TRUE(field(rows, 3, QStringLiteral("Phone")).isNull());
    EXPECT_TRUE(field(rows, 3, QStringLiteral("New_Stop")).isNull());
}

class RunOverrides : public RunFixture
{
protected:
    void SetUp() override
    {
        setConfig(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES"), true);
        const auto address = [](const char* street, const char* route, QVariant stop) {
            return Params{{QStringLiteral("Address1"), QString::fromLatin1(street)},
                          {QStringLiteral("City"), QStringLiteral("Elsewhere")},
                          {QStringLiteral("State"), QStringLiteral("NJ")},
                          {QStringLiteral("ZIP"), QStringLiteral("08000")},
                          {QStringLiteral("Route"), QString::fromLatin1(route)},
                          {QStringLiteral("Stop"), stop}};
        };
        const auto period = [](Params p, QDate from, QVariant to) {
            p.emplace_back(QStringLiteral("Effective_Date"), from);
            p.emplace_back(QStringLiteral("Expire_Date"), to);
            return p;
        };
        for (int person = 1; person <= 7; ++person)
            addClient(person);
        // 1: a one-date override and a matching weekday override: the one-date wins.
        addOverride(1, QStringLiteral("O"), with(period(address("1 Weekday Rd", "R2", 4.0), monday.addDays(-7), QVariant()),
                                                 QStringLiteral("DOW"), QStringLiteral("MON")));
        addOverride(1, QStringLiteral("D"), with(address("1 Date Rd", "R2", QVariant()), QStringLiteral("Deliv_Date"), monday));
        // 2: a weekday override beats a period.
        addOverride(2, QStringLiteral("T"), period(address("2 Period Rd", "R1", 9.0), monday.addDays(-3), monday.addDays(3)));
        addOverride(2, QStringLiteral("O"), with(period(address("2 Weekday Rd", "R2", 6.0), monday, monday),
                                                 QStringLiteral("DOW"), QStringLiteral("MON")));
        // 3: a period ending that day still applies; 4: one ending the day before does not.
        addOverride(3, QStringLiteral("T"), period(address("3 Period Rd", "R2", 2.0), monday.addDays(-3), monday));
        addOverride(4, QStringLiteral("T"), period(address("4 Period Rd", "R2", 2.0), monday.addDays(-3), monday.addDays(-1)));
        // 5: a weekday override of another weekday; 6: a one-date override of another date.
        addOverride(5, QStringLiteral("O"), with(period(address("5 Weekday Rd", "R2", 1.0), monday.addDays(-7), QVariant()),
                                                 QStringLiteral("DOW"), QStringLiteral("TUE")));
        addOverride(6, QStringLiteral("D"), with(address("6 Date Rd", "R2", 1.0), QStringLiteral("Deliv_Date"), monday.addDays(1)));
        // 7: a period starting the day after.
        addOverride(7, QStringLiteral("T"), period(address("7 Period Rd", "R2", 1.0), monday.addDays(1), QVariant()));
    }
};

TEST_F(RunOverrides, OneOverrideAppliesInItsOrder)
{
    const ResultSet rows = prepare(monday, u'O');
    EXPECT_EQ(field(rows, 1, QStringLiteral("Address1")).toString(), "1 Date Rd");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(field(rows, 1, QStringLiteral("Stop")).toDouble(), 0.0);
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Address_Overridden")).toBool());
    EXPECT_GT(field(rows, 1, QStringLiteral("AddressOverrideID")).toInt(), 0);
    EXPECT_EQ(field(rows, 1, QStringLiteral("City")).toString(), "Elsewhere");
    EXPECT_EQ(field(rows, 1, QStringLiteral("ZIP")).toString(), "08000");
    // An overridden row has no position or cross street of its own.
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Latitude")).isNull());
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Longitude")).isNull());
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Cross_Street")).isNull());

    EXPECT_EQ(field(rows, 2, QStringLiteral("Address1")).toString(), "2 Weekday Rd");
    EXPECT_DOUBLE_EQ(field(rows, 2, QStringLiteral("Stop")).toDouble(), 6.0);
    EXPECT_EQ(field(rows, 3, QStringLiteral("Address1")).toString(), "3 Period Rd");
    for (int person : {4, 5, 6, 7}) {
        EXPECT_EQ(field(rows, person, QStringLiteral("Address1")).toString(), QStringLiteral("%1 Main St").arg(person));
        EXPECT_FALSE(field(rows, person, QStringLiteral("Address_Overridden")).toBool());
    }
}

TEST_F(RunOverrides, AnOverrideAppliesToDatedRowsToo)
{
    addDated(1, monday, QStringLiteral("S"));
    const ResultSet rows = prepare(monday, u'S');
    EXPECT_EQ(field(rows, 1, QStringLiteral("Address1")).toString(), "1 Date Rd");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(field(rows, 1, QStringLiteral("Stop")).toDouble(), 0.0);
}

TEST_F(RunOverrides, SwitchedOffTheyAreIgnored)
{
    setConfig(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES"), false);
    const ResultSet rows = prepare(monday, u'O');
    for (int person = 1; person <= 7; ++person)
        EXPECT_FALSE(field(rows, person, QStringLiteral("Address_Overridden")).toBool()) << person;
    EXPECT_EQ(field(rows, 1, QStringLiteral("Address1")).toString(), "1 Main St");
}

TEST_F(RunOverrides, TheDateLoadPicksWhatTheSingleClientStatementPicks)
{
    for (const QDate& date : {monday, monday.addDays(-1), monday.addDays(1), monday.addDays(3), monday.addDays(7)}) {
        AddressOverrides all;
        all.load(db(), date);
        Query one = db().query(RunStatements::overrideStatement());
        for (int person = 1; person <= 7; ++person) {
            const auto expected = AddressOverrides::lookUpOne(one, person, RunStatements::dayCode(date), date);
            EXPECT_EQ(all.find(person), expected) << person << " on " << date.toString(Qt::ISODate).toStdString();
        }
    }
}

TEST_F(RunOverrides, ReloadedRowsKeepTheirSavedRouteAndTakeTheOverrideAddress)
{
    // A saved run's row, as the reload selects it from Deliveri joined to Clients.
    insertRow(db(), QStringLiteral("Deliveri"), {{QStringLiteral("Deliv_ID"), 77},
                                                 {QStringLiteral("Deliv_Dt"), monday},
                                                 {QStringLiteral("Person_ID"), 1},
                                                 {QStringLiteral("Client_ID"), QStringLiteral("C001")},
                                                 {QStringLiteral("Route_ID"), QStringLiteral("R1")},
                                                 {QStringLiteral("Stop"), 12.5},
                                                 {QStringLiteral("Delivery_Type"), QStringLiteral("sD")},
                                                 {QStringLiteral("Svcs_Used"), 1},
                                                 {QStringLiteral("Diet_Restr"), 1},
                                                 {QStringLiteral("Diet_Descr"), QStringLiteral("saved diet")},
                                                 {QStringLiteral("Address_Overridden"), true}});
    OriginDataSet saved(db().execute(
        QStringLiteral("Select Deliveri.Person_ID, Deliveri.Client_ID, Deliveri.Deliv_ID, Deliveri.Route_ID, "
                       "Deliveri.Stop, Deliveri.Delivery_Type, Deliveri.Svcs_Used, Deliveri.Diet_Restr, "
                       "Deliveri.Diet_Descr, Deliveri.Cold_Bag_ID, Deliveri.Address_Overridden, Clients.First_Name, "
                       "Clients.Mid_Name, Clients.Last_Name, Clients.Cuisine_ID, Clients.Org_Client, Clients.Address1, "
                       "Clients.Address2, Clients.City, Clients.State, Clients.Zip, Clients.Latitude, "
                       "Clients.Longitude, Clients.Household_ID, Clients.Cross_Street from Deliveri join Clients on "
                       "Deliveri.Person_ID = Clients.Person_ID where Deliv_Dt = :Deliv_Dt"),
        {{QStringLiteral("Deliv_Dt"), monday}}));
    ASSERT_EQ(saved.rowCount(), 1);
    prepare(monday, u'E'); // the run's date is the reloaded date
    form().table().empty();
    form().MoveToMemData(saved, false);
    const ResultSet rows = form().table().select(DeliveriesIndex::RouteStopClient);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Route_ID")).toString(), "R1");
    EXPECT_DOUBLE_EQ(field(rows, 1, QStringLiteral("Stop")).toDouble(), 12.5);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Address1")).toString(), "1 Date Rd");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Delivery_Type")).toString(), "sD");
    EXPECT_EQ(field(rows, 1, QStringLiteral("Deliv_ID")).toInt(), 77);
    EXPECT_EQ(field(rows, 1, QStringLiteral("Diet_Restrictions_Named")).toString(), "saved diet");
    EXPECT_TRUE(field(rows, 1, QStringLiteral("Address_Overridden")).toBool());
}

} // namespace
