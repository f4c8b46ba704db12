#include "DemoRuns.h"

#include "DemoTable.h"

#include <algorithm>
#include <map>
#include <set>

namespace kb::demo {

namespace {

// Indexes of the schedules by client and by date, for the day-by-day walk.
struct ScheduleIndex
{
    std::vector<std::vector<int>> suspensions; // by client
    std::vector<std::vector<int>> overrides;   // by client
    std::map<QDate, std::vector<int>> dated;   // by date

    explicit ScheduleIndex(const DemoContext& ctx)
        : suspensions(ctx.clients.size()), overrides(ctx.clients.size())
    {
        for (int i = 0; i < int(ctx.suspensions.size()); ++i)
            suspensions[size_t(ctx.suspensions[size_t(i)].client)].push_back(i);
        for (int i = 0; i < int(ctx.overrides.size()); ++i)
            overrides[size_t(ctx.overrides[size_t(i)].client)].push_back(i);
        for (int i = 0; i < int(ctx.dated.size()); ++i)
            dated[ctx.dated[size_t(i)].date].push_back(i);
    }
};

// Whether the client was taken into runs on the date: active then, a client,
// started and not yet stopped. Stopped clients were active until their stop.
bool servedOn(const DemoClient& c, const QDate& date)
{
    const bool active = c.status == QLatin1String("A") ||
                        (c.status == QLatin1String("S") && c.stop.isValid() && c.stop > date);
    return active && !c.clientId.isEmpty() && c.start.isValid() && c.start <= date &&
           (!c.stop.isValid() || c.stop > date);
}

bool suspendedOn(const DemoContext& ctx, const ScheduleIndex& index, int client, const QDate& date)
{
    for (int s : index.suspensions[size_t(client)]) {
        const DemoSuspension& susp = ctx.suspensions[size_t(s)];
        if (susp.stop <= date && susp.resume > date) return true;
    }
    return false;
}

// The alternate address of the date: a single date before a weekday before a
// temporary address; mailing addresses never count.
const DemoOverride* overrideOn(const DemoContext& ctx, const ScheduleIndex& index, int client,
                               const QDate& date)
{
    const QString& dow = DayCodes[size_t(weekdayIndex(date))];
    const DemoOverride* best = nullptr;
    int bestRank = 99;
    for (int i : index.overrides[size_t(client)]) {
        const DemoOverride& o = ctx.overrides[size_t(i)];
        const bool inPeriod =
            o.effective.isValid() && o.effective <= date && (!o.expire.isValid() || o.expire >= date);
        int rank = 99;
        if (o.type == QLatin1String("D") && o.delivDate == date)
            rank = 0;
        else if (o.type == QLatin1String("O") && o.dow == dow && inPeriod)
            rank = 1;
        else if (o.type == QLatin1String("T") && inPeriod)
            rank = 2;
        if (rank < bestRank) {
            bestRank = rank;
            best = &o;
        }
    }
    return best;
}

// The lines that go out without the day's confirmation.
ItemList unconfirmed(const DemoContext& ctx, const ItemList& lines, bool dated)
{
    ItemList out;
    for (const ItemLine& line : lines) {
        const QString& confirm = ctx.item(line.itemId).confirmation;
        const bool asks =
            confirm == QLatin1String("A") || confirm == (dated ? QLatin1String("S") : QLatin1String("O"));
        if (!asks) out.push_back(line);
    }
    return out;
}

void fillItems(const DemoContext& ctx, RunRow& row, const DemoDated* dated)
{
    const DemoClient& c = ctx.clients[size_t(row.client)];
    const int w = weekdayIndex(row.date);
    row.items.clear();
    if (dated) row.items = unconfirmed(ctx, dated->items, true);
    row.custom = !row.items.empty();
    if (row.items.empty()) {
        row.items = unconfirmed(ctx, c.ownItems[size_t(w)], false);
        row.custom = !row.items.empty();
    }
    if (row.items.empty()) {
        const auto it = ctx.defaultItems.find({row.service, w});
        if (it != ctx.defaultItems.end()) row.items = unconfirmed(ctx, it->second, false);
    }
    row.meals = 0;
    row.labels = 0;
    for (const ItemLine& line : row.items) {
        row.meals += line.quantity * ctx.item(line.itemId).meals;
        row.labels += line.quantity * ctx.item(line.itemId).labels;
    }
    if (row.labels == 0) row.labels = 1;
}

QString fundingOn(const DemoContext& ctx, const DemoClient& c, int service, int weekday)
{
    for (const DemoFundUse& f : c.funding)
        if ((f.serviceId == service || f.serviceId == 0) && f.days[size_t(weekday)]) return f.fundCode;
    return ctx.service(service).fundCode;
}

void finishRow(const DemoContext& ctx, const ScheduleIndex& index, RunRow& row, const DemoDated* dated)
{
    const DemoClient& c = ctx.clients[size_t(row.client)];
    row.zip = c.home.zip;
    if (const DemoOverride* o = overrideOn(ctx, index, row.client, row.date)) {
        row.overridden = true;
        row.route = o->route;
        row.stop = o->stop.value_or(0);
        row.zip = o->address.zip;
    }
    fillItems(ctx, row, dated);
    row.fund = fundingOn(ctx, c, row.service, weekdayIndex(row.date));
}

std::vector<RunRow> prepare(const DemoContext& ctx, const ScheduleIndex& index, const QDate& date)
{
    const int w = weekdayIndex(date);
    std::vector<RunRow> rows;
    for (int i = 0; i < int(ctx.clients.size()); ++i) {
        const DemoClient& c = ctx.clients[size_t(i)];
        if (c.deliveryType != QLatin1String("O") || c.service <= 0 || !c.days[size_t(w)] ||
            !servedOn(c, date) || suspendedOn(ctx, index, i, date) || !isDeliveryWeek(c.frequency, date))
            continue;
        RunRow row;
        row.date = date;
        row.client = i;
        row.type = QStringLiteral("OD");
        row.service = c.service;
        if (c.dayRoute[size_t(w)].isEmpty()) {
            row.route = c.defRoute;
            row.stop = c.defStop;
        } else {
            row.route = c.dayRoute[size_t(w)];
            row.stop = c.dayStop[size_t(w)].value_or(0);
        }
        finishRow(ctx, index, row, nullptr);
        rows.push_back(std::move(row));
    }
    const auto it = index.dated.find(date);
    if (it == index.dated.end()) return rows;
    // Episodic rows first, then scheduled ones; scheduled deliveries are held
    // back by a suspension, episodic ones are not.
    for (const QString& kind : {QStringLiteral("E"), QStringLiteral("S")}) {
        const QString clientKind = kind == QLatin1String("E") ? QStringLiteral("E") : QStringLiteral("O");
        for (int d : it->second) {
            const DemoDated& dated = ctx.dated[size_t(d)];
            const DemoClient& c = ctx.clients[size_t(dated.client)];
            if (dated.scheduleType != kind || c.deliveryType != clientKind || !servedOn(c, date)) continue;
            if (kind == QLatin1String("S") && suspendedOn(ctx, index, dated.client, date)) continue;
            RunRow row;
            row.date = date;
            row.client = dated.client;
            row.type = kind + dated.deliveryType;
            row.service = dated.service;
            row.route = dated.route;
            row.stop = dated.stop;
            finishRow(ctx, index, row, &dated);
            rows.push_back(std::move(row));
        }
    }
    return rows;
}

// Who saved a date's run, and when: the afternoon of the last working day
// before it, as runs are prepared a day ahead.
QDateTime savedAt(const DemoContext& ctx, const QDate& date, int minute)
{
    QDate day = date.addDays(-1);
    while (!ctx.agencyDays[size_t(weekdayIndex(day))])
        day = day.addDays(-1);
    return ctx.at(day, 14, minute % 60);
}

} // namespace

DemoRuns makeRuns(DemoContext& ctx)
{
    const ScheduleIndex index(ctx);
    DemoRuns runs;
    for (QDate date = ctx.today.addDays(-PastDays); date <= ctx.today; date = date.addDays(1)) {
        if (!ctx.agencyDays[size_t(weekdayIndex(date))]) continue;
        std::vector<RunRow> rows = prepare(ctx, index, date);
        std::stable_sort(rows.begin(), rows.end(), [&](const RunRow& a, const RunRow& b) {
            if (a.route != b.route) return a.route < b.route;
            if (a.stop != b.stop) return a.stop < b.stop;
            return ctx.clients[size_t(a.client)].clientId < ctx.clients[size_t(b.client)].clientId;
        });
        // Drivers report a few misses; the office excuses some and comps a
        // few. A status holds for all of a client's deliveries of the date.
        std::map<int, QString> statuses;
        for (const RunRow& row : rows) {
            if (statuses.count(row.client)) continue;
            static const QStringList kinds = {QString(), QStringLiteral("M"), QStringLiteral("E"),
                                              QStringLiteral("C")};
            const QString status = kinds[ctx.rnd.weighted({97.7, 1.5, 0.5, 0.3})];
            statuses[row.client] = status;
            DemoClient& c = ctx.clients[size_t(row.client)];
            if (status == QLatin1String("M"))
                ++c.missed;
            else if (status == QLatin1String("E"))
                ++c.excused;
        }
        const auto datedToday = index.dated.find(date);
        for (RunRow& row : rows) {
            row.delivId = ++ctx.lastDelivId;
            row.status = statuses[row.client];
            if (row.type.front() != u'O' && datedToday != index.dated.end()) {
                // Saving marks every dated delivery of the client that day.
                for (int d : datedToday->second)
                    if (ctx.dated[size_t(d)].client == row.client) ctx.dated[size_t(d)].fulfilled = true;
            }
        }
        runs.saves.push_back({date, int(rows.size()), ctx.anyStaff()});
        for (RunRow& row : rows)
            runs.rows.push_back(std::move(row));
    }
    ctx.savedDeliveries = int(runs.rows.size());
    return runs;
}

void writeRuns(DemoContext& ctx, const DemoRuns& runs)
{
    DemoTable deliveri(ctx.db, QStringLiteral("Deliveri"),
                       {QStringLiteral("Deliv_ID"),
                        QStringLiteral("Deliv_Dt"),
                        QStringLiteral("DOW"),
                        QStringLiteral("Route_ID"),
                        QStringLiteral("Client_ID"),
                        QStringLiteral("Person_ID"),
                        QStringLiteral("Stop"),
                        QStringLiteral("Delivery_Type"),
                        QStringLiteral("Svcs_Used"),
                        QStringLiteral("Cuisine_ID"),
                        QStringLiteral("Diet_Restr"),
                        QStringLiteral("Diet_Descr"),
                        QStringLiteral("Cold_Bag_ID"),
                        QStringLiteral("Custom_Items"),
                        QStringLiteral("Number_Meals"),
                        QStringLiteral("Number_Labels"),
                        QStringLiteral("Address_Overridden"),
                        QStringLiteral("Funding_Desc"),
                        QStringLiteral("ZIP"),
                        QStringLiteral("Delivery_Status"),
                        QStringLiteral("Label_Created"),
                        QStringLiteral("Label2_Created"),
                        QStringLiteral("Label3_Created")});
    DemoTable credits(ctx.db, QStringLiteral("Mealcrdt"),
                      {QStringLiteral("Deliv_ID"), QStringLiteral("Person_ID"), QStringLiteral("Deliv_Dt"),
                       QStringLiteral("DOW"), QStringLiteral("Item_ID"), QStringLiteral("Quantity"),
                       QStringLiteral("Congregate"), QStringLiteral("Modified_Ml"),
                       QStringLiteral("Service_ID"), QStringLiteral("Sort_Order")});
    DemoTable history(ctx.db, QStringLiteral("History"),
                      {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("TRAN_DATE"),
                       QStringLiteral("EVENT_DATE"), QStringLiteral("EVENT"), QStringLiteral("USER")});

    std::set<std::pair<QDate, int>> missesWritten;
    for (const RunRow& row : runs.rows) {
        const DemoClient& c = ctx.clients[size_t(row.client)];
        const QString& dow = DayCodes[size_t(weekdayIndex(row.date))];
        deliveri.insert({row.delivId,
                         row.date,
                         dow,
                         row.route,
                         c.clientId,
                         c.personId,
                         row.stop,
                         row.type,
                         row.service,
                         orNull(c.cuisine),
                         c.dietMask,
                         ctx.dietText(c.dietMask, QStringLiteral(" / ")),
                         orNull(c.coldBag),
                         row.custom,
                         row.meals,
                         row.labels,
                         row.overridden,
                         orNull(row.fund),
                         orNull(row.zip),
                         orNull(row.status),
                         false,
                         false,
                         false});
        for (const ItemLine& line : row.items)
            credits.insert({row.delivId, c.personId, row.date, dow, line.itemId, line.quantity, c.org,
                            c.dietMask > 0, row.service, line.sortOrder});
        // One history line per missed client and date, however many
        // deliveries he had that day.
        const bool missed = row.status == QLatin1String("M") || row.status == QLatin1String("E");
        if (missed && missesWritten.insert({row.date, row.client}).second)
            history.insert({c.personId, c.clientId, ctx.at(row.date, 16, row.delivId % 50), row.date,
                            shortDate(row.date) + (row.status == QLatin1String("M")
                                                       ? QStringLiteral(", Missed Delivery")
                                                       : QStringLiteral(", Missed Delivery (Excused)")),
                            ctx.staffNames.front()});
    }
    int minute = 0;
    for (const RunSave& save : runs.saves)
        history.insert({null(), null(), savedAt(ctx, save.date, minute += 7), save.date,
                        QStringLiteral("Saved %1 All Delivery Types, %2 %3")
                            .arg(shortDate(save.date))
                            .arg(save.rows)
                            .arg(save.rows == 1 ? QStringLiteral("name.") : QStringLiteral("names.")),
                        save.user});
}

} // namespace kb::demo
