// kettlebrook --user NAME reassign-funding PERSON_ID --service ID --from DATE --to DATE
//     (--to-funding CODE | --remove) [--yes|--no]:
// restamps the client's deliveries of the service in the date range (both
// days included), and his default events of that service on those days,
// with the funding source CODE or with none, as the Reassign Funding screen
// does, in one transaction with its History row. It asks the screen's
// question, so it changes nothing without --yes. Prints the deliveries
// moved, with the funding each had before.

#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "MessageError.h"
#include "funding/TFormReassignFunding.h"
#include "store/Database.h"

namespace {

using kb::app::UsageError;

int runReassign(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const qint64 person = args.integerPositional(0, QStringLiteral("PERSON_ID"), 1, 2147483647);
    if (!args.isSet(QStringLiteral("service")) || !args.isSet(QStringLiteral("from")) ||
        !args.isSet(QStringLiteral("to")))
        throw UsageError(QStringLiteral("reassign-funding needs --service, --from and --to."));
    const bool remove = args.isSet(QStringLiteral("remove"));
    if (remove == args.isSet(QStringLiteral("to-funding")))
        throw UsageError(QStringLiteral("Give either --to-funding CODE or --remove."));
    const qint64 service = args.integer(QStringLiteral("service"), 1, 2147483647, 0);
    const QDate from = args.date(QStringLiteral("from"));
    const QDate to = args.date(QStringLiteral("to"));
    const QString code = args.value(QStringLiteral("to-funding")).trimmed();

    kb::app::CommandSession session(context);
    const kb::AccessLevel access = session.data().session().access();
    if (!access.mayChangeData()) throw kb::MessageError(access.refusal());
    kb::TFormReassignFunding form(session.data().db(), session.data().session(), session.ui());

    if (!form.clientLookup().client(person)) throw kb::MessageError(QStringLiteral("No client has the Person_ID %1.").arg(person));
    form.setClient(person);
    if (from <= QDate(2000, 1, 1) || to <= QDate(2000, 1, 1))
        throw kb::MessageError(QStringLiteral("Both dates must be after 01/01/2000."));
    form.setStart(from);
    form.setEnd(to);
    QString newCode;
    bool serviceFound = false;
    for (const QString& entry : form.services())
        if (kb::TFormReassignFunding::bracketKey(entry) == QString::number(service)) {
            form.setService(entry);
            serviceFound = true;
        }
    if (!serviceFound)
        throw kb::MessageError(QStringLiteral("No service has the Service_ID %1.").arg(service));
    if (remove) {
        form.setRemove(true);
    } else {
        form.setReassign(true);
        bool fundingFound = false;
        for (const QString& entry : form.fundingSources())
            if (kb::TFormReassignFunding::bracketKey(entry).compare(code, Qt::CaseInsensitive) == 0) {
                form.setFunding(entry);
                newCode = kb::TFormReassignFunding::bracketKey(entry);
                fundingFound = true;
            }
        if (!fundingFound)
            throw kb::MessageError(QStringLiteral("No funding source has the code %1.").arg(code));
    }
    if (!form.ActionOK()) {
        session.close();
        context.err << "Nothing was changed.\n";
        return 1;
    }
    kb::writeCsvHeader(context.out, {QStringLiteral("Deliv_ID"), QStringLiteral("Deliv_Dt"),
                                     QStringLiteral("Old_Funding"), QStringLiteral("New_Funding")});
    for (const auto& moved : form.result().deliveries)
        kb::writeCsvRecord(context.out, {moved.delivId, moved.date,
                                         moved.oldFunding.isEmpty() ? QVariant() : QVariant(moved.oldFunding),
                                         remove ? QVariant() : QVariant(newCode)});
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("reassign-funding"),
     .arguments = QStringLiteral("PERSON_ID"),
     .description = QStringLiteral(
         "Restamps a client's deliveries of one service from --from to --to (both included), and his default "
         "events of that service on those days, with the funding source --to-funding CODE, or with none "
         "(--remove), in one transaction with its History row. Asks first: nothing changes without --yes. "
         "Prints the deliveries moved with the funding each had."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("service"), QStringLiteral("The service."),
                                    QStringLiteral("ID")),
                 QCommandLineOption(QStringLiteral("from"), QStringLiteral("First day of the range."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("to"), QStringLiteral("Last day of the range."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("to-funding"),
                                    QStringLiteral("The new funding source's code."), QStringLiteral("CODE")),
                 QCommandLineOption(QStringLiteral("remove"),
                                    QStringLiteral("Remove the funding source instead."))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runReassign);

} // namespace
