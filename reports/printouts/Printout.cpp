#include "printouts/Printout.h"

#include "ReportHolder.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateSource.h"

namespace kb::reports {

bool loadPrintout(ReportHolder& holder, const DeliveryReportContext& context, const QString& templateFile,
                  const QString& pipeName, ResultSet rows)
{
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&context.db);
    holder.setLabelStock(nullptr);
    if (loadFixedTemplate(holder, context.templateFolder, templateFile).isEmpty()) return false;
    holder.addPipe(std::make_unique<RowsPipe>(pipeName, std::move(rows)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              context.db.execute(QStringLiteral("Select * from Config"))));
    return true;
}

bool sendPrintout(ReportHolder& holder, ReportDestination destination)
{
    holder.setDestination(destination);
    holder.setShowPrintDialog(true);
    const bool done = holder.print();
    holder.clearPipes();
    return done;
}

} // namespace kb::reports
