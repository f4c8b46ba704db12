#include "DemoSchedules.h"

#include "DemoContext.h"
#include "DemoPeople.h"

#include <algorithm>

namespace kb::demo {

namespace {

bool isActive(const DemoClient& c)
{
    return c.status == QLatin1String("A");
}

// Whether the client's dates allow a delivery on the date at all.
bool withinDates(const DemoClient& c, const QDate& date)
{
    return c.start.isValid() && c.start <= date && (!c.stop.isValid() || c.stop > date);
}

void makeSuspensions(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    static const QStringList reasons = {QStringLiteral("Hospitalized"),   QStringLiteral("Visiting family"),
                                        QStringLiteral("Rehab facility"), QStringLiteral("Vacation"),
                                        QStringLiteral("Respite care"),   QStringLiteral("Out of town")};
    auto suspend = [&](int client, int group, const QDate& stop, const QDate& resume, const QString& reason,
                       const QString& user) {
        const QDate created = std::min(stop.addDays(-rnd.between(0, 5)), ctx.today);
        ctx.suspensions.push_back({client, group, stop, resume, reason, user, created});
    };
    for (int i = 0; i < int(ctx.clients.size()); ++i) {
        const DemoClient& c = ctx.clients[size_t(i)];
        if (!isActive(c) || c.org || !rnd.chance(0.05)) continue;
        QDate stop;
        QDate resume;
        switch (rnd.weighted({50, 25, 25})) {
        case 0: // in effect today
            stop = ctx.today.addDays(-rnd.between(0, 10));
            resume = ctx.today.addDays(rnd.between(1, 21));
            break;
        case 1: // over
            stop = ctx.today.addDays(-rnd.between(15, 60));
            resume = stop.addDays(rnd.between(3, 14));
            break;
        default: // ahead
            stop = ctx.today.addDays(rnd.between(2, 30));
            resume = stop.addDays(rnd.between(3, 21));
            break;
        }
        const QString reason = rnd.pick(reasons);
        const QString user = ctx.anyStaff();
        // A household's head suspended for the whole household shares one
        // group number with the others.
        const bool head = c.householdId > 0 && ctx.households[size_t(c.householdId - 1)].members.front() == i;
        if (head && rnd.chance(0.6)) {
            const int group = ++ctx.lastSuspensionGroup;
            for (int m : ctx.households[size_t(c.householdId - 1)].members)
                if (isActive(ctx.clients[size_t(m)])) suspend(m, group, stop, resume, reason, user);
        } else {
            suspend(i, 0, stop, resume, reason, user);
        }
        if (rnd.chance(0.1)) {
            const QDate earlier = ctx.today.addDays(-rnd.between(70, 200));
            suspend(i, 0, earlier, earlier.addDays(rnd.between(3, 10)), rnd.pick(reasons), ctx.anyStaff());
        }
    }
}

int anyDeliveryDay(DemoContext& ctx, const DemoClient& c)
{
    std::vector<int> days;
    for (int d = 0; d < 7; ++d)
        if (c.days[size_t(d)]) days.push_back(d);
    return days.empty() ? 0 : ctx.rnd.pick(days);
}

// A route near the client's own, and a stop at its end.
void overrideRoute(DemoContext& ctx, const DemoClient& c, DemoOverride& o)
{
    std::vector<DemoRoute*> driving;
    for (DemoRoute& r : ctx.routes)
        if (r.type == QLatin1String("D")) driving.push_back(&r);
    DemoRoute* route = driving[size_t(ctx.rnd.below(int(driving.size())))];
    for (DemoRoute* r : driving)
        if (r->id == c.defRoute && ctx.rnd.chance(0.5)) route = r;
    o.route = route->id;
    if (ctx.rnd.chance(0.7)) o.stop = double(++route->lastStop);
}

void makeOverrides(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    static const QStringList types = {QStringLiteral("O"), QStringLiteral("T"), QStringLiteral("D"),
                                      QStringLiteral("M")};
    int made = 0;
    for (int i = 0; i < int(ctx.clients.size()); ++i) {
        const DemoClient& c = ctx.clients[size_t(i)];
        if (!isActive(c) || c.org || !rnd.chance(0.045)) continue;
        DemoOverride o;
        o.recordId = int(ctx.overrides.size()) + 1;
        o.client = i;
        // The first four show one of each kind, however small the agency.
        o.type = made < 4 ? types[made] : types[rnd.weighted({35, 30, 20, 15})];
        ++made;
        o.address = randomAddress(ctx);
        o.user = ctx.anyStaff();
        if (o.type == QLatin1String("O")) {
            static const QStringList descs = {QStringLiteral("Adult Day Program"),
                                              QStringLiteral("Daughter's Home"),
                                              QStringLiteral("Son's Home")};
            o.desc = rnd.pick(descs);
            o.dow = DayCodes[size_t(anyDeliveryDay(ctx, c))];
            o.effective = ctx.today.addDays(-rnd.between(10, 300));
            if (rnd.chance(0.4)) o.expire = ctx.today.addDays(rnd.between(10, 120));
            overrideRoute(ctx, c, o);
        } else if (o.type == QLatin1String("T")) {
            static const QStringList descs = {QStringLiteral("Respite Care"),
                                              QStringLiteral("Winter Residence"),
                                              QStringLiteral("Son's Home")};
            o.desc = rnd.pick(descs);
            o.effective = ctx.today.addDays(rnd.between(-20, 10));
            if (rnd.chance(0.9)) o.expire = o.effective.addDays(rnd.between(7, 45));
            overrideRoute(ctx, c, o);
        } else if (o.type == QLatin1String("D")) {
            o.desc = QStringLiteral("Daughter's Home");
            const int day = anyDeliveryDay(ctx, c);
            QDate date = ctx.today.addDays(rnd.between(-PastDays, 21));
            while (weekdayIndex(date) != day)
                date = date.addDays(1);
            o.delivDate = date;
            overrideRoute(ctx, c, o);
        } else {
            o.desc = QStringLiteral("Mailing Address");
        }
        const QDate earliest =
            o.effective.isValid() ? o.effective : (o.delivDate.isValid() ? o.delivDate : ctx.today);
        o.created = std::min(earliest, ctx.today).addDays(-rnd.between(1, 14));
        ctx.overrides.push_back(o);
    }
}

ItemList datedItems(DemoRandom& rnd)
{
    enum {
        HotLunch = 1,
        Milk = 2,
        BreakfastBox = 3,
        FrozenDinner = 4,
        LiquidSupplement = 8,
        HolidayDessert = 14,
        FrozenBreakfast = 15
    };
    switch (rnd.weighted({35, 20, 15, 15, 15})) {
    case 0:
        return {{FrozenDinner, rnd.between(2, 5), 1}};
    case 1:
        return {{HotLunch, 1, 1}, {Milk, 1, 2}, {HolidayDessert, 1, 3}};
    case 2:
        return {{LiquidSupplement, 1, 1}};
    case 3:
        return {{FrozenBreakfast, 2, 1}, {FrozenDinner, 2, 2}};
    default:
        return {{BreakfastBox, 1, 1}, {HotLunch, 1, 2}};
    }
}

void addDated(DemoContext& ctx, int client, const QDate& date, const QString& scheduleType, double itemShare)
{
    DemoRandom& rnd = ctx.rnd;
    const DemoClient& c = ctx.clients[size_t(client)];
    DemoDated d;
    d.recordId = int(ctx.dated.size()) + 1;
    d.client = client;
    d.date = date;
    d.scheduleType = scheduleType;
    d.service = c.service;
    d.deliveryType =
        (c.defRoute == QLatin1String("W01") || rnd.chance(0.08)) ? QStringLiteral("W") : QStringLiteral("D");
    d.route = c.defRoute;
    d.stop = c.defStop;
    if (rnd.chance(itemShare)) d.items = datedItems(rnd);
    d.autoScheduled = scheduleType == QLatin1String("E") && rnd.chance(0.5);
    d.user = ctx.anyStaff();
    d.created = std::max(std::min(date, ctx.today).addDays(-rnd.between(2, 14)), c.added);
    ctx.dated.push_back(d);
}

void makeDated(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    const QDate first = ctx.today.addDays(-PastDays);
    const QDate last = ctx.today.addDays(FutureDays);
    for (int i = 0; i < int(ctx.clients.size()); ++i) {
        const DemoClient& c = ctx.clients[size_t(i)];
        const bool served = c.status == QLatin1String("A") || c.status == QLatin1String("S");
        if (!served || c.service == 0 || c.clientId.isEmpty()) continue;
        if (c.deliveryType == QLatin1String("E")) {
            // Episodic clients are served on many of their service's days.
            const WeekFlags& serviceDays = ctx.service(c.service).days;
            const double share = rnd.range(0.3, 0.65);
            for (QDate d = first; d <= last; d = d.addDays(1)) {
                const int w = weekdayIndex(d);
                if (serviceDays[size_t(w)] && ctx.agencyDays[size_t(w)] && withinDates(c, d) &&
                    rnd.chance(share))
                    addDated(ctx, i, d, QStringLiteral("E"), 0.3);
            }
        } else if (c.status == QLatin1String("A") && rnd.chance(0.06)) {
            // An ongoing client's extra dates on top of his weekly schedule.
            const int count = rnd.between(1, 3);
            std::vector<QDate> taken;
            for (int k = 0; k < count; ++k) {
                const QDate d = ctx.today.addDays(rnd.between(-PastDays, FutureDays));
                if (!ctx.agencyDays[size_t(weekdayIndex(d))] || !withinDates(c, d) ||
                    std::find(taken.begin(), taken.end(), d) != taken.end())
                    continue;
                taken.push_back(d);
                addDated(ctx, i, d, QStringLiteral("S"), 0.4);
            }
        }
    }
}

} // namespace

void makeSchedules(DemoContext& ctx)
{
    makeSuspensions(ctx);
    makeOverrides(ctx);
    makeDated(ctx);
}

} // namespace kb::demo
