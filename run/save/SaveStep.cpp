#include "save/SaveStep.h"

namespace kb {

namespace {

const char* const stepNames[saveStepCount] = {
    "RetentionDelete", "KeepStatuses",   "DeleteDeliveries",
    "ClearFulfilled",  "DeleteMealCrdt", "DeleteSpecialDiets",
    "FindItems",       "FirstDelivId",   "WriteDeliveries",
    "MarkFulfilled",   "SaveIDNumber",   "FlagSpecialMeals",
    "OnSaveQuery",     "History",        "DropStatuses",
    "Commit",
};

} // namespace

QString saveStepName(SaveStep step)
{
    return QString::fromLatin1(stepNames[int(step)]);
}

} // namespace kb
