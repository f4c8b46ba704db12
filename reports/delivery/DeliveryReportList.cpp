#include "delivery/DeliveryReportList.h"

#include <array>

namespace kb::reports::DeliveryReports {

namespace {

struct Fixed
{
    const char* name;
    const char* file;
};

// "Item Count by Route, Item, Cuisine, Diet" shares the statement and the
// template of "Item Count by Item, Diet, Center, Route, Service".
constexpr std::array<Fixed, fixedCount> fixedReports{{
    {"Daily Run Sheets", "DailyRunRAP030103.rtm"},
    {"Daily Labels", "DailyLabel030510.rtm"},
    {"Labels with Preferences", "PreferencesLabel.rtm"},
    {"Delivery Labels with Addresses", "DailyLabelAddress.rtm"},
    {"Detailed Info for One Service", "KitchenDetailItem030418.rtm"},
    {"Client Count by Route and Diet Type", "CliCntSvcRteDiet.rtm"},
    {"Client Count by Diet Type and Route", "CliCntDietRte.rtm"},
    {"Client Count by Route, Service and Diet", "CliCntRteSvcDiet.rtm"},
    {"Item Count by Center, Route and Diet Type", "ItemCntDistRteDiet.rtm"},
    {"Item Count by Center, Route, Service and Diet", "ItemCntDistRteSvcDiet.rtm"},
    {"Item Count by Center, Route, Service, Diet Crosstab", "ItemCntDistRteSvcDietCrosstab.rtm"},
    {"Item Count by Item, Diet, Center, Route, Service", "ItemCntDietDistRteSvc.rtm"},
    {"Item Count by Item, Diet, Center, Route, Service Crosstab", "ItemCntDietDistRteSvcCrosstab.rtm"},
    {"Item Count by Route, Item, Cuisine, Diet", "ItemCntDietDistRteSvc.rtm"},
    {"Birthdays", "Birthdays.rtm"},
    {"Summarized Demographic Meal Count", "DemogMlCt040109.rtm"},
    {"Kitchen Counts Crosstab", "KitchenSchCrosstab.rtm"},
    {"Kitchen Counts Report", "KitchenSchReport.rtm"},
    {"Kitchen Client Counts by Standard or Special Diets",
     "Count_Of_Clients_By_Special_Or_Standard_Meals.rtm"},
    {"Kitchen Item Counts by Standard or Special Diets", "Count_Of_Items_By_Special_Or_Standard_Meals.rtm"},
    {"Selected Diet Restrictions", "DeliveryDietRestrictions.rtm"},
    {"Child Demographic Meal Count", "ChildDemographicMealCount.rtm"},
    {"Items and Delivery Details by Client", "ItemsByClient.rtm"},
    {"Bar-Code Listing", "BarcodeListing.rtm"},
}};

} // namespace

QString name(int index)
{
    return index >= 0 && index < fixedCount ? QString::fromLatin1(fixedReports[size_t(index)].name)
                                            : QString();
}

QString templateFile(int index)
{
    return index >= 0 && index < fixedCount ? QString::fromLatin1(fixedReports[size_t(index)].file)
                                            : QString();
}

QStringList names()
{
    QStringList list;
    for (const Fixed& f : fixedReports)
        list << QString::fromLatin1(f.name);
    return list;
}

bool isLabel(int index)
{
    return index >= int(DeliveryReport::DailyLabels) &&
           index <= int(DeliveryReport::DeliveryLabelsWithAddresses);
}

QString userReportPrefix()
{
    return QStringLiteral("USERREPORTDELIVERY");
}
QString userDefinedSuffix()
{
    return QStringLiteral(" (User-Defined)");
}
QString userReportFile(const QString& name)
{
    return userReportPrefix() + name + QStringLiteral(".rtm");
}

std::optional<int> findFixed(const QString& numberOrName)
{
    const QString word = numberOrName.trimmed();
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (isNumber) return number >= 0 && number < fixedCount ? std::optional<int>(number) : std::nullopt;
    for (int i = 0; i < fixedCount; ++i) {
        if (word.compare(name(i), Qt::CaseInsensitive) == 0) return i;
    }
    return std::nullopt;
}

} // namespace kb::reports::DeliveryReports
