#include "save/MealCrdtWriter.h"

#include "MessageError.h"
#include "items/DeliveryItems.h"
#include "store/DbError.h"

namespace kb {

namespace {

constexpr size_t batchRows = 1000;

} // namespace

MealCrdtWriter::MealCrdtWriter(Database& db, const QString& dow)
    : m_db(db), m_dow(dow),
      m_insert(db.query(QStringLiteral("Insert into MealCrdt (Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, "
                                       "Quantity, Congregate, Modified_Ml, "
                                       "Service_ID, Sort_Order) values (:Deliv_ID, :Person_ID, :Deliv_Dt, "
                                       ":DOW, :Item_ID, :Quantity, :Congregate, "
                                       ":Modified_Ml, :Service_ID, :Sort_Order);")))
{
}

void MealCrdtWriter::MoveToMealCrdts(const DeliveryItems& delivery, qint64 iDeliv_ID)
{
    const RunDelivery& row = delivery.delivery;
    for (const ItemListLine& line : delivery.lines) {
        m_pending.push_back({{QStringLiteral("Deliv_ID"), iDeliv_ID},
                             {QStringLiteral("Person_ID"), row.personId},
                             {QStringLiteral("Deliv_Dt"), row.deliveryDate},
                             {QStringLiteral("DOW"), m_dow},
                             {QStringLiteral("Item_ID"), line.itemId},
                             {QStringLiteral("Quantity"), line.quantity},
                             {QStringLiteral("Congregate"), row.congregate},
                             {QStringLiteral("Modified_Ml"), row.dietRestr > 0},
                             {QStringLiteral("Service_ID"), row.svcsUsed},
                             {QStringLiteral("Sort_Order"), line.sortOrder}});
    }
    if (m_pending.size() >= batchRows) flush();
}

void MealCrdtWriter::flush()
{
    if (m_pending.empty()) return;
    std::vector<Params> rows;
    rows.swap(m_pending);
    try {
        m_insert.execBatch(rows);
    } catch (const DbError& e) {
        throw MessageError(
            QStringLiteral("Unexpected error occurred while appending to the MealCrdt table: ") +
            e.message());
    }
    m_written += qint64(rows.size());
}

} // namespace kb
