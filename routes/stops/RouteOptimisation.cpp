#include "RouteOptimisation.h"

#include "OrderRoutesWorkingSet.h"
#include "StopNumbering.h"

#include "DistanceMatrix.h"
#include "StopOrderer.h"

#include <QLocale>

#include <algorithm>
#include <numeric>

namespace kb {

namespace {

// Clients delivered at one stop of the drive: those sharing a whole stop
// number, or one unplaced client.
struct Unit
{
    std::vector<int> keys;
    int located = -1; // the key whose coordinates stand for the unit, or -1
};

QString kilometres(std::int64_t metres)
{
    return QLocale::c().toString(double(metres) / 1000.0, 'f', 2) + QStringLiteral(" km");
}

} // namespace

double RouteOptimisation::gapPercent() const
{
    return lowerBound > 0 ? 100.0 * double(length - lowerBound) / double(lowerBound) : 0.0;
}

QString RouteOptimisation::summary(const OrderRoutesWorkingSet& rows) const
{
    QStringList lines;
    lines << QStringLiteral("Route %1: %2 stops with coordinates.").arg(route).arg(placed);
    lines << QStringLiteral("Length of the new order: %1 (the order as it stands: %2).")
                 .arg(kilometres(length), kilometres(previousLength));
    if (provenOptimal)
        lines << QStringLiteral("No order of these stops is shorter.");
    else
        lines << QStringLiteral("At most %1% longer than the best order (lower bound %2).")
                     .arg(QLocale::c().toString(gapPercent(), 'f', 2), kilometres(lowerBound));
    if (!improved)
        lines << QStringLiteral("No shorter order was found; the stops stay as they are.");
    if (!withoutCoordinates.empty()) {
        lines << QStringLiteral("These clients have no coordinates and keep their place:");
        for (int key : withoutCoordinates) {
            const OrderRoutesRow& r = rows.row(key);
            lines << QStringLiteral("  %1 %2 %3, %4, stop %5")
                         .arg(r.clientId.trimmed(), r.firstName.trimmed(), r.lastName.trimmed(), r.address1.trimmed(),
                              stopText(r.stop));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

RouteOptimisation RouteOptimiser::optimise(const OrderRoutesWorkingSet& rows, const QString& route,
                                           const RouteOptimiserOptions& options)
{
    RouteOptimisation result;
    result.route = route;

    // The route's clients in route order.
    std::vector<int> keys;
    for (int key = 0; key < rows.count(); ++key)
        if (rows.row(key).route.trimmed().compare(route.trimmed(), Qt::CaseInsensitive) == 0)
            keys.push_back(key);
    std::stable_sort(keys.begin(), keys.end(), [&](int a, int b) {
        const OrderRoutesRow& x = rows.row(a);
        const OrderRoutesRow& y = rows.row(b);
        if (x.stop != y.stop)
            return x.stop < y.stop;
        return x.clientId < y.clientId;
    });

    std::vector<Unit> units;
    for (int key : keys) {
        const OrderRoutesRow& r = rows.row(key);
        const bool placedStop = r.stop > 0;
        const bool sameUnit = placedStop && !units.empty() &&
                              rows.row(units.back().keys.front()).stop > 0 &&
                              StopNumbering::wholePart(rows.row(units.back().keys.front()).stop) ==
                                  StopNumbering::wholePart(r.stop);
        if (!sameUnit)
            units.push_back({});
        units.back().keys.push_back(key);
        if (units.back().located < 0 && r.hasCoordinates())
            units.back().located = key;
        if (!r.hasCoordinates())
            result.withoutCoordinates.push_back(key);
    }

    // An unplaced client without coordinates has no place to keep.
    std::vector<Unit> places;
    for (Unit& u : units)
        if (u.located >= 0 || rows.row(u.keys.front()).stop > 0)
            places.push_back(std::move(u));

    std::vector<int> located; // indexes into places, in route order
    for (int s = 0; s < int(places.size()); ++s)
        if (places[size_t(s)].located >= 0)
            located.push_back(s);
    result.placed = 0;
    for (int s : located)
        result.placed += int(places[size_t(s)].keys.size());

    std::vector<int> newOrder(located.size());
    std::iota(newOrder.begin(), newOrder.end(), 0);
    if (located.size() >= 2) {
        std::vector<routes::GeoPoint> points;
        points.reserve(located.size());
        for (int s : located) {
            const OrderRoutesRow& r = rows.row(places[size_t(s)].located);
            points.push_back({r.latitude.toDouble(), r.longitude.toDouble()});
        }
        const routes::DistanceMatrix distances = routes::DistanceMatrix::fromGeoPoints(points);
        routes::OrderOptions orderOptions;
        orderOptions.shape = routes::RouteShape::OpenPath;
        orderOptions.fixFirst = options.fixFirst;
        orderOptions.fixLast = options.fixLast;
        orderOptions.timeLimit = options.timeLimit;
        const routes::OrderResult best = routes::StopOrderer(orderOptions).order(distances);
        result.previousLength = distances.length(newOrder, false);
        result.lowerBound = best.lowerBound;
        result.elapsedMs = best.elapsedMs;
        if (best.length < result.previousLength) {
            newOrder = best.order;
            result.length = best.length;
            result.improved = true;
        } else {
            result.length = result.previousLength;
        }
        result.provenOptimal = best.provenOptimal && result.length == best.length;
    }

    if (!result.improved)
        return result;
    // The located units take the places of the located units in their new
    // order; the others stay where they were. Then every stop is renumbered.
    std::vector<int> sequence(places.size());
    std::iota(sequence.begin(), sequence.end(), 0);
    for (size_t i = 0; i < located.size(); ++i)
        sequence[size_t(located[i])] = located[size_t(newOrder[i])];
    for (size_t position = 0; position < sequence.size(); ++position)
        for (int key : places[size_t(sequence[position])].keys) {
            const double stop = StopNumbering::atPosition(int(position) + 1, rows.row(key).stop);
            if (stop != rows.row(key).stop)
                result.newStops.emplace_back(key, stop);
        }
    return result;
}

} // namespace kb
