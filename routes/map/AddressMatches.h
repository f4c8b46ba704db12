#pragma once

#include "Location.h"
#include "MatchQuality.h"

#include <vector>

namespace kb::map {

// The answer to an address lookup: its quality and the results, best first.
class AddressMatches
{
public:
    AddressMatches(MatchQuality quality, std::vector<Location> results);

    MatchQuality quality() const { return m_quality; }
    bool isGood() const { return m_quality == MatchQuality::Exact; }
    int count() const { return int(m_results.size()); }
    // Throws MapServerError when there is no result.
    const Location& first() const;

private:
    MatchQuality m_quality;
    std::vector<Location> m_results;
};

} // namespace kb::map
