// The tables of routing that the agency keeps beside its clients.

#include "catalogue/Catalogue.h"

namespace kb {

namespace {

// The places an address lookup found for a client's address, with how sure
// it was, kept until the user accepts one as the client's coordinates.
TableDef geocodedAddressesTable()
{
    TableDef t(QStringLiteral("Geocoded_Addresses"));
    t.autoinc("RecordID")
        .integer("Person_ID")
        .str("Address1", 35)
        .str("City", 18)
        .str("State", 2)
        .str("ZIP", 10)
        .flt("Latitude")
        .flt("Longitude")
        // 1 the address itself, 2 a close spelling, 3 only its area, 4 not found.
        .smallint("Quality")
        // "K" the agency's own known addresses, "W" the web geocoding service.
        .str("Source", 1)
        .str("Found_Name", 250)
        .datetime("Looked_Up")
        .str("Looked_Up_By", 25)
        // When the user made it the client's coordinates; empty while only proposed.
        .datetime("Accepted")
        .primary("RecordID")
        .index("PERSON_ID", "Person_ID");
    return t;
}

} // namespace

void declareRoutingTables(Catalogue& catalogue)
{
    catalogue.add(geocodedAddressesTable());
}

} // namespace kb
