#pragma once

#include "ItemListLine.h"
#include "dated/DatedKind.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QVariant>

#include <vector>

namespace kb {

class Database;

// One item line as the dated delivery screens show it.
struct DatedItemLine
{
    qint64 itemId = 0;
    QString item;      // Items.Meal_Item
    QVariant quantity; // null when the line has none
};

// What one dated delivery brings: its own lines when it has some, else the
// standing items of its weekday by the usual lookup (the client's list of
// the service, then the service's default list).
struct DatedRowItems
{
    ItemListLevel level = ItemListLevel::None;
    std::vector<DatedItemLine> lines;

    // "2 × Hot Meal, 1 × Milk"; empty without lines.
    QString summary() const;
    // The lines one under another, headed by where they come from: the
    // delivery's own items, or the standing or default items of the weekday
    // of `date`.
    QString details(const QDate& date) const;

    // The items of every EpisodicDeliveries row of the person and kind, by
    // RecordID. The lookup runs once per weekday that has rows (a few
    // statements each), never once per row.
    static QHash<qint64, DatedRowItems> read(Database& db, qint64 personId, DatedKind kind);
};

} // namespace kb
