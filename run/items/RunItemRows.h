#pragma once

#include "store/ResultSet.h"

namespace kb {

class RunItems;

// A run's items as one table, in the run's order: a row per MealCrdt line
// with its delivery's counts and funding, and a row with empty item columns
// for a delivery without items. Items_From names the list the items came
// from: "dated", "client", "default" or "none".
ResultSet runItemRows(const RunItems& run);

} // namespace kb
