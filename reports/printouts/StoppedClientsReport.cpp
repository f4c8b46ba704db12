#include "printouts/StoppedClientsReport.h"

#include "Clock.h"
#include "ReportHolder.h"
#include "UserInterface.h"
#include "printouts/Printout.h"
#include "template/TemplateError.h"

#include <QDir>

namespace kb::reports {

bool StoppedClientsReport::print(ReportHolder& holder, ResultSet rows, const QString& title,
                                 ReportDestination destination)
{
    if (!loadPrintout(holder, m_context, templateFileName(), pipeName(), std::move(rows))) {
        m_context.ui.error(missingTemplateMessage(
            QDir::toNativeSeparators(QDir(m_context.templateFolder).filePath(templateFileName()))));
        return false;
    }
    holder.setParameter(QStringLiteral("Title"), title);
    holder.setParameter(QStringLiteral("Printed"), m_context.clock.now());
    return sendPrintout(holder, destination);
}

} // namespace kb::reports
