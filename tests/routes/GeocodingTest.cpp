// Address lookup by a Nominatim-compatible web service (a local test server
// answers as one), the agency's own known addresses before it, and finding
// coordinates for clients: kept with their quality, written only when accepted.

#include "FakeGeocodingService.h"
#include "OrderRoutesFixture.h"

#include "geocode/ClientGeocoding.h"
#include "geocode/AgencyGeocoder.h"
#include "geocode/GeocoderSettings.h"
#include "map/MapServerError.h"
#include "map/NominatimGeocoder.h"

using namespace kb;
using namespace kb::test;
using namespace std::chrono_literals;

namespace {

using Kind = ScriptedUserInterface::Kind;

map::NominatimGeocoder::Options quickOptions()
{
    map::NominatimGeocoder::Options o;
    o.minimumInterval = 0ms;
    o.timeout = 2000ms;
    return o;
}

const map::AddressQuery pine{QStringLiteral("99 Pine Rd & Co"), QStringLiteral("Springfield"), QStringLiteral("PA"),
                             QStringLiteral("19000"), map::Country::UnitedStates};

TEST(NominatimGeocoder, AsksAStructuredQueryAndRatesThePlaceFound)
{
    FakeGeocodingService service([](const QString& target) {
        FakeGeocodingService::Reply r;
        if (target.contains("street=99%20Pine%20Rd%20%26%20Co"))
            r.body = "[" + FakeGeocodingService::place(40.1, -75.2, "building", 30, "99 Pine Road") + "]";
        else if (target.contains("street=1%20Elm"))
            r.body = "[" + FakeGeocodingService::place(40.2, -75.3, "road", 26) + "]";
        else
            r.body = "[]";
        return r;
    });
    map::NominatimGeocoder geocoder(service.address() + "/", quickOptions());
    const map::AddressMatches found = geocoder.find(pine);
    EXPECT_EQ(found.quality(), map::MatchQuality::Exact);
    EXPECT_DOUBLE_EQ(found.first().latitude, 40.1);
    EXPECT_EQ(geocoder.lastFoundName(), "99 Pine Road");

    const map::AddressMatches street = geocoder.find({QStringLiteral("1 Elm St"), "Springfield", "PA", "19000", {}});
    EXPECT_EQ(street.quality(), map::MatchQuality::Approximate);
    EXPECT_EQ(geocoder.find({QStringLiteral("nowhere"), "", "", "", {}}).quality(), map::MatchQuality::NotFound);

    const auto requests = service.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_TRUE(requests[0].target.startsWith("/search?format=jsonv2&limit=5&street=")) << requests[0].target.toStdString();
    EXPECT_TRUE(requests[0].target.contains("&city=Springfield&state=PA&postalcode=19000&countrycodes=us"));
    EXPECT_TRUE(requests[0].userAgent.startsWith("Kettlebrook/"));
}

TEST(NominatimGeocoder, HostileAnswersFailWithAMessageAndNeverCrash)
{
    QByteArray deep(100000, '[');
    const QList<QByteArray> bodies = {
        "{not json",
        "{\"lat\":\"1\",\"lon\":\"2\"}",
        deep,
        QByteArray(2 << 20, ' ') + "[]",
    };
    int next = 0;
    FakeGeocodingService service([&](const QString&) {
        FakeGeocodingService::Reply r;
        r.body = bodies.value(next++);
        return r;
    });
    map::NominatimGeocoder geocoder(service.address(), quickOptions());
    for (int i = 0; i < bodies.size(); ++i)
        EXPECT_THROW(geocoder.find(pine), map::MapServerError) << "answer " << i;

    // Places without usable coordinates are passed over.
    EXPECT_EQ(map::NominatimGeocoder::parse(R"([{"lat":{"x":1},"lon":"2"}, 5, "x", {"lat":"999","lon":"1"},
                                              {"lat":"NaN","lon":"1"}, {"lat":40.5,"lon":-75.5}])")
                  .count(),
              1);
    EXPECT_EQ(map::NominatimGeocoder::parse("[]").quality(), map::MatchQuality::NotFound);
}

TEST(NominatimGeocoder, ErrorsTimeoutsAndThePaceOfRequests)
{
    bool silent = false;
    int status = 200;
    FakeGeocodingService service([&](const QString&) {
        FakeGeocodingService::Reply r;
        r.status = status;
        r.silent = silent;
        r.body = "[]";
        return r;
    });
    map::NominatimGeocoder::Options options = quickOptions();
    options.minimumInterval = 300ms;
    options.timeout = 500ms;
    map::NominatimGeocoder geocoder(service.address(), options);
    geocoder.find(pine);
    geocoder.find(pine);
    auto requests = service.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_GE(requests[1].at - requests[0].at, 250ms);

    status = 503;
    try {
        geocoder.find(pine);
        ADD_FAILURE() << "a refusal must fail";
    } catch (const map::MapServerError& e) {
        EXPECT_STREQ(e.what(), "The geocoding service answered with HTTP status 503.");
    }
    silent = true;
    EXPECT_THROW(geocoder.find(pine), map::MapServerError);

    EXPECT_THROW(map::NominatimGeocoder("file:///etc/passwd"), map::MapServerError);
    EXPECT_THROW(map::NominatimGeocoder("not an address"), map::MapServerError);
}

class ClientGeocodingTest : public OrderRoutesFixture
{
};

TEST_P(ClientGeocodingTest, KnownAddressesFirstThenTheWebAndNothingIsWrittenUntilAccepted)
{
    FakeGeocodingService service([](const QString& target) {
        FakeGeocodingService::Reply r;
        r.body = target.contains("Pine") ? "[" + FakeGeocodingService::place(40.5, -75.5, "house", 30) + "]"
                                         : QByteArray("[]");
        return r;
    });
    addClient(1, {{QStringLiteral("Address1"), QStringLiteral("10 Oak St")}});
    addClient(2, {{QStringLiteral("Address1"), QStringLiteral("10 oak st.")}, {QStringLiteral("Latitude"), QVariant()}});
    addClient(3, {{QStringLiteral("Address1"), QStringLiteral("99 Pine Rd")}, {QStringLiteral("Latitude"), QVariant()}});
    addClient(4, {{QStringLiteral("Address1"), QStringLiteral("5 Nowhere Ln")}, {QStringLiteral("City"), QStringLiteral("Elsewhere")},
                  {QStringLiteral("ZIP"), QStringLiteral("99999")}, {QStringLiteral("Longitude"), 0.0}});

    EXPECT_EQ(ClientGeocoding::clientsWithoutCoordinates(db(), true), (std::vector<qint64>{2, 3, 4}));
    EXPECT_TRUE(GeocoderSettings::webAddress(db()).isEmpty());
    GeocoderSettings::setWebAddress(db(), service.address());
    EXPECT_EQ(GeocoderSettings::webAddress(db()), service.address());

    ClientGeocoding geocoding(db(), ui, QStringLiteral("Pat Tester"));
    const std::vector<GeocodeMatch> matches = geocoding.lookUp({2, 3, 4});
    ASSERT_EQ(matches.size(), 3u);
    EXPECT_EQ(matches[0].quality, map::MatchQuality::Exact);
    EXPECT_EQ(matches[0].source, "K");
    EXPECT_DOUBLE_EQ(matches[0].latitude, 40.01);
    EXPECT_EQ(matches[1].quality, map::MatchQuality::Exact);
    EXPECT_EQ(matches[1].source, "W");
    EXPECT_EQ(matches[2].quality, map::MatchQuality::NotFound);
    EXPECT_EQ(matches[2].qualityText(), "Not found");
    // Only the address the agency does not know went to the web service.
    EXPECT_EQ(service.requests().size(), 2u);

    // Kept, with their quality; the clients are untouched.
    const ResultSet kept = db().execute(
        QStringLiteral("Select Person_ID, Quality, Source, Looked_Up_By from Geocoded_Addresses order by RecordID"));
    ASSERT_EQ(kept.rowCount(), 3);
    EXPECT_EQ(kept.value(1, 1).toInt(), 1);
    EXPECT_EQ(kept.value(2, 1).toInt(), 4);
    EXPECT_EQ(kept.value(0, 3).toString(), "Pat Tester");
    EXPECT_TRUE(clientValue(3, QStringLiteral("Latitude")).isNull());
    EXPECT_EQ(ClientGeocoding::latestMatches(db()).size(), 3u);

    EXPECT_EQ(geocoding.accept(matches), 2);
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
    EXPECT_DOUBLE_EQ(clientValue(3, QStringLiteral("Latitude")).toDouble(), 40.5);
    EXPECT_DOUBLE_EQ(clientValue(2, QStringLiteral("Longitude")).toDouble(), -75.0);
    EXPECT_EQ(ClientGeocoding::latestMatches(db()).size(), 1u);

    // Coordinates a client has are replaced only on the user's word.
    db().execute(QStringLiteral("Update Clients set Latitude = 41, Longitude = -76 where Person_ID = 3"));
    const std::vector<GeocodeMatch> again = geocoding.lookUp({3});
    ASSERT_EQ(again.size(), 1u);
    EXPECT_TRUE(again[0].hasCoordinates());
    EXPECT_EQ(geocoding.accept(again), 0);
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"1 of these clients already have coordinates.\r\nReplace them with "
                                                    "the ones found?"});
    EXPECT_DOUBLE_EQ(clientValue(3, QStringLiteral("Latitude")).toDouble(), 41.0);
    ui.answerNext(Answer::Yes);
    EXPECT_EQ(geocoding.accept(again), 1);
    EXPECT_DOUBLE_EQ(clientValue(3, QStringLiteral("Latitude")).toDouble(), 40.5);
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientGeocodingTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
