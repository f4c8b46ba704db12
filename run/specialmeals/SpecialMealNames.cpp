#include "specialmeals/SpecialMealNames.h"

#include "store/Database.h"

namespace kb {

SpecialMealNames SpecialMealNames::read(Database& db)
{
    const ResultSet config = db.execute(QStringLiteral(
        "Select SPECIAL1_LABEL, SPECIAL2_LABEL, SPECIAL3_LABEL, SPECIAL4_LABEL, SPECIAL5_LABEL, "
        "SPECIAL1_ABBREV, "
        "SPECIAL2_ABBREV, SPECIAL3_ABBREV, SPECIAL4_ABBREV, SPECIAL5_ABBREV, SPECIAL_MEALS_ACTION_VISIBLE, "
        "DELIV_REPORT_SHOW_SPEC_LABELS from Config"));
    SpecialMealNames names;
    if (config.isEmpty()) return names;
    for (int i = 0; i < 5; ++i) {
        names.labels[size_t(i)] = config.value(0, i).toString().trimmed();
        names.abbreviations[size_t(i)] = config.value(0, 5 + i).toString().trimmed();
    }
    names.actionVisible = config.value(0, 10).toBool();
    names.flagOnSave = config.value(0, 11).toBool();
    return names;
}

bool SpecialMealNames::inUse(int n) const
{
    return !labels[size_t(n - 1)].isEmpty() || !abbreviations[size_t(n - 1)].isEmpty();
}

int SpecialMealNames::mealsShown() const
{
    for (int n = 5; n > 1; --n)
        if (inUse(n)) return n;
    return 1;
}

} // namespace kb
