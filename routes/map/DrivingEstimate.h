#pragma once

namespace kb::map {

// How straight-line distance becomes an estimate of driving: roads are
// longer than the straight line by roadFactor, driven at an average speed
// that includes junctions and parking.
struct DrivingEstimate
{
    double roadFactor = 1.3;
    double kilometresPerHour = 35.0;
};

} // namespace kb::map
