#pragma once

#include <QString>

namespace kb {

class Database;

// The address of the agency's web geocoding service (one that answers as
// Nominatim does), kept in Config.GEOCODER_URL; empty when the agency uses
// none, and then address lookups stay with its own known addresses. One
// place reads and writes it, so the settings screens can take it over.
class GeocoderSettings
{
public:
    static QString webAddress(Database& db);
    static void setWebAddress(Database& db, const QString& address);
};

} // namespace kb
