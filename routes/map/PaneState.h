#pragma once

namespace kb::map {

// What the map window shows beside the map: the route planner while a route
// is being worked on, nothing for a plain map of clients.
enum class PaneState { None, RoutePlanner };

} // namespace kb::map
