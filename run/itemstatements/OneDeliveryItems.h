#pragma once

#include "items/DeliveryItems.h"
#include "items/RunDefaults.h"
#include "itemstatements/ItemStatements.h"

#include <QDate>

namespace kb {

class Database;
struct ConfirmedItems;

// The items, counts and funding of single deliveries, found one at a time
// with the item statements and the weekday's funding statement: the dated
// delivery's items, else the client's, else the service's default, each
// asked by a statement of its own. For a delivery looked at by itself (a
// walk-in), and the yardstick the whole-run lookup is held to.
class OneDeliveryItems
{
public:
    OneDeliveryItems(Database& db, const QDate& runDate, const ConfirmedItems& confirmed);

    const RunDefaults& defaults() const { return m_defaults; }
    // Throws MessageError when the delivery's service is not valid.
    DeliveryItems find(const RunDelivery& delivery);

private:
    Database& m_db;
    QString m_dow;
    ItemStatements m_statements;
    RunDefaults m_defaults;
    Query m_funding;
};

} // namespace kb
