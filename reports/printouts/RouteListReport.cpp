#include "printouts/RouteListReport.h"

#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateError.h"
#include "template/TemplateSource.h"

#include <QDir>

namespace kb::reports {

bool RouteListReport::prepare(ReportHolder& holder, ResultSet rows, const Parameters& parameters)
{
    holder.clearPipes();
    holder.clearParameters();
    holder.setDatabase(&m_context.db);
    holder.setLabelStock(nullptr);
    if (loadFixedTemplate(holder, m_context.templateFolder, templateFileName()).isEmpty()) {
        m_context.ui.error(missingTemplateMessage(
            QDir::toNativeSeparators(QDir(m_context.templateFolder).filePath(templateFileName()))));
        return false;
    }
    holder.addPipe(std::make_unique<RowsPipe>(pipeName(), std::move(rows)));
    holder.addPipe(std::make_unique<RowsPipe>(QStringLiteral("DBPipelineConfig"),
                                              m_context.db.execute(QStringLiteral("Select * from Config"))));
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
