// kettlebrook --user NAME dated add CLIENT --date D [--pattern P [--count N | --until D] [--limit L]
//                                                  [--service ID] [--route CODE] [--preview]]
// kettlebrook --user NAME dated list CLIENT [--from D] [--to D]
// kettlebrook --user NAME dated shift --from D --to D [--yes|--no]
//
// Adds dated deliveries (episodic for an episodic client, scheduled for an
// ongoing one) to the client with the Client_ID CLIENT, or lists them.
// Without --pattern one row is added on the date, as "Add Delivery" of the
// delivery screens does. With --pattern the date starts a recurrence, made
// as the Auto Schedule screen makes it; --preview prints the dates and
// writes nothing. All rows are written in one transaction; a bad pattern,
// an unknown client, service or route, or a date outside the client's
// calendar is refused with a message and nothing written.
//
// shift moves what a saved run wrote for one date (the Deliveri and MealCrdt
// rows of every client) to another date, as "Shift Deliveries From One Date
// To Another" does: the same question, answered by --yes (without it nothing
// moves), the same refusals, one transaction and a History row.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "dated/DatedDeliveries.h"
#include "dated/TFormAssignDeliveriesToNewDate.h"
#include "recurrence/RecurrenceWriter.h"
#include "session/TDataModule1.h"
#include "store/Database.h"

#include <limits>

namespace {

using kb::app::UsageError;
using Pattern = kb::RecurrencePattern;

const QStringList weekdayCodes = {QStringLiteral("MON"), QStringLiteral("TUE"), QStringLiteral("WED"),
                                  QStringLiteral("THU"), QStringLiteral("FRI"), QStringLiteral("SAT"),
                                  QStringLiteral("SUN")};

const QString patternForms = QStringLiteral("daily[:N], weekdays, weekends, weekly:N:DAY[,DAY...], "
                                            "monthly:D[:M] or monthly:first|second|third|fourth|last:"
                                            "KIND[:M] with KIND day, weekday, weekend-day or MON..SUN");

int patternNumber(const QString& word, const QString& what)
{
    // Wide bounds: the pattern's own check tells the ranges in the user's words.
    return int(kb::app::parseIntegerWord(word, what, 0, 100000));
}

int weekdayIndex(const QString& word)
{
    const int index = int(weekdayCodes.indexOf(word.trimmed().left(3).toUpper()));
    if (index < 0) throw UsageError(QStringLiteral("--pattern: '%1' is no weekday (MON to SUN).").arg(word));
    return index;
}

// The --pattern word; the range (start, end) is set by the caller.
Pattern parsePattern(const QString& text)
{
    const QStringList parts = text.split(u':');
    const QString form = parts.value(0).toLower();
    Pattern p;
    if (form == QLatin1String("daily") && parts.size() <= 2) {
        p.style = Pattern::Style::Daily;
        if (parts.size() == 2) p.everyDays = patternNumber(parts[1], QStringLiteral("--pattern daily:N"));
        return p;
    }
    if ((form == QLatin1String("weekdays") || form == QLatin1String("weekends")) && parts.size() == 1) {
        p.dailyKind =
            form == QLatin1String("weekdays") ? Pattern::DailyKind::Weekday : Pattern::DailyKind::WeekendDay;
        return p;
    }
    if (form == QLatin1String("weekly") && parts.size() == 3) {
        p.style = Pattern::Style::Weekly;
        p.everyWeeks = patternNumber(parts[1], QStringLiteral("--pattern weekly:N"));
        for (const QString& day : parts[2].split(u',', Qt::SkipEmptyParts))
            p.weekdays[size_t(weekdayIndex(day))] = true;
        return p;
    }
    if (form == QLatin1String("monthly") && parts.size() >= 2 && parts.size() <= 4) {
        p.style = Pattern::Style::Monthly;
        const QStringList instances = {QStringLiteral("first"), QStringLiteral("second"),
                                       QStringLiteral("third"), QStringLiteral("fourth"),
                                       QStringLiteral("last")};
        const int instance = int(instances.indexOf(parts[1].toLower()));
        if (instance < 0) {
            if (parts.size() > 3) throw UsageError(QStringLiteral("--pattern: ") + patternForms);
            p.monthlyKind = Pattern::MonthlyKind::DayOfMonth;
            p.dayOfMonth = patternNumber(parts[1], QStringLiteral("--pattern monthly:D"));
            if (parts.size() == 3)
                p.everyMonthsByDay = patternNumber(parts[2], QStringLiteral("--pattern monthly:D:M"));
            return p;
        }
        if (parts.size() < 3) throw UsageError(QStringLiteral("--pattern: ") + patternForms);
        p.monthlyKind = Pattern::MonthlyKind::Instance;
        p.instance = instance == 4 ? Pattern::lastInstance : instance + 1;
        const QString kind = parts[2].toLower();
        if (kind == QLatin1String("day"))
            p.instanceKind = Pattern::InstanceKind::Day;
        else if (kind == QLatin1String("weekday"))
            p.instanceKind = Pattern::InstanceKind::Weekday;
        else if (kind == QLatin1String("weekend-day"))
            p.instanceKind = Pattern::InstanceKind::WeekendDay;
        else
            p.instanceKind = Pattern::InstanceKind(int(Pattern::InstanceKind::Monday) + weekdayIndex(kind));
        if (parts.size() == 4)
            p.everyMonthsByInstance = patternNumber(parts[3], QStringLiteral("--pattern monthly:I:K:M"));
        return p;
    }
    throw UsageError(QStringLiteral("--pattern: '%1' is not a pattern; use ").arg(text) + patternForms +
                     u'.');
}

kb::DatedClient clientOf(kb::Database& db, const QString& clientId)
{
    const std::optional<kb::DatedClient> client = kb::DatedClient::byClientId(db, clientId);
    if (!client) throw kb::MessageError(QStringLiteral("No client has Client_ID %1.").arg(clientId));
    return *client;
}

void requireChanges(kb::app::CommandSession& session)
{
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
}

int addOne(kb::app::CommandContext& context, kb::app::CommandSession& session, const kb::DatedClient& client,
           const QDate& date)
{
    kb::Database& db = session.data().db();
    const QDate today = db.clock().today();
    if (date < client.lowestDate(today) || date > client.highestDate(today))
        throw kb::MessageError(
            QStringLiteral("%1 lies outside this client's calendar (%2 to %3); nothing was added.")
                .arg(date.toString(Qt::ISODate), client.lowestDate(today).toString(Qt::ISODate),
                     client.highestDate(today).toString(Qt::ISODate)));
    requireChanges(session);
    kb::DatedDeliveries rules(db, session.ui(), session.data().session().userFullName);
    qint64 id = 0;
    {
        kb::TransactionGuard transaction(db);
        id = rules.add(client, client.kind(), date);
        transaction.commit();
    }
    kb::writeCsv(
        context.out,
        db.execute(QStringLiteral("Select RecordID, Deliv_Date, Schedule_Type, Svcs_Used, Delivery_Type, "
                                  "Route, Stop from EpisodicDeliveries where RecordID = :RecordID"),
                   {{QStringLiteral("RecordID"), id}}));
    return 0;
}

int addPattern(kb::app::CommandContext& context, kb::app::CommandSession& session,
               const kb::DatedClient& client, Pattern pattern, const kb::app::CommandArgs& args)
{
    kb::Database& db = session.data().db();
    const qint64 service =
        args.integer(QStringLiteral("service"), 1, std::numeric_limits<qint16>::max(), client.service);
    const QString route = args.value(QStringLiteral("route"), kb::clientsRegularRoute).trimmed();
    if (route != kb::clientsRegularRoute &&
        db.execute(QStringLiteral("Select Route_ID from Routes where Route_ID = :Route_ID"),
                   {{QStringLiteral("Route_ID"), route}})
            .isEmpty())
        throw kb::MessageError(QStringLiteral("There is no route %1.").arg(route));
    const QString limitWord =
        args.choice(QStringLiteral("limit"),
                    {QStringLiteral("service"), QStringLiteral("agency"), QStringLiteral("none")},
                    QStringLiteral("service"));
    const kb::RecurrenceLimit limit = limitWord == QLatin1String("none") ? kb::RecurrenceLimit::None
                                      : limitWord == QLatin1String("agency")
                                          ? kb::RecurrenceLimit::AgencyDays
                                          : kb::RecurrenceLimit::ServiceDays;
    if (const QString why = pattern.refusal(); !why.isEmpty())
        throw kb::MessageError(why + " Nothing was written.");
    const std::optional<kb::WeekdayFlags> days = kb::recurrenceActiveDays(db, limit, service);
    if (!days) throw kb::MessageError(kb::serviceNotFoundText());
    kb::RecurrenceDayTest test;
    test.activeDays = *days;
    test.stopDate = client.stopDate;
    const std::vector<QDate> dates = kb::generateRecurrence(pattern, test).dates;

    if (args.isSet(QStringLiteral("preview"))) {
        kb::writeCsvHeader(context.out,
                           {QStringLiteral("Deliv_Date"), QStringLiteral("Route"), QStringLiteral("Stop")});
        for (const kb::GeneratedDelivery& row : kb::RecurrenceWriter::rows(client, dates, route))
            kb::writeCsvRecord(context.out, {row.date, row.route, row.stop});
        return 0;
    }
    requireChanges(session);
    const qint64 before =
        db.execute(
              QStringLiteral("Select max(RecordID) from EpisodicDeliveries where Person_ID = :Person_ID"),
              {{QStringLiteral("Person_ID"), client.personId}})
            .value(0, 0)
            .toLongLong();
    kb::RecurrenceWriter(db, session.ui(), session.data().session().userFullName)
        .write(client, dates, service, route, false);
    kb::writeCsv(
        context.out,
        db.execute(QStringLiteral("Select RecordID, Deliv_Date, Schedule_Type, Svcs_Used, Delivery_Type, "
                                  "Route, Stop from EpisodicDeliveries where Person_ID = :Person_ID and "
                                  "RecordID > :After order by RecordID"),
                   {{QStringLiteral("Person_ID"), client.personId}, {QStringLiteral("After"), before}}));
    context.err << kb::RecurrenceWriter::finishedText(qint64(dates.size())) << '\n';
    return 0;
}

int addDated(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() != 2)
        throw UsageError(QStringLiteral("Usage: kettlebrook dated add CLIENT --date D [--pattern P ...]"));
    if (!args.isSet(QStringLiteral("date"))) throw UsageError(QStringLiteral("dated add needs --date D."));
    const QDate date = args.date(QStringLiteral("date"));
    const bool patterned = args.isSet(QStringLiteral("pattern"));
    for (const char* option : {"count", "until", "limit", "service", "route", "preview"})
        if (!patterned && args.isSet(QString::fromLatin1(option)))
            throw UsageError(QStringLiteral("--%1 goes with --pattern.").arg(QLatin1String(option)));
    if (args.isSet(QStringLiteral("count")) && args.isSet(QStringLiteral("until")))
        throw UsageError(QStringLiteral("Give --count or --until, not both."));
    Pattern pattern;
    if (patterned) {
        pattern = parsePattern(args.value(QStringLiteral("pattern")));
        pattern.start = date;
        if (args.isSet(QStringLiteral("until"))) {
            pattern.end = Pattern::End::ByDate;
            pattern.endDate = args.date(QStringLiteral("until"));
        } else {
            pattern.occurrences = int(args.integer(QStringLiteral("count"), 0, 100000, 1));
        }
    }

    kb::app::CommandSession session(context);
    const kb::DatedClient client = clientOf(session.data().db(), args.positional(1));
    const int code = patterned ? addPattern(context, session, client, pattern, args)
                               : addOne(context, session, client, date);
    session.close();
    return code;
}

int listDated(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() != 2)
        throw UsageError(QStringLiteral("Usage: kettlebrook dated list CLIENT [--from D] [--to D]"));
    const QDate from = args.date(QStringLiteral("from"), QDate(1900, 1, 1));
    const QDate to = args.date(QStringLiteral("to"), QDate(9999, 12, 31));
    kb::app::CommandSession session(context);
    kb::Database& db = session.data().db();
    const kb::DatedClient client = clientOf(db, args.positional(1));
    kb::writeCsv(
        context.out,
        db.execute(QStringLiteral("Select RecordID, Deliv_Date, Schedule_Type, Svcs_Used, Delivery_Type, "
                                  "Route, Stop, Fulfilled, List_ID, Created_By from EpisodicDeliveries "
                                  "where Person_ID = :Person_ID and Deliv_Date >= :From and Deliv_Date <= "
                                  ":To order by Deliv_Date, RecordID"),
                   {{QStringLiteral("Person_ID"), client.personId},
                    {QStringLiteral("From"), from},
                    {QStringLiteral("To"), to}}));
    session.close();
    return 0;
}

int shiftDated(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() != 1 || !args.isSet(QStringLiteral("from")) ||
        !args.isSet(QStringLiteral("to")))
        throw UsageError(QStringLiteral("Usage: kettlebrook dated shift --from D --to D [--yes|--no]"));
    const QDate from = args.date(QStringLiteral("from"));
    const QDate to = args.date(QStringLiteral("to"));
    kb::app::CommandSession session(context);
    requireChanges(session);
    kb::Database& db = session.data().db();
    kb::TFormAssignDeliveriesToNewDate form(db, session.ui(), session.data().session().userFullName,
                                            db.clock().today());
    form.setOldDate(from);
    form.setNewDate(to);
    if (!form.okEnabled())
        throw kb::MessageError(from == to
                                   ? QStringLiteral("--from and --to are the same date; nothing was shifted.")
                                   : QStringLiteral("Both dates must be later than %1; nothing was shifted.")
                                         .arg(db.clock().today().addDays(-750).toString(Qt::ISODate)));
    if (!form.ActionOK()) {
        session.close();
        context.err << "Nothing was shifted.\n";
        return 1;
    }
    kb::writeCsvHeader(context.out,
                       {QStringLiteral("From"), QStringLiteral("To"), QStringLiteral("Shifted")});
    kb::writeCsvRecord(context.out, {from, to, form.shifted()});
    session.close();
    return 0;
}

int runDated(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString action = args.positional(0);
    if (action != QLatin1String("shift") && args.answers() != kb::app::AnswerPolicy::Least)
        throw UsageError(QStringLiteral("--yes and --no go with dated shift."));
    if (action == QLatin1String("add")) return addDated(context, args);
    if (action != QLatin1String("list") && action != QLatin1String("shift"))
        throw UsageError(
            QStringLiteral("dated: the first word is add, list or shift, not '%1'.").arg(action));
    for (const char* option : {"date", "pattern", "count", "until", "limit", "service", "route", "preview"})
        if (args.isSet(QString::fromLatin1(option)))
            throw UsageError(QStringLiteral("--%1 goes with dated add.").arg(QLatin1String(option)));
    return action == QLatin1String("list") ? listDated(context, args) : shiftDated(context, args);
}

QCommandLineOption valued(const char* name, const char* value, const char* text)
{
    return QCommandLineOption(QString::fromLatin1(name), QString::fromLatin1(text),
                              QString::fromLatin1(value));
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("dated"),
     .arguments =
         QStringLiteral("add CLIENT --date D [--pattern P ...] | list CLIENT | shift --from D --to D"),
     .description = QStringLiteral(
         "Adds or lists the dated deliveries of the client with Client_ID CLIENT (episodic ones for an "
         "episodic client, scheduled ones for an ongoing client), or shifts a saved date's deliveries. add without --pattern adds one delivery on --date "
         "with the "
         "client's service, default route and stop, as the delivery screens' Add Delivery does; the date "
         "must lie "
         "in the client's calendar. With --pattern, --date starts a recurrence made as the Auto Schedule "
         "screen "
         "makes it, ending after --count occurrences (1 when not given) or by --until; --preview prints its "
         "dates without writing. The rows are written in one transaction and printed as CSV; a bad pattern "
         "changes nothing and exits 1. list prints the client's rows, optionally between --from and --to. "
         "shift "
         "moves the saved deliveries of --from (Deliveri and MealCrdt, every client) to --to in one "
         "transaction, after the question that --yes answers; without --yes nothing moves and it exits 1."),
     .minArguments = 1,
     .maxArguments = 2,
     .options =
         {valued("date", "D", "The date of the delivery, or the first date of the pattern."),
          valued("pattern", "P",
                 "daily[:N], weekdays, weekends, weekly:N:DAY[,DAY...], monthly:D[:M], or "
                 "monthly:first|second|third|fourth|last:day|weekday|weekend-day|MON..SUN[:M]."),
          valued("count", "N", "End after N occurrences (1 to 365)."),
          valued("until", "D", "End by this date."),
          valued("limit", "service|agency|none",
                 "The delivery days allowed: the service's and agency's (default), the agency's, or all."),
          valued("service", "ID", "The service of the rows (default: the client's)."),
          valued("route", "CODE",
                 "A route for every row with stop 0 (default ---: the client's route of "
                 "each weekday)."),
          QCommandLineOption(QStringLiteral("preview"), QStringLiteral("Print the dates; write nothing.")),
          valued("from", "D", "list: the first date shown; shift: the date the saved deliveries fall on."),
          valued("to", "D", "list: the last date shown; shift: the date they move to.")},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runDated);

} // namespace
