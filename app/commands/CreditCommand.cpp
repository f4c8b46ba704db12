// kettlebrook --user NAME credit --from DATE --to DATE
//
// Credits the walk-in, episodic and scheduled events not yet fulfilled as
// "Episodic events to be Credited" does, for the events dated from --from to
// --to: one transaction adds their deliveries and item lines and marks them
// fulfilled. Prints the number of deliveries written; a list the screen
// would not offer for saving (an event without a route or a valid service),
// or an empty one, writes nothing and exits 1.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "MessageError.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "walkins/TFormCreditWalkIns.h"

namespace {

using kb::app::UsageError;

int runCredit(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (!args.isSet(QStringLiteral("from")) || !args.isSet(QStringLiteral("to")))
        throw UsageError(QStringLiteral("Usage: kettlebrook credit --from DATE --to DATE"));
    const QDate from = args.date(QStringLiteral("from"));
    const QDate to = args.date(QStringLiteral("to"));
    if (from > to) throw UsageError(QStringLiteral("credit: --from comes after --to."));

    kb::app::CommandSession session(context);
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
    kb::Database& db = session.data().db();
    std::optional<kb::CreditResult> credited;
    {
        kb::TFormCreditWalkIns form(db, session.data().session(), session.ui());
        form.FormShow();
        form.setThrough(to);
        form.ActionApplyChanges();
        // The screen lists everything up to its date; the events before
        // --from are taken off the list, not credited.
        db.execute(QStringLiteral("Delete from Memory MemTableDeliveries where Delivery_Date < :From"),
                   {{QStringLiteral("From"), from}});
        if (form.isEnabled(kb::RunAction::SaveData) && form.table().rowCount() > 0)
            credited = form.ActionSaveData();
        else if (form.isEnabled(kb::RunAction::SaveData) ||
                 form.clientCountText().endsWith(QLatin1String(" 0")))
            context.err << "There are no events to credit from " << from.toString(Qt::ISODate) << " to "
                        << to.toString(Qt::ISODate) << ".\n";
        form.FormClose();
    }
    session.close();
    if (!credited) return 1;
    context.out << "deliveries\n" << credited->deliveries << '\n';
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("credit"),
     .arguments = QString(),
     .description = QStringLiteral(
         "Credits the walk-in, episodic and scheduled events not yet fulfilled and dated from --from to --to "
         "as "
         "the credit screen does: in one transaction each becomes a delivery with its items, counts and "
         "funding, and is marked fulfilled; nothing stored is removed. Prints the number of deliveries "
         "written; exits 1 when none was."),
     .minArguments = 0,
     .maxArguments = 0,
     .options = {QCommandLineOption(QStringLiteral("from"), QStringLiteral("The first event date."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("to"), QStringLiteral("The last event date."),
                                    QStringLiteral("DATE"))},
     .repeatable = {},
     .needsUser = true},
    runCredit);

} // namespace
