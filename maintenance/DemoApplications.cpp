#include "DemoApplications.h"

#include "DemoContext.h"
#include "DemoTable.h"
#include "Money.h"

#include <algorithm>
#include <cmath>

namespace kb::demo {

namespace {

struct Paper
{
    const char* name;
    const char* level; // "R" required, "O" optional
};

const Paper Documents[] = {
    {"Intake Assessment Form", "R"},   {"Proof of Age", "R"},
    {"Proof of Income", "O"},          {"Physician's Referral", "O"},
    {"Signed Service Agreement", "R"}, {"Emergency Contact Form", "O"},
};
const Paper Conditions[] = {
    {"Age 60 or older, or spouse of an eligible client", "R"},
    {"Homebound by illness, disability or isolation", "R"},
    {"Unable to prepare meals without help", "R"},
    {"No other regular source of meals", "O"},
    {"Lives within the agency's service area", "R"},
};

// The status an application has for a client in a status.
QString applicationStatus(DemoRandom& rnd, const QString& clientStatus)
{
    if (clientStatus == QLatin1String("W")) return QStringLiteral("W");
    if (clientStatus == QLatin1String("N"))
        return rnd.chance(0.5) ? QStringLiteral("P") : QStringLiteral("I");
    if (clientStatus == QLatin1String("I"))
        return rnd.chance(0.3) ? QStringLiteral("C") : QStringLiteral("A");
    return QStringLiteral("A");
}

QString statusWord(const QString& code)
{
    if (code == QLatin1String("A")) return QStringLiteral("Approved");
    if (code == QLatin1String("P")) return QStringLiteral("Pending");
    if (code == QLatin1String("I")) return QStringLiteral("In Process");
    if (code == QLatin1String("W")) return QStringLiteral("Wait-Listed");
    return QStringLiteral("Cancelled");
}

void writeTemplates(DemoContext& ctx, const QDate& created)
{
    const QString by = ctx.staffNames.front();
    DemoTable docs(ctx.db, QStringLiteral("Docs"),
                   {QStringLiteral("Doc_ID"), QStringLiteral("Doc_Name"), QStringLiteral("Doc_Description"),
                    QStringLiteral("Requirement_Level"), QStringLiteral("Created_By"),
                    QStringLiteral("Create_Date"), QStringLiteral("Last_Updated")});
    int id = 0;
    for (const Paper& d : Documents) {
        ++id;
        docs.insert({id, QString::fromLatin1(d.name), QString::fromLatin1(d.name),
                     QString::fromLatin1(d.level), by, created, ctx.at(created, 9, 40)});
    }
    DemoTable conditions(ctx.db, QStringLiteral("Conditions"),
                         {QStringLiteral("Condition_ID"), QStringLiteral("Condition"),
                          QStringLiteral("Requirement_Level"), QStringLiteral("Created_By"),
                          QStringLiteral("Create_Date"), QStringLiteral("Last_Updated")});
    id = 0;
    for (const Paper& c : Conditions) {
        ++id;
        conditions.insert({id, QString::fromLatin1(c.name), QString::fromLatin1(c.level), by, created,
                           ctx.at(created, 9, 45)});
    }
    const QStringList columns = {QStringLiteral("SERVICE_ID"),  QStringLiteral("REQUIREMENT_LEVEL"),
                                 QStringLiteral("SORT_ORDER"),  QStringLiteral("CREATED_BY"),
                                 QStringLiteral("CREATE_DATE"), QStringLiteral("LAST_UPDATED")};
    DemoTable serviceDocs(ctx.db, QStringLiteral("ServiceDocs"),
                          QStringList{QStringLiteral("DOC_ID")} + columns);
    DemoTable serviceConditions(ctx.db, QStringLiteral("ServiceConditions"),
                                QStringList{QStringLiteral("CONDITION_ID")} + columns);
    for (const DemoService& s : ctx.services) {
        if (s.type != QLatin1String("D")) continue;
        int order = 0;
        for (int d = 0; d < int(std::size(Documents)); ++d)
            serviceDocs.insert({d + 1, s.id, QString::fromLatin1(Documents[d].level), ++order, by, created,
                                ctx.at(created, 9, 50)});
        order = 0;
        for (int c = 0; c < int(std::size(Conditions)); ++c)
            serviceConditions.insert({c + 1, s.id, QString::fromLatin1(Conditions[c].level), ++order, by,
                                      created, ctx.at(created, 9, 55)});
    }
}

void writeClientApplications(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    DemoTable apps(ctx.db, QStringLiteral("ServiceApps"),
                   {QStringLiteral("App_ID"), QStringLiteral("App_Date"), QStringLiteral("Person_ID"),
                    QStringLiteral("Service_ID"), QStringLiteral("Assigned_To"), QStringLiteral("App_Status"),
                    QStringLiteral("Status_Comments"), QStringLiteral("Updated_By"),
                    QStringLiteral("Last_Updated"), QStringLiteral("Close_Date")});
    const QStringList paperColumns = {QStringLiteral("App_ID"),      QStringLiteral("Person_ID"),
                                      QStringLiteral("Service_ID"),  QStringLiteral("Requirement_Level"),
                                      QStringLiteral("Sort_Order"),  QStringLiteral("Create_Date"),
                                      QStringLiteral("Last_Updated")};
    DemoTable docUses(ctx.db, QStringLiteral("DocUses"),
                      paperColumns + QStringList{QStringLiteral("Doc_ID"), QStringLiteral("Completed"),
                                                 QStringLiteral("Completed_Date"),
                                                 QStringLiteral("Doc_Status")});
    DemoTable conditionUses(
        ctx.db, QStringLiteral("ConditionUses"),
        paperColumns + QStringList{QStringLiteral("Condition_ID"), QStringLiteral("Meets_Conditions"),
                                   QStringLiteral("Date_Met"), QStringLiteral("Condition_Status")});
    DemoTable history(ctx.db, QStringLiteral("History"),
                      {QStringLiteral("PERSON_ID"), QStringLiteral("CLIENT_ID"), QStringLiteral("TRAN_DATE"),
                       QStringLiteral("EVENT_DATE"), QStringLiteral("EVENT"), QStringLiteral("USER")});
    static const QStringList comments = {QString(),
                                         QStringLiteral("Referred by the hospital discharge planner."),
                                         QStringLiteral("Daughter called to apply on his behalf."),
                                         QStringLiteral("Home visit done; kitchen not usable."),
                                         QStringLiteral("Waiting on the physician's referral.")};
    const int assignable = std::max(1, std::min(4, int(ctx.staffNames.size())));
    int appId = 0;
    for (const DemoClient& c : ctx.clients) {
        if (c.service <= 0 || c.org || ctx.service(c.service).type != QLatin1String("D")) continue;
        const QString status = applicationStatus(rnd, c.status);
        const QDate applied = std::min(c.intake.isValid() ? c.intake : c.added, ctx.today);
        const bool settled = status == QLatin1String("A") || status == QLatin1String("C");
        const QString user = ctx.anyStaff();
        ++appId;
        const QDate updated = std::min(c.start.isValid() ? c.start : applied.addDays(3), ctx.today);
        apps.insert({appId, applied, c.personId, c.service, rnd.between(1, assignable), status,
                     orNull(rnd.pick(comments)), user, updated,
                     status == QLatin1String("C") && c.inactive.isValid() ? QVariant(c.inactive) : null()});
        int order = 0;
        for (int d = 0; d < int(std::size(Documents)); ++d) {
            const bool done = settled || rnd.chance(0.4);
            docUses.insert(
                {appId, c.personId, c.service, QString::fromLatin1(Documents[d].level), ++order, applied,
                 ctx.at(applied, 10, 30), d + 1, done ? QStringLiteral("Y") : QStringLiteral("N"),
                 done ? QVariant(std::min(applied.addDays(rnd.between(0, 10)), ctx.today)) : null(),
                 done ? QStringLiteral("Received") : QStringLiteral("Requested")});
        }
        order = 0;
        for (int k = 0; k < int(std::size(Conditions)); ++k) {
            const bool met = settled || rnd.chance(0.6);
            conditionUses.insert({appId, c.personId, c.service, QString::fromLatin1(Conditions[k].level),
                                  ++order, applied, ctx.at(applied, 10, 35), k + 1,
                                  met ? QStringLiteral("Y") : QStringLiteral("N"),
                                  met ? QVariant(applied) : null(),
                                  met ? QStringLiteral("Verified") : QStringLiteral("To check")});
        }
        history.insert({c.personId, c.clientId, ctx.at(applied, 10, 31), applied,
                        QStringLiteral("Service App created with status of In Process."), user});
        if (status != QLatin1String("I"))
            history.insert(
                {c.personId, c.clientId, ctx.at(updated, 11, 2), updated,
                 QStringLiteral("App status changed from In Process to ") + statusWord(status) + u'.', user});
    }
}

// A few clients have their own rate with their funder, and a few pledge
// what they give for their meals.
void writeClientRates(DemoContext& ctx)
{
    DemoRandom& rnd = ctx.rnd;
    DemoTable pricing(ctx.db, QStringLiteral("Pricing"),
                      {QStringLiteral("Person_ID"), QStringLiteral("Fund_CD"), QStringLiteral("Service_ID"),
                       QStringLiteral("Method"), QStringLiteral("Unit"), QStringLiteral("Item_ID"),
                       QStringLiteral("Amount"), QStringLiteral("Created_By"), QStringLiteral("Date_Created"),
                       QStringLiteral("Last_Update")});
    const auto money = [](double v) {
        return QVariant::fromValue(Money::fromDouble(std::round(v * 100) / 100));
    };
    for (const DemoClient& c : ctx.clients) {
        if (c.status != QLatin1String("A") || c.funding.empty()) continue;
        const DemoFundUse& use = c.funding.front();
        const qsizetype fund = ctx.fundCodes.indexOf(use.fundCode);
        if (fund >= 0 && ctx.fundMethods[fund] == QLatin1String("I") && ctx.fundRates[size_t(fund)] > 0 &&
            rnd.chance(0.04))
            pricing.insert({c.personId, use.fundCode, use.serviceId, QStringLiteral("F"), QStringLiteral("L"),
                            null(), money(ctx.fundRates[size_t(fund)] * rnd.range(0.8, 1.2)), ctx.anyStaff(),
                            c.added, ctx.at(c.added, 14, 10)});
        if (rnd.chance(0.05))
            pricing.insert({c.personId, null(), null(), QStringLiteral("P"), QStringLiteral("L"), null(),
                            money(rnd.range(1.0, 4.0)), ctx.anyStaff(), c.added, ctx.at(c.added, 14, 20)});
    }
}

} // namespace

void writeApplications(DemoContext& ctx)
{
    writeTemplates(ctx, ctx.today.addYears(-6));
    writeClientApplications(ctx);
    writeClientRates(ctx);
}

} // namespace kb::demo
