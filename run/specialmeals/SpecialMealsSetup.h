#pragma once

#include "store/Database.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>

namespace kb {

// The rule of one special meal on a date: which deliveries qualify.
struct SpecialMealRule
{
    // "I" items other than the default (Custom_Items), "D" any diet
    // restriction, "S" selected diet restrictions, empty for none.
    QString selectionOption;
    // The diets of rule "S", as a diet mask.
    qint64 specialRestr = 0;
    // Rule "S": true for Match All (the delivery's diets equal the mask),
    // false for Match Any (they share one).
    bool filterAll = false;
    // The report title or instructions, free text.
    QString action;

    bool operator==(const SpecialMealRule&) const = default;
};

// The setup of a date's special meals, the twenty values of its
// Special_Meals row: Selection_Option, Filter_All, Special_Restr and Action
// for each of the meals 1 to 5 (no suffix for 1, then 2 to 5).
struct SpecialMealsSetup
{
    static constexpr int mealCount = 5;
    std::array<SpecialMealRule, mealCount> meals;

    const SpecialMealRule& meal(int n) const { return meals[size_t(n - 1)]; }
    SpecialMealRule& meal(int n) { return meals[size_t(n - 1)]; }
    bool operator==(const SpecialMealsSetup&) const = default;

    // "" for meal 1, "2" to "5" for the others.
    static QString suffix(int n);

    // The date's row of Special_Meals, if it has one.
    static std::optional<SpecialMealsSetup> read(Database& db, const QDate& date);
    // A row of a result holding the Special_Meals columns.
    static SpecialMealsSetup fromRow(const ResultSet& rows, qsizetype row);
    // Writes the twenty values to the date's row, adding one when the date
    // has none.
    void store(Database& db, const QDate& date) const;
    // Adds a row for the date.
    void insert(Database& db, const QDate& date) const;
    // Writes the twenty values to the row with this RecordID.
    void update(Database& db, qint64 recordId) const;

private:
    // The twenty values as parameters named after their columns; an empty
    // rule is stored as none.
    Params params() const;
};

} // namespace kb
