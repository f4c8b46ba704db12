#include "KnownAddressGeocoder.h"

#include "MapServerError.h"

#include <cmath>

namespace kb::map {

QString KnownAddressGeocoder::normalised(const QString& text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (c.isLetterOrNumber())
            result.append(c.toUpper());
        else if (c.isSpace() || c == QLatin1Char(',') || c == QLatin1Char('.') || c == QLatin1Char('-'))
            result.append(QLatin1Char(' '));
        else
            result.append(c);
    }
    return result.simplified();
}

QString KnownAddressGeocoder::postalKey(const AddressQuery& address)
{
    const QString code = normalised(address.postalCode).remove(QLatin1Char(' '));
    return code.isEmpty() ? QString() : QString::number(int(address.country)) + QLatin1Char('|') + code;
}

QString KnownAddressGeocoder::townKey(const AddressQuery& address)
{
    const QString city = normalised(address.city);
    return city.isEmpty() ? QString()
                          : QString::number(int(address.country)) + QLatin1Char('|') + city +
                                QLatin1Char('|') + normalised(address.state);
}

QString KnownAddressGeocoder::streetKey(const QString& street, const QString& area)
{
    const QString s = normalised(street);
    if (s.isEmpty() || area.isEmpty()) return {};
    return s + QLatin1String("||") + area;
}

void KnownAddressGeocoder::add(const AddressQuery& address, const Location& location)
{
    if (!std::isfinite(location.latitude) || !std::isfinite(location.longitude) ||
        std::abs(location.latitude) > 90.0 || std::abs(location.longitude) > 180.0)
        throw MapServerError(
            QStringLiteral("The location %1, %2 of \"%3\" is not a valid latitude and longitude.")
                .arg(location.latitude)
                .arg(location.longitude)
                .arg(address.street));
    // A street is known within its postal code and within its town, so a
    // lookup finds it with either.
    for (const QString& area : {postalKey(address), townKey(address)}) {
        const QString key = streetKey(address.street, area);
        if (!key.isEmpty()) m_exact[key].push_back(location);
    }
    auto addTo = [&](std::map<QString, Area>& areas, const QString& areaKey) {
        if (areaKey.isEmpty()) return;
        Area& area = areas[areaKey];
        area.latitudeSum += location.latitude;
        area.longitudeSum += location.longitude;
        ++area.count;
    };
    addTo(m_postalAreas, postalKey(address));
    addTo(m_towns, townKey(address));
}

AddressMatches KnownAddressGeocoder::find(const AddressQuery& query) const
{
    for (const QString& area : {postalKey(query), townKey(query)}) {
        const QString key = streetKey(query.street, area);
        if (key.isEmpty()) continue;
        const auto it = m_exact.find(key);
        if (it != m_exact.end()) return AddressMatches(MatchQuality::Exact, it->second);
    }
    const auto postal = m_postalAreas.find(postalKey(query));
    if (postal != m_postalAreas.end())
        return AddressMatches(MatchQuality::Approximate, {postal->second.centre()});
    const auto town = m_towns.find(townKey(query));
    if (town != m_towns.end()) return AddressMatches(MatchQuality::Approximate, {town->second.centre()});
    return AddressMatches(MatchQuality::NotFound, {});
}

} // namespace kb::map
