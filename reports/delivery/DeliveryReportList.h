#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace kb::reports {

// The fixed reports of "Select the Delivery Report to Run", by their index in
// the report list. The index is what Staff.Preferred_Delivery_Report keeps.
enum class DeliveryReport {
    DailyRunSheets = 0,
    DailyLabels = 1,
    LabelsWithPreferences = 2,
    DeliveryLabelsWithAddresses = 3,
    DetailedInfoForOneService = 4,
    ClientCountRouteDiet = 5,
    ClientCountDietRoute = 6,
    ClientCountRouteServiceDiet = 7,
    ItemCountCenterRouteDiet = 8,
    ItemCountCenterRouteServiceDiet = 9,
    ItemCountCenterRouteServiceDietCrosstab = 10,
    ItemCountItemDietCenterRouteService = 11,
    ItemCountItemDietCenterRouteServiceCrosstab = 12,
    ItemCountRouteItemCuisineDiet = 13,
    Birthdays = 14,
    SummarizedDemographicMealCount = 15,
    KitchenCountsCrosstab = 16,
    KitchenCountsReport = 17,
    KitchenClientCountsStandardOrSpecial = 18,
    KitchenItemCountsStandardOrSpecial = 19,
    SelectedDietRestrictions = 20,
    ChildDemographicMealCount = 21,
    ItemsAndDeliveryDetailsByClient = 22,
    BarCodeListing = 23,
};

namespace DeliveryReports {

// How many fixed reports there are; user-defined ones follow from this index.
inline constexpr int fixedCount = 24;

// The report's name in the list, "Daily Run Sheets".
QString name(int index);
// The template file in the data directory, "DailyRunRAP030103.rtm".
QString templateFile(int index);
// Every fixed report's name, in index order.
QStringList names();
bool isLabel(int index);
// The dates "From" and "To" apply below this index (the bar-code listing
// takes none); the service and route limits below the first user-defined one.
inline bool takesDates(int index)
{
    return index >= 0 && index < int(DeliveryReport::BarCodeListing);
}
inline bool takesLimits(int index)
{
    return index >= 0 && index < fixedCount;
}
// The run sheets and the labels may run on up to four separate dates.
inline bool takesSeparateDates(int index)
{
    return index >= 0 && index <= int(DeliveryReport::DeliveryLabelsWithAddresses);
}

// A user-defined report's template: "USERREPORTDELIVERY" + name + ".rtm".
QString userReportPrefix();
QString userDefinedSuffix(); // " (User-Defined)"
QString userReportFile(const QString& name);

// A fixed report's index from its number or its name (without regard to
// case); none for anything else.
std::optional<int> findFixed(const QString& numberOrName);

} // namespace DeliveryReports

} // namespace kb::reports
