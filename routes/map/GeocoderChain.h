#pragma once

#include "Geocoder.h"

#include <memory>
#include <vector>

namespace kb::map {

// Several address lookups asked in turn, the cheapest first: the first one
// that finds the address itself answers; otherwise the best of the answers
// (by quality, the earlier on a tie). A lookup that fails to reach its
// service fails the whole lookup, so the user hears of it.
class GeocoderChain : public Geocoder
{
public:
    explicit GeocoderChain(std::vector<std::shared_ptr<const Geocoder>> geocoders);

    AddressMatches find(const AddressQuery& query) const override;
    // Which of the geocoders gave the last answer (its index), -1 for none.
    int lastSource() const { return m_lastSource; }
    const Geocoder& source(int index) const { return *m_geocoders[size_t(index)]; }
    int sourceCount() const { return int(m_geocoders.size()); }

private:
    std::vector<std::shared_ptr<const Geocoder>> m_geocoders;
    mutable int m_lastSource = -1;
};

} // namespace kb::map
