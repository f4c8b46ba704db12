// kettlebrook --user NAME suspend PERSON_ID --stop DATE --resume DATE [--reason TEXT] [--household]
// [--yes|--no]
//
// Adds a suspension to a client as "Add Suspension" on the client window
// does, through the same rules: the stop date is the first day without
// delivery, the resume date the first day with delivery again. The
// follow-up questions (the contract stop date) are answered by --yes or
// --no; --household answers Yes to making the same suspension for the
// other clients of the household. All or nothing, in one transaction.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "GivenAnswers.h"
#include "SuspensionCommandWords.h"

#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientStatus.h"
#include "session/TDataModule1.h"
#include "suspensions/ClientSuspensions.h"
#include "suspensions/TFormAddSuspension.h"

#include <limits>
#include <stdexcept>

namespace {

using kb::app::UsageError;

constexpr int ReasonWidth = 40;

int runSuspend(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const qint64 personId =
        args.integerPositional(0, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint32>::max());
    if (!args.isSet(QStringLiteral("stop")) || !args.isSet(QStringLiteral("resume")))
        throw UsageError(QStringLiteral("suspend: --stop DATE and --resume DATE are both needed."));
    const QDate stop = args.date(QStringLiteral("stop"));
    const QDate resume = args.date(QStringLiteral("resume"));
    if (resume <= stop)
        throw UsageError(
            QStringLiteral("suspend: --resume, the first day with delivery again, must come after "
                           "--stop, the first day without delivery."));
    const QString reason = args.value(QStringLiteral("reason"));
    if (reason.size() > ReasonWidth)
        throw UsageError(QStringLiteral("suspend: --reason has at most %1 characters.").arg(ReasonWidth));

    kb::app::CommandSession session(context);
    kb::TDataModule1& data = session.data();
    kb::DataSet& clients = kb::app::standOnPerson(session, personId);
    if (clients.fieldValue(u"CLIENT_ID").toString().trimmed().isEmpty() ||
        clients.fieldValue(u"STATUS").toString() != kb::client_status::Active)
        throw std::runtime_error(
            QStringLiteral("Person %1 is no active client: suspensions are added to active clients.")
                .arg(personId)
                .toStdString());

    kb::app::GivenAnswers ui(session.ui());
    ui.give(kb::SuspensionEditor::householdAddQuestion(),
            args.isSet(QStringLiteral("household")) ? kb::Answer::Yes : kb::Answer::No);
    qint64 recordId = 0;
    qint64 groupId = 0;
    {
        kb::TransactionGuard transaction(data.db());
        kb::ClientSuspensions page(data.services(), ui, data.session(), data.clock(), clients);
        page.open();
        page.editor().setShowForm([&](kb::TFormAddSuspension& form) {
            form.setStopDate(stop);
            form.setResumeDate(resume);
            if (args.isSet(QStringLiteral("reason"))) form.setReason(reason);
            return true;
        });
        if (!page.editor().EditHolds(kb::SuspensionEditor::Mode::Add)) return 1;
        recordId = page.editor().savedRecordId();
        groupId = page.editor().groupId();
        transaction.commit();
    }
    if (groupId > 0)
        kb::app::writeSuspensions(context.out, data.db(), QStringLiteral("Group_ID = :Group_ID"),
                                  {{QStringLiteral("Group_ID"), groupId}});
    else
        kb::app::writeSuspensions(context.out, data.db(), QStringLiteral("RecordID = :RecordID"),
                                  {{QStringLiteral("RecordID"), recordId}});
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("suspend"),
     .arguments = QStringLiteral("PERSON_ID"),
     .description = QStringLiteral(
         "Adds a suspension to an active client through the client window's rules and prints the rows made. "
         "--stop is the first day without delivery, --resume the first day with delivery again. --household "
         "makes the same suspension for the other clients of the household. The contract stop date question "
         "is answered by --yes or --no (without either: No). All or nothing."),
     .minArguments = 1,
     .maxArguments = 1,
     .options = {QCommandLineOption(QStringLiteral("stop"), QStringLiteral("The first day without delivery."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("resume"),
                                    QStringLiteral("The first day with delivery again."),
                                    QStringLiteral("DATE")),
                 QCommandLineOption(QStringLiteral("reason"), QStringLiteral("Reason for Suspension."),
                                    QStringLiteral("TEXT")),
                 QCommandLineOption(QStringLiteral("household"),
                                    QStringLiteral("The same suspension for the other household members."))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runSuspend);

} // namespace
