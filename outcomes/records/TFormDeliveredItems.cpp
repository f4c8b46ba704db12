#include "records/TFormDeliveredItems.h"

#include "records/DeliveryRecords.h"
#include "records/TFormDeliveries.h"

namespace kb {

TFormDeliveredItems::TFormDeliveredItems(Database& db) : m_db(db) {}

QStringList TFormDeliveredItems::columnTitles()
{
    return {QStringLiteral("Date"),           QStringLiteral("DOW"),
            QStringLiteral("Quantity"),       QStringLiteral("Item"),
            QStringLiteral("Meals per Item"), QStringLiteral("Total Credits")};
}

bool TFormDeliveredItems::follow(const TFormDeliveries& list)
{
    const qint64 delivId = list.currentDelivId();
    if (delivId == m_delivId) return false;
    m_delivId = delivId;
    read();
    return true;
}

void TFormDeliveredItems::read()
{
    m_items = m_delivId > 0 ? delivery_records::deliveredItems(m_db, m_delivId) : ResultSet();
}

} // namespace kb
