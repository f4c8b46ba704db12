#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kb {

// The pages of the client window's notebook. Their numbers are fixed: the
// number is what Staff.DTab stores and what the visible-tab list of the
// user preferences maps to, whatever the page's place among the shown ones.
namespace client_page {
constexpr int Map = 0;
constexpr int HealthNutrition = 1;
constexpr int Suspensions = 2;
constexpr int DeliveryRoute = 3;
constexpr int FundingBilling = 4;
constexpr int ServiceDiet = 5;
constexpr int Relationships = 6;
constexpr int StatusDates = 7;
constexpr int BiographicInfo = 8;
constexpr int CaseManagement = 9;
constexpr int ClientServices = 10;
constexpr int Count = 11;
} // namespace client_page

// One page: its caption, the sheets it is divided into, and the page data
// (ClientPageData) opened while it is in view.
struct ClientPageInfo
{
    int number = 0;
    QString caption;
    QStringList sheets;  // captions of the page's own tabs; empty for a page of one sheet
    QStringList queries; // names of the page queries opened on entering it
};

// The eleven pages in number order. This table is where a page gains its
// data: a later screen adds its query here and in pageQueryDefinitions().
const std::vector<ClientPageInfo>& clientPages();
const ClientPageInfo& clientPage(int number);

} // namespace kb
