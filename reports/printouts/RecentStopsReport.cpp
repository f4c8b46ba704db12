#include "printouts/RecentStopsReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateSource.h"

namespace kb::reports {

bool RecentStopsReport::prepare(ReportHolder& holder, ResultSet rows, const Dates& dates)
{
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&m_context.db);
    holder.setLabelStock(nullptr);
    if (loadFixedTemplate(holder, m_context.templateFolder, templateFileName()).isEmpty()) return false;
    holder.addPipe(std::make_unique<RowsPipe>(pipeName(), std::move(rows)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              m_context.db.execute(QStringLiteral("Select * from Config"))));
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
    if (!prepare(holder, std::move(rows), dates)) return false;
    holder.setDestination(destination);
    holder.setShowPrintDialog(true);
    const bool done = holder.print();
    holder.clearPipes();
    return done;
}

} // namespace kb::reports
