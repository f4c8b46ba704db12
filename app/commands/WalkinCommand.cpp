// kettlebrook --user NAME walkin add PERSON_ID --date DATE [--service N] [--route R] [--comp] [--yes|--no]
//
// Records one walk-in visit as "Record Walk-In Visits" does: the client's
// eligibility and an event already on the date are asked about (--yes or
// --no; without either, No), a client without a service is refused, and the
// visit becomes a walk-in event for the credit to turn into a delivery.
// Prints the number of events recorded; exits 1 when none was.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "MessageError.h"
#include "session/SessionState.h"
#include "store/Database.h"
#include "walkins/WalkInRecorder.h"

#include <limits>

namespace {

using kb::app::UsageError;

int runWalkin(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positional(0) != QLatin1String("add") || args.positionals().size() != 2)
        throw UsageError(QStringLiteral("Usage: kettlebrook walkin add PERSON_ID --date DATE [--service N] "
                                        "[--route R] [--comp]"));
    const qint64 person =
        args.integerPositional(1, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint32>::max());
    if (!args.isSet(QStringLiteral("date")))
        throw UsageError(QStringLiteral("walkin add: --date DATE is needed."));
    const QDate date = args.date(QStringLiteral("date"));
    const qint64 service = args.integer(QStringLiteral("service"), 1, std::numeric_limits<qint16>::max(), 0);
    const QString route = args.value(QStringLiteral("route")).trimmed();
    if (route.size() > 5) throw UsageError(QStringLiteral("walkin add: --route is at most five characters."));

    kb::app::CommandSession session(context);
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
    kb::Database& db = session.data().db();
    const QDate today = db.clock().today();
    if (date < today.addDays(-365) || date > today.addDays(365))
        throw kb::MessageError(QStringLiteral("The service date must lie within a year of today."));
    kb::WalkIn walkIn = kb::WalkIn::ofClient(db, person, date);
    kb::WalkInRecorder recorder(db, session.ui());
    qint64 recorded = 0;
    if (recorder.mayAdd(walkIn)) {
        if (service > 0) walkIn.svcsUsed = service;
        if (!route.isEmpty()) walkIn.defRte = route;
        walkIn.comp = args.isSet(QStringLiteral("comp"));
        recorded = recorder.record({walkIn}, session.data().session().userFullName);
    }
    session.close();
    context.out << "recorded\n" << recorded << '\n';
    return recorded > 0 ? 0 : 1;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("walkin"),
     .arguments = QStringLiteral("add PERSON_ID"),
     .description = QStringLiteral(
         "Records a walk-in visit of the client on --date as Record Walk-In Visits does, under --service "
         "(else "
         "the client's) and --route (else the client's), complimentary with --comp. Questions about "
         "eligibility or an event already on the date are answered by --yes or --no, without either No. "
         "Prints the number of events recorded; exits 1 when none was."),
     .minArguments = 2,
     .maxArguments = 2,
     .options = {QCommandLineOption(QStringLiteral("date"), QStringLiteral("The service date."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("service"), QStringLiteral("The service's number."),
                                    QStringLiteral("N")),
                 QCommandLineOption(QStringLiteral("route"), QStringLiteral("The route or centre."),
                                    QStringLiteral("R")),
                 QCommandLineOption(QStringLiteral("comp"), QStringLiteral("The visit is complimentary."))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runWalkin);

} // namespace
