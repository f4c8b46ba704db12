#pragma once

#include <QDate>
#include <QString>

#include <map>
#include <tuple>

namespace kb {

class Database;

// MemTableDeliveryStatus: the Delivery_Status of the date's stored rows,
// kept in the memory table DeliveryStatus for the length of one save, so a
// status survives on the new row of the same Person_ID, Svcs_Used and
// Delivery_Type (exact in case).
class DeliveryStatuses
{
public:
    // Keeps the statuses of the date's rows before they are deleted. Throws
    // MessageError "Unexpected error occurred while retrieving Comped data: "
    // and the engine's message.
    void keep(Database& db, const QDate& date);
    // The status carried over to a new row; empty when none.
    QString statusOf(qint64 personId, qint64 svcsUsed, const QString& deliveryType) const;
    // Drops the memory table.
    static void drop(Database& db);

private:
    using Key = std::tuple<qint64, qint64, QString>;
    std::map<Key, QString> m_statuses;
};

} // namespace kb
