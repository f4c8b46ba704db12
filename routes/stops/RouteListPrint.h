#pragma once

#include "OrderRoutesRow.h"

#include <vector>

namespace kb {

class Database;

// "Print Listing": the working set, in the grid's order, printed with the
// report template RouteList.rtm under the heading "Client Listing for
// Route". The one place the listing meets the report engine.
void printRouteList(Database& db, const std::vector<OrderRoutesRow>& rows);

} // namespace kb
