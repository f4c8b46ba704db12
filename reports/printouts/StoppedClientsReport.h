#pragma once

#include "delivery/DeliveryReportContext.h"

#include "ReportOutput.h"
#include "store/ResultSet.h"

#include <QString>

namespace kb::reports {

class ReportHolder;

// The list of a status utility ("Print Report" of the stop and the
// inactivation lists), laid out by the template StoppedClients.rtm: the
// pipe DBPipelineStoppedClients (Client_ID, First_Name, Last_Name,
// Stop_Dte, Stop_Reason), the parameters Title (the list's title) and
// Printed, and DBPipelineConfig.
class StoppedClientsReport
{
public:
    static QString templateFileName() { return QStringLiteral("StoppedClients.rtm"); }
    static QString pipeName() { return QStringLiteral("DBPipelineStoppedClients"); }

    explicit StoppedClientsReport(const DeliveryReportContext& context) : m_context(context) {}

    // False when the template is missing, which it tells ("Could not
    // locate the report template file:" and the path), or the print dialog
    // was cancelled.
    bool print(ReportHolder& holder, ResultSet rows, const QString& title, ReportDestination destination);

private:
    const DeliveryReportContext& m_context;
};

} // namespace kb::reports
