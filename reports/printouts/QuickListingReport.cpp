#include "printouts/QuickListingReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "data/RowsPipe.h"
#include "store/Database.h"
#include "template/TemplateError.h"
#include "template/TemplateSource.h"

#include <QDir>

namespace kb::reports {

bool QuickListingReport::prepare(ReportHolder& holder, ResultSet rows, const QString& heading)
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
