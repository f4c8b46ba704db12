// kettlebrook --user NAME prepare DATE [--type A|O|E|S|B]: signs in, prepares
// the run of DATE as the Daily Run Preparation screen does, and prints the
// working table as CSV in the run's order. Messages of the preparation (a
// missing route) go to the error stream.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "store/Database.h"
#include "TFormRunPrepare.h"

namespace {

int runPrepare(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QDate date = args.datePositional(0, QStringLiteral("prepare"));
    const QChar letter = args.choice(QStringLiteral("type"), {"A", "O", "E", "S", "B"}, QStringLiteral("A")).at(0);

    kb::app::CommandSession session(context);
    kb::TFormRunPrepare form(session.data().db(), session.data().session(), session.ui());
    form.SetDeliveryType(letter);
    form.SetPrepareDate(date);
    form.FormShow();
    form.ActionPrepare();
    context.err.flush();
    kb::writeCsv(context.out, form.table().select(kb::DeliveriesIndex::RouteStopClient));
    form.FormClose();
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("prepare"),
     .arguments = QStringLiteral("DATE"),
     .description = QStringLiteral("Prepares the run of DATE as the Daily Run Preparation screen does and prints "
                                   "the working table as CSV in the run's order."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("type"),
                                    QStringLiteral("The delivery type: A all, O ongoing only, E episodic only, S scheduled only, "
                                                   "B episodic and scheduled. A when not given."),
                                    QStringLiteral("A|O|E|S|B"))},
     .repeatable = {},
     .needsUser = true},
    runPrepare);

} // namespace
