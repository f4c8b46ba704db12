// kettlebrook --user NAME missed record DATE PERSON_ID... [--excused] [--yes|--no]
// kettlebrook --user NAME missed excuse DATE PERSON_ID
// kettlebrook --user NAME missed clear DATE PERSON_ID
// kettlebrook --user NAME missed summarize [--since DATE]
//
// Records, excuses and clears missed deliveries as the client window's
// "Missed Deliveries" screens do, and rebuilds the clients' counters as
// "Summarize Missed Deliveries" does. Questions are answered by --yes or
// --no, without either by the answer that changes the least; what the
// screens would tell goes to the error stream, and a command that recorded
// nothing exits 1. Each command runs in one transaction.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "missed/MissRecorder.h"
#include "missed/MissedSummary.h"
#include "missed/TFormExcuseMissedMeals.h"
#include "session/SessionState.h"
#include "store/Database.h"

#include <limits>

namespace {

using kb::app::UsageError;

qint64 personWord(const kb::app::CommandArgs& args, int index)
{
    return args.integerPositional(index, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint32>::max());
}

// Refuses a user who may not change data before anything is asked.
void checkAccess(kb::app::CommandSession& session)
{
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
}

int recordMisses(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() < 3)
        throw UsageError(QStringLiteral("Usage: kettlebrook missed record DATE PERSON_ID... [--excused]"));
    const QDate date = args.datePositional(1, QStringLiteral("DATE"));
    std::vector<qint64> persons;
    for (int i = 2; i < args.positionals().size(); ++i)
        persons.push_back(personWord(args, i));
    const bool excused = args.isSet(QStringLiteral("excused"));

    kb::app::CommandSession session(context);
    checkAccess(session);
    kb::Database& db = session.data().db();
    std::vector<kb::MissRequest> list;
    for (qint64 person : persons) {
        const bool twice = std::any_of(list.begin(), list.end(),
                                       [&](const kb::MissRequest& r) { return r.client.personId == person; });
        if (twice)
            session.ui().warning(QStringLiteral("That Client has already been added to the list!"));
        else
            list.push_back({kb::MissedClient::read(db, person), excused});
    }
    const qint64 recorded = kb::MissRecorder(db, session.ui(), kb::MissRecorder::Wording::Batch)
                                .record(list, date, session.data().session().userFullName);
    session.close();
    context.out << "recorded\n" << recorded << '\n';
    if (recorded == 0) {
        context.err << "No missed delivery was recorded.\n";
        return 1;
    }
    return 0;
}

// excuse and clear: the screen's list of the client with the date's line
// checked, then its command.
int changeMiss(kb::app::CommandContext& context, const kb::app::CommandArgs& args, bool clear)
{
    if (args.positionals().size() != 3)
        throw UsageError(
            QStringLiteral("Usage: kettlebrook missed %1 DATE PERSON_ID").arg(args.positional(0)));
    const QDate date = args.datePositional(1, QStringLiteral("DATE"));
    const qint64 person = personWord(args, 2);

    kb::app::CommandSession session(context);
    checkAccess(session);
    kb::Database& db = session.data().db();
    const kb::MissedClient client = kb::MissedClient::read(db, person);
    std::unique_ptr<kb::TFormExcuseMissedMeals> form =
        clear
            ? std::make_unique<kb::TFormDeleteMissedMeals>(db, session.data().session(), session.ui(), client)
            : std::make_unique<kb::TFormExcuseMissedMeals>(db, session.data().session(), session.ui(),
                                                           client);
    form->FormShow();
    if (!form->checkDate(date)) throw kb::MessageError(kb::TFormExcuseMissedMeals::notFoundText());
    const bool done = form->ActionApply() && form->changed() > 0;
    session.close();
    return done ? 0 : 1;
}

int summarize(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() != 1)
        throw UsageError(QStringLiteral("Usage: kettlebrook missed summarize [--since DATE]"));
    kb::app::CommandSession session(context);
    checkAccess(session);
    kb::Database& db = session.data().db();
    const QDate since = args.date(QStringLiteral("since"), db.clock().today().addDays(-365));
    kb::summarizeMissedDeliveries(db, session.ui(), since);
    kb::writeCsv(context.out, kb::missedCounters(db));
    session.close();
    return 0;
}

int runMissed(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString action = args.positional(0);
    const bool excusedGiven = args.isSet(QStringLiteral("excused"));
    const bool sinceGiven = args.isSet(QStringLiteral("since"));
    if (excusedGiven && action != QLatin1String("record"))
        throw UsageError(QStringLiteral("missed: --excused goes with record only."));
    if (sinceGiven && action != QLatin1String("summarize"))
        throw UsageError(QStringLiteral("missed: --since goes with summarize only."));
    if (action == QLatin1String("record")) return recordMisses(context, args);
    if (action == QLatin1String("excuse")) return changeMiss(context, args, false);
    if (action == QLatin1String("clear")) return changeMiss(context, args, true);
    if (action == QLatin1String("summarize")) return summarize(context, args);
    throw UsageError(QStringLiteral("missed: the first word is record, excuse, clear or summarize, not '%1'.")
                         .arg(action));
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("missed"),
     .arguments = QStringLiteral(
         "record DATE PERSON_ID... | excuse DATE PERSON_ID | clear DATE PERSON_ID | summarize"),
     .description = QStringLiteral(
         "Records the deliveries of DATE of the clients as missed (excused with --excused), excuses or "
         "clears "
         "a recorded miss, as the client window's Missed Deliveries screens do; or rebuilds every client's "
         "missed and excused counters from the misses entered since --since (a year ago when not given) and "
         "prints them as CSV. Questions are answered by --yes or --no, without either by the answer that "
         "changes the least; messages go to standard error. All or nothing; exits 1 when nothing was "
         "recorded."),
     .minArguments = 1,
     .maxArguments = -1,
     .options = {QCommandLineOption(QStringLiteral("excused"),
                                    QStringLiteral("record: the misses are excused.")),
                 QCommandLineOption(QStringLiteral("since"),
                                    QStringLiteral("summarize: count the misses entered since this date."),
                                    QStringLiteral("DATE"))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runMissed);

} // namespace
