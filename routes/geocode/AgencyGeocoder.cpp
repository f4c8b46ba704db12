#include "AgencyGeocoder.h"

#include "GeocoderSettings.h"

#include "map/Country.h"
#include "map/NominatimGeocoder.h"
#include "store/Database.h"

#include <cmath>

namespace kb {

std::shared_ptr<map::KnownAddressGeocoder> agencyKnownAddresses(Database& db)
{
    const ResultSet config = db.execute(QStringLiteral("Select Postal_Format from Config"));
    const map::Country country =
        map::countryForPostalFormat(config.isEmpty() ? QString() : config.value(0, 0).toString());
    auto known = std::make_shared<map::KnownAddressGeocoder>();
    const ResultSet rows = db.execute(QStringLiteral(
        "Select Address1, City, State, Zip, Latitude, Longitude from Clients where Latitude is not Null and Longitude "
        "is not Null and Latitude <> 0 and Longitude <> 0"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const double latitude = rows.value(r, 4).toDouble();
        const double longitude = rows.value(r, 5).toDouble();
        // A place off the earth is bad data of one client, not a reason to lose the rest.
        if (std::abs(latitude) > 90.0 || std::abs(longitude) > 180.0)
            continue;
        known->add({rows.value(r, 0).toString(), rows.value(r, 1).toString(), rows.value(r, 2).toString(),
                    rows.value(r, 3).toString(), country},
                   {latitude, longitude});
    }
    return known;
}

std::shared_ptr<map::GeocoderChain> agencyGeocoder(Database& db)
{
    std::vector<std::shared_ptr<const map::Geocoder>> sources{agencyKnownAddresses(db)};
    const QString web = GeocoderSettings::webAddress(db);
    if (!web.isEmpty())
        sources.push_back(std::make_shared<map::NominatimGeocoder>(web));
    return std::make_shared<map::GeocoderChain>(std::move(sources));
}

} // namespace kb
