#pragma once

#include "store/Database.h"
#include <QDate>

#include <QStringList>

namespace kb {

class Database;
class TableSpecialLabels;
class UserInterface;
struct SpecialMealRule;

// Flags the deliveries a save has just written for one special meal, inside
// the save's transaction: Label_Created, Label2_Created or Label3_Created
// for meals 1 to 3 (meals 4 and 5 have no flag), and for the Match Any rule
// the client's matching diets in Special_Diets.
//
// Rule "I" flags the deliveries with custom items, "D" those with a diet,
// "S" with Match All those whose diets equal the mask, "S" with Match Any
// every delivery of a client with a delivery sharing a diet with the mask.
class SpecialMealFlags
{
public:
    // aDietCodes names the diets in Special_Diets' texts.
    SpecialMealFlags(Database& db, UserInterface& ui, TableSpecialLabels& labels, const QDate& runDate,
                     const QStringList& aDietCodes);

    // Throws MessageError "An unexpected value was passed to
    // FlagSpecialMeals." for a meal outside 1 to 5.
    void FlagSpecialMeals(int iSpecialMeal, const SpecialMealRule& rule);

private:
    void flagWhere(const QString& column, const QString& condition, const Params& values);
    void flagMatchAny(int meal, const QString& column, qint64 mask);

    Database& m_db;
    UserInterface& m_ui;
    TableSpecialLabels& m_labels;
    QDate m_date;
    QStringList m_dietCodes;
};

} // namespace kb
