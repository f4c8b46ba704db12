#pragma once

namespace kb::routes {

// A point on a flat test map, as the benchmark instances give them.
struct PlanePoint
{
    double x = 0.0;
    double y = 0.0;
};

} // namespace kb::routes
