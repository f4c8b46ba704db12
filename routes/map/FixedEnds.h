#pragma once

namespace kb::map {

// Which waypoints keep their place when the route is optimised: the first
// when the caller added a start location, the last when it added an end
// location. The caller says so; nothing is guessed from waypoint names.
struct FixedEnds
{
    bool start = false;
    bool end = false;
};

} // namespace kb::map
