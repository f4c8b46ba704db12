#pragma once

#include "defaults/Weekdays.h"
#include "funding/FundingTerms.h"

#include <QString>

namespace kb {

class ClientPageData;
class DataSet;
class QueryDataSet;
class TDataModule1;
class UserInterface;

// The rules of the "Funding/Billing" page: the funding sources assigned to
// the client (QueryFundUses), the client's own item rates
// (QueryClientSpecificFundingRates), the resulting rates
// (QueryServiceFundingRates) and the pledges (QueryItemPledgeRates). They
// hang on the page queries' hooks, so every post goes through them.
//
// On each weekday a service has at most one funding source for a client,
// an "All Services" row (Service_ID 0) counting for every service.
class FundingUses
{
public:
    FundingUses(TDataModule1& module, ClientPageData& pages, UserInterface& ui);
    FundingUses(const FundingUses&) = delete;
    FundingUses& operator=(const FundingUses&) = delete;

    static QString overlapText()
    {
        return QStringLiteral(
            "You have a Funding Source for that service for one or more of the same days\r\nand "
            "therefore can't assign another one.");
    }
    static QString incompleteText()
    {
        return QStringLiteral(
            "You must specify both a Service and a Funding Source\r\nin order to save this entry.");
    }
    static QString zeroRateText()
    {
        return QStringLiteral("You have created an item with a reimbursement rate of zero!");
    }
    static QString zeroPledgeText()
    {
        return QStringLiteral("You have created an item with a pledge rate of zero! ");
    }
    static QString noUnitText() { return QStringLiteral("Your entry does not specify an item or meal!"); }
    static QString noSourceText()
    {
        return QStringLiteral("A funding source must be assigned before reimbursement rates can be created.");
    }

    // Which sheets of the page the agency's Config.FUNDING_CONFIGURATION shows.
    FundingSheets sheets() const;

    // The rate groups the current funding use brings up, by its method as
    // it stands (typed but not yet saved included); none without a row.
    FundingRateGroups rateGroups();

    QueryDataSet& fundUses();
    QueryDataSet& clientRates();
    QueryDataSet& resultingRates();
    QueryDataSet& pledges();

    // "Add Funding": a new row with the client's service and every weekday.
    void ActionAddFunding();
    // "Delete Funding": asks, then the row and the client's rates of its
    // service and source go.
    void ActionDeleteFunding();
    void ActionAddItemRate();
    void ActionDeleteItemRate();
    // "Reverse Weekdays", "Reverse Weekends", "Reverse All Days".
    void reverseDays(WeekdayGroup group);
    // Going to "Resulting Item Rates": an untouched new rate is dropped, any
    // other open rate saved, and the resulting rates read again.
    void showResultingRates();
    void ActionAddPledgeItem();
    void ActionDeletePledgeItem();

private:
    void fundUseAfterInsert(DataSet& set);
    void fundUseBeforePost(DataSet& set);
    // A new client rate ("F") or pledge ("P") of the client, by this user, today, at 0.
    void stampNewRate(DataSet& set, const QString& method);
    void rateBeforePost(DataSet& set, const QString& zeroText);
    void askBeforeClose(DataSet& set, const QString& question);
    void reopenClientRates();

    TDataModule1& m_module;
    ClientPageData& m_pages;
    UserInterface& m_ui;
};

} // namespace kb
