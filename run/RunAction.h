#pragma once

#include <QString>

namespace kb {

// The commands of the run screen whose enabled state the run's rules set.
enum class RunAction {
    Prepare,
    SaveData,
    SaveAs,
    ApplyRouteChanges,
    MapRoutes,
    ExportData,
    QuickClientsListing,
    ResetRoutes,
    ResetStops,
    IncrementStops,
    RemoveDeliveries,
    RetrieveFromArcLogistics,
    PopulateGrid,
    PrintReport,
};

inline constexpr int runActionCount = int(RunAction::PrintReport) + 1;

// "ActionPrepare", "ActionSaveData", ...
QString runActionName(RunAction action);

} // namespace kb
