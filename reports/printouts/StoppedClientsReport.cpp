#include "printouts/StoppedClientsReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateError.h"
#include "template/TemplateSource.h"

#include <QDir>

namespace kb::reports {

bool StoppedClientsReport::print(ReportHolder& holder, ResultSet rows, const QString& title,
                                 ReportDestination destination)
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
    holder.setParameter(QStringLiteral("Title"), title);
    holder.setParameter(QStringLiteral("Printed"), m_context.clock.now());
    holder.setDestination(destination);
    holder.setShowPrintDialog(true);
    const bool done = holder.print();
    holder.clearPipes();
    return done;
}

} // namespace kb::reports
