#pragma once

#include "delivery/ReportChoices.h"

namespace kb {
class Database;
}

namespace kb::reports {

// The delivery services as the service limit lists them: "Service_Desc
// [Service_ID]", by number.
QStringList serviceEntries(Database& db);
// The route limit's list: every route's Route_ID in the table's order, or
// the codes of the distribution centers.
QStringList routeEntries(Database& db, RouteListKind kind);

} // namespace kb::reports
