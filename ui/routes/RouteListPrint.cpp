#include "routes/RouteListPrint.h"

#include "QtReportOutput.h"
#include "ReportHolder.h"
#include "TFormOrderRoutes.h"
#include "deliveryreports/DeliveryReportChoice.h"
#include "printouts/RouteListReport.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"

namespace kb::ui {

void connectRouteListPrinter(TFormOrderRoutes& presenter, TDataModule1& data, UserInterface& ui,
                             QWidget* parent)
{
    presenter.setListingPrinter([&data, &ui, parent](const RouteListing& listing) {
        const reports::DeliveryReportContext context = deliveryReportContext(data, ui);
        QtReportOutput output(parent, ui, data.userSettings().path());
        reports::ReportHolder holder(output, data.clock());
        holder.setDocumentName(RouteListing::heading() + QLatin1Char(' ') + listing.route);
        reports::RouteListReport(context).print(holder, listing.rows, listing.parameters());
    });
}

} // namespace kb::ui
