#include "printouts/QuickListingReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "printouts/RowsReport.h"

namespace kb::reports {

bool QuickListingReport::prepare(ReportHolder& holder, ResultSet rows, const QString& heading)
{
    if (!prepareRowsReport(holder, m_context, templateFileName(), pipeName(), std::move(rows))) return false;
    holder.setParameter(QStringLiteral("Heading"), heading);
    holder.setParameter(QStringLiteral("Printed"), m_context.clock.today());
    return true;
}

bool QuickListingReport::print(ReportHolder& holder, ResultSet rows, const QString& heading,
                               ReportDestination destination)
{
    if (!prepare(holder, std::move(rows), heading)) return false;
    holder.setDestination(destination);
    const bool done = holder.print();
    holder.clearPipes();
    return done;
}

} // namespace kb::reports
