#pragma once

#include "ItemListLine.h"

#include <span>

namespace kb {

// Total_Meals of a list: the sum of each line's quantity times its item's
// Number_Meals. A line with a null quantity or count adds nothing, and a list
// of such lines counts 0, as the sums of the item statements do.
qint64 totalMeals(std::span<const ItemListLine> lines);
// Total_Labels: the same with the item's Number_Labels.
qint64 totalLabels(std::span<const ItemListLine> lines);

} // namespace kb
