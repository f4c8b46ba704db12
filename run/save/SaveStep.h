#pragma once

#include <QString>

namespace kb {

// The steps of a run's save inside its transaction, in their order. A
// failure at any of them undoes the whole save.
enum class SaveStep {
    RetentionDelete,    // MealCrdt rows older than the retention period
    KeepStatuses,       // the date's Delivery_Status values, kept for the new rows
    DeleteDeliveries,   // the date's Deliveri rows
    ClearFulfilled,     // the date's dated deliveries no longer fulfilled
    DeleteMealCrdt,     // the date's MealCrdt rows
    DeleteSpecialDiets, // Special_Diets of the week before and of the date
    FindItems,          // defaults, items, counts and funding of every row
    FirstDelivId,       // the first Deliv_ID, from IDNOS
    WriteDeliveries,    // Deliveri and MealCrdt rows, after the first batch
    MarkFulfilled,      // the dated deliveries of the run fulfilled
    SaveIDNumber,       // IDNOS moved past the numbers used
    FlagSpecialMeals,   // special meal flags and Special_Diets
    OnSaveQuery,        // the agency's EXECUTE_ON_SAVE_DELIVERIES statement
    History,            // the "Saved ..." History row
    DropStatuses,       // the kept statuses' memory table dropped
    Commit,             // just before the commit
};

inline constexpr int saveStepCount = int(SaveStep::Commit) + 1;

// "RetentionDelete", "KeepStatuses", ...
QString saveStepName(SaveStep step);

} // namespace kb
