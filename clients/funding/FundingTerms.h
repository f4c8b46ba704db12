#pragma once

#include <QString>

namespace kb {

// The name a resulting rate shows for its unit: the item's own name, or for
// a meal category "Dinners", "Lunches", "Breakfasts", "Snacks", "Medical
// Food", "Specialized Medical Food", else "Other".
QString fundingRateItemName(const QString& unit, const QString& mealItem);

// "Time Period" for "T", "Meals or Meal Items" for "I".
QString reimbursementMethodText(const QString& method);

// The group a pledge method brings up on the "Pledges" sheet: "Set Pledge
// for Specific Items" (the pledge items) for "I", "Pledged Amount" (one
// amount per period) for "T" and for a client with no method yet.
QString pledgeMethodGroup(const QString& method);
inline const QString PledgedAmountGroup = QStringLiteral("Pledged Amount");
inline const QString PledgeItemsGroup = QStringLiteral("Set Pledge for Specific Items");
// The group of a funding use's rate and period, shown for the method "T";
// the method "I" is paid by the item rates instead.
inline const QString TimeRatesGroup = QStringLiteral("Reimbursement Rates by Time Period");
// The item rate groups of the "Funding" sheet, shown for the method "I".
inline const QString ClientRatesGroup = QStringLiteral("Client-Specific Rates");
inline const QString ResultingRatesGroup = QStringLiteral("Resulting Item Rates");

// Which rate groups a funding use's reimbursement method brings up: the
// time rate and period for "T", the item rates for "I", none while no
// method is chosen.
struct FundingRateGroups
{
    bool timeRates = false;
    bool itemRates = false;
};
FundingRateGroups fundingRateGroups(const QString& method);

// Which sheets of "Funding/Billing" Config.FUNDING_CONFIGURATION shows, and
// which comes first: "1" both, Funding first; "2" Funding only; "3" both,
// Pledges first; "4" Pledges only. Other values read as "1".
struct FundingSheets
{
    bool funding = true;
    bool pledges = true;
    bool pledgesFirst = false;
};
FundingSheets fundingSheets(const QString& configuration);

// What a funding source or a funding use must hold when it reimburses by
// time: a period and a rate. Empty when it does; otherwise the message.
QString timeMethodProblem(const QString& method, const QString& period, double rate);

class DataSet;

// The checks before a rate (a Pricing row) is saved: a numeric Unit is an
// item and fills Item_ID, a letter unit ("B", "MF") leaves it alone. Empty
// when the rate may be saved; otherwise the message for a zero amount or a
// missing unit.
QString rateProblem(DataSet& rate, const QString& zeroText, const QString& noUnitText);

} // namespace kb
