// kettlebrook --user NAME deliveries ...: a client's saved deliveries, as
// the Recent Deliveries list and the Delete Delivery Credits screen work on
// them, through the same rules and messages:
//   deliveries PERSON_ID [--from DATE --to DATE | --days N]
//       the list as CSV, newest first (the past 45 days by default);
//   deliveries comp PERSON_ID DATE [--deliv-id N] [--reason TEXT] [--recorded-by NAME]
//   deliveries reverse PERSON_ID DATE [--deliv-id N]
//   deliveries delete PERSON_ID DATE [--deliv-id N]
//       one delivery of the date (--deliv-id when the date has several);
//   deliveries delete DATE --service ID|--client PERSON_ID [--kinds delivered|all|walk-ins]
//       every delivery of the date of one service (0: any) or one client.
// A change prints the deliveries it touched as CSV; a refusal or a No
// changes nothing, tells why on the error stream and exits 1.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "records/DeliveryGroupDeletion.h"
#include "records/TFormCompDel.h"
#include "records/TFormDelDeliv.h"
#include "records/TFormDeliveries.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace {

using kb::app::CommandArgs;
using kb::app::UsageError;

const QString Reason = QStringLiteral("reason");
const QString RecordedBy = QStringLiteral("recorded-by");
const QString DelivId = QStringLiteral("deliv-id");
const QString Service = QStringLiteral("service");
const QString Client = QStringLiteral("client");
const QString Kinds = QStringLiteral("kinds");

constexpr qint64 MaxId = 2147483647;

void requireChange(kb::app::CommandSession& session)
{
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
}

int listDeliveries(kb::app::CommandContext& context, const CommandArgs& args)
{
    const qint64 person = args.integerPositional(0, QStringLiteral("PERSON_ID"), 1, MaxId);
    const bool range = args.isSet(QStringLiteral("from")) || args.isSet(QStringLiteral("to"));
    if (range && (!args.isSet(QStringLiteral("from")) || !args.isSet(QStringLiteral("to"))))
        throw UsageError(QStringLiteral("Give both --from and --to, or neither."));
    if (range && args.isSet(QStringLiteral("days")))
        throw UsageError(QStringLiteral("Give --days or --from and --to, not both."));
    const int days = int(args.integer(QStringLiteral("days"), kb::TFormDeliveries::MinDays,
                                      kb::TFormDeliveries::MaxDays, kb::TFormDeliveries::DefaultDays));
    kb::app::CommandSession session(context);
    kb::Database& db = session.data().db();
    const kb::ResultSet rows =
        range ? kb::delivery_records::deliveriesBetween(db, person, args.date(QStringLiteral("from")),
                                                        args.date(QStringLiteral("to")))
              : kb::delivery_records::QueryDeliveries(db, person, db.clock().today().addDays(-days));
    kb::writeCsv(context.out, rows);
    session.close();
    return 0;
}

// The delivery of PERSON_ID on DATE that a one-delivery action means.
kb::delivery_records::Delivery chosenDelivery(kb::Database& db, const CommandArgs& args)
{
    const qint64 person = args.integerPositional(1, QStringLiteral("PERSON_ID"), 1, MaxId);
    const QDate date = args.datePositional(2, QStringLiteral("DATE"));
    const auto all = kb::delivery_records::deliveriesOn(db, person, date);
    if (args.isSet(DelivId)) {
        const qint64 id = args.integer(DelivId, 1, MaxId, 0);
        for (const auto& d : all)
            if (d.delivId == id) return d;
        throw kb::MessageError(QStringLiteral("Client %1 has no delivery %2 on %3.")
                                   .arg(person)
                                   .arg(id)
                                   .arg(date.toString(Qt::ISODate)));
    }
    if (all.empty())
        throw kb::MessageError(QStringLiteral("The client did not receive a delivery on that date."));
    if (all.size() > 1) {
        QStringList ids;
        for (const auto& d : all)
            ids << QString::number(d.delivId);
        throw UsageError(QStringLiteral("Client %1 has %2 deliveries on %3 (%4); choose one with --deliv-id.")
                             .arg(person)
                             .arg(all.size())
                             .arg(date.toString(Qt::ISODate), ids.join(QStringLiteral(", "))));
    }
    return all.front();
}

void printDelivery(QTextStream& out, kb::Database& db, qint64 delivId, bool deleted)
{
    kb::writeCsvHeader(out, {QStringLiteral("Deliv_ID"), QStringLiteral("Deliv_Dt"),
                             QStringLiteral("Delivery_Status"), QStringLiteral("Deleted")});
    const auto now = kb::delivery_records::readDelivery(db, delivId);
    kb::writeCsvRecord(out, {delivId, now ? QVariant(now->date) : QVariant(),
                             now && !now->status.isEmpty() ? QVariant(now->status) : QVariant(), deleted});
}

int oneDelivery(kb::app::CommandContext& context, const CommandArgs& args, const QString& action)
{
    if (args.positionals().size() != 3)
        throw UsageError(QStringLiteral("deliveries %1 needs PERSON_ID and DATE.").arg(action));
    if (action != QLatin1String("comp") && (args.isSet(Reason) || args.isSet(RecordedBy)))
        throw UsageError(QStringLiteral("--reason and --recorded-by go with deliveries comp only."));
    kb::app::CommandSession session(context);
    requireChange(session);
    kb::Database& db = session.data().db();
    const kb::delivery_records::Delivery delivery = chosenDelivery(db, args);
    kb::TFormDeliveries list(db, session.data().session(), session.ui());
    list.setDays(kb::TFormDeliveries::MaxDays);
    list.FormShow(delivery.personId);
    // Older than the list reaches: the same actions on that one row.
    list.setCompDialog([&](kb::TFormCompDel& dialog) {
        dialog.setReason(args.value(Reason));
        if (args.isSet(RecordedBy)) dialog.setRecordedBy(args.value(RecordedBy));
        return dialog.ActionOK();
    });
    bool done = false;
    if (list.locate(delivery.delivId)) {
        done = action == QLatin1String("comp")      ? list.ActionCompedDelivery()
               : action == QLatin1String("reverse") ? list.ActionReverseCompedDelivery()
                                                    : list.ActionDeleteDelivery();
    } else {
        throw kb::MessageError(
            QStringLiteral("Delivery %1 is older than %2 days; the list does not reach it.")
                .arg(delivery.delivId)
                .arg(kb::TFormDeliveries::MaxDays));
    }
    list.FormClose();
    if (!done) {
        session.close();
        context.err << "Nothing was changed.\n";
        return 1;
    }
    printDelivery(context.out, db, delivery.delivId, action == QLatin1String("delete"));
    session.close();
    return 0;
}

int groupDeletion(kb::app::CommandContext& context, const CommandArgs& args)
{
    if (args.positionals().size() != 2)
        throw UsageError(
            QStringLiteral("deliveries delete DATE --service ID|--client PERSON_ID takes one DATE."));
    if (args.isSet(Service) == args.isSet(Client))
        throw UsageError(QStringLiteral("Give either --service or --client."));
    const QDate date = args.datePositional(1, QStringLiteral("DATE"));
    const QString kinds =
        args.choice(Kinds, {QStringLiteral("delivered"), QStringLiteral("all"), QStringLiteral("walk-ins")},
                    QStringLiteral("delivered"));
    const qint64 service = args.integer(Service, 0, MaxId, -1);
    const qint64 client = args.integer(Client, 1, MaxId, 0);
    kb::app::CommandSession session(context);
    requireChange(session);
    kb::TFormDelDeliv form(session.data().db(), session.data().session(), session.ui());
    form.setDate(date);
    form.setKinds(kinds == QLatin1String("delivered") ? 0 : kinds == QLatin1String("all") ? 1 : 2);
    if (args.isSet(Service)) {
        bool offered = false;
        for (const auto& c : form.services())
            offered = offered || c.id == service;
        if (!offered)
            throw kb::MessageError(
                QStringLiteral("Service %1 is not a mutually exclusive delivery service.").arg(service));
        form.setPage(kb::TFormDelDeliv::Page::ByService);
        form.setService(service);
    } else {
        form.setPage(kb::TFormDelDeliv::Page::ByClient);
        form.setClient(client);
    }
    if (!form.okEnabled()) throw kb::MessageError(QStringLiteral("The date must be after 01/01/2000."));
    const bool done = form.ActionOK();
    session.close();
    if (!done) return 1;
    kb::writeCsvHeader(context.out, {QStringLiteral("Deliveries"), QStringLiteral("Items")});
    kb::writeCsvRecord(context.out, {form.result().deliveries, form.result().items});
    return 0;
}

int runDeliveries(kb::app::CommandContext& context, const CommandArgs& args)
{
    const QString first = args.positional(0);
    if (first == QLatin1String("comp") || first == QLatin1String("reverse"))
        return oneDelivery(context, args, first);
    if (first == QLatin1String("delete"))
        return args.isSet(Service) || args.isSet(Client) ? groupDeletion(context, args)
                                                         : oneDelivery(context, args, first);
    if (args.positionals().size() != 1)
        throw UsageError(
            QStringLiteral("Unknown deliveries action '%1': use comp, reverse or delete.").arg(first));
    return listDeliveries(context, args);
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("deliveries"),
     .arguments = QStringLiteral("PERSON_ID | comp|reverse|delete PERSON_ID DATE | delete DATE"),
     .description = QStringLiteral(
         "A client's saved deliveries. With PERSON_ID alone: the Recent Deliveries list as CSV (the past "
         "45 days, --days N, or --from and --to). comp, reverse and delete act on one delivery of the date "
         "as the list's commands do (--deliv-id when the date has several); delete DATE with --service or "
         "--client deletes a whole group as Delete Delivery Credits does. Changes print what they touched."),
     .minArguments = 1,
     .maxArguments = 3,
     .options =
         {QCommandLineOption(QStringLiteral("from"), QStringLiteral("First day listed."),
                             QStringLiteral("DATE")),
          QCommandLineOption(QStringLiteral("to"), QStringLiteral("Last day listed."),
                             QStringLiteral("DATE")),
          QCommandLineOption(QStringLiteral("days"),
                             QStringLiteral("List the deliveries after today minus N days (1 to 1095)."),
                             QStringLiteral("N")),
          QCommandLineOption(DelivId, QStringLiteral("The delivery, when the date has several."),
                             QStringLiteral("N")),
          QCommandLineOption(Reason, QStringLiteral("Why the delivery is comped."), QStringLiteral("TEXT")),
          QCommandLineOption(RecordedBy, QStringLiteral("Who recorded the comp (the user by default)."),
                             QStringLiteral("NAME")),
          QCommandLineOption(Service, QStringLiteral("Group deletion: the service (0 any service)."),
                             QStringLiteral("ID")),
          QCommandLineOption(Client, QStringLiteral("Group deletion: the client."),
                             QStringLiteral("PERSON_ID")),
          QCommandLineOption(Kinds,
                             QStringLiteral("Group deletion: delivered (walk-ins excluded, the default), "
                                            "all, or walk-ins only."),
                             QStringLiteral("delivered|all|walk-ins"))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runDeliveries);

} // namespace
