#pragma once

#include "map/GeocoderChain.h"
#include "map/KnownAddressGeocoder.h"

#include <memory>

namespace kb {

class Database;

// The agency's own known addresses: every client address that has
// coordinates, in the country of Config.POSTAL_FORMAT.
std::shared_ptr<map::KnownAddressGeocoder> agencyKnownAddresses(Database& db);

// The address lookup the agency uses: its own known addresses first, then
// the web geocoding service of the settings when one is set.
std::shared_ptr<map::GeocoderChain> agencyGeocoder(Database& db);

} // namespace kb
