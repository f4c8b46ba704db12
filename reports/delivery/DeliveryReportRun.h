#pragma once

#include "delivery/DeliveryReportContext.h"
#include "delivery/ReportChoices.h"
#include "delivery/data/ReportData.h"
#include "delivery/data/TDataModule2.h"

#include <optional>

namespace kb::reports {

class ReportHolder;
class ReportQuestions;

// One run of a delivery report: its data built from the choices, its
// template loaded, both handed to the report holder, which then prints,
// previews or writes it. The data lives as long as this object.
class DeliveryReportRun
{
public:
    DeliveryReportRun(const DeliveryReportContext& context, ReportQuestions& questions);

    // Makes the holder ready for the report of the choices: a fixed report
    // or a user-defined one (which brings its own data and reads the
    // parameters and Config). False when the user cancelled a question the
    // report asks, or the template is missing, which it tells. Throws on a
    // failure of the data or of the template.
    bool prepare(ReportHolder& holder, const DeliveryReportChoices& choices);

    // The report's own data set, none for a user-defined report.
    DataPipe* mainData() const
    {
        return m_data && !m_data->mainPipe.isEmpty() ? &m_data->mainData() : nullptr;
    }

    // The path of a template in the folder.
    QString templatePath(const QString& fileName) const;

private:
    // Labels print on the chosen stock from the chosen first label; other
    // reports on their own paper.
    static void setLabelStock(ReportHolder& holder, const DeliveryReportChoices& choices);
    bool loadTemplate(ReportHolder& holder, const QString& fileName, bool userDefined);

    const DeliveryReportContext& m_context;
    ReportQuestions& m_questions;
    TDataModule2 m_module;
    std::optional<ReportData> m_data;
};

} // namespace kb::reports
