// kettlebrook --user NAME recent-stops [--date DATE] [--since DATE]
//
// "Recent Stops and Suspensions" as CSV: the clients on the saved
// deliveries of a date who were stopped or suspended by changes entered on
// or after a day, by default route, each with what put it on the list.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Clock.h"
#include "Csv.h"
#include "session/TDataModule1.h"
#include "suspensions/RecentStops.h"

namespace {

const QStringList Columns = {
    QStringLiteral("Person_ID"),  QStringLiteral("Client_ID"), QStringLiteral("Last_Name"),
    QStringLiteral("First_Name"), QStringLiteral("Def_Rte"),   QStringLiteral("Def_Stop"),
    QStringLiteral("Status"),     QStringLiteral("Stop_Dte"),  QStringLiteral("Address1"),
    QStringLiteral("City"),       QStringLiteral("Phone"),     QStringLiteral("Changes")};

int runRecentStops(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    kb::app::CommandSession session(context);
    const QDate today = session.data().clock().today();
    const QDate date = args.date(QStringLiteral("date"), today);
    const QDate since = args.date(QStringLiteral("since"), today.addDays(-1));
    const kb::ResultSet rows = kb::RecentStops::select(session.data().db(), date, since);
    kb::writeCsvHeader(context.out, Columns);
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        QVariantList values;
        for (const QString& column : Columns)
            values.append(rows.value(r, column));
        kb::writeCsvRecord(context.out, values);
    }
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("recent-stops"),
     .arguments = QString(),
     .description = QStringLiteral(
         "Prints as CSV the clients on the saved deliveries of --date (default today) who were stopped or "
         "suspended by changes entered on or after --since (default yesterday), by default route. Changes "
         "tells what put each client there: \"Stop date\", \"Suspension\", \"Stopped\"."),
     .minArguments = 0,
     .maxArguments = 0,
     .options = {QCommandLineOption(QStringLiteral("date"), QStringLiteral("The delivery date, YYYY-MM-DD."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("since"),
                                    QStringLiteral("Changes entered on or after this day count, YYYY-MM-DD."),
                                    QStringLiteral("DATE"))},
     .repeatable = {},
     .asksQuestions = false,
     .needsUser = true},
    runRecentStops);

} // namespace
