#pragma once

#include <chrono>

namespace kb::map {

// A calculated route from its first waypoint to its last.
struct RouteSummary
{
    // Sum of the straight (great-circle) legs between waypoints.
    double straightLineMetres = 0.0;
    // The straight length times the usual detour of roads.
    double estimatedRoadMetres = 0.0;
    std::chrono::seconds estimatedDrivingTime{0};
};

} // namespace kb::map
