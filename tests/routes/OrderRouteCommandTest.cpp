// The headless order-route and geocode commands: the same work as the
// screen's presenter, printed as CSV, written only when asked.

#include "FakeGeocodingService.h"
#include "OrderRoutesFixture.h"

#include "geocode/GeocoderSettings.h"
#include "RunCommand.h"

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

INSTANTIATE_TEST_SUITE_P(Stores, RouteCommands, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
