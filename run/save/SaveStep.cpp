#include "save/SaveStep.h"

namespace kb {

namespace {

const char* const stepNames[saveStepCount] = {
    "RetentionDelete", "KeepStatuses",  "DeleteDeliveries", "ClearFulfilled", "DeleteMealCrdt", "DeleteSpecialDiets",
    "FindItems",       "FirstDelivId",  "WriteDeliveries",  "MarkFulfilled",  "SaveIDNumber",   "FlagSpecialMeals",
    "OnSaveQuery",     "History",       "DropStatuses",     "Commit",
};

} // namespace

QString saveStepName(SaveStep step) { return QString::fromLatin1(stepNames[int(step)]); }

std::optional<SaveStep> saveStepByName(const QString& name)
{
    for (int i = 0; i < saveStepCount; ++i)
        if (name.compare(QLatin1String(stepNames[i]), Qt::CaseInsensitive) == 0)
            return SaveStep(i);
    return std::nullopt;
}

} // namespace kb
