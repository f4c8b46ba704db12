#include "confirmation/ConfirmDeliveryItems.h"

#include "confirmation/ItemConfirmation.h"
#include "confirmation/TFormConfirmDeliveryItems.h"
#include "selection/RunStatements.h"
#include "store/Database.h"

#include <algorithm>

namespace kb {

namespace {

const QString requiringConfirmation = QStringLiteral(
    "Select Distinct Items.Meal_Item, Items.Item_ID, Items.Confirmation_Required from DefDels join Items on "
    "DefDels.Item_ID = Items.Item_ID Where   (DefDels.Del_Day = :DOW) and (DefDels.Deliv_ID is Null) and "
    "(Items.Confirmation_Required = 'O' or Items.Confirmation_Required = 'A') Union Select Distinct "
    "Items.Meal_Item, Items.Item_ID, Items.Confirmation_Required from EpisodicDeliveries join DefDels on "
    "EpisodicDeliveries.RecordID = DefDels.Deliv_ID join Items on DefDels.Item_ID = Items.Item_ID Where "
    "(EpisodicDeliveries.Deliv_Date = :Deliv_Date) and (Items.Confirmation_Required = 'S' or "
    "Items.Confirmation_Required = 'A')");

} // namespace

QList<ConfirmationCandidate> itemsRequiringConfirmation(Database& db, const QDate& runDate)
{
    const ResultSet rows =
        db.execute(requiringConfirmation, {{QStringLiteral("DOW"), RunStatements::dayCode(runDate)},
                                           {QStringLiteral("Deliv_Date"), runDate}});
    QList<ConfirmationCandidate> candidates;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        candidates.append(
            {rows.value(r, 0).toString(), rows.value(r, 1).toLongLong(), rows.value(r, 2).toString()});
    // The statement leaves the order to the store; the dialog lists by name.
    std::sort(candidates.begin(), candidates.end(),
              [](const ConfirmationCandidate& a, const ConfirmationCandidate& b) {
                  const int byName = a.mealItem.compare(b.mealItem, Qt::CaseInsensitive);
                  if (byName != 0) return byName < 0;
                  return a.itemId != b.itemId ? a.itemId < b.itemId
                                              : a.confirmationRequired < b.confirmationRequired;
              });
    return candidates;
}

ConfirmedItems confirmDeliveryItems(Database& db, const QDate& runDate, ItemConfirmation& answer)
{
    const QList<ConfirmationCandidate> candidates = itemsRequiringConfirmation(db, runDate);
    if (candidates.isEmpty()) return {};
    TFormConfirmDeliveryItems form(candidates);
    if (!answer.confirm(form) || !form.okEnabled()) return {};
    return form.checkedItems();
}

} // namespace kb
