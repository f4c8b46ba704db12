#pragma once

#include "GeocodeMatch.h"

#include "map/GeocoderChain.h"

#include <memory>
#include <vector>

namespace kb {

class Database;
class UserInterface;

// Finding coordinates for clients' addresses. A lookup asks the agency's
// address lookup (its own known addresses, then the web service when one is
// set) and keeps each answer, with its quality and source, in
// Geocoded_Addresses; the clients' own coordinates do not change. Accepting
// answers writes them into the clients' rows in one transaction, and asks
// first before it replaces coordinates a client already has.
class ClientGeocoding
{
public:
    // With no geocoder given, the agency's own (agencyGeocoder).
    ClientGeocoding(Database& db, UserInterface& ui, QString userName,
                    std::shared_ptr<map::GeocoderChain> geocoder = nullptr);

    // Clients with an address and no coordinates, by Client_ID; active ones only when asked.
    static std::vector<qint64> clientsWithoutCoordinates(Database& db, bool activeOnly);
    // The client of a Client_ID; 0 when there is none.
    static qint64 personOfClient(Database& db, const QString& clientId);

    // Looks the clients' addresses up, one by one with progress, and keeps
    // every answer. A service that cannot be reached ends the lookup with
    // its message (MapServerError); the answers kept so far stay.
    std::vector<GeocodeMatch> lookUp(const std::vector<qint64>& persons);

    // The latest answer kept for each client, newest first.
    static std::vector<GeocodeMatch> latestMatches(Database& db);

    // Makes the found places the clients' coordinates. Matches that found
    // nothing are passed over; replacing coordinates a client already has
    // needs a Yes. Returns how many clients were written.
    int accept(const std::vector<GeocodeMatch>& matches);

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_userName;
    std::shared_ptr<map::GeocoderChain> m_geocoder;
};

} // namespace kb
