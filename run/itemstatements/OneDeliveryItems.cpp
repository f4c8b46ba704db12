#include "itemstatements/OneDeliveryItems.h"

#include "MessageError.h"
#include "items/RunItems.h"
#include "selection/RunStatements.h"

namespace kb {

namespace {

// Item rows: item_id, quantity, sort_order, number_meals.
std::vector<ItemListLine> linesOf(const ResultSet& rows)
{
    std::vector<ItemListLine> lines;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        ItemListLine line;
        line.itemId = rows.value(r, 0).toLongLong();
        line.quantity = rows.value(r, 1);
        line.sortOrder = rows.value(r, 2);
        line.numberMeals = rows.value(r, 3);
        lines.push_back(std::move(line));
    }
    return lines;
}

qint64 total(const ResultSet& sums, const QString& column)
{
    return sums.value(0, column).toLongLong();
}

} // namespace

OneDeliveryItems::OneDeliveryItems(Database& db, const QDate& runDate, const ConfirmedItems& confirmed)
    : m_db(db), m_dow(RunStatements::dayCode(runDate)),
      m_funding(db.query(RunStatements::fundingStatement(runDate.dayOfWeek())))
{
    m_statements.build(confirmed);
    m_defaults.load(db, m_statements, m_dow);
}

DeliveryItems OneDeliveryItems::find(const RunDelivery& delivery)
{
    if (!m_defaults.isValidService(delivery.svcsUsed))
        throw MessageError(RunDefaults::invalidServiceMessage(delivery.personId));
    DeliveryItems items;
    items.delivery = delivery;
    const qint64 service = delivery.svcsUsed.toLongLong();
    ListCounts counts;

    // A list of the delivery's own: its rows, and its counts from the sums
    // of the same list.
    const auto ownList = [&](ItemQuery rows, ItemQuery meals, ItemQuery labels, const Params& values,
                             ItemListLevel level) {
        items.lines = linesOf(m_statements.run(m_db, rows, values));
        if (items.lines.empty()) return;
        items.level = level;
        counts = {total(m_statements.run(m_db, meals, values), QStringLiteral("Total_Meals")),
                  total(m_statements.run(m_db, labels, values), QStringLiteral("Total_Labels"))};
    };
    if (delivery.isDated())
        ownList(ItemQuery::GetEpisodicItems, ItemQuery::GetEpisodicNumberOfMeals,
                ItemQuery::GetEpisodicNumberOfLabels,
                {{QStringLiteral("person_id"), delivery.personId},
                 {QStringLiteral("deliv_ID"), delivery.delivId}},
                ItemListLevel::Dated);
    if (items.lines.empty())
        ownList(ItemQuery::GetOngoingItems, ItemQuery::GetOngoingNumberOfMeals,
                ItemQuery::GetOngoingNumberOfLabels,
                {{QStringLiteral("person_id"), delivery.personId},
                 {QStringLiteral("del_day"), m_dow},
                 {QStringLiteral("Service_ID"), service},
                 {QStringLiteral("svcs_used"), service}},
                ItemListLevel::Client);
    if (items.lines.empty()) {
        items.lines = linesOf(
            m_statements.run(m_db, ItemQuery::GetDefaultItems,
                             {{QStringLiteral("del_day"), m_dow}, {QStringLiteral("Svcs_Used"), service}}));
        items.level = items.lines.empty() ? ItemListLevel::None : ItemListLevel::Default;
    }

    const ResultSet funding = m_funding.bind(QStringLiteral("Person_id"), delivery.personId)
                                  .bind(QStringLiteral("Service_ID"), service)
                                  .exec();
    settleDelivery(items, m_defaults, counts,
                   funding.isEmpty() ? std::nullopt : std::optional<QString>(funding.value(0, 0).toString()));
    return items;
}

} // namespace kb
