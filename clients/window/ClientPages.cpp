#include "window/ClientPages.h"

#include <stdexcept>

namespace kb {

const std::vector<ClientPageInfo>& clientPages()
{
    static const std::vector<ClientPageInfo> pages = {
        {client_page::Map, QStringLiteral("Map"), {}, {}},
        {client_page::HealthNutrition,
         QStringLiteral("Health/Nutrition"),
         {QStringLiteral("Health History"), QStringLiteral("Counseling Events")},
         {QStringLiteral("QueryAssessments"), QStringLiteral("QueryEvents"),
          QStringLiteral("QueryDiseaseLookup"), QStringLiteral("QueryClientDiseases")}},
        {client_page::Suspensions, QStringLiteral("Suspensions"), {}, {QStringLiteral("QuerySuspends")}},
        {client_page::DeliveryRoute,
         QStringLiteral("Delivery/Route"),
         {},
         {QStringLiteral("QueryEpisodicDeliveries")}},
        {client_page::FundingBilling,
         QStringLiteral("Funding/Billing"),
         {QStringLiteral("Funding"), QStringLiteral("Pledges")},
         {QStringLiteral("QueryFundUses"), QStringLiteral("QueryClientSpecificFundingRates"),
          QStringLiteral("QueryServiceFundingRates"), QStringLiteral("QueryServiceDayRate"),
          QStringLiteral("QueryItemPledgeRates")}},
        {client_page::ServiceDiet, QStringLiteral("Service/Diet"), {}, {}},
        {client_page::Relationships,
         QStringLiteral("Relationships"),
         {QStringLiteral("Client-Specific Relations"), QStringLiteral("All Individuals")},
         {QStringLiteral("QueryRelationships")}},
        {client_page::StatusDates, QStringLiteral("Status/Dates"), {}, {}},
        {client_page::BiographicInfo, QStringLiteral("Biographic Info"), {}, {}},
        {client_page::CaseManagement,
         QStringLiteral("Case Management"),
         {QStringLiteral("Case Management"), QStringLiteral("Nutrition Screening / ADL / IADL")},
         {QStringLiteral("QueryCaseManagement"), QStringLiteral("QueryNSIADLIADL")}},
        {client_page::ClientServices,
         QStringLiteral("Client Services"),
         {},
         {QStringLiteral("QueryServiceApps"), QStringLiteral("QueryDocs"),
          QStringLiteral("QueryConditions")}},
    };
    return pages;
}

const ClientPageInfo& clientPage(int number)
{
    if (number < 0 || number >= client_page::Count)
        throw std::out_of_range("no such page of the client window");
    return clientPages()[size_t(number)];
}

} // namespace kb
