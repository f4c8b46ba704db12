#pragma once

#include "delivery/DietCheckList.h"
#include "labels/LabelSelection.h"

namespace kb {
class Database;
class SettingsFile;
} // namespace kb

namespace kb::reports {

// "Label Selection and Sorting": before each label report the user says
// which deliveries get a label (all, a special meal, a diet, the diets
// checked below...) and in which order they print. The list indexes are
// remembered in the section "SetLabelLimit" of the per-user settings: read
// when the dialog shows, written when it goes.
class TFormLabelLimit
{
public:
    static QString caption() { return QStringLiteral("Label Selection and Sorting"); }
    static QString section() { return QStringLiteral("SetLabelLimit"); }
    static QString limitGroup()
    {
        return QStringLiteral("Select the restriction, if any, for the labels you wish to print");
    }
    static QString limitPrompt() { return QStringLiteral("Select the labels for clients with:"); }
    static QString sortGroup() { return QStringLiteral("Select a Sort Order for the labels:"); }
    static QString matchAnyCaption() { return QStringLiteral("Match Any Selection"); }
    static QString matchAllCaption() { return QStringLiteral("Match All Selections"); }

    // Neither match button, "Match Any Selection" or "Match All Selections".
    enum class Match { None, Any, All };

    // Reads the diets.
    TFormLabelLimit(Database& db, SettingsFile* settings);
    // Writes the settings.
    ~TFormLabelLimit();
    TFormLabelLimit(const TFormLabelLimit&) = delete;
    TFormLabelLimit& operator=(const TFormLabelLimit&) = delete;

    // Showing: the last limit and sort order from the settings.
    void FormShow();

    int limitIndex() const { return m_limit; }
    // Choosing "Diet restrictions selected below" selects "Match Any
    // Selection"; any other entry clears both match buttons.
    void setLimitIndex(int index);
    // The diets and the match buttons serve only the selected diets.
    bool dietsEnabled() const { return m_limit == LabelRules::SelectedDiets; }
    DietCheckList& diets() { return m_diets; }
    const DietCheckList& diets() const { return m_diets; }
    Match match() const { return m_match; }
    void setMatch(Match match) { m_match = match; }

    int sortOrder() const { return m_sort; }
    void setSortOrder(int index);

    // OK: the rule of the list, the checked diets (only for the selected
    // diets) and whether all of them must match.
    LabelSelection selection() const;
    // Cancel: no rule, no diets; the labels print for every delivery, in the
    // order shown.
    LabelSelection cancelled() const;

private:
    SettingsFile* m_settings;
    DietCheckList m_diets;
    int m_limit = 0;
    Match m_match = Match::None;
    int m_sort = 0;
};

} // namespace kb::reports
