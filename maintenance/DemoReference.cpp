#include "DemoReference.h"

#include "DemoContext.h"
#include "DemoTable.h"
#include "Money.h"

#include <algorithm>
#include <cmath>

namespace kb::demo {

namespace {

WeekFlags flags(std::initializer_list<int> weekdays)
{
    WeekFlags f{};
    for (int d : weekdays)
        f[size_t(d)] = true;
    return f;
}

constexpr int Mon = 0, Tue = 1, Wed = 2, Thu = 3, Fri = 4, Sat = 5;

// Item numbers, in the order the items are made below.
enum ItemNo {
    HotLunch = 1,
    Milk,
    BreakfastBox,
    FrozenDinner,
    SupperSandwich,
    FruitCup,
    FrozenWeekendLunch,
    LiquidSupplement,
    ThickenedLiquids,
    EmergencyPack,
    Juice,
    PureedLunch,
    RenalDinner,
    HolidayDessert,
    FrozenBreakfast,
    BreadLoaf,
};

struct Fund
{
    int id;
    const char* code;
    const char* name;
    const char* party;
    const char* method;
    double rate;
};

// Funding sources: three third-party programmes, a county levy, private pay
// and a donation-only source for clients who cannot pay.
const Fund Funds[] = {
    {1, "T3C", "Older Americans Act Title III-C2", "3", "I", 6.50},
    {2, "MCW", "Medicaid Waiver", "3", "T", 8.75},
    {3, "CTY", "County Senior Services Levy", "3", "I", 5.25},
    {4, "VET", "Veterans Assistance Fund", "3", "I", 7.00},
    {5, "PVT", "Private Pay", "P", "I", 9.00},
    {6, "DON", "Donation Only", "N", "I", 0.00},
};

struct Staffer
{
    const char* name;
    const char* user;
    const char* level; // empty: may not sign in
    bool active;
    bool nutritionist;
    bool caseManager;
    bool driver;
    bool volunteer;
};

const Staffer StaffList[] = {
    {"Linda Carver", "lcarver", "A", true, false, false, false, false},
    {"Tom Reyes", "treyes", "W", true, false, true, false, false},
    {"Angela Brooks", "abrooks", "W", true, false, true, false, false},
    {"Priya Nair", "pnair", "W", true, true, false, false, false},
    {"Marcus Hale", "mhale", "R", true, false, false, true, false},
    {"Denise Walsh", "dwalsh", "O", true, false, false, false, false},
    {"Gary Olsen", "golsen", "W", false, false, true, false, false},
    {"Ruth Ann Pike", "rpike", "", true, false, false, false, true},
    {"Frank Ortiz", "", "", true, false, false, true, false},
    {"Ellen Marsh", "", "", true, false, false, true, true},
    {"Sam Whitaker", "", "", true, false, false, true, false},
};

void makeServices(DemoContext& ctx)
{
    // Delivery services are mutually exclusive: a client is on one of them.
    ctx.services = {
        {1,
         QStringLiteral("Home Delivered Meals"),
         QStringLiteral("D"),
         flags({Mon, Tue, Wed, Thu, Fri}),
         1,
         {},
         1},
        {2, QStringLiteral("Frozen Meals"), QStringLiteral("D"), flags({Mon, Thu}), 1, {}, 1},
        {3, QStringLiteral("Weekend Meals"), QStringLiteral("D"), flags({Sat}), 3, {}, 1},
        {4,
         QStringLiteral("Breakfast and Lunch"),
         QStringLiteral("D"),
         flags({Mon, Tue, Wed, Thu, Fri}),
         1,
         {},
         1},
        {5, QStringLiteral("Nutrition Supplements"), QStringLiteral("D"), flags({Wed}), 2, {}, 1},
        {6, QStringLiteral("Nutrition Counseling"), QStringLiteral("C"), {}, 0, {}, 2},
        {7, QStringLiteral("Case Management"), QStringLiteral("M"), {}, 2, {}, 3},
        {8, QStringLiteral("Grocery Shopping Assistance"), QStringLiteral("O"), {}, 3, {}, 4},
        {9, QStringLiteral("Friendly Visiting"), QStringLiteral("O"), {}, 0, {}, 5},
    };
    for (DemoService& s : ctx.services)
        for (const Fund& f : Funds)
            if (f.id == s.fundId) s.fundCode = QString::fromLatin1(f.code);
    for (const Fund& f : Funds) {
        ctx.fundCodes << QString::fromLatin1(f.code);
        ctx.fundMethods << QString::fromLatin1(f.method);
        ctx.fundRates.push_back(f.rate);
    }
}

void makeDiets(DemoContext& ctx)
{
    ctx.dietNames = {QStringLiteral("Diabetic"),      QStringLiteral("Low Sodium"),
                     QStringLiteral("Renal"),         QStringLiteral("Mechanical Soft"),
                     QStringLiteral("Vegetarian"),    QStringLiteral("Low Fat"),
                     QStringLiteral("Gluten Free"),   QStringLiteral("Pureed"),
                     QStringLiteral("Heart Healthy"), QStringLiteral("Lactose Free")};
    ctx.dietCodes = {QStringLiteral("DB"), QStringLiteral("LS"), QStringLiteral("RN"), QStringLiteral("MS"),
                     QStringLiteral("VG"), QStringLiteral("LF"), QStringLiteral("GF"), QStringLiteral("PU"),
                     QStringLiteral("HH"), QStringLiteral("LAC")};
}

void makeItems(DemoContext& ctx)
{
    auto add = [&](const char* meal, const char* name, int meals, int labels, double billed,
                   const char* confirm = "", bool frozen = false, bool bulk = false) {
        DemoItem item;
        item.id = int(ctx.items.size()) + 1;
        item.meal = QString::fromLatin1(meal);
        item.name = QString::fromLatin1(name);
        item.meals = meals;
        item.labels = labels;
        item.billed = billed;
        item.confirmation = QString::fromLatin1(confirm);
        item.frozen = frozen;
        item.bulk = bulk;
        ctx.items.push_back(item);
    };
    add("L", "Hot Lunch", 1, 1, 6.50);
    add("BV", "Milk (8 oz)", 0, 0, 0.45);
    add("B", "Breakfast Box", 1, 1, 3.25);
    add("D", "Frozen Dinner", 1, 1, 5.75, "", true);
    add("D", "Cold Supper Sandwich", 1, 1, 3.50);
    add("S", "Fruit Cup", 0, 0, 0.60);
    add("L", "Frozen Weekend Lunch", 1, 1, 5.75, "", true);
    add("MF", "Liquid Supplement (6-pack)", 0, 1, 12.00);
    add("SM", "Thickened Liquids (case)", 0, 1, 18.00);
    // Emergency packs go out before storms, only on the day's confirmation.
    add("O", "Shelf-Stable Emergency Pack", 5, 1, 15.00, "A", false, true);
    add("BV", "Juice (4 oz)", 0, 0, 0.35);
    add("L", "Hot Lunch - Pureed", 1, 1, 7.25);
    add("D", "Frozen Dinner - Renal", 1, 1, 6.25, "", true);
    // Holiday desserts ride along on dated deliveries; weekly ones ask first.
    add("S", "Holiday Dessert", 0, 0, 1.50, "O");
    // Frozen breakfasts belong to the weekly lists; dated ones ask first.
    add("B", "Frozen Breakfast", 1, 1, 2.95, "S", true);
    add("O", "Bread Loaf", 0, 0, 2.00, "", false, true);
}

void makeDefaultItems(DemoContext& ctx)
{
    auto put = [&](int service, int day, ItemList lines) {
        ctx.defaultItems[{service, day}] = std::move(lines);
    };
    // Home delivered meals: a hot lunch and milk every day, fruit in the
    // middle and at the end of the week, and frozen lunches for the weekend
    // on Fridays. Saturday's list serves the clients who also take Saturdays.
    for (int day : {Mon, Tue, Thu})
        put(1, day, {{HotLunch, 1, 1}, {Milk, 1, 2}});
    put(1, Wed, {{HotLunch, 1, 1}, {Milk, 1, 2}, {FruitCup, 1, 3}});
    put(1, Fri, {{HotLunch, 1, 1}, {Milk, 1, 2}, {FruitCup, 1, 3}, {FrozenWeekendLunch, 2, 4}});
    put(1, Sat, {{HotLunch, 1, 1}, {Milk, 1, 2}});
    put(2, Mon, {{FrozenDinner, 3, 1}, {FrozenBreakfast, 3, 2}, {Milk, 3, 3}});
    put(2, Thu, {{FrozenDinner, 4, 1}, {FrozenBreakfast, 4, 2}, {Milk, 4, 3}});
    put(3, Fri, {{FrozenWeekendLunch, 2, 1}});
    put(3, Sat, {{HotLunch, 1, 1}, {SupperSandwich, 1, 2}, {Juice, 1, 3}});
    for (int day : {Mon, Tue, Wed, Thu, Fri})
        put(4, day, {{BreakfastBox, 1, 1}, {HotLunch, 1, 2}, {Milk, 1, 3}});
    for (int day : {Mon, Wed})
        put(5, day, {{LiquidSupplement, 1, 1}});
    // Before a holiday weekend the kitchen adds a dessert to the Friday hot
    // meals and a shelf-stable pack to the Friday breakfast-and-lunch bags;
    // both go out only on the day's confirmation.
    ctx.defaultItems[{1, Fri}].push_back({HolidayDessert, 1, 5});
    ctx.defaultItems[{4, Fri}].push_back({EmergencyPack, 1, 4});
}

void makeTowns(DemoContext& ctx)
{
    ctx.state = QStringLiteral("OH");
    ctx.centreLat = 40.0712;
    ctx.centreLon = -83.3184;
    ctx.towns = {
        {QStringLiteral("Brookfield"),
         {QStringLiteral("45101"), QStringLiteral("45102"), QStringLiteral("45103")},
         QStringLiteral("Harmon"),
         0,
         0,
         4.0,
         52},
        {QStringLiteral("Millbrook"), {QStringLiteral("45110")}, QStringLiteral("Harmon"), 8.5, 2.5, 1.6, 11},
        {QStringLiteral("Cedar Falls"),
         {QStringLiteral("45115")},
         QStringLiteral("Harmon"),
         -5.5,
         8.5,
         1.5,
         9},
        {QStringLiteral("Oak Ridge"),
         {QStringLiteral("45120")},
         QStringLiteral("Wexley"),
         -8.0,
         -7.0,
         1.8,
         10},
        {QStringLiteral("Fairhaven"), {QStringLiteral("45125")}, QStringLiteral("Wexley"), 4.5, -9.5, 1.4, 8},
        {QStringLiteral("Pine Hollow"),
         {QStringLiteral("45130")},
         QStringLiteral("Harmon"),
         11.5,
         -2.0,
         1.0,
         5},
        {QStringLiteral("Glen Ellis"),
         {QStringLiteral("45135")},
         QStringLiteral("Wexley"),
         -12.0,
         -1.5,
         1.0,
         5},
    };
}

void makeRoutes(DemoContext& ctx)
{
    // About one driving route for every 150 clients; two congregate sites
    // and a walk-in pick-up at the main kitchen.
    const int driving = std::clamp(8 + ctx.clientCount / 150, 8, 60);
    for (int i = 1; i <= driving; ++i) {
        DemoRoute r;
        r.id = QStringLiteral("R%1").arg(i, 2, 10, QLatin1Char('0'));
        r.type = QStringLiteral("D");
        r.distCenter = 1;
        ctx.routes.push_back(r);
    }
    ctx.routes.push_back({QStringLiteral("C01"), QStringLiteral("Brookfield Senior Center lunch"),
                          QStringLiteral("C"), 3, 0, 0, 0});
    ctx.routes.push_back({QStringLiteral("C02"), QStringLiteral("Oak Ridge Community Room lunch"),
                          QStringLiteral("C"), 3, 0, 0, 0});
    ctx.routes.push_back({QStringLiteral("W01"), QStringLiteral("Walk-in pick-up at the main kitchen"),
                          QStringLiteral("I"), 1, 0, 0, 0});
}

void makeStaff(DemoContext& ctx)
{
    for (const Staffer& s : StaffList)
        if (s.active && QByteArray(s.level).size() > 0 && QByteArray(s.level) != "O" &&
            QByteArray(s.level) != "R")
            ctx.staffNames << QString::fromLatin1(s.name);
}

// ---- writing ----

void writeSettings(DemoContext& ctx)
{
    const DemoTown& city = ctx.towns.front();
    ctx.db.execute(
        QStringLiteral(
            "UPDATE Config SET ORGANIZATN = :Org, ORG_REPORT_NAME = :ReportName, ORG_ADDR = :Addr, "
            "ORG_CITY = :City, ORG_STATE = :State, ORG_ZIP = :Zip, ORG_PHONE = :Phone, DSERVICE = :Service, "
            "DCITY = :City, DSTATE = :State, DZIP = :Zip, DSAT = :Sat, DSUN = :Sun, "
            "ENABLE_ALTERNATE_ADDRESSES = :Alternate, ADDR_OVERRIDE_DESC = :AddrDesc, "
            "DCOUNSELINGSVC = :Counseling, DCOUNSELINGEVENT = :CounselingEvent, LAST_UPDATED = :Now"),
        {{QStringLiteral("Org"), QStringLiteral("Brookfield Area Senior Nutrition")},
         {QStringLiteral("ReportName"), QStringLiteral("Brookfield Area Senior Nutrition Program")},
         {QStringLiteral("Addr"), QStringLiteral("410 Mill St")},
         {QStringLiteral("City"), city.city},
         {QStringLiteral("State"), ctx.state},
         {QStringLiteral("Zip"), city.zips.front()},
         {QStringLiteral("Phone"), QStringLiteral("555-201-4400")},
         {QStringLiteral("Service"), 1},
         {QStringLiteral("Sat"), ctx.agencyDays[Sat]},
         {QStringLiteral("Sun"), ctx.agencyDays[6]},
         {QStringLiteral("Alternate"), true},
         {QStringLiteral("AddrDesc"),
          QStringLiteral("Daughter's Home\nSon's Home\nAdult Day Program\nRespite Care\nWinter Residence")},
         {QStringLiteral("Counseling"), 6},
         {QStringLiteral("CounselingEvent"), 2},
         {QStringLiteral("Now"), ctx.at(ctx.today, 8, 0)}});
}

void writeLocations(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Locatns"),
                {QStringLiteral("LOCATION_ID"), QStringLiteral("LOCATION_CD"),
                 QStringLiteral("COUNSELING_LOCATION"), QStringLiteral("DISTRIBUTION_CENTER"),
                 QStringLiteral("LOCATION"), QStringLiteral("LOCATION_ADDRESS"),
                 QStringLiteral("LOCATION_CITY"), QStringLiteral("LOCATION_STATE"),
                 QStringLiteral("LOCATION_ZIP"), QStringLiteral("LOCATION_PHONE"),
                 QStringLiteral("CREATE_DATE"), QStringLiteral("LAST_UPDATED")});
    const QDate created = ctx.today.addYears(-6);
    const QDateTime stamp = ctx.at(created, 9, 0);
    t.insert({1, QStringLiteral("MAIN"), false, true, QStringLiteral("Main Kitchen"),
              QStringLiteral("410 Mill St"), QStringLiteral("Brookfield"), ctx.state, QStringLiteral("45101"),
              QStringLiteral("555-201-4400"), created, stamp});
    t.insert({2, QStringLiteral("NORTH"), false, true, QStringLiteral("North Satellite Kitchen"),
              QStringLiteral("88 Church St"), QStringLiteral("Millbrook"), ctx.state, QStringLiteral("45110"),
              QStringLiteral("555-201-4480"), created, stamp});
    t.insert({3, QStringLiteral("SENIORCTR"), true, false, QStringLiteral("Brookfield Senior Center"),
              QStringLiteral("27 Park Ave"), QStringLiteral("Brookfield"), ctx.state, QStringLiteral("45102"),
              QStringLiteral("555-201-4520"), created, stamp});
}

void writeFunding(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Fundsrcs"),
                {QStringLiteral("FUND_ID"), QStringLiteral("FUND_CD"), QStringLiteral("FUND_SRCE"),
                 QStringLiteral("BILLED_PARTY"), QStringLiteral("REIMBURSEMENT_METHOD"),
                 QStringLiteral("REIMBURSEMENT_RATE"), QStringLiteral("REIMBURSEMENT_PERIOD"),
                 QStringLiteral("CITY"), QStringLiteral("STATE"), QStringLiteral("CREATE_DATE"),
                 QStringLiteral("LAST_UPDATED")});
    const QDate created = ctx.today.addYears(-6);
    for (const Fund& f : Funds)
        t.insert({f.id, QString::fromLatin1(f.code), QString::fromLatin1(f.name),
                  QString::fromLatin1(f.party), QString::fromLatin1(f.method),
                  QVariant::fromValue(Money::fromDouble(f.rate)), QStringLiteral("D"), ctx.towns.front().city,
                  ctx.state, created, ctx.at(created, 9, 30)});

    // Third parties pay a rate per meal of each kind on each delivery service.
    DemoTable pricing(ctx.db, QStringLiteral("Pricing"),
                      {QStringLiteral("Person_ID"), QStringLiteral("Fund_CD"), QStringLiteral("Service_ID"),
                       QStringLiteral("Method"), QStringLiteral("Unit"), QStringLiteral("Amount"),
                       QStringLiteral("Created_By"), QStringLiteral("Date_Created"),
                       QStringLiteral("Last_Update")});
    for (const Fund& f : Funds) {
        if (QByteArray(f.party) != "3") continue;
        for (const DemoService& s : ctx.services) {
            if (s.type != QLatin1String("D")) continue;
            const std::pair<const char*, double> units[] = {{"B", 0.55}, {"L", 1.0}, {"D", 0.85}};
            for (const auto& [unit, share] : units)
                pricing.insert(
                    {0, QString::fromLatin1(f.code), s.id, QStringLiteral("F"), QString::fromLatin1(unit),
                     QVariant::fromValue(Money::fromDouble(std::round(f.rate * share * 100) / 100)),
                     ctx.staffNames.front(), created, ctx.at(created, 10, 0)});
        }
    }
}

void writeServices(DemoContext& ctx)
{
    DemoTable events(ctx.db, QStringLiteral("EventCds"),
                     {QStringLiteral("EVENT_ID"), QStringLiteral("EVENT_DESC"), QStringLiteral("SERVICE_ID"),
                      QStringLiteral("SERVICE_DESC"), QStringLiteral("DEFAULT_HOURS"),
                      QStringLiteral("DEFAULT_SESSIONS")});
    events.insert({1, QStringLiteral("Meal Delivered"), 1, ctx.service(1).desc, 0, 1});
    events.insert({2, QStringLiteral("Nutrition Counseling Session"), 6, ctx.service(6).desc, 1, 1});
    events.insert({3, QStringLiteral("Case Management Contact"), 7, ctx.service(7).desc, 1, 1});
    events.insert({4, QStringLiteral("Shopping Trip"), 8, ctx.service(8).desc, 2, 1});
    events.insert({5, QStringLiteral("Friendly Visit"), 9, ctx.service(9).desc, 1, 1});

    DemoTable t(ctx.db, QStringLiteral("Services"),
                {QStringLiteral("SERVICE_ID"), QStringLiteral("SORT_ORDER"), QStringLiteral("SERVICE_DESC"),
                 QStringLiteral("SERVICE_TYPE"), QStringLiteral("MUTL_EXCL"), QStringLiteral("DEFAULT_EVENT"),
                 QStringLiteral("DEFAULT_FUNDING_SOURCE"), QStringLiteral("DEFAULT_FREQUENCY"),
                 QStringLiteral("DEFAULT_DELIVERY_TYPE"), QStringLiteral("DMON"), QStringLiteral("DTUE"),
                 QStringLiteral("DWED"), QStringLiteral("DTHU"), QStringLiteral("DFRI"),
                 QStringLiteral("DSAT"), QStringLiteral("DSUN"), QStringLiteral("CREATE_DATE"),
                 QStringLiteral("LAST_UPDATED")});
    const QDate created = ctx.today.addYears(-6);
    for (const DemoService& s : ctx.services) {
        const bool delivery = s.type == QLatin1String("D");
        QVariantList row = {s.id,
                            s.id * 10,
                            s.desc,
                            s.type,
                            delivery,
                            orNull(s.eventId),
                            orNull(s.fundId),
                            delivery ? QVariant(QStringLiteral("O")) : null(),
                            delivery ? QVariant(QStringLiteral("D")) : null()};
        for (bool day : s.days)
            row << day;
        row << created << ctx.at(created, 9, 15);
        t.insert(row);
    }
}

void writeDietsAndItems(DemoContext& ctx)
{
    const QDate created = ctx.today.addYears(-6);
    DemoTable diets(ctx.db, QStringLiteral("Diet"),
                    {QStringLiteral("DIET_ID"), QStringLiteral("DIET_DESC"), QStringLiteral("DIET_CODE"),
                     QStringLiteral("DATE_CREATED"), QStringLiteral("LAST_UPDATED")});
    for (qsizetype i = 0; i < ctx.dietCodes.size(); ++i)
        diets.insert({int(i + 1), ctx.dietNames[i], ctx.dietCodes[i], created, ctx.at(created, 9, 20)});

    static const QStringList mealOrder = {QStringLiteral("B"),  QStringLiteral("L"),  QStringLiteral("D"),
                                          QStringLiteral("S"),  QStringLiteral("BV"), QStringLiteral("MF"),
                                          QStringLiteral("SM"), QStringLiteral("O")};
    DemoTable items(
        ctx.db, QStringLiteral("Items"),
        {QStringLiteral("ITEM_ID"), QStringLiteral("MEAL"), QStringLiteral("MEAL_SORT"),
         QStringLiteral("MEAL_ITEM"), QStringLiteral("ITEM_SORT"), QStringLiteral("CONFIRMATION_REQUIRED"),
         QStringLiteral("FROZEN_ITM"), QStringLiteral("BULK_ITEM"), QStringLiteral("NUMBER_MEALS"),
         QStringLiteral("NUMBER_LABELS"), QStringLiteral("NUMBER_BAGS"), QStringLiteral("BILLED_AMOUNT"),
         QStringLiteral("ITEMIZE_DIETS"), QStringLiteral("CREATE_DATE"), QStringLiteral("LAST_UPDATED")});
    std::map<QString, int> perMeal;
    for (const DemoItem& item : ctx.items) {
        const int itemSort = ++perMeal[item.meal];
        items.insert({item.id, item.meal, int(mealOrder.indexOf(item.meal)) + 1, item.name, itemSort,
                      orNull(item.confirmation), item.frozen, item.bulk, item.meals, item.labels,
                      item.frozen ? 1 : 0, QVariant::fromValue(Money::fromDouble(item.billed)),
                      item.meal == QLatin1String("L") || item.meal == QLatin1String("D"), created,
                      ctx.at(created, 9, 25)});
    }

    DemoTable lines(ctx.db, QStringLiteral("Defdels"),
                    {QStringLiteral("PERSON_ID"), QStringLiteral("SERVICE_ID"), QStringLiteral("DEL_DAY"),
                     QStringLiteral("QUANTITY"), QStringLiteral("ITEM_ID"), QStringLiteral("SORT_ORDER")});
    for (const auto& [key, list] : ctx.defaultItems)
        for (const ItemLine& line : list)
            lines.insert(
                {0, key.first, DayCodes[size_t(key.second)], line.quantity, line.itemId, line.sortOrder});
}

void writeRoutes(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Routes"),
                {QStringLiteral("ROUTE_ID"), QStringLiteral("ROUTE_DESC"), QStringLiteral("ROUTE_TYPE"),
                 QStringLiteral("DIST_CENTER_ID"), QStringLiteral("DIST_CENTER_CD"),
                 QStringLiteral("CREATE_DATE"), QStringLiteral("LAST_UPDATED")});
    static const QStringList centreCodes = {QString(), QStringLiteral("MAIN"), QStringLiteral("NORTH"),
                                            QStringLiteral("SENIORCTR")};
    const QDate created = ctx.today.addYears(-5);
    for (const DemoRoute& r : ctx.routes)
        t.insert(
            {r.id, r.desc, r.type, r.distCenter, centreCodes[r.distCenter], created, ctx.at(created, 11, 0)});
}

void writePlaces(DemoContext& ctx)
{
    const QDate created = ctx.today.addYears(-6);
    DemoTable zips(ctx.db, QStringLiteral("Zips"),
                   {QStringLiteral("ZIP"), QStringLiteral("CITY"), QStringLiteral("ST"),
                    QStringLiteral("COUNTY"), QStringLiteral("REGION"), QStringLiteral("CREATE_DATE"),
                    QStringLiteral("LAST_UPDATED")});
    for (const DemoTown& town : ctx.towns)
        for (const QString& zip : town.zips)
            zips.insert(
                {zip, town.city, ctx.state, town.county,
                 town.county == QLatin1String("Harmon") ? QStringLiteral("North") : QStringLiteral("South"),
                 created, ctx.at(created, 9, 40)});

    DemoTable cuisines(ctx.db, QStringLiteral("Cuisines"),
                       {QStringLiteral("Cuisine_ID"), QStringLiteral("Cuisine"),
                        QStringLiteral("Date_Created"), QStringLiteral("Last_Updated")});
    const QStringList cuisineNames = {QStringLiteral("American"),   QStringLiteral("Latin American"),
                                      QStringLiteral("East Asian"), QStringLiteral("Kosher"),
                                      QStringLiteral("Halal"),      QStringLiteral("Southern")};
    for (qsizetype i = 0; i < cuisineNames.size(); ++i)
        cuisines.insert({int(i + 1), cuisineNames[i], created, ctx.at(created, 9, 45)});

    // A cold bag per diet family; the usage table maps the common masks.
    DemoTable bags(ctx.db, QStringLiteral("Cold_Bag_Codes"),
                   {QStringLiteral("Record_ID"), QStringLiteral("Bag_Code")});
    const QStringList bagNames = {QStringLiteral("Standard"), QStringLiteral("Diabetic"),
                                  QStringLiteral("Renal"), QStringLiteral("Soft Foods"),
                                  QStringLiteral("Vegetarian")};
    for (qsizetype i = 0; i < bagNames.size(); ++i)
        bags.insert({int(i + 1), bagNames[i]});
    DemoTable usage(ctx.db, QStringLiteral("Cold_Bag_Usage"),
                    {QStringLiteral("Diet_Restr"), QStringLiteral("Bag_ID")});
    const std::pair<int, int> masks[] = {{0, 1},  {1, 2},   {2, 1},   {4, 3},   {8, 4}, {16, 5}, {32, 1},
                                         {64, 1}, {128, 4}, {256, 1}, {512, 1}, {3, 2}, {5, 3}};
    for (const auto& [mask, bag] : masks)
        usage.insert({mask, bag});
}

void writeStaff(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Staff"),
                {QStringLiteral("Staff_ID"), QStringLiteral("Staff_Name"), QStringLiteral("Active"),
                 QStringLiteral("Nutritionist"), QStringLiteral("Case_Manager"), QStringLiteral("Driver"),
                 QStringLiteral("Volunteer"), QStringLiteral("Access_Level"), QStringLiteral("User_ID"),
                 QStringLiteral("DSort_Order"), QStringLiteral("Create_Date"),
                 QStringLiteral("Last_Updated")});
    int id = 0;
    for (const Staffer& s : StaffList) {
        ++id;
        const QDate created = ctx.today.addDays(-90 * id);
        t.insert({id, QString::fromLatin1(s.name), s.active, s.nutritionist, s.caseManager, s.driver,
                  s.volunteer, orNull(QString::fromLatin1(s.level)), orNull(QString::fromLatin1(s.user)),
                  QString::fromLatin1(s.user).isEmpty() ? null() : QVariant(QStringLiteral("LAST_FIRST")),
                  created, ctx.at(created, 13, 0)});
    }
}

} // namespace

void makeReference(DemoContext& ctx)
{
    // The agency serves Monday to Saturday.
    ctx.agencyDays = flags({Mon, Tue, Wed, Thu, Fri, Sat});
    makeServices(ctx);
    makeDiets(ctx);
    makeItems(ctx);
    makeDefaultItems(ctx);
    makeTowns(ctx);
    makeRoutes(ctx);
    makeStaff(ctx);
}

void writeReference(DemoContext& ctx)
{
    writeSettings(ctx);
    writeLocations(ctx);
    writeFunding(ctx);
    writeServices(ctx);
    writeDietsAndItems(ctx);
    writeRoutes(ctx);
    writePlaces(ctx);
    writeStaff(ctx);
}

} // namespace kb::demo
