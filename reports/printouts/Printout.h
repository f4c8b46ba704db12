#pragma once

#include "delivery/DeliveryReportContext.h"

#include "ReportOutput.h"
#include "store/ResultSet.h"

#include <QString>

namespace kb::reports {

class ReportHolder;

// What the fixed print-outs of the client window share: the template of
// the data directory (or the program's own, see loadFixedTemplate), one
// pipe of rows, and the Config row as DBPipelineConfig. False when the
// folder lacks the template; nothing is told, as each screen has its own
// words for that.
bool loadPrintout(ReportHolder& holder, const DeliveryReportContext& context, const QString& templateFile,
                  const QString& pipeName, ResultSet rows);
// Sends a loaded print-out to the screen or the printer (with its dialog)
// and lets go of its pipes. False when the dialog was cancelled.
bool sendPrintout(ReportHolder& holder, ReportDestination destination);

} // namespace kb::reports
