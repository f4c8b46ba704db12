#include "delivery/data/TDataModule2.h"

#include "delivery/DeliveryReportList.h"
#include "delivery/data/ReportBuild.h"
#include "delivery/data/ReportPipes.h"
#include "labels/LabelReportData.h"

#include "MessageError.h"

namespace kb::reports {

TDataModule2::TDataModule2(Database& db, const Clock& clock) : m_db(db), m_clock(clock), m_parameters(db) {}

ReportParameterRow TDataModule2::periodOf(const DeliveryReportChoices& choices)
{
    ReportParameterRow row;
    row.periodBeginning = MemTableKettlebrookReportParameters::dateText(choices.from);
    row.periodEnding = MemTableKettlebrookReportParameters::dateText(choices.to);
    return row;
}

std::optional<ReportData> TDataModule2::build(const DeliveryReportChoices& choices,
                                              ReportQuestions& questions, UserInterface& ui,
                                              SettingsFile* settings)
{
    ReportParameterRow row = periodOf(choices);
    ReportLimits limits(m_db, choices, row);
    ReportBuild build{m_db, m_clock, ui, questions, settings, choices, row, limits};
    std::optional<ReportData> data;
    const int index = choices.report;
    switch (DeliveryReport(index)) {
    case DeliveryReport::DailyRunSheets:
        data = buildRunSheets(build);
        break;
    case DeliveryReport::DailyLabels:
    case DeliveryReport::LabelsWithPreferences:
    case DeliveryReport::DeliveryLabelsWithAddresses:
        data = buildLabels(build, index);
        break;
    case DeliveryReport::DetailedInfoForOneService:
        data = buildDetailedInfo(build);
        break;
    case DeliveryReport::ClientCountRouteDiet:
    case DeliveryReport::ClientCountDietRoute:
    case DeliveryReport::ClientCountRouteServiceDiet:
        data = buildClientCounts(build, index);
        break;
    case DeliveryReport::ItemCountCenterRouteDiet:
    case DeliveryReport::ItemCountCenterRouteServiceDiet:
    case DeliveryReport::ItemCountCenterRouteServiceDietCrosstab:
    case DeliveryReport::ItemCountItemDietCenterRouteService:
    case DeliveryReport::ItemCountItemDietCenterRouteServiceCrosstab:
    case DeliveryReport::ItemCountRouteItemCuisineDiet:
        data = buildItemCounts(build, index);
        break;
    case DeliveryReport::Birthdays:
        data = buildBirthdays(build);
        break;
    case DeliveryReport::SummarizedDemographicMealCount:
        data = buildDemographicMealCount(build);
        break;
    case DeliveryReport::KitchenCountsCrosstab:
    case DeliveryReport::KitchenCountsReport:
    case DeliveryReport::KitchenClientCountsStandardOrSpecial:
    case DeliveryReport::KitchenItemCountsStandardOrSpecial:
        data = buildKitchenReport(build, index);
        break;
    case DeliveryReport::SelectedDietRestrictions:
        data = buildDietRestrictions(build);
        break;
    case DeliveryReport::ChildDemographicMealCount:
        data = buildChildDemographicMealCount(build);
        break;
    case DeliveryReport::ItemsAndDeliveryDetailsByClient:
        data = buildItemsByClient(build);
        break;
    case DeliveryReport::BarCodeListing:
        data = buildBarCodeListing(build);
        break;
    default:
        throw MessageError(QStringLiteral("The report \"%1\" has no data of its own here.")
                               .arg(DeliveryReports::name(index)));
    }
    if (data) addCommonPipes(*data, row);
    return data;
}

void TDataModule2::addCommonPipes(ReportData& data, const ReportParameterRow& row)
{
    m_parameters.rewrite(row);
    data.addRows(MemTableKettlebrookReportParameters::pipeName(), m_parameters.rows());
    data.addRows(QStringLiteral("DBPipelineConfig"), m_db.execute(QStringLiteral("Select * from Config")));
}

} // namespace kb::reports
