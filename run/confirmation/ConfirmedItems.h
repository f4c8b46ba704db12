#pragma once

#include <QList>
#include <QString>

namespace kb {

// Whether an item with this Items.Confirmation_Required code goes out only
// when confirmed: "O" on weekly lists (the client's and the service's), "S"
// on the lists of dated deliveries, "A" on both. Any other code, empty
// included, never asks.
bool needsConfirmation(const QString& confirmationRequired, bool dated);

// The items confirmed for the save under way, as Item_IDs.
struct ConfirmedItems
{
    QList<qint64> ongoing;   // confirmed with "O" or "A": weekly lists may carry them
    QList<qint64> scheduled; // confirmed with "S" or "A": dated lists may carry them

    // Whether the item goes out on a weekly or a dated list.
    bool allows(qint64 itemId, const QString& confirmationRequired, bool dated) const;
    bool isEmpty() const { return ongoing.isEmpty() && scheduled.isEmpty(); }
};

} // namespace kb
