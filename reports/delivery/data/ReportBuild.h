#pragma once

#include "delivery/ReportChoices.h"
#include "delivery/ReportLimits.h"
#include "delivery/ReportStatement.h"
#include "delivery/data/ReportData.h"

#include <optional>

namespace kb {
class Clock;
class Database;
class SettingsFile;
class UserInterface;
} // namespace kb

namespace kb::reports {

class ReportQuestions;

// What building one delivery report's data works with.
struct ReportBuild
{
    Database& db;
    const Clock& clock;
    UserInterface& ui;
    ReportQuestions& questions;
    SettingsFile* settings; // the per-user settings of the report's dialogs; may be null
    const DeliveryReportChoices& choices;
    ReportParameterRow& parameters;
    ReportLimits& limits;

    // Runs a statement and adds its rows as a pipe.
    RowsPipe& addQuery(ReportData& data, const QString& pipe, const ReportStatement& statement);
    RowsPipe& addQuery(ReportData& data, const QString& pipe, const QString& text, const Params& params = {});
};

// The date clause of the Date Range page on a field: "(field = :dStart) "
// when "From" equals "To", else "(field >= :dStart) and (field <= :dEnd) ".
void addDateClause(ReportStatement& statement, const DeliveryReportChoices& choices, const QString& field);
// The same clause on each of the fields, joined by " and ": what reports that
// join MealCrdt apply to Deliveri and MealCrdt alike.
void addDateClause(ReportStatement& statement, const DeliveryReportChoices& choices,
                   const QStringList& fields);
// The separate dates of the Non-Contiguous page: " ( (field = :dDate1) "
// " or (field = :dDate2) "... " ) ".
void addSeparateDatesClause(ReportStatement& statement, const DeliveryReportChoices& choices,
                            const QString& field);

// Builders of each report family; none when the user cancelled a question
// the report asks first.
std::optional<ReportData> buildRunSheets(ReportBuild& build);
std::optional<ReportData> buildDetailedInfo(ReportBuild& build);
std::optional<ReportData> buildClientCounts(ReportBuild& build, int report);
std::optional<ReportData> buildItemCounts(ReportBuild& build, int report);
std::optional<ReportData> buildKitchenReport(ReportBuild& build, int report);
std::optional<ReportData> buildBirthdays(ReportBuild& build);
std::optional<ReportData> buildDemographicMealCount(ReportBuild& build);
std::optional<ReportData> buildChildDemographicMealCount(ReportBuild& build);
std::optional<ReportData> buildDietRestrictions(ReportBuild& build);
std::optional<ReportData> buildItemsByClient(ReportBuild& build);
std::optional<ReportData> buildBarCodeListing(ReportBuild& build);

} // namespace kb::reports
