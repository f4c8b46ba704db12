#include "RunAction.h"

namespace kb {

QString runActionName(RunAction action)
{
    static const char* const names[runActionCount] = {
        "ActionPrepare",     "ActionSaveData",          "ActionSaveAs",         "ActionApplyRouteChanges",
        "ActionMapRoutes",   "ActionExportData",        "ActionQuickClientsListing", "ActionResetRoutes",
        "ActionResetStops",  "ActionIncrementStops",    "ActionRemoveDeliveries", "ActionRetrieveFromArcLogistics",
        "ActionPopulateGridWithPreviouslySavedDeliveries", "ActionPrintReport",
    };
    return QString::fromLatin1(names[int(action)]);
}

} // namespace kb
