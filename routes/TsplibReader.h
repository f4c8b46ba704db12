#pragma once

#include "TsplibInstance.h"

#include <QString>

namespace kb::routes {

// Reads TSPLIB files of type TSP with EDGE_WEIGHT_TYPE EUC_2D: the header
// lines, NODE_COORD_SECTION and an optional FIXED_EDGES_SECTION. Anything
// else, or a file that does not add up, raises a RoutingError naming the file
// and line.
class TsplibReader
{
public:
    static TsplibInstance readFile(const QString& path);
    static TsplibInstance parse(const QString& text, const QString& sourceName);
};

} // namespace kb::routes
