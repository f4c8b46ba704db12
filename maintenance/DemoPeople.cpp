#include "DemoPeople.h"

#include "DemoContext.h"
#include "DemoWords.h"

#include <algorithm>
#include <cmath>

namespace kb::demo {

namespace {

constexpr int Mon = 0, Tue = 1, Wed = 2, Thu = 3, Fri = 4, Sat = 5;

// Diet bits by Diet_ID - 1, and how common each is among the clients.
constexpr double DietWeights[] = {30, 20, 8, 10, 6, 8, 4, 4, 8, 4};
constexpr int DietRenal = 2, DietDiabetic = 0, DietSoft = 3, DietVegetarian = 4, DietPureed = 7,
              DietLactose = 9;

QString digits(DemoRandom& rnd, int count)
{
    QString s;
    for (int i = 0; i < count; ++i)
        s += QChar(u'0' + rnd.below(10));
    return s;
}

QString phoneNumber(DemoRandom& rnd)
{
    // The 555 area code keeps every generated number out of real use.
    return QStringLiteral("555-%1-%2").arg(rnd.between(200, 999)).arg(digits(rnd, 4));
}

WeekFlags days(std::initializer_list<int> weekdays)
{
    WeekFlags f{};
    for (int d : weekdays)
        f[size_t(d)] = true;
    return f;
}

WeekFlags deliveryDays(DemoRandom& rnd, int service)
{
    switch (service) {
    case 1:
        switch (rnd.weighted({70, 15, 5, 7, 3})) {
        case 0:
            return days({Mon, Tue, Wed, Thu, Fri});
        case 1:
            return days({Mon, Wed, Fri});
        case 2:
            return days({Tue, Thu});
        case 3:
            return days({Mon, Tue, Wed, Thu, Fri, Sat});
        default:
            return days({Mon, Wed});
        }
    case 2:
        switch (rnd.weighted({50, 30, 20})) {
        case 0:
            return days({Mon});
        case 1:
            return days({Thu});
        default:
            return days({Mon, Thu});
        }
    case 3:
        return rnd.chance(0.7) ? days({Sat}) : days({Fri, Sat});
    case 4:
        return rnd.chance(0.8) ? days({Mon, Tue, Wed, Thu, Fri}) : days({Mon, Wed, Fri});
    case 5:
        return rnd.chance(0.7) ? days({Wed}) : days({Mon, Wed});
    default:
        return {};
    }
}

int dietMask(DemoRandom& rnd)
{
    const int bits = rnd.weighted({68, 22, 10});
    int mask = 0;
    for (int i = 0; i < bits; ++i)
        mask |= 1 << rnd.weightedIn(DietWeights);
    return mask;
}

// The cold bag that a diet mask takes; it agrees with Cold_Bag_Usage.
int coldBagFor(int mask)
{
    if (mask & (1 << DietRenal)) return 3;
    if (mask & (1 << DietDiabetic)) return 2;
    if (mask & ((1 << DietSoft) | (1 << DietPureed))) return 4;
    if (mask & (1 << DietVegetarian)) return 5;
    return 1;
}

QDate birthDate(DemoContext& ctx)
{
    // Ages from 60 to 100, most of them in the late seventies.
    const int age = 60 + int((ctx.rnd.uniform() + ctx.rnd.uniform()) / 2 * 40);
    return ctx.today.addYears(-age).addDays(-ctx.rnd.below(365));
}

void makePerson(DemoContext& ctx, DemoClient& c)
{
    DemoRandom& rnd = ctx.rnd;
    static const QStringList sexes = {QStringLiteral("F"), QStringLiteral("M"), QStringLiteral("U"),
                                      QStringLiteral("R")};
    c.sex = sexes[rnd.weighted({62, 36, 1, 1})];
    const bool female = c.sex == QLatin1String("F") || (c.sex != QLatin1String("M") && rnd.chance(0.5));
    c.first = rnd.pick(female ? femaleFirstNames() : maleFirstNames());
    if (rnd.chance(0.35))
        c.mid = QString(QChar(u'A' + rnd.below(26)));
    else if (rnd.chance(0.15))
        c.mid = rnd.pick(female ? femaleFirstNames() : maleFirstNames());
    c.last = rnd.pick(lastNames());
    c.dob = birthDate(ctx);
    static const QStringList races = {QStringLiteral("W"), QStringLiteral("B"), QStringLiteral("A"),
                                      QStringLiteral("N"), QStringLiteral("P"), QStringLiteral("M"),
                                      QStringLiteral("O"), QStringLiteral("U")};
    c.race = races[rnd.weighted({62, 18, 5, 2, 1, 3, 4, 5})];
    static const QStringList maritals = {QStringLiteral("W"), QStringLiteral("M"),  QStringLiteral("S"),
                                         QStringLiteral("D"), QStringLiteral("SP"), QStringLiteral("U")};
    c.marital = maritals[rnd.weighted({35, 20, 15, 15, 3, 7})];
    static const QStringList languages = {QStringLiteral("E"), QStringLiteral("S"), QStringLiteral("C"),
                                          QStringLiteral("R"), QStringLiteral("P"), QStringLiteral("I"),
                                          QStringLiteral("O")};
    c.language = languages[rnd.weighted({85, 8, 2, 1.5, 1.5, 1, 1})];
    c.home = randomAddress(ctx);
    static const QStringList phoneKinds = {QStringLiteral("H"), QStringLiteral("C"), QStringLiteral("P"),
                                           QStringLiteral("X")};
    c.phoneDesc = phoneKinds[rnd.weighted({60, 30, 8, 2})];
    if (c.phoneDesc != QLatin1String("X")) c.phone = phoneNumber(rnd);
    if (rnd.chance(0.3)) {
        static const QStringList others = {QStringLiteral("Daughter"), QStringLiteral("Son"),
                                           QStringLiteral("Neighbor"), QStringLiteral("Caregiver"),
                                           QStringLiteral("Niece")};
        c.otherPhone = phoneNumber(rnd);
        c.otherPhoneDesc = rnd.pick(others);
    }
}

// An organisation that takes meals in bulk for its residents or visitors.
void makeOrganisation(DemoContext& ctx, DemoClient& c, int number)
{
    const QStringList& names = organisationNames();
    c.org = true;
    c.last = names[number % names.size()];
    c.first.clear();
    c.mid.clear();
    c.sex.clear();
    c.dob = QDate();
    c.race.clear();
    c.marital.clear();
    c.language = QStringLiteral("E");
    c.phoneDesc = QStringLiteral("W");
    c.phone = phoneNumber(ctx.rnd);
}

// Status, dates, delivery kind and schedule of a client.
void makeStanding(DemoContext& ctx, DemoClient& c, int& frequencyTurn)
{
    DemoRandom& rnd = ctx.rnd;
    const QDate today = ctx.today;
    static const QStringList statuses = {QStringLiteral("A"), QStringLiteral("I"), QStringLiteral("S"),
                                         QStringLiteral("W"), QStringLiteral("N")};
    c.status = c.org ? QStringLiteral("A") : statuses[rnd.weighted({78, 7, 7, 5, 3})];

    static const double serviceWeights[] = {66, 12, 5, 11, 6};
    c.service = c.org ? 1 : 1 + rnd.weightedIn(serviceWeights);
    if (c.status == QLatin1String("N") && rnd.chance(0.4)) c.service = 0;
    c.days = deliveryDays(rnd, c.service);
    c.deliveryType = (!c.org && rnd.chance(0.09)) ? QStringLiteral("E") : QStringLiteral("O");

    static const QStringList frequencies = {QStringLiteral("A"), QStringLiteral("O"), QStringLiteral("E"),
                                            QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                                            QStringLiteral("4")};
    c.frequency = QStringLiteral("A");
    if (c.deliveryType == QLatin1String("O") && c.status == QLatin1String("A") && c.service > 0 && !c.org) {
        // The first ongoing clients take each frequency in turn, so that even
        // a small agency shows all of them.
        if (frequencyTurn < frequencies.size())
            c.frequency = frequencies[frequencyTurn++];
        else
            c.frequency = frequencies[rnd.weighted({84, 4, 4, 2, 2, 2, 2})];
    }

    if (c.status == QLatin1String("A")) {
        if (rnd.chance(0.03)) {
            // Starts soon: taken on, not yet delivered.
            c.added = today.addDays(-rnd.between(1, 30));
            c.start = today.addDays(rnd.between(1, 20));
        } else {
            c.added = today.addDays(-rnd.between(14, 6 * 365));
            c.start = std::min(c.added.addDays(rnd.between(0, 21)), today);
        }
        const int stopKind = rnd.weighted({95, 4, 1});
        if (stopKind == 1) {
            c.stop = today.addDays(rnd.between(3, 60));
            c.stopCode = rnd.pick(std::array{1, 3, 5, 7});
        } else if (stopKind == 2) {
            // Stopped a few days ago; the stop utility has not caught up yet.
            c.stop = today.addDays(-rnd.between(1, 10));
            c.stopCode = rnd.pick(std::array{1, 2, 3, 6});
        }
        if (c.stop.isValid() && c.stop <= c.start) c.stop = c.start.addDays(rnd.between(7, 30));
    } else if (c.status == QLatin1String("S") || c.status == QLatin1String("I")) {
        const bool stopped = c.status == QLatin1String("S");
        c.stop = today.addDays(stopped ? -rnd.between(1, 120) : -rnd.between(40, 900));
        c.added = c.stop.addDays(-rnd.between(60, 1500));
        c.start = c.added.addDays(rnd.between(0, 21));
        c.stopCode = 1 + rnd.below(7);
        if (!stopped) c.inactive = std::min(c.stop.addDays(rnd.between(30, 60)), today);
    } else if (c.status == QLatin1String("W")) {
        c.added = today.addDays(-rnd.between(5, 200));
    } else {
        c.added = today.addDays(-rnd.between(1, 45));
        if (rnd.chance(0.5)) c.start = today.addDays(rnd.between(3, 40));
    }
    c.intake = c.added;
    if (c.start.isValid() && c.status != QLatin1String("W")) {
        // Recertification every 26 weeks from the start, the next one due.
        QDate recert = c.start.addDays(26 * 7);
        while (recert < today.addDays(-30))
            recert = recert.addDays(26 * 7);
        c.recert = recert;
    }
    if (c.stopCode > 0 && rnd.chance(0.3)) {
        static const QStringList notes = {QStringLiteral("per daughter"), QStringLiteral("called office"),
                                          QStringLiteral("driver reported"), QStringLiteral("see notes")};
        c.stopNote = rnd.pick(notes);
    }
}

void makeDetails(DemoContext& ctx, DemoClient& c)
{
    DemoRandom& rnd = ctx.rnd;
    // Other services: counseling, case management, shopping and visiting,
    // the bits of the "other services" list in table order.
    const double shares[] = {0.05, 0.12, 0.06, 0.04};
    for (int bit = 0; bit < 4; ++bit)
        if (rnd.chance(shares[bit])) c.counselingMask |= 1 << bit;
    if (c.counselingMask & 2) c.primaryContact = rnd.chance(0.5) ? 2 : 3;

    if (!c.org) c.dietMask = dietMask(rnd);
    c.coldBag = (c.dietMask != 0 || rnd.chance(0.5)) ? coldBagFor(c.dietMask) : 0;
    c.cuisine = c.org ? 1 : 1 + rnd.weighted({78, 9, 5, 3, 2, 3});

    if (rnd.chance(0.2)) {
        static const QStringList windows = {QStringLiteral("8:00 AM"),  QStringLiteral("9:00 AM"),
                                            QStringLiteral("10:00 AM"), QStringLiteral("11:00 AM"),
                                            QStringLiteral("12:00 PM"), QStringLiteral("1:00 PM")};
        const int from = rnd.below(int(windows.size()) - 1);
        c.windowStart = windows[from];
        c.windowEnd = windows[rnd.between(from + 1, int(windows.size()) - 1)];
    }
}

void makeFunding(DemoContext& ctx, DemoClient& c)
{
    DemoRandom& rnd = ctx.rnd;
    if (c.service == 0 || !rnd.chance(0.85)) return;
    static const double fundWeights[] = {45, 25, 12, 8, 8, 2}; // in the order of ctx.fundCodes
    const QString first = ctx.fundCodes[rnd.weightedIn(fundWeights)];
    const int serviceId = rnd.chance(0.7) ? c.service : 0;
    if (rnd.chance(0.1)) {
        // Split funding: one source early in the week, another later.
        QString second = ctx.fundCodes[rnd.weightedIn(fundWeights)];
        if (second == first) second = QStringLiteral("PVT");
        c.funding.push_back({serviceId, first, days({Mon, Tue, Wed})});
        c.funding.push_back({serviceId, second, days({Thu, Fri, Sat, 6})});
    } else {
        c.funding.push_back({serviceId, first, days({Mon, Tue, Wed, Thu, Fri, Sat, 6})});
    }
}

// A client's own standing items, where his diet or wishes differ from the
// service's lists: pureed lunches, renal dinners, juice instead of milk, a
// second lunch, a loaf of bread on Mondays.
void makeOwnItems(DemoContext& ctx, DemoClient& c)
{
    if (c.deliveryType != QLatin1String("O") || c.service == 0) return;
    enum {
        HotLunch = 1,
        Milk = 2,
        FrozenDinner = 4,
        LiquidSupplement = 8,
        EmergencyPack = 10,
        Juice = 11,
        PureedLunch = 12,
        RenalDinner = 13,
        BreadLoaf = 16
    };
    DemoRandom& rnd = ctx.rnd;
    const bool pureed = c.dietMask & (1 << DietPureed);
    const bool renal = c.dietMask & (1 << DietRenal);
    const bool lactose = c.dietMask & (1 << DietLactose);
    const int extra = rnd.chance(0.06) ? rnd.weighted({40, 30, 20, 10}) : -1;
    if (!pureed && !renal && !lactose && extra < 0) return;
    const int extraDay = [&] {
        for (int d = 0; d < 7; ++d)
            if (c.days[size_t(d)]) return d;
        return -1;
    }();
    for (int d = 0; d < 7; ++d) {
        if (!c.days[size_t(d)]) continue;
        const auto it = ctx.defaultItems.find({c.service, d});
        if (it == ctx.defaultItems.end()) continue;
        ItemList list = it->second;
        bool changed = false;
        for (ItemLine& line : list) {
            if (pureed && line.itemId == HotLunch) {
                line.itemId = PureedLunch;
                changed = true;
            } else if (renal && line.itemId == FrozenDinner) {
                line.itemId = RenalDinner;
                changed = true;
            } else if (lactose && line.itemId == Milk) {
                line.itemId = Juice;
                changed = true;
            } else if (extra == 0 && (line.itemId == HotLunch || line.itemId == FrozenDinner)) {
                line.quantity += 1;
                changed = true;
            }
        }
        const int next = list.empty() ? 1 : list.back().sortOrder + 1;
        if (extra == 1 && d == extraDay) {
            list.push_back({BreadLoaf, 1, next});
            changed = true;
        } else if (extra == 2 && d == extraDay) {
            list.push_back({LiquidSupplement, 1, next});
            changed = true;
        } else if (extra == 3 && d == extraDay) {
            list.push_back({EmergencyPack, 1, next});
            changed = true;
        }
        if (changed) c.ownItems[size_t(d)] = std::move(list);
    }
}

// A second or third member of a household: lives at the head's address,
// mostly shares the head's name and schedule.
void makeMember(DemoContext& ctx, DemoClient& c, const DemoClient& head)
{
    DemoRandom& rnd = ctx.rnd;
    if (rnd.chance(0.8)) c.last = head.last;
    c.home = head.home;
    c.phone = head.phone;
    c.phoneDesc = head.phoneDesc;
    // A partner of about the head's age, and within the ages served.
    if (head.dob.isValid())
        c.dob = std::clamp(head.dob.addDays(rnd.between(-2500, 2500)), ctx.today.addYears(-100).addDays(1),
                           ctx.today.addYears(-60));
    if (head.sex == QLatin1String("M") || head.sex == QLatin1String("F")) {
        c.sex = head.sex == QLatin1String("M") ? QStringLiteral("F") : QStringLiteral("M");
        c.first = rnd.pick(c.sex == QLatin1String("F") ? femaleFirstNames() : maleFirstNames());
    }
    if (rnd.chance(0.85)) {
        c.status = head.status;
        c.service = head.service;
        c.days = head.days;
        c.deliveryType = head.deliveryType;
        c.frequency = head.frequency;
        c.added = head.added;
        c.intake = head.intake;
        c.start = head.start;
        c.stop = head.stop;
        c.inactive = head.inactive;
        c.recert = head.recert;
        c.stopCode = head.stopCode;
    }
}

} // namespace

DemoAddress randomAddress(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    std::vector<double> weights;
    for (const DemoTown& t : ctx.towns)
        weights.push_back(t.weight);
    const DemoTown& town = ctx.towns[size_t(rnd.weightedIn(weights))];
    double north = rnd.normal(town.northKm, town.sigmaKm);
    double east = rnd.normal(town.eastKm, town.sigmaKm);
    const double distance = std::hypot(north, east);
    if (distance > 14.5) {
        north *= 14.5 / distance;
        east *= 14.5 / distance;
    }
    DemoAddress a;
    a.lat = ctx.centreLat + north / 111.0;
    a.lon = ctx.centreLon + east / (111.0 * std::cos(ctx.centreLat * 3.141592653589793 / 180.0));
    a.city = town.city;
    a.state = ctx.state;
    a.county = town.county;
    if (town.zips.size() >= 3) {
        const double localNorth = north - town.northKm;
        const double localEast = east - town.eastKm;
        a.zip = town.zips[localNorth >= 0 ? (localEast >= 0 ? 0 : 1) : 2];
    } else {
        a.zip = town.zips.front();
    }
    const int number = rnd.chance(0.6) ? rnd.between(1, 999) : rnd.between(1000, 9899);
    a.houseNo = QString::number(number);
    static const QStringList prefixes = {QStringLiteral("N "), QStringLiteral("S "), QStringLiteral("E "),
                                         QStringLiteral("W ")};
    const QString prefix = rnd.chance(0.15) ? rnd.pick(prefixes) : QString();
    a.address1 = QStringLiteral("%1 %2%3 %4")
                     .arg(a.houseNo, prefix, rnd.pick(streetNames()), rnd.pick(streetSuffixes()));
    if (rnd.chance(0.12))
        a.address2 = QStringLiteral("Apt %1%2").arg(rnd.between(1, 24)).arg(QChar(u'A' + rnd.below(4)));
    return a;
}

void makeClients(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    const int n = ctx.clientCount;
    ctx.clients.reserve(size_t(n));
    // A handful of organisations, spread through the numbering.
    const int organisations = n >= 20 ? std::clamp(n / 250, 1, 8) : 0;
    const int orgEvery = organisations > 0 ? n / organisations : 0;
    int orgsMade = 0;
    int frequencyTurn = 0;

    while (int(ctx.clients.size()) < n) {
        const int index = int(ctx.clients.size());
        const int remaining = n - index;
        const bool org = organisations > 0 && orgsMade < organisations && index >= orgsMade * orgEvery + 7;
        int size = org ? 1 : 1 + rnd.weighted({95, 4.5, 0.5});
        size = std::min(size, remaining);

        DemoClient head;
        head.personId = index + 1;
        makePerson(ctx, head);
        if (org) makeOrganisation(ctx, head, orgsMade++);
        makeStanding(ctx, head, frequencyTurn);
        makeDetails(ctx, head);
        const int headNumber = ++ctx.lastClientNumber;
        head.clientId = QStringLiteral("%1.0").arg(headNumber);
        head.householdSize = size;
        ctx.clients.push_back(head);

        if (size == 1) continue;
        DemoHousehold household;
        household.id = int(ctx.households.size()) + 1;
        household.members.push_back(index);
        ctx.clients[size_t(index)].householdId = household.id;
        int dependents = 0;
        for (int m = 1; m < size; ++m) {
            DemoClient member;
            member.personId = index + m + 1;
            makePerson(ctx, member);
            makeStanding(ctx, member, frequencyTurn);
            makeDetails(ctx, member);
            makeMember(ctx, member, ctx.clients[size_t(index)]);
            if (rnd.chance(0.3)) {
                // A dependent carries the head's number with its own suffix.
                member.dependent = true;
                member.clientId = QStringLiteral("%1.%2").arg(headNumber).arg(++dependents);
            } else {
                member.clientId = QStringLiteral("%1.0").arg(++ctx.lastClientNumber);
            }
            member.householdId = household.id;
            member.householdSize = size;
            household.members.push_back(int(ctx.clients.size()));
            ctx.clients.push_back(member);
        }
        const DemoClient& h = ctx.clients[size_t(index)];
        household.name = QStringLiteral("%1 %2").arg(h.last, h.home.address1).trimmed();
        household.created = h.added;
        for (int m : household.members) {
            DemoClient& member = ctx.clients[size_t(m)];
            household.created = std::max(household.created, member.added);
            member.marital = member.dependent ? member.marital : QStringLiteral("M");
        }
        ctx.households.push_back(household);
    }

    for (DemoClient& c : ctx.clients) {
        makeFunding(ctx, c);
        makeOwnItems(ctx, c);
    }
}

} // namespace kb::demo
