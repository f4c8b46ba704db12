#pragma once

#include "DrivingEstimate.h"
#include "Geocoder.h"
#include "MapServer.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace kb::map {

// Our own map server: no outside program, no network. Places come from
// coordinates or from the geocoder it is given; routes are ordered by the
// stop-ordering optimiser on great-circle distances; a route's length is the
// sum of its straight legs, with road length and driving time estimated
// from it. It draws nothing: showing the map is left to whoever shows it,
// so the display calls only record what was asked.
class LocalMapServer : public MapServer
{
public:
    explicit LocalMapServer(std::shared_ptr<const Geocoder> geocoder, DrivingEstimate estimate = {},
                            std::chrono::milliseconds optimiseTimeLimit = std::chrono::milliseconds(2000));

    void connect(MapRegion region) override;
    void setVisible(bool visible) override;
    void setUserControl(bool userControl) override;
    QString version() const override;
    void setPaneState(PaneState state) override;
    void clearRoute() override;
    void deletePushpins() override;
    Location locationFromCoordinates(double latitude, double longitude) override;
    AddressMatches findAddress(const AddressQuery& query) override;
    std::shared_ptr<Pushpin> addPushpin(const Location& location, const QString& name) override;
    void addWaypoint(const Pushpin& pin) override;
    int waypointCount() const override;
    void optimizeWaypoints(FixedEnds fixed) override;
    QString waypointName(int position) const override;
    RouteSummary calculateRoute() override;
    void goToRoute() override;
    void setSaved(bool saved) override;

    // What the display calls asked for, for whoever draws the map.
    bool isConnected() const { return m_connected; }
    MapRegion region() const { return m_region; }
    bool isVisible() const { return m_visible; }
    bool isUnderUserControl() const { return m_userControl; }
    PaneState paneState() const { return m_paneState; }
    bool isSaved() const { return m_saved; }
    bool isShowingRoute() const { return m_showingRoute; }
    const std::vector<std::shared_ptr<Pushpin>>& pushpins() const { return m_pushpins; }
    Location waypointLocation(int position) const;
    // The route as last calculated; none while the waypoints changed since.
    std::optional<RouteSummary> routeSummary() const;

    // The user's own order: the waypoint at `from` goes to `to` (both from 1)
    // and the others close up. The ends the last optimisation kept in place
    // stay there, so a start or end location is never moved nor passed; a
    // route that was calculated is calculated again, so its line and length
    // follow the new order. Throws MapServerError for a move that is refused.
    void moveWaypoint(int from, int to);
    bool canMoveWaypoint(int from, int to) const;
    // Whether the waypoint at `position` is a fixed start or end.
    bool isFixedWaypoint(int position) const;

    // Called after every change of what a display of the map shows.
    void setOnChanged(std::function<void()> onChanged) { m_onChanged = std::move(onChanged); }

private:
    struct Waypoint
    {
        QString name;
        Location location;
    };

    void requireConnected() const;
    void changed() const;
    const Waypoint& waypoint(int position) const;

    std::shared_ptr<const Geocoder> m_geocoder;
    DrivingEstimate m_estimate;
    std::chrono::milliseconds m_optimiseTimeLimit;
    bool m_connected = false;
    MapRegion m_region = MapRegion::NorthAmerica;
    bool m_visible = false;
    bool m_userControl = false;
    PaneState m_paneState = PaneState::None;
    bool m_saved = false;
    bool m_calculated = false;
    bool m_showingRoute = false;
    FixedEnds m_fixed;
    std::vector<std::shared_ptr<Pushpin>> m_pushpins;
    std::vector<Waypoint> m_waypoints;
    RouteSummary m_summary;
    std::function<void()> m_onChanged;
};

} // namespace kb::map
