#pragma once

#include "PlanePoint.h"

#include <QString>

#include <utility>
#include <vector>

namespace kb::routes {

// A test map in the TSPLIB format with plane coordinates (EUC_2D): nodes are
// numbered from 1 in the file and from 0 here.
struct TsplibInstance
{
    QString name;
    std::vector<PlanePoint> points;
    // Pairs of nodes the file requires next to each other (FIXED_EDGES_SECTION).
    std::vector<std::pair<int, int>> fixedEdges;
};

} // namespace kb::routes
