#pragma once

#include <QString>

#include <array>

namespace kb {

class Database;

// The agency's special meals as Config names them: up to five, each with a
// label and an abbreviation, and the switches of the feature.
struct SpecialMealNames
{
    std::array<QString, 5> labels;
    std::array<QString, 5> abbreviations;
    // SPECIAL_MEALS_ACTION_VISIBLE: the dialog shows each meal's "Report
    // Title or Instructions:" box.
    bool actionVisible = false;
    // DELIV_REPORT_SHOW_SPEC_LABELS: a save asks for the special meals of its
    // date and flags the deliveries.
    bool flagOnSave = false;

    static SpecialMealNames read(Database& db);

    const QString& label(int n) const { return labels[size_t(n - 1)]; }
    // A meal is in use when its label or its abbreviation is not empty.
    bool inUse(int n) const;
    // The meals a dialog shows: up to the highest in use, at least one.
    int mealsShown() const;
};

} // namespace kb
