// kettlebrook --user NAME suspension delete RECORD_ID [--yes|--no]
//
// Deletes a suspension as "Delete Suspension" on the client window does:
// running the command is the answer to "Delete the selected Suspension?";
// the follow-up questions (the contract stop date, the same suspension of
// the other household members) are answered by --yes or --no. One
// transaction; prints the RecordIDs of the rows deleted.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "GivenAnswers.h"
#include "SuspensionCommandWords.h"

#include "Csv.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "session/TDataModule1.h"
#include "suspensions/ClientSuspensions.h"

#include <QSet>

#include <limits>
#include <stdexcept>

namespace {

using kb::app::UsageError;

QSet<qint64> recordIds(kb::Database& db, qint64 recordId, qint64 groupId)
{
    const kb::ResultSet rows =
        db.execute(QStringLiteral("select RecordID from Suspends where RecordID = :RecordID or (Group_ID = "
                                  ":Group_ID and Group_ID > 0)"),
                   {{QStringLiteral("RecordID"), recordId}, {QStringLiteral("Group_ID"), groupId}});
    QSet<qint64> ids;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        ids.insert(rows.value(r, 0).toLongLong());
    return ids;
}

int deleteSuspension(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const qint64 recordId =
        args.integerPositional(1, QStringLiteral("RECORD_ID"), 1, std::numeric_limits<qint32>::max());
    kb::app::CommandSession session(context);
    kb::TDataModule1& data = session.data();
    const kb::ResultSet row = data.db().execute(
        QStringLiteral("select Person_ID, Group_ID from Suspends where RecordID = :RecordID"),
        {{QStringLiteral("RecordID"), recordId}});
    if (row.isEmpty())
        throw std::runtime_error(
            QStringLiteral("No suspension has RecordID %1.").arg(recordId).toStdString());
    const qint64 groupId = row.value(0, 1).toLongLong();
    kb::DataSet& clients = kb::app::standOnPerson(session, row.value(0, 0).toLongLong());

    kb::app::GivenAnswers ui(session.ui());
    ui.give(kb::SuspensionEditor::deleteQuestion(), kb::Answer::Yes);
    const QSet<qint64> before = recordIds(data.db(), recordId, groupId);
    bool deleted = false;
    {
        kb::ClientSuspensions page(data.services(), ui, data.session(), data.clock(), clients);
        page.open();
        if (!page.suspends().locate(QStringLiteral("RecordID"), recordId))
            throw std::runtime_error(
                QStringLiteral("The suspension %1 could not be located.").arg(recordId).toStdString());
        deleted = page.editor().DeleteSuspension1Click();
    }
    if (!deleted) return 1;
    const QSet<qint64> after = recordIds(data.db(), recordId, groupId);
    QList<qint64> gone;
    for (qint64 id : before)
        if (!after.contains(id)) gone.append(id);
    std::sort(gone.begin(), gone.end());
    kb::writeCsvHeader(context.out, {QStringLiteral("RecordID")});
    for (qint64 id : gone)
        kb::writeCsvRecord(context.out, {id});
    session.close();
    return 0;
}

int runSuspension(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString action = args.positional(0);
    if (action == QLatin1String("delete") && args.positionals().size() == 2)
        return deleteSuspension(context, args);
    throw UsageError(QStringLiteral("Usage: kettlebrook suspension delete RECORD_ID"));
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("suspension"),
     .arguments = QStringLiteral("delete RECORD_ID"),
     .description = QStringLiteral(
         "Deletes a suspension (its RecordID as the suspensions command prints it) through the client "
         "window's rules, in one transaction, and prints the RecordIDs deleted. The contract stop date and "
         "the household's suspensions made with it are asked about: --yes or --no (without either: No)."),
     .minArguments = 2,
     .maxArguments = 2,
     .options = {},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runSuspension);

} // namespace
