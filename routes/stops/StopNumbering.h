#pragma once

#include <QString>

namespace kb {

// How stops are renumbered when a route gets a new order. The whole number
// is the place in the route; the decimals of the old stop are kept, so the
// clients who shared a whole number (a household at one address: 12.1 and
// 12.2) share the new one too (7.1 and 7.2). The decimals are read from the
// stop as text, from the point on, four characters at most: a point and
// three digits.
class StopNumbering
{
public:
    static double atPosition(int position, double oldStop);
    // The whole number the stop shares with others (the part before the point).
    static qint64 wholePart(double stop);
};

} // namespace kb
