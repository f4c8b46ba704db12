#include "items/RunItems.h"

#include "DeliveryItemLists.h"
#include "MessageError.h"
#include "confirmation/ConfirmedItems.h"
#include "items/ItemCounts.h"
#include "items/RunFunding.h"
#include "selection/RunStatements.h"
#include "worktable/MemTableDeliveries.h"

namespace kb {

namespace {

// The run's deliveries for the item lookup: the dated list is looked for
// only on rows of a dated delivery.
const QString deliveriesOfRun =
    QStringLiteral("Select RecordID as Request_ID, Person_ID, Svcs_Used as Service_ID, "
                   "If(Substring(Delivery_Type from 1 for 1) in "
                   "('E', 'S') then Deliv_ID else Null) as Dated_ID from Memory MemTableDeliveries");

} // namespace

void settleDelivery(DeliveryItems& items, const RunDefaults& defaults, const ListCounts& listCounts,
                    const std::optional<QString>& clientFunding)
{
    const qint64 service = items.delivery.svcsUsed.toLongLong();
    items.customItems = items.level == ItemListLevel::Dated || items.level == ItemListLevel::Client;
    if (items.customItems) {
        items.numberMeals = listCounts.meals;
        items.numberLabels = listCounts.labels;
    } else {
        items.numberMeals = defaults.meals(service);
        items.numberLabels = defaults.labels(service);
    }
    if (items.numberLabels == 0) items.numberLabels = 1;
    items.fundingDesc = clientFunding ? *clientFunding : defaults.fundingDesc(service);
}

RunItems RunItems::find(Database& db, MemTableDeliveries& table, const QDate& runDate,
                        const ConfirmedItems& confirmed)
{
    RunItems run;
    const QString dow = RunStatements::dayCode(runDate);
    run.m_statements.build(confirmed);
    run.m_defaults.load(db, run.m_statements, dow);

    const ResultSet rows = table.select(DeliveriesIndex::RouteStopClient, RunDelivery::columns());
    run.m_deliveries.resize(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        RunDelivery& d = run.m_deliveries[size_t(r)].delivery;
        d = RunDelivery::read(rows, r);
        if (!run.m_defaults.isValidService(d.svcsUsed))
            throw MessageError(RunDefaults::invalidServiceMessage(d.personId));
    }

    DeliveryItemLists lists;
    lists.load(db, deliveriesOfRun, {}, dow, [&](const ItemListLine& line, ItemListLevel level) {
        return confirmed.allows(line.itemId, line.confirmationRequired, level == ItemListLevel::Dated);
    });
    const QHash<qint64, QString> funding = fundingOfRun(db, runDate.dayOfWeek());

    for (DeliveryItems& items : run.m_deliveries) {
        const DeliveryItemLists::Choice choice = lists.find(items.delivery.recordId);
        items.level = choice.level;
        items.lines.assign(choice.lines.begin(), choice.lines.end());
        const auto fund = funding.constFind(items.delivery.recordId);
        settleDelivery(items, run.m_defaults, {totalMeals(items.lines), totalLabels(items.lines)},
                       fund != funding.constEnd() ? std::optional<QString>(*fund) : std::nullopt);
    }
    return run;
}

} // namespace kb
