#pragma once

namespace kb::routes {

// Whether the driver comes back to the first stop (a round trip) or the route
// ends at its last stop.
enum class RouteShape { ClosedTour, OpenPath };

} // namespace kb::routes
