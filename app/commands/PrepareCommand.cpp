// kettlebrook --user NAME prepare DATE [--type A|O|E|S|B] [--items [--confirm all|none|ID,...]]:
// signs in, prepares the run of DATE as the Daily Run Preparation screen
// does, and prints the working table as CSV in the run's order; with --items
// it prints instead the items, meal and label counts and funding that saving
// the run would write, with the items that need confirmation confirmed as
// --confirm says (none when not given). Messages of the preparation (a
// missing route) go to the error stream. Nothing is written.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "RunCommandWords.h"

#include "confirmation/GivenItemConfirmation.h"
#include "Csv.h"
#include "items/RunItemRows.h"
#include "store/Database.h"
#include "TFormRunPrepare.h"

namespace {

int runPrepare(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QDate date = args.datePositional(0, QStringLiteral("prepare"));
    const QChar letter = kb::app::deliveryTypeLetter(args);
    const bool items = args.isSet(QStringLiteral("items"));
    if (args.isSet(QStringLiteral("confirm")) && !items)
        throw kb::app::UsageError(QStringLiteral("--confirm goes with --items."));
    kb::GivenItemConfirmation confirmation = kb::app::itemConfirmation(args);

    kb::app::CommandSession session(context);
    kb::TFormRunPrepare form(session.data().db(), session.data().session(), session.ui());
    form.setItemConfirmation(&confirmation);
    kb::app::prepareRun(form, date, letter);
    context.err.flush();
    if (items)
        kb::writeCsv(context.out, kb::runItemRows(form.FindRunItems(form.ConfirmDeliveryItems())));
    else
        kb::writeCsv(context.out, form.table().select(kb::DeliveriesIndex::RouteStopClient));
    form.FormClose();
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("prepare"),
     .arguments = QStringLiteral("DATE"),
     .description = QStringLiteral("Prepares the run of DATE as the Daily Run Preparation screen does and prints "
                                   "the working table as CSV in the run's order, or with --items what saving it "
                                   "would write: each delivery's items, meal and label counts and funding."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {kb::app::deliveryTypeOption(),
                 QCommandLineOption(QStringLiteral("items"),
                                    QStringLiteral("Prints one row per item of each delivery (a delivery without "
                                                   "items gets one row with empty item columns).")),
                 kb::app::confirmOption(QStringLiteral("With --items: the items that need confirmation and are "
                                                       "confirmed: all, none (when not given) or their numbers."))},
     .repeatable = {},
     .needsUser = true},
    runPrepare);

} // namespace
