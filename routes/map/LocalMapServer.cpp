#include "LocalMapServer.h"

#include "MapServerError.h"

#include "DistanceMatrix.h"
#include "GreatCircle.h"
#include "RoutingError.h"
#include "StopOrderer.h"

#include <algorithm>
#include <cmath>

namespace kb::map {

namespace {

routes::GeoPoint geoPoint(const Location& l)
{
    return {l.latitude, l.longitude};
}

} // namespace

LocalMapServer::LocalMapServer(std::shared_ptr<const Geocoder> geocoder, DrivingEstimate estimate,
                               std::chrono::milliseconds optimiseTimeLimit)
    : m_geocoder(std::move(geocoder)), m_estimate(estimate), m_optimiseTimeLimit(optimiseTimeLimit)
{
    if (!m_geocoder) throw MapServerError(QStringLiteral("The map server needs an address lookup."));
    if (!(m_estimate.roadFactor >= 1.0) || !(m_estimate.kilometresPerHour > 0.0))
        throw MapServerError(
            QStringLiteral("The driving estimate needs a road factor of at least 1 and a speed."));
}

void LocalMapServer::requireConnected() const
{
    if (!m_connected) throw MapServerError(QStringLiteral("The map server is not connected."));
}

void LocalMapServer::changed() const
{
    if (m_onChanged) m_onChanged();
}

void LocalMapServer::connect(MapRegion region)
{
    m_region = region;
    m_connected = true;
    changed();
}

void LocalMapServer::setVisible(bool visible)
{
    requireConnected();
    m_visible = visible;
    changed();
}

void LocalMapServer::setUserControl(bool userControl)
{
    requireConnected();
    m_userControl = userControl;
    changed();
}

QString LocalMapServer::version() const
{
    requireConnected();
    // Pushpin symbols here follow the numbering callers use for major
    // version 16 and later: symbol 1 is the plain pin.
    return QStringLiteral("16.0");
}

void LocalMapServer::setPaneState(PaneState state)
{
    requireConnected();
    m_paneState = state;
    changed();
}

void LocalMapServer::clearRoute()
{
    requireConnected();
    m_waypoints.clear();
    m_fixed = {};
    m_calculated = false;
    m_showingRoute = false;
    changed();
}

void LocalMapServer::deletePushpins()
{
    requireConnected();
    m_pushpins.clear();
    changed();
}

Location LocalMapServer::locationFromCoordinates(double latitude, double longitude)
{
    requireConnected();
    if (!std::isfinite(latitude) || !std::isfinite(longitude) || std::abs(latitude) > 90.0 ||
        std::abs(longitude) > 180.0)
        throw MapServerError(
            QStringLiteral("%1, %2 is not a valid latitude and longitude.").arg(latitude).arg(longitude));
    return {latitude, longitude};
}

AddressMatches LocalMapServer::findAddress(const AddressQuery& query)
{
    requireConnected();
    return m_geocoder->find(query);
}

std::shared_ptr<Pushpin> LocalMapServer::addPushpin(const Location& location, const QString& name)
{
    requireConnected();
    locationFromCoordinates(location.latitude, location.longitude);
    m_pushpins.push_back(std::make_shared<Pushpin>(location, name));
    changed();
    return m_pushpins.back();
}

void LocalMapServer::addWaypoint(const Pushpin& pin)
{
    requireConnected();
    m_waypoints.push_back({pin.name(), pin.location()});
    m_calculated = false;
    changed();
}

int LocalMapServer::waypointCount() const
{
    requireConnected();
    return int(m_waypoints.size());
}

const LocalMapServer::Waypoint& LocalMapServer::waypoint(int position) const
{
    requireConnected();
    if (position < 1 || position > int(m_waypoints.size()))
        throw MapServerError(QStringLiteral("There is no waypoint %1; the route has %2.")
                                 .arg(position)
                                 .arg(m_waypoints.size()));
    return m_waypoints[std::size_t(position - 1)];
}

QString LocalMapServer::waypointName(int position) const
{
    return waypoint(position).name;
}

Location LocalMapServer::waypointLocation(int position) const
{
    return waypoint(position).location;
}

std::optional<RouteSummary> LocalMapServer::routeSummary() const
{
    if (!m_calculated) return std::nullopt;
    return m_summary;
}

void LocalMapServer::optimizeWaypoints(FixedEnds fixed)
{
    requireConnected();
    m_fixed = fixed;
    // With two waypoints or fewer every order is the same drive.
    if (m_waypoints.size() < 3) return;
    std::vector<routes::GeoPoint> points;
    points.reserve(m_waypoints.size());
    for (const Waypoint& w : m_waypoints)
        points.push_back(geoPoint(w.location));

    routes::OrderOptions options;
    options.shape = routes::RouteShape::OpenPath;
    options.fixFirst = fixed.start;
    options.fixLast = fixed.end;
    options.timeLimit = m_optimiseTimeLimit;
    try {
        const routes::OrderResult result =
            routes::StopOrderer(options).order(routes::DistanceMatrix::fromGeoPoints(points));
        std::vector<Waypoint> reordered;
        reordered.reserve(m_waypoints.size());
        for (int index : result.order)
            reordered.push_back(m_waypoints[std::size_t(index)]);
        m_waypoints = std::move(reordered);
    } catch (const routes::RoutingError& e) {
        throw MapServerError(
            QStringLiteral("The route could not be optimised: %1").arg(QString::fromStdString(e.what())));
    }
    m_calculated = false;
    changed();
}

bool LocalMapServer::isFixedWaypoint(int position) const
{
    const int count = int(m_waypoints.size());
    return (m_fixed.start && position == 1) || (m_fixed.end && position == count);
}

bool LocalMapServer::canMoveWaypoint(int from, int to) const
{
    const int count = int(m_waypoints.size());
    if (!m_connected || from < 1 || from > count || to < 1 || to > count || from == to) return false;
    return !isFixedWaypoint(from) && !isFixedWaypoint(to);
}

void LocalMapServer::moveWaypoint(int from, int to)
{
    waypoint(from);
    waypoint(to);
    if (from == to) return;
    if (!canMoveWaypoint(from, to))
        throw MapServerError(QStringLiteral("The start and end of the route stay where they are."));
    const auto at = [this](int position) { return m_waypoints.begin() + (position - 1); };
    if (from < to)
        std::rotate(at(from), at(from) + 1, at(to) + 1);
    else
        std::rotate(at(to), at(from), at(from) + 1);
    if (m_calculated && m_waypoints.size() >= 2) {
        calculateRoute();
        return;
    }
    m_calculated = false;
    changed();
}

RouteSummary LocalMapServer::calculateRoute()
{
    requireConnected();
    if (m_waypoints.size() < 2)
        throw MapServerError(QStringLiteral("A route needs at least two waypoints to be calculated."));
    RouteSummary summary;
    for (std::size_t k = 1; k < m_waypoints.size(); ++k)
        summary.straightLineMetres += routes::greatCircleMetres(geoPoint(m_waypoints[k - 1].location),
                                                                geoPoint(m_waypoints[k].location));
    summary.estimatedRoadMetres = summary.straightLineMetres * m_estimate.roadFactor;
    const double hours = summary.estimatedRoadMetres / 1000.0 / m_estimate.kilometresPerHour;
    summary.estimatedDrivingTime = std::chrono::seconds(std::llround(hours * 3600.0));
    m_calculated = true;
    m_summary = summary;
    changed();
    return summary;
}

void LocalMapServer::goToRoute()
{
    requireConnected();
    if (!m_calculated)
        throw MapServerError(
            QStringLiteral("The route has not been calculated, so there is nothing to show."));
    m_showingRoute = true;
    changed();
}

void LocalMapServer::setSaved(bool saved)
{
    requireConnected();
    m_saved = saved;
    changed();
}

} // namespace kb::map
