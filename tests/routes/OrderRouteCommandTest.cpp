// The headless order-route and geocode commands: the same work as the
// screen's presenter, printed as CSV, written only when asked.

#include "FakeGeocodingService.h"
#include "OrderRoutesFixture.h"

#include "geocode/GeocoderSettings.h"
#include "RunCommand.h"

#include <QFileInfo>

using namespace kb;
using namespace kb::test;

namespace {

class RouteCommands : public OrderRoutesFixture
{
protected:
    void SetUp() override
    {
        OrderRoutesFixture::SetUp();
        if (IsSkipped())
            return;
        insertRow(db(), QStringLiteral("Staff"), {{QStringLiteral("Staff_ID"), 1},
                                                  {QStringLiteral("User_ID"), QStringLiteral("pat")},
                                                  {QStringLiteral("Staff_Name"), QStringLiteral("Pat Tester")},
                                                  {QStringLiteral("Access_Level"), QStringLiteral("W")},
                                                  {QStringLiteral("Active"), true}});
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    }

    CommandResult run(const QStringList& words)
    {
        return runKettlebrook(data->commandLocation() + QStringList{QStringLiteral("--user"), QStringLiteral("pat"),
                                                                    QStringLiteral("--today"), QStringLiteral("2024-03-06")} +
                              words);
    }

    QTemporaryDir home;
};

TEST_P(RouteCommands, OrderRoutePrintsTheNewOrderAndWritesItOnlyWithApply)
{
    // Stored 1, 3, 2, 4 along a line; 5 has no coordinates.
    const std::pair<int, double> stops[] = {{1, 1}, {3, 2}, {2, 3}, {5, 4}, {4, 5}};
    for (const auto& [person, stop] : stops)
        addClient(person, {{QStringLiteral("Def_Stop"), stop}});
    db().execute(QStringLiteral("Update Clients set Latitude = Null where Person_ID = 5"));

    CommandResult outcome = run({QStringLiteral("order-route"), QStringLiteral("R1"), QStringLiteral("--fix-first")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err, "No coordinates, kept in place: C005 First5 Last5, 5 Main St, stop 4\n");
    const QStringList lines = outcome.out.split('\n');
    ASSERT_GE(lines.size(), 9);
    EXPECT_TRUE(lines[1].startsWith("R1,DEF,5,4,1,")) << lines[1].toStdString();
    EXPECT_TRUE(lines[1].contains(",true,true,false,")) << lines[1].toStdString();
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "person_id,client_id,name,address1,latitude,longitude,old_stop,new_stop");
    EXPECT_TRUE(lines[4].startsWith("1,C001,First1 Last1,1 Main St,40.01,-75,1,1"));
    EXPECT_TRUE(lines[5].startsWith("2,C002,First2 Last2,2 Main St,40.02,-75,3,2"));
    EXPECT_TRUE(lines[6].startsWith("3,C003,First3 Last3,3 Main St,40.03,-75,2,3"));
    EXPECT_TRUE(lines[7].startsWith("5,C005,First5 Last5,5 Main St,,-75,4,4"));
    EXPECT_EQ(clientValue(3, QStringLiteral("Def_Stop")).toDouble(), 2.0);

    outcome = run({QStringLiteral("order-route"), QStringLiteral("R1"), QStringLiteral("--day"), QStringLiteral("mon"),
                   QStringLiteral("--fix-first"), QStringLiteral("--apply")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.section('\n', 1, 1).contains(",true,true,true,"));
    EXPECT_EQ(clientValue(3, QStringLiteral("Mon_Stop")).toDouble(), 3.0);
    EXPECT_EQ(clientValue(3, QStringLiteral("Mon_Rte")).toString(), "R1");
    EXPECT_EQ(clientValue(3, QStringLiteral("Def_Stop")).toDouble(), 2.0);
    EXPECT_TRUE(clientValue(5, QStringLiteral("Mon_Rte")).isNull());

    outcome = run({QStringLiteral("order-route"), QStringLiteral("R9")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_EQ(outcome.err, "There is no route R9.\n");
    EXPECT_EQ(run({QStringLiteral("order-route"), QStringLiteral("R1"), QStringLiteral("--day"), QStringLiteral("XYZ")})
                  .exitCode,
              2);
}

TEST_P(RouteCommands, GeocodeListsWhatItFoundAndStoresGoodAnswersWithApply)
{
    FakeGeocodingService service([](const QString& target) {
        FakeGeocodingService::Reply r;
        r.body = target.contains("Pine") ? "[" + FakeGeocodingService::place(40.5, -75.5, "house", 30) + "]"
                                         : "[" + FakeGeocodingService::place(40.6, -75.6, "postcode", 21) + "]";
        return r;
    });
    GeocoderSettings::setWebAddress(db(), service.address());
    addClient(1);
    addClient(2, {{QStringLiteral("Address1"), QStringLiteral("99 Pine Rd")}, {QStringLiteral("Latitude"), QVariant()}});
    addClient(3, {{QStringLiteral("Address1"), QStringLiteral("7 Far Lane")}, {QStringLiteral("Latitude"), QVariant()},
                  {QStringLiteral("ZIP"), QStringLiteral("18000")}, {QStringLiteral("City"), QStringLiteral("Away")}});

    const CommandResult outcome = run({QStringLiteral("geocode"), QStringLiteral("--apply")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    const QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[1], "2,C002,First2 Last2,99 Pine Rd,Springfield,PA,19000,Exact,W,40.5,-75.5,,-75");
    EXPECT_EQ(lines[2], "3,C003,First3 Last3,7 Far Lane,Away,PA,18000,Approximate,W,40.6,-75.6,,-75");
    EXPECT_EQ(outcome.err, "1 clients were given coordinates.\n");
    EXPECT_DOUBLE_EQ(clientValue(2, QStringLiteral("Latitude")).toDouble(), 40.5);
    EXPECT_TRUE(clientValue(3, QStringLiteral("Latitude")).isNull());
}

TEST_P(RouteCommands, RouteListPrintsTheRouteInStopOrderAndItsPrintedListing)
{
    addClient(1, {{QStringLiteral("Def_Stop"), 2.5}});
    addClient(
        2, {{QStringLiteral("Def_Stop"), 1.0}, {QStringLiteral("Cross_Street"), QStringLiteral("at Elm")}});
    addClient(3, {{QStringLiteral("Status"), QStringLiteral("I")}, {QStringLiteral("Def_Stop"), 3.0}});
    addClient(4, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Mon_Rte"), QStringLiteral("R1")},
                  {QStringLiteral("Mon_Stop"), 1.5}});

    CommandResult outcome =
        run({QStringLiteral("route-list"), QStringLiteral("--route"), QStringLiteral("R1")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 3) << outcome.out.toStdString(); // the inactive client is left out
    EXPECT_EQ(lines[0],
              "route,route_day,stop,person_id,client_id,household_id,status,first_name,last_name,address1,"
              "cross_street,city,state,zip,latitude,longitude");
    EXPECT_EQ(lines[1], "R1,,1,2,C002,,A,First2,Last2,2 Main St,at Elm,Springfield,PA,19000,40.02,-75");
    EXPECT_EQ(lines[2], "R1,,2.5,1,C001,,A,First1,Last1,1 Main St,,Springfield,PA,19000,40.01,-75");

    // Monday's route then the default, clients of every status.
    outcome = run({QStringLiteral("route-list"), QStringLiteral("--route"), QStringLiteral("R1"),
                   QStringLiteral("--day"), QStringLiteral("mon"), QStringLiteral("--all-statuses")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 5);
    EXPECT_TRUE(lines[2].startsWith("R1,MON,1.5,4,C004,")) << lines[2].toStdString();
    EXPECT_TRUE(lines[4].startsWith("R1,,3,3,C003,,I,")) << lines[4].toStdString();

    // Every route, one after another.
    outcome = run({QStringLiteral("route-list")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[3].startsWith("R2,,4,4,C004,")) << lines[3].toStdString();

    outcome = run({QStringLiteral("route-list"), QStringLiteral("--route"), QStringLiteral("R9")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("There is no route R9.")) << outcome.err.toStdString();
    outcome = run({QStringLiteral("route-list"), QStringLiteral("--pdf"), QStringLiteral("x.pdf")});
    EXPECT_EQ(outcome.exitCode, 2);

    if (GetParam() == StoreKind::SQLite)
        ASSERT_EQ(runKettlebrook(data->commandLocation() + QStringList{QStringLiteral("install-templates")})
                      .exitCode,
                  0);
    const QString pdf = home.filePath(QStringLiteral("R1.pdf"));
    outcome = run({QStringLiteral("route-list"), QStringLiteral("--route"), QStringLiteral("R1"),
                   QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.isEmpty());
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
}

TEST_P(RouteCommands, DirectionsPrintWhereTheDeliveryGoesAndWhatItBrings)
{
    addClient(1, {{QStringLiteral("Wed_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Wed_Stop"), 7.0},
                  {QStringLiteral("Directions"), QStringLiteral("Side door")}});
    db().execute(QStringLiteral("Update Config set Enable_Alternate_Addresses = :On"),
                 {{QStringLiteral("On"), true}});
    insertRow(db(), QStringLiteral("Address_Overrides"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Override_Type"), QStringLiteral("D")},
               {QStringLiteral("Deliv_Date"), QDate(2024, 3, 7)},
               {QStringLiteral("Address1"), QStringLiteral("9 Oak Ave")},
               {QStringLiteral("City"), QStringLiteral("Lakeside")},
               {QStringLiteral("State"), QStringLiteral("PA")},
               {QStringLiteral("Zip"), QStringLiteral("19001")},
               {QStringLiteral("Directions"), QStringLiteral("Back gate")},
               {QStringLiteral("Route"), QStringLiteral("R1")},
               {QStringLiteral("Stop"), 4.0}});

    // The directions are gathered for the template they print with.
    if (GetParam() == StoreKind::SQLite)
        ASSERT_EQ(runKettlebrook(data->commandLocation() + QStringList{QStringLiteral("install-templates")})
                      .exitCode,
                  0);

    // Today, a Wednesday: the client's own address on Wednesday's route.
    CommandResult outcome = run({QStringLiteral("directions"), QStringLiteral("1")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    QStringList lines = outcome.out.split('\n');
    ASSERT_GE(lines.size(), 4) << outcome.out.toStdString();
    EXPECT_EQ(lines[0],
              "person_id,client_id,first_name,last_name,date,day,route,stop,schedule_type,alternate_address,"
              "address1,address2,city,state,zip,phone,directions");
    EXPECT_TRUE(lines[1].startsWith("1,C001,First1,Last1,2024-03-06,WED,R2,7,S,false,1 Main St,"))
        << lines[1].toStdString();
    EXPECT_TRUE(lines[1].endsWith(",Side door")) << lines[1].toStdString();
    EXPECT_EQ(lines[2], "");
    EXPECT_TRUE(lines[3].startsWith("Quantity,Meal_Item")) << lines[3].toStdString();

    // The next day the single-date address applies, with its route and stop.
    outcome = run({QStringLiteral("directions"), QStringLiteral("1"), QStringLiteral("--date"),
                   QStringLiteral("2024-03-07")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    lines = outcome.out.split('\n');
    EXPECT_TRUE(
        lines[1].startsWith("1,C001,First1,Last1,2024-03-07,THU,R1,4,S,true,9 Oak Ave,,Lakeside,PA,19001,"))
        << lines[1].toStdString();
    EXPECT_TRUE(lines[1].endsWith(",Back gate")) << lines[1].toStdString();

    outcome = run({QStringLiteral("directions"), QStringLiteral("99")});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.err.contains("There is no client with the person number 99."))
        << outcome.err.toStdString();
    EXPECT_EQ(run({QStringLiteral("directions"), QStringLiteral("one")}).exitCode, 2);

    const QString pdf = home.filePath(QStringLiteral("directions.pdf"));
    outcome = run({QStringLiteral("directions"), QStringLiteral("1"), QStringLiteral("--pdf"), pdf});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_GT(QFileInfo(pdf).size(), 1000);
}

INSTANTIATE_TEST_SUITE_P(Stores, RouteCommands, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
