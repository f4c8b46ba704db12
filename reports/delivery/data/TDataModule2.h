#pragma once

#include "delivery/MemTableKettlebrookReportParameters.h"
#include "delivery/ReportChoices.h"
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

// The data of the delivery reports: for each fixed report its statement,
// built from the choices of the report screen, the detail data sets that
// follow it, and the pipes every report can print (the report parameters
// and the Config row). The pipe names are the contract with the templates.
class TDataModule2
{
public:
    // Makes the report parameter table when the session lacks it.
    TDataModule2(Database& db, const Clock& clock);

    // The data of a fixed report: the questions the report asks first go to
    // `questions`, its messages to `ui`. None when the user cancelled a
    // question that ends the report. Throws on a failing statement.
    std::optional<ReportData> build(const DeliveryReportChoices& choices, ReportQuestions& questions,
                                    UserInterface& ui, SettingsFile* settings);

    // The pipes every report gets: DBPipelineReportParameters with the row
    // as it stands, and DBPipelineConfig.
    void addCommonPipes(ReportData& data, const ReportParameterRow& row);

    // The period of the choices, as the parameter row keeps it; the limits
    // fill in the rest while a report is built.
    static ReportParameterRow periodOf(const DeliveryReportChoices& choices);

    MemTableKettlebrookReportParameters& parameters() { return m_parameters; }

private:
    Database& m_db;
    const Clock& m_clock;
    MemTableKettlebrookReportParameters m_parameters;
};

} // namespace kb::reports
