// kettlebrook --user NAME household new PERSON_ID [--name NAME] [--role ROLE] [--head]
// kettlebrook --user NAME household add PERSON_ID HOUSEHOLD_ID [--role ROLE] [--head]
// kettlebrook --user NAME household move PERSON_ID HOUSEHOLD_ID [--role ROLE] [--head]
// kettlebrook --user NAME household remove PERSON_ID
// kettlebrook --user NAME household delete HOUSEHOLD_ID
// kettlebrook --user NAME household members HOUSEHOLD_ID
//
// The household screens headless: a new household with the client in it
// (the wizard), a client added to one, moved between two or taken out, a
// household deleted, and its members listed. Each change is one
// transaction; the client's own Household_ID is saved through the client
// rules, whose questions --yes or --no answer.

#include "CommandRegistry.h"
#include "CommandSession.h"
#include "SuspensionCommandWords.h"

#include "Csv.h"
#include "dataset/DataSet.h"
#include "dataset/TableDataSet.h"
#include "households/HouseholdActions.h"
#include "session/TDataModule1.h"

#include <limits>
#include <stdexcept>

namespace {

using kb::app::UsageError;

constexpr int NameWidth = 50;

qint64 numberWord(const kb::app::CommandArgs& args, int index, const QString& what)
{
    return args.integerPositional(index, what, 1, std::numeric_limits<qint32>::max());
}

void requireWords(const kb::app::CommandArgs& args, int count, const QString& usage)
{
    if (args.positionals().size() != count)
        throw UsageError(QStringLiteral("Usage: kettlebrook household ") + usage);
}

[[noreturn]] void refuse(const QString& message)
{
    throw std::runtime_error(message.toStdString());
}

void writeMembers(QTextStream& out, const kb::HouseholdActions& actions, qint64 householdId)
{
    kb::writeCsvHeader(out, {QStringLiteral("Household_ID"), QStringLiteral("RecordID"),
                             QStringLiteral("Person_ID"), QStringLiteral("Name"), QStringLiteral("Role"),
                             QStringLiteral("Head_of_Household")});
    for (const kb::HouseholdActions::Member& m : actions.members(householdId))
        kb::writeCsvRecord(out, {householdId, m.recordId, m.personId, m.name,
                                 m.role.isEmpty() ? QVariant() : QVariant(m.role), m.head});
}

int runHousehold(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString action = args.positional(0);
    static const QStringList actions = {QStringLiteral("new"),    QStringLiteral("add"),
                                        QStringLiteral("move"),   QStringLiteral("remove"),
                                        QStringLiteral("delete"), QStringLiteral("members")};
    if (!actions.contains(action))
        throw UsageError(
            QStringLiteral(
                "household: the first word is new, add, move, remove, delete or members, not '%1'.")
                .arg(action));
    const QString role = args.value(QStringLiteral("role"));
    const bool head = args.isSet(QStringLiteral("head"));
    const QString name = args.value(QStringLiteral("name"));
    if (name.size() > NameWidth)
        throw UsageError(QStringLiteral("household: --name has at most %1 characters.").arg(NameWidth));
    qint64 personId = 0;
    qint64 householdId = 0;
    if (action == QLatin1String("new")) {
        requireWords(args, 2, QStringLiteral("new PERSON_ID [--name NAME] [--role ROLE] [--head]"));
        personId = numberWord(args, 1, QStringLiteral("PERSON_ID"));
    } else if (action == QLatin1String("add") || action == QLatin1String("move")) {
        requireWords(args, 3, action + QStringLiteral(" PERSON_ID HOUSEHOLD_ID [--role ROLE] [--head]"));
        personId = numberWord(args, 1, QStringLiteral("PERSON_ID"));
        householdId = numberWord(args, 2, QStringLiteral("HOUSEHOLD_ID"));
    } else if (action == QLatin1String("remove")) {
        requireWords(args, 2, QStringLiteral("remove PERSON_ID"));
        personId = numberWord(args, 1, QStringLiteral("PERSON_ID"));
    } else {
        requireWords(args, 2, action + QStringLiteral(" HOUSEHOLD_ID"));
        householdId = numberWord(args, 1, QStringLiteral("HOUSEHOLD_ID"));
    }

    kb::app::CommandSession session(context);
    kb::TDataModule1& data = session.data();
    kb::DataSet& clients = data.clients();
    kb::HouseholdActions households(data.services(), session.ui(), data.session(), data.clock(), clients);
    if (householdId > 0 && !households.householdExists(householdId))
        refuse(QStringLiteral("No household has Household_ID %1.").arg(householdId));
    if (action == QLatin1String("members")) {
        writeMembers(context.out, households, householdId);
        session.close();
        return 0;
    }
    if (personId > 0) kb::app::standOnPerson(session, personId);

    bool done = false;
    {
        kb::TransactionGuard transaction(data.db());
        if (action == QLatin1String("new")) {
            if (clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() > 0)
                refuse(kb::HouseholdActions::alreadyMemberText());
            householdId = households.createHousehold(name.isEmpty() ? households.suggestedName() : name);
            done = households.addCurrentClient(householdId, role, head);
        } else if (action == QLatin1String("add")) {
            done = households.addCurrentClient(householdId, role, head);
        } else if (action == QLatin1String("move")) {
            const qint64 from = clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
            if (from <= 0)
                refuse(QStringLiteral("Person %1 is in no household; add them instead.").arg(personId));
            if (from == householdId)
                refuse(QStringLiteral("Person %1 is already in that household.").arg(personId));
            done = households.moveCurrentClient(householdId, role, head);
        } else if (action == QLatin1String("remove")) {
            householdId = clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
            done = households.removeCurrentClient();
            if (!done) refuse(QStringLiteral("Person %1 is in no household.").arg(personId));
        } else {
            households.deleteHousehold(householdId);
            done = true;
        }
        if (!done) return 1;
        transaction.commit();
    }
    if (action == QLatin1String("delete"))
        context.out << "Household_ID\n" << householdId << '\n';
    else
        writeMembers(context.out, households, householdId);
    session.close();
    return 0;
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("household"),
     .arguments = QStringLiteral("new PERSON_ID | add PERSON_ID HOUSEHOLD_ID | move PERSON_ID HOUSEHOLD_ID | "
                                 "remove PERSON_ID | delete HOUSEHOLD_ID | members HOUSEHOLD_ID"),
     .description = QStringLiteral(
         "Households as the household screens keep them: new makes a household (named --name, else the "
         "client's last name and address) with the client in it; add puts a client who is in no household "
         "into one; move takes a client out of their household into another; remove takes them out; delete "
         "removes a household and clears its members' Household_ID. Each prints the household's members "
         "(members only prints them). The client is saved through the client rules; their questions are "
         "answered by --yes or --no (without either: No). Each change is one transaction."),
     .minArguments = 2,
     .maxArguments = 3,
     .options = {QCommandLineOption(QStringLiteral("name"), QStringLiteral("The new household's name."),
                                    QStringLiteral("NAME")),
                 QCommandLineOption(QStringLiteral("role"),
                                    QStringLiteral("The member's role in the household."),
                                    QStringLiteral("ROLE")),
                 QCommandLineOption(QStringLiteral("head"),
                                    QStringLiteral("The member is a head of the household."))},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runHousehold);

} // namespace
