#include "RouteListPrint.h"

#include "MessageError.h"

namespace kb {

void printRouteList(Database&, const std::vector<OrderRoutesRow>&)
{
    // The report engine takes the rows and the template here once this
    // build has one; until then the user is told rather than left waiting.
    throw MessageError(QStringLiteral("Printing the route listing needs the report engine, which this installation "
                                      "does not have yet."));
}

} // namespace kb
