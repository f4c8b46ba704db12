#include "printouts/RowsReport.h"

#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateError.h"
#include "template/TemplateSource.h"

#include <QDir>

namespace kb::reports {

bool prepareRowsReport(ReportHolder& holder, const DeliveryReportContext& context,
                       const QString& templateFile, const QString& pipeName, ResultSet rows)
{
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&context.db);
    holder.setLabelStock(nullptr);
    if (loadFixedTemplate(holder, context.templateFolder, templateFile).isEmpty()) {
        context.ui.error(missingTemplateMessage(
            QDir::toNativeSeparators(QDir(context.templateFolder).filePath(templateFile))));
        return false;
    }
    holder.addPipe(std::make_unique<RowsPipe>(pipeName, std::move(rows)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              context.db.execute(QStringLiteral("Select * from Config"))));
    return true;
}

} // namespace kb::reports
