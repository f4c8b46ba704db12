#pragma once

#include "store/ResultSet.h"

#include <QStringList>

namespace kb {

class Database;
class TFormDeliveries;

// "Delivered Items": the items of the delivery that is current in "Recent
// Deliveries". It stays open beside the list and follows it: each time the
// list moves to another delivery, is read again or loses its rows, the
// items are read for the delivery then current.
class TFormDeliveredItems
{
public:
    explicit TFormDeliveredItems(Database& db);

    static QString caption() { return QStringLiteral("Delivered Items"); }
    // The titles of the columns of items(), in their order.
    static QStringList columnTitles();

    // Reads the items of the list's current delivery when it is another
    // than the one shown; true when the items were read again.
    bool follow(const TFormDeliveries& list);
    // The delivery shown; 0 when the list has none.
    qint64 delivId() const { return m_delivId; }
    const ResultSet& items() const { return m_items; }

private:
    void read();

    Database& m_db;
    qint64 m_delivId = 0;
    ResultSet m_items;
};

} // namespace kb
