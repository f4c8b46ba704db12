#pragma once

#include <QString>

namespace kb {

// An item that needs confirmation before a run may carry it.
struct ConfirmationCandidate
{
    QString mealItem; // Items.Meal_Item
    qint64 itemId = 0;
    QString confirmationRequired; // "O", "S" or "A"
};

} // namespace kb
