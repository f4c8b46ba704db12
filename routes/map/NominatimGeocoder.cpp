#include "NominatimGeocoder.h"

#include "MapServerError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <curl/curl.h>

#include <cmath>
#include <mutex>
#include <thread>

namespace kb::map {

namespace {

struct Body
{
    QByteArray data;
    qint64 limit = 0;
    bool tooLarge = false;
};

size_t collect(char* ptr, size_t size, size_t count, void* user)
{
    auto* body = static_cast<Body*>(user);
    const size_t bytes = size * count;
    if (body->data.size() + qint64(bytes) > body->limit) {
        body->tooLarge = true;
        return 0; // ends the transfer
    }
    body->data.append(ptr, qsizetype(bytes));
    return bytes;
}

void initialiseCurl()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

struct CurlHandle
{
    CURL* handle = curl_easy_init();
    ~CurlHandle()
    {
        if (handle)
            curl_easy_cleanup(handle);
    }
};

QString countryCode(Country c)
{
    switch (c) {
    case Country::UnitedStates: return QStringLiteral("us");
    case Country::Canada: return QStringLiteral("ca");
    case Country::UnitedKingdom: return QStringLiteral("gb");
    case Country::Unspecified: break;
    }
    return {};
}

// A coordinate as the service writes it: a string or a number.
std::optional<double> coordinate(const QJsonValue& v, double limit)
{
    bool ok = false;
    double d = 0;
    if (v.isString())
        d = v.toString().toDouble(&ok);
    else if (v.isDouble()) {
        d = v.toDouble();
        ok = true;
    }
    if (!ok || !std::isfinite(d) || std::abs(d) > limit)
        return std::nullopt;
    return d;
}

bool houseLevel(const QJsonObject& place)
{
    const QString type = place.value(QStringLiteral("addresstype")).toString(place.value(QStringLiteral("type")).toString());
    if (type == QLatin1String("house") || type == QLatin1String("building") || type == QLatin1String("residential_building"))
        return true;
    const QJsonValue rank = place.value(QStringLiteral("place_rank"));
    return rank.isDouble() && rank.toDouble() >= 30;
}

} // namespace

NominatimGeocoder::NominatimGeocoder(QString baseUrl) : NominatimGeocoder(std::move(baseUrl), Options{}) {}

NominatimGeocoder::NominatimGeocoder(QString baseUrl, Options options) : m_options(std::move(options))
{
    const QUrl url(baseUrl.trimmed(), QUrl::StrictMode);
    if (!url.isValid() || (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https")) ||
        url.host().isEmpty())
        throw MapServerError(QStringLiteral("The geocoding service address \"%1\" is not an http or https address.")
                                 .arg(baseUrl));
    QString text = url.toString(QUrl::RemoveQuery | QUrl::RemoveFragment);
    while (text.endsWith(QLatin1Char('/')))
        text.chop(1);
    if (!text.endsWith(QLatin1String("/search")))
        text += QStringLiteral("/search");
    m_searchUrl = text;
    initialiseCurl();
}

QString NominatimGeocoder::requestUrl(const AddressQuery& query) const
{
    // Every value fully percent-encoded, "&", "=" and "+" too.
    QStringList items = {QStringLiteral("format=jsonv2"), QStringLiteral("limit=%1").arg(m_options.maxResults)};
    const auto add = [&](const char* key, const QString& value) {
        if (!value.trimmed().isEmpty())
            items << QString::fromLatin1(key) + QLatin1Char('=') +
                         QString::fromLatin1(QUrl::toPercentEncoding(value.trimmed()));
    };
    add("street", query.street);
    add("city", query.city);
    add("state", query.state);
    add("postalcode", query.postalCode);
    add("countrycodes", countryCode(query.country));
    return m_searchUrl + QLatin1Char('?') + items.join(QLatin1Char('&'));
}

QByteArray NominatimGeocoder::fetch(const QString& url) const
{
    // At most one request a second, as a public service asks.
    if (m_lastRequest != std::chrono::steady_clock::time_point{}) {
        const auto next = m_lastRequest + m_options.minimumInterval;
        const auto now = std::chrono::steady_clock::now();
        if (next > now)
            std::this_thread::sleep_for(next - now);
    }
    m_lastRequest = std::chrono::steady_clock::now();

    CurlHandle curl;
    if (!curl.handle)
        throw MapServerError(QStringLiteral("The geocoding service could not be reached: no connection could be made."));
    Body body;
    body.limit = m_options.maxResponseBytes;
    char error[CURL_ERROR_SIZE] = {};
    const QByteArray urlBytes = url.toUtf8();
    const QByteArray agent = m_options.userAgent.toUtf8();
    curl_easy_setopt(curl.handle, CURLOPT_URL, urlBytes.constData());
    curl_easy_setopt(curl.handle, CURLOPT_USERAGENT, agent.constData());
    curl_easy_setopt(curl.handle, CURLOPT_TIMEOUT_MS, long(m_options.timeout.count()));
    curl_easy_setopt(curl.handle, CURLOPT_CONNECTTIMEOUT_MS, long(m_options.timeout.count()));
    curl_easy_setopt(curl.handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl.handle, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl.handle, CURLOPT_MAXREDIRS, 3L);
#if LIBCURL_VERSION_NUM >= 0x075500
    curl_easy_setopt(curl.handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl.handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
#else
    curl_easy_setopt(curl.handle, CURLOPT_PROTOCOLS, long(CURLPROTO_HTTP | CURLPROTO_HTTPS));
    curl_easy_setopt(curl.handle, CURLOPT_REDIR_PROTOCOLS, long(CURLPROTO_HTTP | CURLPROTO_HTTPS));
#endif
    curl_easy_setopt(curl.handle, CURLOPT_WRITEFUNCTION, collect);
    curl_easy_setopt(curl.handle, CURLOPT_WRITEDATA, &body);
    curl_easy_setopt(curl.handle, CURLOPT_ERRORBUFFER, error);
    const CURLcode code = curl_easy_perform(curl.handle);
    if (body.tooLarge)
        throw MapServerError(QStringLiteral("The geocoding service sent a larger answer than an address lookup needs."));
    if (code != CURLE_OK)
        throw MapServerError(QStringLiteral("The geocoding service could not be reached: %1")
                                 .arg(QString::fromUtf8(error[0] ? error : curl_easy_strerror(code))));
    long status = 0;
    curl_easy_getinfo(curl.handle, CURLINFO_RESPONSE_CODE, &status);
    if (status != 200)
        throw MapServerError(QStringLiteral("The geocoding service answered with HTTP status %1.").arg(status));
    return body.data;
}

AddressMatches NominatimGeocoder::parse(const QByteArray& body, QString* firstName)
{
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(body, &error);
    if (error.error != QJsonParseError::NoError || !doc.isArray())
        throw MapServerError(QStringLiteral("The geocoding service sent an answer that is not a list of places."));
    std::vector<Location> results;
    bool exact = false;
    for (const QJsonValue& v : doc.array()) {
        if (!v.isObject())
            continue;
        const QJsonObject place = v.toObject();
        const std::optional<double> lat = coordinate(place.value(QStringLiteral("lat")), 90.0);
        const std::optional<double> lon = coordinate(place.value(QStringLiteral("lon")), 180.0);
        if (!lat || !lon)
            continue;
        if (results.empty()) {
            exact = houseLevel(place);
            if (firstName)
                *firstName = place.value(QStringLiteral("display_name")).toString().left(250);
        }
        results.push_back({*lat, *lon});
    }
    if (results.empty())
        return AddressMatches(MatchQuality::NotFound, {});
    return AddressMatches(exact ? MatchQuality::Exact : MatchQuality::Approximate, std::move(results));
}

AddressMatches NominatimGeocoder::find(const AddressQuery& query) const
{
    m_lastFoundName.clear();
    if (query.street.trimmed().isEmpty() && query.city.trimmed().isEmpty() && query.postalCode.trimmed().isEmpty())
        return AddressMatches(MatchQuality::NotFound, {});
    return parse(fetch(requestUrl(query)), &m_lastFoundName);
}

} // namespace kb::map
