// kettlebrook --user NAME suspensions PERSON_ID
//
// A client's suspensions as CSV, latest stop date first, as the
// Suspensions page lists them.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "SuspensionCommandWords.h"

#include "session/TDataModule1.h"

#include <limits>

namespace {

int runSuspensions(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const qint64 personId =
        args.integerPositional(0, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint32>::max());
    kb::app::CommandSession session(context);
    kb::app::standOnPerson(session, personId);
    kb::app::writeSuspensions(context.out, session.data().db(), QStringLiteral("Person_ID = :Person_ID"),
                              {{QStringLiteral("Person_ID"), personId}});
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("suspensions"),
     .arguments = QStringLiteral("PERSON_ID"),
     .description = QStringLiteral("Prints a client's suspensions as CSV, the latest stop date first. A row "
                                   "covers the days from Stop_Dt up to the day before Resume_Dt."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {},
     .repeatable = {},
     .asksQuestions = false,
     .needsUser = true},
    runSuspensions);

} // namespace
