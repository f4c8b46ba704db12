#include "printouts/RouteListReport.h"

#include "ReportHolder.h"
#include "printouts/RowsReport.h"

namespace kb::reports {

bool RouteListReport::prepare(ReportHolder& holder, ResultSet rows, const Parameters& parameters)
{
    if (!prepareRowsReport(holder, m_context, templateFileName(), pipeName(), std::move(rows))) return false;
    for (const auto& [name, value] : parameters)
        holder.setParameter(name, value);
    return true;
}

bool RouteListReport::print(ReportHolder& holder, ResultSet rows, const Parameters& parameters)
{
    if (!prepare(holder, std::move(rows), parameters)) return false;
    holder.setDestination(ReportDestination::Screen);
    const bool shown = holder.print();
    holder.clearPipes();
    return shown;
}

} // namespace kb::reports
