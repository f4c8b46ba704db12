#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <utility>
#include <vector>

namespace kb {

class OrderRoutesWorkingSet;

// A proposed order for the clients of one route, before anything is written:
// the new stop of every client whose stop changes, the route's length before
// and after, and how far the new length can at most be from the best order.
struct RouteOptimisation
{
    QString route;
    // Keys of the working set and their new stops, in the new visiting order.
    std::vector<std::pair<int, double>> newStops;
    // Keys of the clients without coordinates: they were not moved, and keep
    // their place among the others.
    std::vector<int> withoutCoordinates;
    int placed = 0; // clients with coordinates that took part
    std::int64_t previousLength = 0; // metres, the order as it stood
    std::int64_t length = 0;         // metres, the new order
    std::int64_t lowerBound = 0;     // metres: no order of these places is shorter
    bool provenOptimal = false;
    // False when the optimiser found nothing shorter than the order as it
    // stood; the order is then kept as it is.
    bool improved = false;
    double elapsedMs = 0;

    // (length - lowerBound) / lowerBound, in percent; 0 without a bound.
    double gapPercent() const;
    // What the user is shown before deciding.
    QString summary(const OrderRoutesWorkingSet& rows) const;
};

struct RouteOptimiserOptions
{
    bool fixFirst = false; // the first client with coordinates stays first
    bool fixLast = false;  // the last stays last
    std::chrono::milliseconds timeLimit{2000};
};

// Orders the clients of one route of the working set by the drive between
// their coordinates, from the first stop to the last. Clients who share a
// whole stop number are one stop of the drive and stay together. Clients
// without coordinates do not move: the others are put in new order around
// them. Unplaced clients (stop 0) with coordinates get a place; those
// without keep stop 0. The new order is never longer than the old one.
class RouteOptimiser
{
public:
    static RouteOptimisation optimise(const OrderRoutesWorkingSet& rows, const QString& route,
                                      const RouteOptimiserOptions& options = {});
};

} // namespace kb
