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
#include "records/DataSetActions.h"
#include "records/RecordServices.h"
#include "rules/ClientDialogs.h"
#include "rules/ClientHistoryTexts.h"
#include "rules/ClientRules.h"
#include "rules/NewPerson.h"
#include "screens/TFormResetStartDate.h"
#include "screens/TFormShowHouseholdMembers.h"
#include "store/Database.h"

#include <limits>
#include <stdexcept>

namespace {

using kb::app::UsageError;

// The screens of a save, headless: what they would show goes to the error
// stream, and nothing is changed through them.
class ConsoleClientDialogs final : public kb::ClientDialogs
{
public:
    explicit ConsoleClientDialogs(QTextStream& err) : m_err(err) {}

    void showHouseholdMembers(kb::TFormShowHouseholdMembers& form) override
    {
        m_err << form.caption() << ":\n";
        for (const auto& m : form.members())
            m_err << "  " << m.clientId << ' ' << m.name << ", " << m.status << ", route " << m.route << ", "
                  << (m.days.isEmpty() ? QStringLiteral("no days") : m.days) << '\n';
    }
    bool showResetStartDate(kb::TFormResetStartDate& form) override
    {
        m_err << form.caption() << ": " << form.startDateLabel() << ' ' << dateText(form.startDate());
        if (form.recertificationVisible())
            m_err << ", " << form.recertificationDateLabel() << ' ' << dateText(form.recertificationDate());
        m_err << " [Cancel]\n";
        return false;
    }

private:
    static QString dateText(const QDate& date)
    {
        return date.isValid() ? kb::client_history::dateText(date) : QStringLiteral("none");
    }

    QTextStream& m_err;
};

// The one place where a command changes clients: the user's level is
// checked, the Clients set gets the rules as the desktop's data module
// holds it, and the work runs in one transaction.
class ClientWrite
{
public:
    explicit ClientWrite(kb::app::CommandSession& session, QTextStream& err)
        : m_session(session), m_dialogs(err), m_clients(session.data().db(), QStringLiteral("Clients")),
          m_rules(session.data().services(), session.ui(), session.data().clock(), session.data().session())
    {
        const QString level = session.data().session().accessLevel;
        if (level == QLatin1String("R") || level == QLatin1String("O"))
            throw std::runtime_error("Your access level does not allow changing client records.");
        session.data().services().installErrorHooks(m_clients);
        m_rules.attach(m_clients);
        m_rules.setDialogs(&m_dialogs);
        kb::OpenTable(m_clients);
    }
    ~ClientWrite()
    {
        m_rules.detach();
        m_clients.close();
    }

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
    ConsoleClientDialogs m_dialogs;
    kb::TableDataSet m_clients;
    kb::ClientRules m_rules;
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
        ClientWrite write(session, context.err);
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
        ClientWrite write(session, context.err);
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
