#include "printouts/RecentStopsReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "printouts/Printout.h"

namespace kb::reports {

bool RecentStopsReport::prepare(ReportHolder& holder, ResultSet rows, const Dates& dates)
{
    if (!loadPrintout(holder, m_context, templateFileName(), pipeName(), std::move(rows))) return false;
    holder.setParameter(QStringLiteral("Stop_Date"), dates.stopDate);
    holder.setParameter(QStringLiteral("Recency_Date"), dates.recencyDate);
    holder.setParameter(QStringLiteral("Delivery_Date"),
                        dates.deliveryDate.isValid() ? QVariant(dates.deliveryDate) : QVariant());
    holder.setParameter(QStringLiteral("Printed"), m_context.clock.now());
    return true;
}

bool RecentStopsReport::print(ReportHolder& holder, ResultSet rows, const Dates& dates,
                              ReportDestination destination)
{
    return prepare(holder, std::move(rows), dates) && sendPrintout(holder, destination);
}

} // namespace kb::reports
