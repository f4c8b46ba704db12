#pragma once

#include "Money.h"

#include <QString>

#include <map>

namespace kb {

class Database;

// The pledges a client made per item or per meal category: the Pricing rows
// with his Person_ID and Method "P" (Unit an Item_ID in decimal, or a meal
// category code of Items.Meal), the same rows the pledge grid of the client
// window edits. This is the bills' own small reader of Pricing; the funding
// rates (Method "F", client and funder rates) are read elsewhere and do not
// take part in a bill.
class PledgeRates
{
public:
    static PledgeRates read(Database& db, qint64 personId);

    // The pledge on an item, or on a category; none when there is none.
    // Units compare without the trailing blank of one-letter codes.
    std::optional<Money> forItem(qint64 itemId) const { return find(QString::number(itemId)); }
    std::optional<Money> forCategory(const QString& meal) const { return find(meal.trimmed()); }

private:
    std::optional<Money> find(const QString& unit) const;
    std::map<QString, Money> m_amounts; // by trimmed Unit
};

} // namespace kb
