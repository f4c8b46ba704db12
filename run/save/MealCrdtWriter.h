#pragma once

#include "save/BatchedStatement.h"

namespace kb {

struct DeliveryItems;

// Writes the items of a run's deliveries as MealCrdt rows. Rows are queued
// and sent in batches (one round trip per batch on a server), in the order
// they were queued; flush() sends the rest. Run it inside the save's
// transaction.
class MealCrdtWriter
{
public:
    MealCrdtWriter(Database& db, const QString& dow);

    // One MealCrdt row per line of the delivery, in the lines' order, under
    // iDeliv_ID: the delivery's Person_ID, Congregate, Delivery_Date and
    // service, Modified_Ml true when it has a diet.
    void MoveToMealCrdts(const DeliveryItems& delivery, qint64 iDeliv_ID);
    // Throws MessageError "Unexpected error occurred while appending to the
    // MealCrdt table: " and the engine's message.
    void flush();
    qint64 rowsWritten() const { return m_insert.rowsSent(); }

private:
    QString m_dow;
    BatchedStatement m_insert;
};

} // namespace kb
