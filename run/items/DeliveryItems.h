#pragma once

#include "ItemListLine.h"
#include "items/RunDelivery.h"

#include <QString>

#include <vector>

namespace kb {

// What one delivery of a run holds and who pays for it: its MealCrdt lines
// in order, and Deliveri's Custom_Items, Number_Meals, Number_Labels and
// Funding_Desc.
struct DeliveryItems
{
    RunDelivery delivery;
    ItemListLevel level = ItemListLevel::None;
    bool customItems = false; // the items came from the dated or the client's list
    qint64 numberMeals = 0;
    qint64 numberLabels = 1; // never below 1
    QString fundingDesc;     // a Fund_CD, or empty
    std::vector<ItemListLine> lines;
};

} // namespace kb
