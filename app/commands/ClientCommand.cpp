// kettlebrook --user NAME client show PERSON_ID
// kettlebrook --user NAME client set PERSON_ID FIELD=VALUE... [--yes|--no]
// kettlebrook --user NAME client new FIELD=VALUE... [--yes|--no]
//
// Shows a person's Clients row as CSV, or changes or adds one through the
// same client rules as the client window: their questions are answered by
// --yes or --no (without either, the answer that changes the least), and
// what they tell the user goes to the error stream. A save is all or
// nothing: the post and everything it sets off run in one transaction, and
// a refused save changes nothing.

#include "ClientFieldValues.h"
#include "CommandRegistry.h"
#include "CommandSession.h"

#include "Csv.h"
#include "dataset/Abort.h"
#include "dataset/TableDataSet.h"
#include "records/RecordServices.h"
#include "rules/NewPerson.h"
#include "session/TDataModule1.h"
#include "store/Database.h"

#include <limits>
#include <stdexcept>

namespace {

using kb::app::UsageError;

// A change of clients through the data module's shared Clients set, which
// carries the client rules as on the desktop: the work runs in one
// transaction, and the session refuses it when the user's level does not
// allow changes.
class ClientWrite
{
public:
    explicit ClientWrite(kb::app::CommandSession& session) : m_session(session), m_clients(session.data().clients()) {}

    kb::DataSet& clients() { return m_clients; }

    // Runs the change and its save in one transaction; a save the rules
    // refuse (they have said why) gives false, with nothing changed.
    template <typename Work> bool run(Work&& work)
    {
        kb::Database& db = m_session.data().db();
        kb::TransactionGuard guard(db);
        try {
            work();
        } catch (const kb::Abort&) {
            if (m_clients.state() != kb::DataSet::State::Browse) m_clients.cancel();
            return false;
        } catch (...) {
            if (m_clients.state() != kb::DataSet::State::Browse) m_clients.cancel();
            throw;
        }
        guard.commit();
        return true;
    }

    void assign(const kb::app::ClientAssignments& assignments)
    {
        for (const auto& [column, value] : assignments)
            m_clients.setFieldValue(column, value);
    }

private:
    kb::app::CommandSession& m_session;
    kb::TableDataSet& m_clients;
};

qint64 personWord(const kb::app::CommandArgs& args)
{
    return args.integerPositional(1, QStringLiteral("PERSON_ID"), 1, std::numeric_limits<qint32>::max());
}

[[noreturn]] void noSuchPerson(qint64 personId)
{
    throw std::runtime_error(QStringLiteral("No person has Person_ID %1.").arg(personId).toStdString());
}

int showClient(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() != 2)
        throw UsageError(QStringLiteral("Usage: kettlebrook client show PERSON_ID"));
    const qint64 personId = personWord(args);
    kb::app::CommandSession session(context);
    const kb::ResultSet row =
        session.data().db().execute(QStringLiteral("Select * from Clients where Person_ID = :Person_ID"),
                                    {{QStringLiteral("Person_ID"), personId}});
    if (row.isEmpty()) noSuchPerson(personId);
    kb::writeCsv(context.out, row);
    session.close();
    return 0;
}

int setClient(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    if (args.positionals().size() < 3)
        throw UsageError(QStringLiteral("Usage: kettlebrook client set PERSON_ID FIELD=VALUE..."));
    const qint64 personId = personWord(args);
    const kb::app::ClientAssignments assignments = kb::app::parseClientAssignments(args.positionals().mid(2));
    kb::app::CommandSession session(context);
    bool saved = false;
    {
        ClientWrite write(session);
        if (!write.clients().locate(QStringLiteral("PERSON_ID"), personId)) noSuchPerson(personId);
        saved = write.run([&] {
            write.clients().edit();
            write.assign(assignments);
            write.clients().post();
        });
    }
    session.close();
    return saved ? 0 : 1;
}

int newClient(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const kb::app::ClientAssignments assignments = kb::app::parseClientAssignments(args.positionals().mid(1));
    kb::app::CommandSession session(context);
    int personId = 0;
    bool saved = false;
    {
        ClientWrite write(session);
        saved = write.run([&] {
            write.clients().append();
            personId =
                kb::setNewPersonDefaults(write.clients(), session.data().services(), session.data().clock());
            write.assign(assignments);
            write.clients().post();
        });
    }
    session.close();
    if (!saved) return 1;
    context.out << "Person_ID\n" << personId << '\n';
    return 0;
}

int runClient(kb::app::CommandContext& context, const kb::app::CommandArgs& args)
{
    const QString action = args.positional(0);
    if (action == QLatin1String("show")) return showClient(context, args);
    if (action == QLatin1String("set")) return setClient(context, args);
    if (action == QLatin1String("new")) return newClient(context, args);
    throw UsageError(QStringLiteral("client: the first word is show, set or new, not '%1'.").arg(action));
}

const kb::app::CommandRegistration registration(
    {.name = QStringLiteral("client"),
     .arguments = QStringLiteral("show PERSON_ID | set PERSON_ID FIELD=VALUE... | new FIELD=VALUE..."),
     .description = QStringLiteral("Shows a person's Clients row as CSV, or changes (set) or adds (new) one "
                                   "through the client rules, as the "
                                   "client window saves it; new prints the new Person_ID. FIELD is a Clients "
                                   "column, VALUE in the CSV forms: "
                                   "empty for null, \"\" for empty text, YYYY-MM-DD dates, true/false. The "
                                   "rules' questions are answered by "
                                   "--yes or --no, or without either by the answer that changes the least; "
                                   "their messages go to standard "
                                   "error. A refused save changes nothing and exits 1."),
     .minArguments = 1,
     .maxArguments = -1,
     .options = {},
     .repeatable = {},
     .asksQuestions = true,
     .needsUser = true},
    runClient);

} // namespace
