#include "GeocoderSettings.h"

#include "store/Database.h"

namespace kb {

QString GeocoderSettings::webAddress(Database& db)
{
    const ResultSet r = db.execute(QStringLiteral("Select Geocoder_URL from Config"));
    return r.isEmpty() ? QString() : r.value(0, 0).toString().trimmed();
}

void GeocoderSettings::setWebAddress(Database& db, const QString& address)
{
    db.execute(QStringLiteral("Update Config set Geocoder_URL = :Address"),
               {{QStringLiteral("Address"), address.trimmed().isEmpty() ? QVariant() : QVariant(address.trimmed())}});
}

} // namespace kb
