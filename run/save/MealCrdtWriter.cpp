#include "save/MealCrdtWriter.h"

#include "MessageError.h"
#include "items/DeliveryItems.h"
#include "store/DbError.h"

namespace kb {

namespace {

// A batch goes out whenever it is full, so any add may meet the engine's
// error for an earlier row.
template <typename Work> void appending(Work&& work)
{
    try {
        work();
    } catch (const DbError& e) {
        throw MessageError(
            QStringLiteral("Unexpected error occurred while appending to the MealCrdt table: ") +
            e.message());
    }
}

} // namespace

MealCrdtWriter::MealCrdtWriter(Database& db, const QString& dow)
    : m_dow(dow),
      m_insert(db, QStringLiteral(
                       "Insert into MealCrdt (Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, "
                       "Congregate, Modified_Ml, Service_ID, Sort_Order) values (:Deliv_ID, :Person_ID, "
                       ":Deliv_Dt, :DOW, :Item_ID, :Quantity, :Congregate, :Modified_Ml, :Service_ID, "
                       ":Sort_Order);"))
{
}

void MealCrdtWriter::MoveToMealCrdts(const DeliveryItems& delivery, qint64 iDeliv_ID)
{
    const RunDelivery& row = delivery.delivery;
    appending([&] {
        for (const ItemListLine& line : delivery.lines)
            m_insert.add({{QStringLiteral("Deliv_ID"), iDeliv_ID},
                          {QStringLiteral("Person_ID"), row.personId},
                          {QStringLiteral("Deliv_Dt"), row.deliveryDate},
                          {QStringLiteral("DOW"), m_dow},
                          {QStringLiteral("Item_ID"), line.itemId},
                          {QStringLiteral("Quantity"), line.quantity},
                          {QStringLiteral("Congregate"), row.congregate},
                          {QStringLiteral("Modified_Ml"), row.dietRestr > 0},
                          {QStringLiteral("Service_ID"), row.svcsUsed},
                          {QStringLiteral("Sort_Order"), line.sortOrder}});
    });
}

void MealCrdtWriter::flush()
{
    appending([this] { m_insert.flush(); });
}

} // namespace kb
