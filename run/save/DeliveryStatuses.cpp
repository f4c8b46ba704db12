#include "save/DeliveryStatuses.h"

#include "MessageError.h"
#include "store/Database.h"
#include "store/DbError.h"

namespace kb {

void DeliveryStatuses::keep(Database& db, const QDate& date)
{
    m_statuses.clear();
    try {
        drop(db); // left by a save that this session did not finish
        db.execute(
            QStringLiteral("Select Person_ID, Svcs_Used, Delivery_Type, Delivery_Status  into Memory "
                           "DeliveryStatus from Deliveri where Deliv_Dt = :Deliv_Dt and Delivery_Status is "
                           "not null"),
            {{QStringLiteral("Deliv_Dt"), date}});
        // The save looks each new row up here rather than in the table.
        const ResultSet rows = db.execute(QStringLiteral(
            "Select Person_ID, Svcs_Used, Delivery_Type, Delivery_Status from Memory DeliveryStatus"));
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            m_statuses[{rows.value(r, 0).toLongLong(), rows.value(r, 1).toLongLong(),
                        rows.value(r, 2).toString()}] = rows.value(r, 3).toString();
    } catch (const DbError& e) {
        throw MessageError(QStringLiteral("Unexpected error occurred while retrieving Comped data: ") +
                           e.message());
    }
}

QString DeliveryStatuses::statusOf(qint64 personId, qint64 svcsUsed, const QString& deliveryType) const
{
    const auto it = m_statuses.find({personId, svcsUsed, deliveryType});
    return it == m_statuses.end() ? QString() : it->second;
}

void DeliveryStatuses::drop(Database& db)
{
    db.execute(QStringLiteral(" Drop table if exists Memory DeliveryStatus "));
}

} // namespace kb
