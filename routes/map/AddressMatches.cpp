#include "AddressMatches.h"

#include "MapServerError.h"

namespace kb::map {

AddressMatches::AddressMatches(MatchQuality quality, std::vector<Location> results)
    : m_quality(quality), m_results(std::move(results))
{
}

const Location& AddressMatches::first() const
{
    if (m_results.empty())
        throw MapServerError(QStringLiteral("The address could not be placed on the map."));
    return m_results.front();
}

} // namespace kb::map
