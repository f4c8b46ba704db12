#pragma once

#include "DistanceMatrix.h"
#include "TsplibInstance.h"

#include <QString>

namespace kb::routes {

// Reads TSPLIB files of type TSP with EDGE_WEIGHT_TYPE EUC_2D: the header
// lines, NODE_COORD_SECTION and an optional FIXED_EDGES_SECTION. Anything
// else, or a file that does not add up, raises a RoutingError naming the file
// and line. What a file can make it hold is bounded: at most MaxNodes nodes,
// each header key once, and room for the nodes made only when their section
// begins.
class TsplibReader
{
public:
    // The most nodes a file may declare: as many stops as can be ordered.
    static constexpr int MaxNodes = DistanceMatrix::kMaxStops;
    // The largest file read: ample for MaxNodes lines with long numbers.
    static constexpr qsizetype MaxFileBytes = 16 * 1024 * 1024;

    static TsplibInstance readFile(const QString& path);
    static TsplibInstance parse(const QString& text, const QString& sourceName);
};

} // namespace kb::routes
