#pragma once

#include "delivery/DeliveryReportContext.h"

#include "store/ResultSet.h"

#include <QString>

namespace kb::reports {

class ReportHolder;

// Makes the holder ready for a print-out over rows the screen holds: the
// fixed template of that name (from the template folder, or built in), the
// rows as the named pipe and Config as DBPipelineConfig, no parameters yet.
// False when the folder lacks the template, which it tells ("Could not
// locate the report template file:" and the path).
bool prepareRowsReport(ReportHolder& holder, const DeliveryReportContext& context,
                       const QString& templateFile, const QString& pipeName, ResultSet rows);

} // namespace kb::reports
