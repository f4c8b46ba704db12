#pragma once

#include "delivery/DeliveryReportContext.h"

#include "store/ResultSet.h"

#include <QString>
#include <QVariant>

#include <utility>
#include <vector>

namespace kb::reports {

class ReportHolder;

// "Client Listing for Route": the clients of the route being ordered, as the
// ordering screen holds them (changes not yet made permanent included),
// laid out by the template RouteList.rtm. The rows are the pipe
// DBPipelineRouteList; the heading values (Heading, Route, Route_Desc,
// Route_Day, Active_Only, Printed) are report parameters; Config is
// DBPipelineConfig.
class RouteListReport
{
public:
    using Parameters = std::vector<std::pair<QString, QVariant>>;

    static QString templateFileName() { return QStringLiteral("RouteList.rtm"); }
    static QString pipeName() { return QStringLiteral("DBPipelineRouteList"); }

    explicit RouteListReport(const DeliveryReportContext& context) : m_context(context) {}

    // Makes the holder ready. False when the template is missing, which it
    // tells ("Could not locate the report template file:" and the path).
    bool prepare(ReportHolder& holder, ResultSet rows, const Parameters& parameters);
    // Shows the listing in the preview, from which the user prints it.
    // False when nothing was shown.
    bool print(ReportHolder& holder, ResultSet rows, const Parameters& parameters);

private:
    const DeliveryReportContext& m_context;
};

} // namespace kb::reports
