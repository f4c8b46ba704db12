#include "DemoAgency.h"

#include "store/Database.h"
#include "DemoApplications.h"
#include "DemoClientTables.h"
#include "DemoContext.h"
#include "DemoPeople.h"
#include "DemoReference.h"
#include "DemoRelations.h"
#include "DemoRouting.h"
#include "DemoRuns.h"
#include "DemoScheduleTables.h"
#include "DemoSchedules.h"

#include <optional>
#include <stdexcept>

namespace kb {

namespace {

// The counters go on from the numbers the demo used. The delivery counter
// holds the next number to use, as a saved run leaves it, so that the next
// save does not take a number twice.
void writeCounters(demo::DemoContext& ctx)
{
    ctx.db.execute(
        QStringLiteral("UPDATE IDNOS SET PERSON_ID = :Person, CLIENT_ID = :Client, DELIV_ID = :Deliv, "
                       "Suspension_Group_ID = :SuspensionGroup"),
        {{QStringLiteral("Person"), int(ctx.clients.size())},
         {QStringLiteral("Client"), ctx.lastClientNumber},
         {QStringLiteral("Deliv"), ctx.lastDelivId + 1},
         {QStringLiteral("SuspensionGroup"), ctx.lastSuspensionGroup}});
}

} // namespace

DemoSummary generateDemoAgency(Database& db, const DemoOptions& options)
{
    if (options.clients < 0)
        throw std::invalid_argument("The demo agency needs a number of clients of 0 or more");
    if (db.recordCount(QStringLiteral("Clients")) > 0 || db.recordCount(QStringLiteral("Services")) > 0)
        throw std::runtime_error(
            "The demo agency can only fill a new data directory; this one already has data");

    // Everything is worked out in memory first: the past runs are prepared
    // from the same schedules that are then written.
    demo::DemoContext ctx(db, options.seed, options.clients);
    demo::makeReference(ctx);
    demo::makeClients(ctx);
    demo::assignRoutes(ctx);
    demo::makeSchedules(ctx);
    const demo::DemoRuns runs = demo::makeRuns(ctx);

    // All or nothing; within the transaction of a new data directory, as
    // part of it.
    std::optional<TransactionGuard> transaction;
    if (!db.inTransaction())
        transaction.emplace(db);
    demo::writeReference(ctx);
    demo::writeClients(ctx);
    demo::writeSchedules(ctx);
    demo::writeRuns(ctx, runs);
    demo::writeApplications(ctx);
    demo::writeRelations(ctx); // draws last: the rest stays as it was
    writeCounters(ctx);
    if (transaction)
        transaction->commit();

    DemoSummary summary;
    summary.clients = int(ctx.clients.size());
    summary.episodicDeliveries = int(ctx.dated.size());
    summary.deliveries = ctx.savedDeliveries;
    return summary;
}

} // namespace kb
