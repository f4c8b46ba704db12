#pragma once

#include "AddressMatches.h"
#include "AddressQuery.h"
#include "FixedEnds.h"
#include "Location.h"
#include "MapRegion.h"
#include "PaneState.h"
#include "Pushpin.h"
#include "RouteSummary.h"

#include <QString>

#include <memory>

namespace kb::map {

// What stop ordering and run mapping need of a map: places, pins, one route
// of waypoints that can be put in the best order, and its length. The
// operations are listed in the order callers use them. Every failure is
// thrown as MapServerError with a message for the user; nothing is retried.
// Every operation but connect() fails until connect() has succeeded.
class MapServer
{
public:
    virtual ~MapServer() = default;

    // 1. Attach to the map for the region's data (see regionForPostalFormat).
    virtual void connect(MapRegion region) = 0;

    // 2. The application: shown, and left to the user once the caller is done.
    virtual void setVisible(bool visible) = 0;
    virtual void setUserControl(bool userControl) = 0;
    // "major.minor"; callers choose pushpin symbol numbers by the major number.
    virtual QString version() const = 0;

    // 3. The active map's side pane.
    virtual void setPaneState(PaneState state) = 0;

    // 4. Empty the route, and remove the pushpins of an earlier run.
    virtual void clearRoute() = 0;
    virtual void deletePushpins() = 0;

    // 5. A location from latitude and longitude.
    virtual Location locationFromCoordinates(double latitude, double longitude) = 0;

    // 6. Look an address up. Quality Exact means good; anything else should be
    // reported to the user. The first result may be pinned anyway.
    virtual AddressMatches findAddress(const AddressQuery& query) = 0;

    // 7. A pushpin named as given at a location; its symbol may be set afterwards.
    virtual std::shared_ptr<Pushpin> addPushpin(const Location& location, const QString& name) = 0;

    // 8. The route's waypoints, numbered from 1 in route order. A waypoint
    // keeps the name of its pushpin unchanged.
    virtual void addWaypoint(const Pushpin& pin) = 0;
    virtual int waypointCount() const = 0;
    // Puts the waypoints in the order of the shortest drive from the first to
    // the last. The ends named in `fixed` keep their places.
    virtual void optimizeWaypoints(FixedEnds fixed) = 0;
    virtual QString waypointName(int position) const = 0;

    // 9. Calculate the route (at least two waypoints), then show all of it.
    virtual RouteSummary calculateRoute() = 0;
    virtual void goToRoute() = 0;

    // 10. Mark the map saved so that closing it asks nothing.
    virtual void setSaved(bool saved) = 0;
};

} // namespace kb::map
