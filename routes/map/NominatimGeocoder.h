#pragma once

#include "Geocoder.h"

#include <QString>

#include <chrono>

namespace kb::map {

// Address lookup by a web geocoding service that answers as Nominatim does:
// GET {base}/search with a structured query, a JSON array of places with
// "lat", "lon" and their level ("place_rank", "addresstype"). A place at the
// level of a house or building is the address itself (Exact); a street, a
// postal code or a town is only its area (Approximate); no place is NotFound.
//
// A good citizen of a public service: it names itself in the User-Agent,
// asks at most once a second, gives up after a timeout, and reads at most a
// bounded answer. Whatever the service sends back is checked before use;
// an answer that is not such JSON is a failure, not a crash.
class NominatimGeocoder : public Geocoder
{
public:
    struct Options
    {
        QString userAgent = QStringLiteral("Kettlebrook/0.1 (home-delivered meals routing)");
        std::chrono::milliseconds timeout{10000};
        std::chrono::milliseconds minimumInterval{1000};
        qint64 maxResponseBytes = 1 << 20;
        int maxResults = 5;
    };

    // baseUrl: http:// or https://, with or without the trailing /search.
    explicit NominatimGeocoder(QString baseUrl);
    NominatimGeocoder(QString baseUrl, Options options);

    AddressMatches find(const AddressQuery& query) const override;

    // The request for a query, as sent.
    QString requestUrl(const AddressQuery& query) const;
    // The answer to a request, read as described above. Throws MapServerError.
    static AddressMatches parse(const QByteArray& body, QString* firstName = nullptr);
    // The display name of the first place of the last answer.
    const QString& lastFoundName() const { return m_lastFoundName; }

private:
    QByteArray fetch(const QString& url) const;

    QString m_searchUrl;
    Options m_options;
    mutable std::chrono::steady_clock::time_point m_lastRequest{};
    mutable QString m_lastFoundName;
};

} // namespace kb::map
