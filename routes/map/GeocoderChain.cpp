#include "GeocoderChain.h"

#include "MapServerError.h"

#include <optional>

namespace kb::map {

GeocoderChain::GeocoderChain(std::vector<std::shared_ptr<const Geocoder>> geocoders)
    : m_geocoders(std::move(geocoders))
{
    if (m_geocoders.empty())
        throw MapServerError(QStringLiteral("The address lookup has no source of addresses."));
}

AddressMatches GeocoderChain::find(const AddressQuery& query) const
{
    std::optional<AddressMatches> best;
    m_lastSource = -1;
    for (size_t i = 0; i < m_geocoders.size(); ++i) {
        AddressMatches found = m_geocoders[i]->find(query);
        if (found.isGood()) {
            m_lastSource = int(i);
            return found;
        }
        if (!best || int(found.quality()) < int(best->quality())) {
            best = std::move(found);
            m_lastSource = int(i);
        }
    }
    return *best;
}

} // namespace kb::map
