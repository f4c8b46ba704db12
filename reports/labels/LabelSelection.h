#pragma once

#include <QString>
#include <QStringList>

namespace kb::reports {

// What "Label Selection and Sorting" decided for one label report: which
// deliveries get a label and in which order.
struct LabelSelection
{
    // The rule, one character of LabelRules (" " or empty for none).
    QString cLabelLimit;
    // Rule "S": the diet mask, bit i for the diet of Diet_ID i + 1.
    qint64 nLabelDiet = 0;
    // Rule "S": the delivery's diets must equal the mask; otherwise one
    // diet in common is enough.
    bool lFilterAll = false;
    // The index of LabelRules::sortOrders().
    int sortOrder = 0;

    // The rule as it applies: rule "S" without a diet becomes "A" (any
    // special meal); an empty rule limits nothing.
    QString effectiveRule() const;
    // Rule "S" with one diet in common enough: the rows are filtered rather
    // than selected by the statement.
    bool filtersAnyDiet() const { return effectiveRule() == QLatin1String("S") && !lFilterAll; }
};

// The limit and sort lists of the label reports, and what each entry adds to
// the labels' statement.
namespace LabelRules {

// "No Limit - Print ALL labels" ... "Any diet restriction other than
// Special Meal 3", by list index.
QStringList limitEntries();
// The rule of a list index: " " for index 0, "A", "D", "S", "I", "1" ... "9".
QString ruleOf(int index);
// The list index of a rule; 0 for an unknown one.
int indexOfRule(const QString& rule);
// The list index whose diets are chosen below the list.
inline constexpr int SelectedDiets = 3;

// The clause the rule adds to the statement; empty for none (and for rule
// "S" with one diet in common enough, which filters the rows instead).
// Rule "S" with all diets binds :nLabelDiet.
QString clauseOf(const QString& rule, bool filterAll);

// "Route / Stop" ... "Diet / Route / Stop", by sort index.
QStringList sortOrders();
// The order of the one-copy statement.
QString statementOrder(int sortOrder);
// The sort that cannot print several copies of a label together.
inline constexpr int DietRouteStop = 5;

} // namespace LabelRules

} // namespace kb::reports
