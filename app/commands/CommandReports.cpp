#include "CommandReports.h"

#include "CommandRegistry.h"

#include "ReportHolder.h"
#include "session/TDataModule1.h"

namespace kb::app {

reports::DeliveryReportContext commandReportContext(TDataModule1& data, UserInterface& ui)
{
    const DataLocation& location = data.location();
    return {data.db(), data.clock(),
            ui,        data.session().cUserName,
            nullptr,   location.clientServer ? QString() : location.directory};
}

void printToPdf(reports::ReportHolder& holder, CommandContext& context, const QString& pdf)
{
    holder.setDestination(reports::ReportDestination::Printer);
    holder.setShowPrintDialog(false);
    holder.print();
    holder.clearPipes();
    context.err << "Wrote " << pdf << '\n';
}

} // namespace kb::app
