// kettlebrook --user NAME directions PERSON_ID [--date D] [--pdf FILE]
//
// "Delivery Directions" of one client on one date (today by default): where
// the delivery goes that day (the alternate address in force, else the
// client's own), on which route and stop, with the driver's directions,
// then, after an empty line, the items that date brings. Prints CSV; with
// --pdf the directions are laid out by the client window's template and
// written to the file instead.

#include "CommandRegistry.h"
#include "CommandReports.h"
#include "CommandSession.h"

#include "Clock.h"
#include "Csv.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "data/DataPipe.h"
#include "data/PipeCsv.h"
#include "printouts/DeliveryDirections.h"
#include "session/TDataModule1.h"

#include <limits>

namespace {

using namespace kb;
using namespace kb::reports;

int directions(app::CommandContext& context, const app::CommandArgs& args)
{
    const qint64 personId =
        args.integerPositional(0, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint64>::max());
    const QString pdf = args.value(QStringLiteral("pdf"));

    app::CommandSession session(context);
    TDataModule1& data = session.data();
    const QDate date = args.date(QStringLiteral("date"), data.clock().today());
    const DeliveryReportContext reportContext = app::commandReportContext(data, session.ui());
    // Nothing is printed without --pdf; the holder only gathers the data.
    PdfFileOutput output(pdf);
    ReportHolder holder(output, data.clock());
    holder.setDocumentName(DeliveryDirections::caption());
    DeliveryDirections report(reportContext);
    if (!report.prepare(holder, DeliveryDirections::Kind::Client, personId, date)) {
        session.close();
        return 1;
    }

    if (!pdf.isEmpty()) {
        app::printToPdf(holder, context, pdf);
        session.close();
        return 0;
    }

    DataPipe& client = *holder.pipe(QStringLiteral("DBPipelineClientInfo"));
    DataPipe& alternate = *holder.pipe(QStringLiteral("DBPipelineAddressOverride"));
    client.seek(0);
    const bool elsewhere = alternate.rowCount() > 0;
    if (elsewhere) alternate.seek(0);
    DataPipe& place = elsewhere ? alternate : client;
    // Texts trimmed; one with nothing left is left empty.
    const auto text = [](DataPipe& pipe, QStringView field) {
        const QString value = pipe.value(field).toString().trimmed();
        return value.isEmpty() ? QVariant() : QVariant(value);
    };
    writeCsvHeader(context.out, {"person_id", "client_id", "first_name", "last_name", "date", "day", "route",
                                 "stop", "schedule_type", "alternate_address", "address1", "address2", "city",
                                 "state", "zip", "phone", "directions"});
    writeCsvRecord(context.out,
                   {personId, text(client, u"Client_ID"), text(client, u"First_Name"),
                    text(client, u"Last_Name"), date, holder.parameter(QStringLiteral("Del_Day")),
                    holder.parameter(QStringLiteral("Route_ID")), holder.parameter(QStringLiteral("Stop")),
                    holder.parameter(QStringLiteral("Schedule_Type")), elsewhere, text(place, u"Address1"),
                    text(place, u"Address2"), text(place, u"City"), text(place, u"State"),
                    text(place, u"Zip"), text(place, u"Phone"), text(place, u"Directions")});
    context.out << '\n';
    writePipeCsv(*holder.pipe(DeliveryDirections::itemsPipe()), context.out);
    holder.clearPipes();
    session.close();
    return 0;
}

const app::CommandRegistration
    registration({.name = QStringLiteral("directions"),
                  .arguments = QStringLiteral("PERSON_ID"),
                  .description = QStringLiteral("The delivery directions of one client on a date: the "
                                                "address the delivery goes to, its route and stop "
                                                "and the driver's directions, then the items of that date. "
                                                "CSV, or the printed directions with --pdf."),
                  .minArguments = 1,
                  .maxArguments = 1,
                  .options = {QCommandLineOption(QStringLiteral("date"),
                                                 QStringLiteral("The delivery date; today when not given."),
                                                 QStringLiteral("YYYY-MM-DD")),
                              QCommandLineOption(QStringLiteral("pdf"),
                                                 QStringLiteral("Write the printed directions to FILE."),
                                                 QStringLiteral("FILE"))},
                  .needsUser = true,
                  .paints = true},
                 directions);

} // namespace
