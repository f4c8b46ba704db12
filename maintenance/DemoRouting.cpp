#include "DemoRouting.h"

#include "DemoContext.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace kb::demo {

namespace {

constexpr double Pi = 3.141592653589793;

// Clients who are delivered together: a household, or one client alone.
struct Unit
{
    std::vector<int> members;
    double north = 0; // km from the city centre
    double east = 0;
};

struct Depot
{
    int location;
    double north;
    double east;
};

// The main kitchen in the city and the satellite kitchen in Millbrook.
constexpr Depot MainKitchen = {1, 0.3, -0.4};
constexpr Depot NorthKitchen = {2, 8.5, 2.5};

std::vector<Unit> deliveryUnits(const DemoContext& ctx)
{
    const double kmPerLon = 111.0 * std::cos(ctx.centreLat * Pi / 180.0);
    std::vector<Unit> units;
    for (int i = 0; i < int(ctx.clients.size()); ++i) {
        const DemoClient& c = ctx.clients[size_t(i)];
        Unit u;
        if (c.householdId > 0) {
            const DemoHousehold& h = ctx.households[size_t(c.householdId - 1)];
            if (h.members.front() != i) continue;
            u.members = h.members;
        } else {
            u.members = {i};
        }
        u.north = (c.home.lat - ctx.centreLat) * 111.0;
        u.east = (c.home.lon - ctx.centreLon) * kmPerLon;
        units.push_back(std::move(u));
    }
    return units;
}

void numberStops(DemoContext& ctx, DemoRoute& route, const std::vector<const Unit*>& ordered)
{
    for (const Unit* u : ordered) {
        const int whole = ++route.lastStop;
        for (size_t m = 0; m < u->members.size(); ++m) {
            DemoClient& c = ctx.clients[size_t(u->members[m])];
            c.defRoute = route.id;
            c.defStop = u->members.size() == 1 ? whole : whole + 0.1 * double(m + 1);
        }
    }
}

// The nearest stop next, starting from the kitchen.
std::vector<const Unit*> driverOrder(std::vector<const Unit*> group, const Depot& depot)
{
    std::vector<const Unit*> ordered;
    ordered.reserve(group.size());
    double north = depot.north;
    double east = depot.east;
    while (!group.empty()) {
        size_t best = 0;
        double bestDistance = 1e300;
        for (size_t i = 0; i < group.size(); ++i) {
            const double d = std::hypot(group[i]->north - north, group[i]->east - east);
            if (d < bestDistance) {
                bestDistance = d;
                best = i;
            }
        }
        ordered.push_back(group[best]);
        north = group[best]->north;
        east = group[best]->east;
        group.erase(group.begin() + std::ptrdiff_t(best));
    }
    return ordered;
}

QString compass(double north, double east)
{
    static const char* const points[] = {"N", "NE", "E", "SE", "S", "SW", "W", "NW"};
    const double bearing = std::atan2(east, north) * 180.0 / Pi; // 0 = north, clockwise
    const int index = int(std::lround((bearing < 0 ? bearing + 360.0 : bearing) / 45.0)) % 8;
    return QString::fromLatin1(points[index]);
}

void makeDrivingRoutes(DemoContext& ctx, const std::vector<const Unit*>& units)
{
    std::vector<DemoRoute*> driving;
    for (DemoRoute& r : ctx.routes)
        if (r.type == QLatin1String("D")) driving.push_back(&r);

    std::vector<const Unit*> sorted = units;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Unit* a, const Unit* b) {
        return std::atan2(a->north, a->east) < std::atan2(b->north, b->east);
    });
    int total = 0;
    for (const Unit* u : sorted)
        total += int(u->members.size());

    size_t next = 0;
    int counted = 0;
    for (size_t r = 0; r < driving.size(); ++r) {
        const int limit = int((long long)(r + 1) * total / qsizetype(driving.size()));
        std::vector<const Unit*> group;
        while (next < sorted.size() && (counted < limit || r + 1 == driving.size())) {
            counted += int(sorted[next]->members.size());
            group.push_back(sorted[next++]);
        }
        double north = 0;
        double east = 0;
        std::map<QString, int> towns;
        for (const Unit* u : group) {
            north += u->north;
            east += u->east;
            ++towns[ctx.clients[size_t(u->members.front())].home.city];
        }
        if (!group.empty()) {
            north /= double(group.size());
            east /= double(group.size());
        }
        const Depot& depot = north > 4.0 ? NorthKitchen : MainKitchen;
        DemoRoute& route = *driving[r];
        route.distCenter = depot.location;
        route.lat = ctx.centreLat + depot.north / 111.0;
        route.lon = ctx.centreLon + depot.east / (111.0 * std::cos(ctx.centreLat * Pi / 180.0));
        QString town = ctx.towns.front().city;
        int most = 0;
        for (const auto& [name, count] : towns)
            if (count > most) {
                most = count;
                town = name;
            }
        route.desc = QStringLiteral("%1 %2").arg(town, compass(north, east));
        numberStops(ctx, route, driverOrder(group, depot));
    }
}

// Another route on one of the client's delivery days, at the end of it;
// some of these weekday routes were entered without a stop.
void makeWeekdayRoutes(DemoContext& ctx, const std::vector<const Unit*>& units)
{
    std::vector<DemoRoute*> driving;
    for (DemoRoute& r : ctx.routes)
        if (r.type == QLatin1String("D")) driving.push_back(&r);
    std::map<QString, size_t> position;
    for (size_t i = 0; i < driving.size(); ++i)
        position[driving[i]->id] = i;

    for (const Unit* u : units) {
        const DemoClient& head = ctx.clients[size_t(u->members.front())];
        const double r = ctx.rnd.uniform();
        if (r < 0.05) {
            // Every weekday column filled in with the default route and stop.
            for (int m : u->members) {
                DemoClient& c = ctx.clients[size_t(m)];
                for (int d = 0; d < 7; ++d)
                    if (c.days[size_t(d)]) {
                        c.dayRoute[size_t(d)] = c.defRoute;
                        c.dayStop[size_t(d)] = c.defStop;
                    }
            }
            continue;
        }
        if (r >= 0.12) continue;
        int day = -1;
        for (int d = 6; d >= 0 && day < 0; --d)
            if (head.days[size_t(d)]) day = d;
        if (day < 0) continue;
        const size_t here = position[head.defRoute];
        const size_t there =
            ctx.rnd.chance(0.5) ? (here + 1) % driving.size() : (here + driving.size() - 1) % driving.size();
        DemoRoute& other = *driving[there];
        const bool withStop = r < 0.11;
        const int whole = withStop ? ++other.lastStop : 0;
        for (size_t m = 0; m < u->members.size(); ++m) {
            DemoClient& c = ctx.clients[size_t(u->members[m])];
            c.dayRoute[size_t(day)] = other.id;
            if (withStop)
                c.dayStop[size_t(day)] = u->members.size() == 1 ? whole : whole + 0.1 * double(m + 1);
            else
                c.dayStop[size_t(day)].reset();
        }
    }
}

} // namespace

void assignRoutes(DemoContext& ctx)
{
    const std::vector<Unit> units = deliveryUnits(ctx);
    std::vector<const Unit*> driving;
    std::vector<const Unit*> northSite;
    std::vector<const Unit*> southSite;
    std::vector<const Unit*> walkIn;
    for (const Unit& u : units) {
        const DemoClient& head = ctx.clients[size_t(u.members.front())];
        const bool single = u.members.size() == 1;
        const double r = ctx.rnd.uniform();
        if (head.org || (single && r < 0.02))
            (u.north >= -3.0 ? northSite : southSite).push_back(&u);
        else if (single && r < 0.03)
            walkIn.push_back(&u);
        else
            driving.push_back(&u);
    }
    makeDrivingRoutes(ctx, driving);
    for (DemoRoute& r : ctx.routes) {
        if (r.id == QLatin1String("C01"))
            numberStops(ctx, r, northSite);
        else if (r.id == QLatin1String("C02"))
            numberStops(ctx, r, southSite);
        else if (r.id == QLatin1String("W01"))
            numberStops(ctx, r, walkIn);
    }
    makeWeekdayRoutes(ctx, driving);
}

} // namespace kb::demo
