#pragma once

#include "confirmation/ConfirmationCandidate.h"
#include "confirmation/ConfirmedItems.h"

#include <QDate>
#include <QList>

namespace kb {

class Database;
class ItemConfirmation;

// The items that need confirmation on a date: those of the weekday's standing
// and default lists with code "O" or "A", and those of the date's dated
// deliveries with code "S" or "A", whoever is in the run. Sorted by name for
// the dialog.
QList<ConfirmationCandidate> itemsRequiringConfirmation(Database& db, const QDate& runDate);

// The confirmation at the start of a save: with no candidates nothing is
// asked; otherwise `answer` is shown "Confirm Delivery Items". Cancel, or OK
// with nothing checked, confirms nothing, so every item that needs
// confirmation stays out.
ConfirmedItems confirmDeliveryItems(Database& db, const QDate& runDate, ItemConfirmation& answer);

} // namespace kb
