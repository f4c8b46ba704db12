#pragma once

#include "OrderRoutesRow.h"

#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace kb {

class ResultSet;

// The sort orders of the working set, each one of its indexes.
enum class OrderRoutesIndex {
    RouteStop, // Route, Stop: the default
    Person_ID,
    Client_ID,
    Status,
    First_Last,
    Last_First,
    Cross_Street,
    City,
    Household_ID,
    Address1,
};

// The clients of one route in memory, recording changes: every row keeps the
// route and stop it was retrieved with, so the rows whose route or stop now
// differ are the changes to make permanent. Rows are named by a key that
// stays theirs whatever the order; positions count in the order of the
// current index, ties going by Client_ID.
class OrderRoutesWorkingSet
{
public:
    // The index of a grid column's field name (any case), if it has one.
    static std::optional<OrderRoutesIndex> indexForColumn(const QString& field);

    void load(const ResultSet& rows);
    void close();
    bool isOpen() const { return m_open; }
    int count() const { return int(m_rows.size()); }

    OrderRoutesIndex index() const { return m_index; }
    void setIndex(OrderRoutesIndex index);

    // Keys in the order of the current index.
    const std::vector<int>& order() const { return m_order; }
    int keyAt(int position) const { return m_order[size_t(position)]; }
    int positionOf(int key) const;
    const OrderRoutesRow& row(int key) const { return m_rows[size_t(key)]; }
    const OrderRoutesRow& rowAt(int position) const { return row(keyAt(position)); }
    // The row as it was retrieved.
    const OrderRoutesRow& original(int key) const { return m_originals[size_t(key)]; }

    void setRoute(int key, const QString& route);
    void setStop(int key, double stop);
    void setNewStop(int key, double newStop);
    // Route and stop of many rows at once, sorted again once.
    void setStops(const std::vector<std::pair<int, double>>& stops);

    bool isChanged(int key) const;
    bool hasChanges() const;
    std::vector<int> changedKeys() const;
    // The changes were made permanent: the current values become the retrieved ones.
    void acceptChanges();

    // The highest stop, read on the route and stop order (the last row's).
    double highestStop() const;

private:
    void sort();
    bool less(int a, int b) const;

    bool m_open = false;
    OrderRoutesIndex m_index = OrderRoutesIndex::RouteStop;
    std::vector<OrderRoutesRow> m_rows;
    std::vector<OrderRoutesRow> m_originals;
    std::vector<int> m_order;
    std::vector<int> m_positions; // position of each key
};

} // namespace kb
