#pragma once

#include <QString>

#include <array>

namespace kb {

class Database;

// The agency settings that the client rules and the client fields read,
// taken from the one Config row in one place.
struct ClientConfig
{
    int recertWeeks = 0;                // RECERT_WKS
    std::array<bool, 7> deliveryDays{}; // DMON ... DSUN, Monday first
    int maxDietModifications = 0;       // MAXDIETMOD
    bool allowBypassingContractDates = false;
    QString postalFormat; // "USA", "CAN", "UK", "OTH"

    // The settings as they stand now; the defaults when Config has no row.
    static ClientConfig read(Database& db);
};

} // namespace kb
