#include "DemoClientTables.h"

#include "DemoContext.h"
#include "DemoTable.h"
#include "DemoWords.h"
#include "Money.h"

#include <algorithm>

namespace kb::demo {

namespace {

const QStringList& clientColumns()
{
    static const QStringList columns = [] {
        QStringList c = {
            QStringLiteral("PERSON_ID"),     QStringLiteral("CLIENT_ID"),
            QStringLiteral("LAST_NAME"),     QStringLiteral("FIRST_NAME"),
            QStringLiteral("MID_NAME"),      QStringLiteral("ORG_CLIENT"),
            QStringLiteral("SEX"),           QStringLiteral("DOB"),
            QStringLiteral("RACE"),          QStringLiteral("ETHNICITY"),
            QStringLiteral("MARITAL_ST"),    QStringLiteral("NUMBER_IN_HOUSEHOLD"),
            QStringLiteral("DEPENDENT"),     QStringLiteral("HOUSE_NO"),
            QStringLiteral("ADDRESS1"),      QStringLiteral("ADDRESS2"),
            QStringLiteral("CITY"),          QStringLiteral("STATE"),
            QStringLiteral("ZIP"),           QStringLiteral("COUNTY"),
            QStringLiteral("LATITUDE"),      QStringLiteral("LONGITUDE"),
            QStringLiteral("DIRECTIONS"),    QStringLiteral("CROSS_STREET"),
            QStringLiteral("INTAKE_DTE"),    QStringLiteral("FIRST_ML_DTE"),
            QStringLiteral("START_DTE"),     QStringLiteral("STOP_DTE"),
            QStringLiteral("INACTIVE_D"),    QStringLiteral("RECERT_DTE"),
            QStringLiteral("SUSPENDED"),     QStringLiteral("STATUS"),
            QStringLiteral("DELIVERY_TYPE"), QStringLiteral("ONGOING_FREQUENCY"),
            QStringLiteral("MONDAY"),        QStringLiteral("TUESDAY"),
            QStringLiteral("WEDNESDAY"),     QStringLiteral("THURSDAY"),
            QStringLiteral("FRIDAY"),        QStringLiteral("SATURDAY"),
            QStringLiteral("SUNDAY"),        QStringLiteral("SVCS_USED"),
            QStringLiteral("CNSLG_SVCS"),    QStringLiteral("DIET_RESTR"),
            QStringLiteral("DIET_DESC"),     QStringLiteral("COLD_BAG_ID"),
            QStringLiteral("CUISINE_ID"),    QStringLiteral("PREFERENCES"),
            QStringLiteral("STOP_CODE"),     QStringLiteral("STOP_REASON"),
        };
        for (const QString& day : DayCodes)
            c << day + QStringLiteral("_RTE");
        c << QStringLiteral("DEF_RTE");
        for (const QString& day : DayCodes)
            c << day + QStringLiteral("_STOP");
        c << QStringLiteral("DEF_STOP") << QStringLiteral("DELIVERY_WINDOW_START")
          << QStringLiteral("DELIVERY_WINDOW_END") << QStringLiteral("PHONE") << QStringLiteral("PHONE_DESC")
          << QStringLiteral("OPHONE") << QStringLiteral("ODESC") << QStringLiteral("URN")
          << QStringLiteral("INCOME_CATEGORY") << QStringLiteral("INCOME_MONTH") << QStringLiteral("LANGUAGE")
          << QStringLiteral("PRIMARY_CONTACT") << QStringLiteral("CUSTOM_DEL")
          << QStringLiteral("MISSED_DELIVERIES") << QStringLiteral("EXCUSED_DELIVERIES")
          << QStringLiteral("HOUSEHOLD_ID") << QStringLiteral("HANDICAPPED") << QStringLiteral("RURAL")
          << QStringLiteral("ADD_DTE") << QStringLiteral("EDIT_DTE");
        return c;
    }();
    return columns;
}

QVariant stopValue(const std::optional<double>& stop)
{
    return stop ? QVariant(*stop) : QVariant();
}

void writeClientRows(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    static const QStringList preferences = {QStringLiteral("No onions"),
                                            QStringLiteral("Likes extra bread"),
                                            QStringLiteral("No fish"),
                                            QStringLiteral("Small portions"),
                                            QStringLiteral("Prefers soft foods"),
                                            QStringLiteral("No spicy food")};
    static const QStringList directions = {QStringLiteral("Side door, knock loudly"),
                                           QStringLiteral("Leave with neighbor in unit B if no answer"),
                                           QStringLiteral("Dog in yard; call from the drive"),
                                           QStringLiteral("Ring bell twice, client is slow to the door"),
                                           QStringLiteral("Back entrance off the alley")};
    static const QStringList incomes = {QStringLiteral("L"), QStringLiteral("M"), QStringLiteral("H")};
    DemoTable t(ctx.db, QStringLiteral("Clients"), clientColumns());
    for (const DemoClient& c : ctx.clients) {
        const bool rural = c.home.city != ctx.towns.front().city && c.home.city != QLatin1String("Millbrook");
        QVariantList row = {
            c.personId,
            c.clientId,
            c.last,
            orNull(c.first),
            orNull(c.mid),
            c.org ? QStringLiteral("Y") : QStringLiteral("N"),
            orNull(c.sex),
            orNull(c.dob),
            orNull(c.race),
            c.org ? null() : QVariant(rnd.chance(0.08) ? QStringLiteral("Y") : QStringLiteral("N")),
            orNull(c.marital),
            c.householdSize,
            c.dependent ? QStringLiteral("Y") : QStringLiteral("N"),
            c.home.houseNo,
            c.home.address1,
            orNull(c.home.address2),
            c.home.city,
            c.home.state,
            c.home.zip,
            c.home.county,
            c.home.lat,
            c.home.lon,
            rnd.chance(0.1) ? QVariant(rnd.pick(directions)) : null(),
            rnd.chance(0.15)
                ? QVariant(rnd.pick(streetNames()) + QStringLiteral(" ") + rnd.pick(streetSuffixes()))
                : null(),
            orNull(c.intake),
            c.start.isValid() && c.start <= ctx.today ? QVariant(c.start) : null(),
            orNull(c.start),
            orNull(c.stop),
            orNull(c.inactive),
            orNull(c.recert),
            false,
            c.status,
            c.deliveryType,
            c.frequency,
        };
        for (bool day : c.days)
            row << day;
        row << orNull(c.service) << c.counselingMask << c.dietMask
            << orNull(ctx.dietText(c.dietMask, QStringLiteral(" / "))) << orNull(c.coldBag)
            << orNull(c.cuisine) << (rnd.chance(0.08) ? QVariant(rnd.pick(preferences)) : null())
            << orNull(c.stopCode) << orNull(c.stopNote);
        for (const QString& route : c.dayRoute)
            row << orNull(route);
        row << c.defRoute;
        for (size_t d = 0; d < 7; ++d)
            row << (c.dayRoute[d].isEmpty() ? null() : stopValue(c.dayStop[d]));
        bool ownItems = false;
        for (const ItemList& list : c.ownItems)
            ownItems = ownItems || !list.empty();
        const int income = c.org ? -1 : rnd.weighted({60, 30, 10});
        row << c.defStop << orNull(c.windowStart) << orNull(c.windowEnd) << orNull(c.phone)
            << orNull(c.phoneDesc) << orNull(c.otherPhone) << orNull(c.otherPhoneDesc)
            << QStringLiteral("KB%1").arg(c.personId, 7, 10, QLatin1Char('0'))
            << (income < 0 ? null() : QVariant(incomes[income]))
            << (income < 0
                    ? null()
                    : QVariant::fromValue(Money::fromDouble(double(800 + 600 * income + rnd.below(600)))))
            << orNull(c.language) << orNull(c.primaryContact) << ownItems << orNull(c.missed)
            << orNull(c.excused) << orNull(c.householdId)
            << (rnd.chance(0.25) ? QStringLiteral("Y") : QStringLiteral("N"))
            << (rural ? QStringLiteral("Y") : QStringLiteral("N")) << c.added
            << std::max(c.added, ctx.today.addDays(-rnd.below(120)));
        t.insert(row);
    }
}

void writeHouseholds(DemoContext& ctx)
{
    DemoTable households(ctx.db, QStringLiteral("Households"),
                         {QStringLiteral("Household_ID"), QStringLiteral("Household_Name"),
                          QStringLiteral("User"), QStringLiteral("Create_Date"),
                          QStringLiteral("Last_Updated")});
    DemoTable members(ctx.db, QStringLiteral("Household_Members"),
                      {QStringLiteral("Household_ID"), QStringLiteral("Person_ID"), QStringLiteral("Role"),
                       QStringLiteral("Head_of_Household"), QStringLiteral("User"),
                       QStringLiteral("Create_Date"), QStringLiteral("Last_Updated")});
    for (const DemoHousehold& h : ctx.households) {
        const QString user = ctx.anyStaff();
        households.insert({h.id, h.name, user, h.created, ctx.at(h.created, 10, 5)});
        for (size_t m = 0; m < h.members.size(); ++m) {
            const DemoClient& c = ctx.clients[size_t(h.members[m])];
            const QString role =
                m == 0 ? QStringLiteral("Head")
                : c.last == ctx.clients[size_t(h.members.front())].last
                    ? (c.dependent ? QStringLiteral("Adult Child") : QStringLiteral("Spouse"))
                    : QStringLiteral("Companion");
            members.insert({h.id, c.personId, role, m == 0, user, h.created, ctx.at(h.created, 10, 6)});
        }
    }
}

void writeFundUses(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("FundUses"),
                {QStringLiteral("Person_ID"), QStringLiteral("Service_ID"), QStringLiteral("Fund_CD"),
                 QStringLiteral("Reimbursement_Method"), QStringLiteral("Reimbursement_Rate"),
                 QStringLiteral("Reimbursement_Period"), QStringLiteral("Monday"), QStringLiteral("Tuesday"),
                 QStringLiteral("Wednesday"), QStringLiteral("Thursday"), QStringLiteral("Friday"),
                 QStringLiteral("Saturday"), QStringLiteral("Sunday"), QStringLiteral("Create_Date"),
                 QStringLiteral("Last_Updated")});
    for (const DemoClient& c : ctx.clients)
        for (const DemoFundUse& f : c.funding) {
            const qsizetype fund = ctx.fundCodes.indexOf(f.fundCode);
            QVariantList row = {c.personId,
                                f.serviceId,
                                f.fundCode,
                                ctx.fundMethods[fund],
                                QVariant::fromValue(Money::fromDouble(ctx.fundRates[size_t(fund)])),
                                QStringLiteral("D")};
            for (bool day : f.days)
                row << day;
            row << c.added << ctx.at(c.added, 11, 15);
            t.insert(row);
        }
}

void writeOwnItems(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("Defdels"),
                {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("SERVICE_ID"),
                 QStringLiteral("DEL_DAY"), QStringLiteral("QUANTITY"), QStringLiteral("ITEM_ID"),
                 QStringLiteral("SORT_ORDER")});
    for (const DemoClient& c : ctx.clients)
        for (size_t d = 0; d < 7; ++d)
            for (const ItemLine& line : c.ownItems[d])
                t.insert({c.personId, c.clientId, c.service, DayCodes[d], line.quantity, line.itemId,
                          line.sortOrder});
}

// The history a client's record would have gathered: made, started on a
// service, diets added, stopped and inactivated.
void writeClientHistory(DemoContext& ctx)
{
    DemoTable t(ctx.db, QStringLiteral("History"),
                {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("TRAN_DATE"),
                 QStringLiteral("EVENT_DATE"), QStringLiteral("EVENT"), QStringLiteral("USER")});
    static const QStringList stopReasons = {QString(),
                                            QStringLiteral("Moved"),
                                            QStringLiteral("Deceased"),
                                            QStringLiteral("Nursing Home"),
                                            QStringLiteral("Hospitalized"),
                                            QStringLiteral("No Longer Needs Service"),
                                            QStringLiteral("Refused Service"),
                                            QStringLiteral("Other")};
    for (const DemoClient& c : ctx.clients) {
        const QString user = ctx.anyStaff();
        int minute = c.personId % 40;
        auto add = [&](const QDate& day, const QDate& eventDate, const QString& event) {
            t.insert({c.personId, c.clientId, ctx.at(std::min(day, ctx.today), 9, minute++ % 60),
                      orNull(eventDate), event, user});
        };
        add(c.added, c.added, QStringLiteral("Client created with status of Never Started."));
        if (c.service > 0) add(c.added, c.added, QStringLiteral("Started on ") + ctx.service(c.service).desc);
        if (c.dietMask != 0)
            add(c.added, c.added,
                QStringLiteral("Diet added: ") + ctx.dietText(c.dietMask, QStringLiteral("/")));
        if (c.start.isValid())
            add(c.added, c.start, QStringLiteral("Start Date of %1 added.").arg(shortDate(c.start)));
        if (c.status == QLatin1String("W")) {
            add(c.added, c.added, QStringLiteral("Status changed from Never Started to Wait List."));
            continue;
        }
        if (c.status == QLatin1String("N")) continue;
        const QDate activated = std::min(c.start, ctx.today);
        add(activated, activated, QStringLiteral("Status changed from Never Started to Active."));
        if (c.stop.isValid()) {
            const QDate entered = std::min(c.stop.addDays(-ctx.rnd.between(0, 7)), ctx.today);
            const QString reason = c.stopCode > 0 ? stopReasons[c.stopCode] : QString();
            QString event = reason.isEmpty()
                                ? QStringLiteral("Stop date of %1 added.").arg(shortDate(c.stop))
                                : QStringLiteral("Stop date of %1 - %2").arg(shortDate(c.stop), reason);
            // The note goes along where the event column has room for it.
            if (!reason.isEmpty() && event.size() + 1 + c.stopNote.size() <= 50)
                event = (event + u' ' + c.stopNote).trimmed();
            add(std::max(entered, activated), c.stop, event);
        }
        if (c.status == QLatin1String("S") || c.status == QLatin1String("I"))
            add(c.stop, c.stop, QStringLiteral("Status changed from Active to Stopped."));
        if (c.status == QLatin1String("I"))
            add(c.inactive, c.inactive, QStringLiteral("Status changed from Stopped to Inactive."));
    }
}

} // namespace

void writeClients(DemoContext& ctx)
{
    writeClientRows(ctx);
    writeHouseholds(ctx);
    writeFundUses(ctx);
    writeOwnItems(ctx);
    writeClientHistory(ctx);
}

} // namespace kb::demo
