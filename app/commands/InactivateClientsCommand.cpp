// kettlebrook --user NAME inactivate-clients [--date DATE]
//
// "Inactivate Stopped Clients" > "Inactivate All": the stopped clients whose
// stop date is on or before the date (today minus Config.STOPPED2INACTIVE_DAYS
// by default) become Inactive through the client rules, in one
// transaction; prints the clients changed.

#include "StatusUtilityWords.h"

#include "suspensions/TFrmInactivateClients.h"

namespace {

int runInactivateClients(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    return kb::app::runStatusUtility(
        context, args,
        [](kb::RecordServices& services, kb::UserInterface& ui, kb::DataSet& clients,
           const kb::Clock& clock) -> std::unique_ptr<kb::StoppedClientsUtility> {
            return std::make_unique<kb::TFrmInactivateClients>(services, ui, clients, clock);
        });
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("inactivate-clients"),
     .arguments = {},
     .description = QStringLiteral(
         "Inactivates the stopped clients whose stop date is on or before --date (today minus the "
         "configured days from stopped to inactive when not given), as Utilities > \"Inactivate Stopped "
         "Clients\" > \"Inactivate All\" does: each through the client rules (History, their unfulfilled "
         "dated deliveries deleted), all in one transaction. Prints the clients changed."),
     .minArguments = 0,
     .maxArguments = 0,
     .options = {QCommandLineOption(QStringLiteral("date"),
                                    QStringLiteral("Inactivate clients stopped on or before this date."),
                                    QStringLiteral("DATE"))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runInactivateClients);

} // namespace
