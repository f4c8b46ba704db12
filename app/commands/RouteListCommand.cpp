// kettlebrook --user NAME route-list [--route ROUTE] [--day MON..SUN]
//     [--all-statuses] [--pdf FILE]
//
// The clients of a route in stop order, as "Print Listing" on the Order
// Stops within Routes screen lists them: by the default route, or with --day
// by that weekday's route then the default. Active clients only unless
// --all-statuses. Without --route every route is listed, one after another.
// Prints CSV; with --pdf the listing of the one route is laid out by the
// report template RouteList.rtm and written to the file instead.

#include "CommandRegistry.h"
#include "CommandReports.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "OrderRoutesStatements.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "TFormOrderRoutes.h"
#include "printouts/RouteListReport.h"
#include "session/TDataModule1.h"
#include "store/Database.h"

namespace {

using namespace kb;

// A text trimmed, and nothing at all when nothing is left of it.
QVariant text(const QString& value)
{
    const QString trimmed = value.trimmed();
    return trimmed.isEmpty() ? QVariant() : QVariant(trimmed);
}

int routeList(app::CommandContext& context, const app::CommandArgs& args)
{
    const QString route = args.value(QStringLiteral("route")).trimmed();
    const QString day =
        args.choice(QStringLiteral("day"), {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"}, QString());
    const QString pdf = args.value(QStringLiteral("pdf"));
    if (!pdf.isEmpty() && route.isEmpty())
        throw app::UsageError(QStringLiteral("--pdf prints the listing of one route: give --route ROUTE."));

    app::CommandSession session(context);
    TDataModule1& data = session.data();
    TFormOrderRoutes form(data.db(), data.session(), session.ui());
    QStringList routes;
    if (route.isEmpty()) {
        for (const QString& entry : form.routeEntries())
            routes << OrderRoutesStatements::routeCode(entry);
    } else {
        if (!form.setRoute(route)) throw MessageError(QStringLiteral("There is no route %1.").arg(route));
        routes << route;
    }
    form.setDayIndex(OrderRoutesStatements::dayIndexOf(day));
    form.setActiveOnly(!args.isSet(QStringLiteral("all-statuses")));

    if (!pdf.isEmpty()) {
        form.ActionRetrieve();
        const RouteListing listing = form.listing();
        const reports::DeliveryReportContext reportContext = app::commandReportContext(data, session.ui());
        reports::PdfFileOutput output(pdf);
        reports::ReportHolder holder(output, data.clock());
        holder.setDocumentName(RouteListing::heading() + QLatin1Char(' ') + listing.route);
        reports::RouteListReport report(reportContext);
        if (!report.prepare(holder, listing.rows, listing.parameters())) {
            session.close();
            return 1;
        }
        app::printToPdf(holder, context, pdf);
        session.close();
        return 0;
    }

    writeCsvHeader(context.out, {"route", "route_day", "stop", "person_id", "client_id", "household_id",
                                 "status", "first_name", "last_name", "address1", "cross_street", "city",
                                 "state", "zip", "latitude", "longitude"});
    for (const QString& code : routes) {
        form.setRoute(code);
        form.ActionRetrieve();
        for (const OrderRoutesRow& r : form.listingRows())
            writeCsvRecord(context.out, {text(r.route), text(r.routeDay), r.stop, r.personId,
                                         text(r.clientId), r.householdId, text(r.status), text(r.firstName),
                                         text(r.lastName), text(r.address1), text(r.crossStreet),
                                         text(r.city), text(r.state), text(r.zip), r.latitude, r.longitude});
    }
    session.close();
    return 0;
}

const app::CommandRegistration registration(
    {.name = QStringLiteral("route-list"),
     .description = QStringLiteral(
         "Lists the clients of a route in stop order, as \"Print Listing\" of Order Stops within Routes "
         "does: "
         "CSV, or with --pdf the printed listing of one route. Every route without --route."),
     .options =
         {QCommandLineOption(QStringLiteral("route"), QStringLiteral("The route to list."),
                             QStringLiteral("ROUTE")),
          QCommandLineOption(QStringLiteral("day"),
                             QStringLiteral("List the weekday's route then the default route. The default "
                                            "route when not given."),
                             QStringLiteral("MON..SUN")),
          QCommandLineOption(QStringLiteral("all-statuses"),
                             QStringLiteral("List clients of every status, not only the active ones.")),
          QCommandLineOption(QStringLiteral("pdf"),
                             QStringLiteral("Write the printed listing of the route to FILE."),
                             QStringLiteral("FILE"))},
     .needsUser = true,
     .paints = true},
    routeList);

} // namespace
