#pragma once

#include <QString>

namespace kb {

// The parts of a waypoint's name: the label, " / ", then "Rte: ", the route,
// " Stop: " and the stop.
struct WaypointName
{
    QString label;
    QString route;
    double stop = 0;

    // The route is the five characters after "/ Rte: ", trimmed and cut at a
    // blank; the stop the five characters after " Stop: ", trimmed.
    static WaypointName parse(const QString& name);
};

} // namespace kb
