// kettlebrook --user NAME save DATE [--type A|O|E|S|B] [--confirm all|none|ID,...] [--progress]:
// signs in, prepares the run of DATE as the Daily Run Preparation screen
// does and saves it as its "Save Data" does, replacing what the date held,
// in one transaction. Items that need confirmation go out as --confirm says
// (none when not given). When the agency flags special meals, the date's
// stored setup is used; a date without one flags none. Prints one
// CSV row: the number of deliveries saved and the range of their Deliv_IDs.
// A failed save changes nothing, tells why on the error stream and exits 1.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "RunCommandWords.h"
#include "SaveProgress.h"

#include "MessageError.h"
#include "TFormRunPrepare.h"
#include "confirmation/GivenItemConfirmation.h"
#include "dialogs/GivenRunDialogs.h"
#include "session/SessionState.h"

namespace {

int runSave(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QDate date = args.datePositional(0, QStringLiteral("save"));
    const QChar letter = kb::app::deliveryTypeLetter(args);
    kb::GivenItemConfirmation confirmation = kb::app::itemConfirmation(args);

    kb::app::CommandSession session(context);
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
    kb::app::SaveProgress ui(session.ui(), context.err, args.isSet(QStringLiteral("progress")));
    kb::GivenRunDialogs dialogs;
    std::optional<kb::SaveResult> saved;
    {
        kb::TFormRunPrepare form(session.data().db(), session.data().session(), ui);
        form.setItemConfirmation(&confirmation);
        form.setDialogs(&dialogs);
        kb::app::prepareRun(form, date, letter);
        if (form.table().rowCount() == 0) {
            form.FormClose();
            throw kb::MessageError(
                QStringLiteral("No deliveries are due on %1 for %2; nothing was saved.")
                    .arg(date.toString(Qt::ISODate),
                         kb::TFormRunPrepare::deliveryTypeTexts().value(form.deliveryTypeIndex())));
        }
        saved = form.ActionSaveData();
        form.FormClose();
    }
    session.close();
    if (!saved) return 1;
    context.out << "deliveries,first_deliv_id,last_deliv_id\n"
                << saved->deliveries << ',' << saved->firstDelivId << ',' << saved->lastDelivId << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("save"),
     .arguments = QStringLiteral("DATE"),
     .description = QStringLiteral(
         "Prepares the run of DATE as the Daily Run Preparation screen does and saves it as its Save Data "
         "does: "
         "the date's stored deliveries are replaced in one transaction, their statuses kept. Prints the "
         "number of "
         "deliveries saved and the range of their Deliv_IDs as CSV. When the agency flags special meals, the "
         "date's stored setup is used (none when the date has none). A failed save changes nothing "
         "and "
         "exits 1."),
     .minArguments = 1,
     .maxArguments = 1,
     .options =
         {kb::app::deliveryTypeOption(),
          kb::app::confirmOption(QStringLiteral("The items that need confirmation and are confirmed: all, "
                                                "none (when not given) or their numbers.")),
          QCommandLineOption(QStringLiteral("progress"),
                             QStringLiteral("Shows the progress on the error stream one line at a time also "
                                            "when it is not a terminal (on a terminal it always shows)."))},
     .repeatable = {},
     .needsUser = true},
    runSave);

} // namespace
