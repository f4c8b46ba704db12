#pragma once

#include "save/BatchedStatement.h"

namespace kb {

struct DeliveryItems;

// Writes a run's deliveries as Deliveri rows, one per row of the working
// table, in batches inside the save's transaction; flush() sends the rest.
class DeliveriWriter
{
public:
    DeliveriWriter(Database& db, const QString& dow);

    // The row's own values, its items' counts and funding, and what the save
    // decided: its number, its Delivery_Type (lower case when it continues
    // a delivery) and the status carried over (empty for none).
    void add(const DeliveryItems& delivery, qint64 delivId, const QString& deliveryType,
             const QString& status);
    void flush() { m_insert.flush(); }
    qint64 rowsWritten() const { return m_insert.rowsSent(); }

private:
    QString m_dow;
    BatchedStatement m_insert;
};

} // namespace kb
