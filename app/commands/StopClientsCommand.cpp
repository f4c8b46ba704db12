// kettlebrook --user NAME stop-clients [--date DATE] [--yes|--no]
//
// "Update Stopped Status" > "Stop All": the active clients whose stop date
// is on or before the date (yesterday by default) become Stopped through
// the client rules, in one transaction; prints the clients changed.

#include "StatusUtilityWords.h"

#include "suspensions/TFrmStopClients.h"

namespace {

int runStopClients(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    return kb::app::runStatusUtility(
        context, args,
        [](kb::RecordServices& services, kb::UserInterface& ui, kb::DataSet& clients,
           const kb::Clock& clock) -> std::unique_ptr<kb::StoppedClientsUtility> {
            return std::make_unique<kb::TFrmStopClients>(services, ui, clients, clock);
        });
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("stop-clients"),
     .arguments = {},
     .description = QStringLiteral(
         "Stops the active clients whose stop date is on or before --date (yesterday when not given), as "
         "Utilities > \"Update Stopped Status\" > \"Stop All\" does: each through the client rules (History, "
         "the question about their future scheduled deliveries, answered by --yes or --no; without either: "
         "No), all in one transaction. Prints the clients changed."),
     .minArguments = 0,
     .maxArguments = 0,
     .options = {QCommandLineOption(QStringLiteral("date"),
                                    QStringLiteral("Stop clients stopped on or before this date."),
                                    QStringLiteral("DATE"))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runStopClients);

} // namespace
