#pragma once

#include "save/BatchedStatement.h"
#include "store/Database.h"
#include "worktable/DeliveryRow.h"

#include <QStringList>

#include <optional>

namespace kb {

// The sort orders of the working table, each one of its indexes.
enum class DeliveriesIndex {
    RouteStopClient, // the run's order
    Last_Name,
    Diet_Restrictions_Named,
    Services_Used,
    City,
    Client_ID,
    Delivery_Type,
    Household_Name,
};

// MemTableDeliveries: the working table of a run, a memory table of the data
// session (so later steps can run statements such as "Update
// MemTableDeliveries set New_Stop = ..." against it), one row per delivery.
// Its statements are made once and reused for every row.
class MemTableDeliveries
{
public:
    static const QString& tableName();
    // The columns in their order.
    static const QStringList& columnNames();
    static QString indexName(DeliveriesIndex index);
    static QStringList indexColumns(DeliveriesIndex index);
    static std::optional<DeliveriesIndex> indexByName(const QString& name);

    explicit MemTableDeliveries(Database& db);

    // Creates the table and its indexes, or empties it when it exists.
    void createOrEmpty();
    void empty();
    void drop();
    bool exists() const;

    // Rows are sent in batches (one round trip per batch on a server);
    // flush() sends what is pending, and every read flushes first.
    void insert(const DeliveryRow& row);
    void flush();
    qint64 rowCount();
    // Every row, ordered by the index (RecordID breaks ties); all columns,
    // or the ones named.
    ResultSet select(DeliveriesIndex index, const QStringList& columns = {});

private:
    Database& m_db;
    Params m_insertValues;
    BatchedStatement m_insert;
};

} // namespace kb
