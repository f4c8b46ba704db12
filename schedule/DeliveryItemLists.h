#pragma once

#include "ItemListLine.h"
#include "store/Database.h"

#include <QHash>

#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace kb {

// The items of many deliveries at once, by the order in which item lists are
// looked for. For a delivery of client p, service s, on weekday w:
//   1. a dated delivery's own lines (Person_ID p, Deliv_ID its RecordID);
//   2. else the client's standing lines (Person_ID p, Del_Day w, Service_ID s,
//      Deliv_ID null);
//   3. else the service's default lines (Person_ID 0, Del_Day w, Service_ID s,
//      Deliv_ID null).
// The first list that keeps a line after the filter wins; lists are never
// merged. Lines are read joined with Items, so a line without an item drops
// out, in Sort_Order (lines of one Sort_Order by their RecordID, so both
// stores give one order).
//
// Four statements do the work whatever the number of deliveries: the
// deliveries themselves, the default lines of the weekday, and the dated and
// standing lines of the deliveries' clients, each list read once however
// many deliveries share it.
class DeliveryItemLists
{
public:
    // Whether a line counts for a delivery at a level; all count without one.
    using LineFilter = std::function<bool(const ItemListLine& line, ItemListLevel level)>;

    struct Choice
    {
        ItemListLevel level = ItemListLevel::None;
        std::span<const ItemListLine> lines;
    };

    // `deliveries` is a select with one row per delivery and the columns
    // Request_ID (the caller's key, unique), Person_ID, Service_ID and
    // Dated_ID: the EpisodicDeliveries.RecordID of a dated delivery, null for
    // a weekly one. `params` are its values (the name Del_Day is the
    // lookup's own); `dow` is "MON" ... "SUN".
    void load(Database& db, const QString& deliveries, const Params& params, const QString& dow,
              const LineFilter& filter = {});

    // The chosen list of a delivery of the select; level None for a key the
    // select did not give.
    Choice find(qint64 requestId) const;
    // The service's default lines of the weekday that pass the filter.
    std::span<const ItemListLine> defaultLines(qint64 serviceId) const;

    // The list of one delivery, by the same lookup: client `personId` on
    // service `serviceId`, on weekday `dow`, of the dated delivery
    // `datedId` (null for a weekly one). For screens that show what one
    // client gets on one date.
    struct OneDelivery
    {
        ItemListLevel level = ItemListLevel::None;
        std::vector<ItemListLine> lines;
    };
    static OneDelivery forDelivery(Database& db, qint64 personId, qint64 serviceId, const QVariant& datedId,
                                   const QString& dow, const LineFilter& filter = {});

private:
    struct Range
    {
        ItemListLevel level = ItemListLevel::None;
        size_t first = 0;
        size_t count = 0;
    };
    using ListKey = std::pair<qint64, qint64>; // the person and the delivery or the service

    // Reads lines grouped by the columns 0 and 1 (or by column 0 alone when
    // `keyColumns` is 1) into ranges of the lines the filter keeps.
    void readLists(const ResultSet& rows, int keyColumns, ItemListLevel level, const LineFilter& filter,
                   QHash<ListKey, Range>& lists);
    std::span<const ItemListLine> lines(const Range& range) const;

    std::vector<ItemListLine> m_lines;
    QHash<qint64, Range> m_chosen;    // by Request_ID
    QHash<ListKey, Range> m_defaults; // by (0, Service_ID)
};

} // namespace kb
