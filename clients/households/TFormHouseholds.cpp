#include "households/TFormHouseholds.h"

#include "Clock.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "households/PendingClientEdit.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

TFormHouseholds::TFormHouseholds(RecordServices& services, UserInterface& ui, const SessionState& session,
                                 const Clock& clock, DataSet& clients)
    : m_services(services), m_ui(ui), m_clock(clock), m_session(session), m_clients(clients),
      m_actions(services, ui, session, clock, clients), m_households(services.db(), householdsStatement()),
      m_members(services.db(), membersStatement()), m_readOnly(!session.access().mayChangeData())
{
    m_members.addCalculatedField(QStringLiteral("FullName"), FieldType::String, 41);
    m_members.setOnCalcFields([](DataSet& set) {
        set.setFieldValue(u"FullName", (set.fieldValue(u"First_Name").toString().trimmed() +
                                        QLatin1Char(' ') + set.fieldValue(u"Last_Name").toString().trimmed())
                                           .trimmed());
    });
    m_households.setHook(DataSet::Hook::AfterScroll, [this](DataSet&) { readMembers(); });
}

QString TFormHouseholds::householdsStatement()
{
    return QStringLiteral(
        "Select Household_ID, Household_Name, Create_Date, Last_Updated, User from Households "
        "order by Household_Name NoCase");
}

QString TFormHouseholds::membersStatement()
{
    return QStringLiteral(
        "Select Household_Members.RecordID, Household_Members.Person_ID, Clients.Client_ID, "
        "Clients.First_Name, "
        "Clients.Last_Name, Household_Members.Role, Household_Members.Head_of_Household from "
        "Household_Members "
        "left outer join Clients on Household_Members.Person_ID = Clients.Person_ID where "
        "Household_Members.Household_ID = :Household_ID order by Household_Members.RecordID");
}

void TFormHouseholds::FormShow()
{
    m_households.open();
    const qint64 own =
        m_clients.isActive() && !m_clients.isEmpty() ? m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() : 0;
    if (own <= 0 || !locate(own)) readMembers();
}

void TFormHouseholds::FormClose()
{
    m_members.close();
    m_households.close();
}

qint64 TFormHouseholds::currentHousehold() const
{
    if (!m_households.isActive() || m_households.isEmpty()) return 0;
    return m_households.fieldValue(u"Household_ID").toLongLong();
}

QString TFormHouseholds::currentHouseholdName() const
{
    return currentHousehold() > 0 ? m_households.fieldValue(u"Household_Name").toString() : QString();
}

qint64 TFormHouseholds::currentPerson() const
{
    return m_clients.isActive() && !m_clients.isEmpty() ? m_clients.fieldValue(u"PERSON_ID").toLongLong() : 0;
}

void TFormHouseholds::readMembers()
{
    m_members.close();
    m_members.setParam(QStringLiteral("Household_ID"), currentHousehold());
    m_members.open();
}

bool TFormHouseholds::search(const QString& text)
{
    if (text.isEmpty() || !m_households.isActive()) return false;
    return m_households.locate(QStringLiteral("Household_Name"), text,
                               LocateOptions{.caseInsensitive = true, .partialKey = true});
}

bool TFormHouseholds::locate(qint64 householdId)
{
    return m_households.isActive() && m_households.locate(QStringLiteral("Household_ID"), householdId);
}

void TFormHouseholds::refreshKeeping(qint64 householdId)
{
    m_households.refresh();
    if (householdId <= 0 || !locate(householdId)) readMembers();
}

qint64 TFormHouseholds::ActionNewHousehold()
{
    if (m_readOnly) return 0;
    const QString name =
        currentPerson() > 0 ? m_actions.suggestedName() : HouseholdActions::suggestedName({}, {});
    const qint64 id = m_actions.createHousehold(name);
    refreshKeeping(id);
    return id;
}

bool TFormHouseholds::ActionAddPersonTo()
{
    const qint64 household = currentHousehold();
    if (m_readOnly || household <= 0 || currentPerson() <= 0) return false;
    if (m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() > 0) {
        m_ui.warning(HouseholdActions::alreadyMemberText());
        return false;
    }
    if (!PendingClientEdit::saveBeforeChange(m_clients, m_ui, addQuestion())) return false;
    {
        TransactionGuard transaction(m_services.db());
        if (!m_actions.addCurrentClient(household)) return false;
        transaction.commit();
    }
    refreshKeeping(household);
    if (m_membersScreen) {
        m_membersScreen(household, currentPerson());
        refreshKeeping(household);
    }
    return true;
}

void TFormHouseholds::ActionEditMembers()
{
    const qint64 household = currentHousehold();
    if (household <= 0 || !m_membersScreen) return;
    m_membersScreen(household, currentPerson());
    refreshKeeping(household);
}

bool TFormHouseholds::ActionDeleteHousehold()
{
    const qint64 household = currentHousehold();
    if (m_readOnly || household <= 0) return false;
    if (currentPerson() > 0 && m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() == household &&
        !PendingClientEdit::saveBeforeChange(m_clients, m_ui, deleteEditQuestion()))
        return false;
    if (m_ui.question(HouseholdActions::deleteQuestion(), Buttons::YesNo) != Answer::Yes) return false;
    {
        TransactionGuard transaction(m_services.db());
        m_actions.deleteHousehold(household);
        transaction.commit();
    }
    refreshKeeping(0);
    return true;
}

bool TFormHouseholds::renameHousehold(const QString& name)
{
    const qint64 household = currentHousehold();
    const QString text = name.trimmed();
    if (m_readOnly || household <= 0 || text == currentHouseholdName()) return false;
    if (text.isEmpty()) {
        m_ui.warning(QStringLiteral("A household needs a name."));
        return false;
    }
    if (text.size() > 50) {
        m_ui.warning(QStringLiteral("A household's name has at most 50 characters."));
        return false;
    }
    m_services.db().execute(
        QStringLiteral(
            "Update Households set Household_Name = :Household_Name, Last_Updated = :Last_Updated, "
            "User = :User where Household_ID = :Household_ID"),
        {{QStringLiteral("Household_Name"), text},
         {QStringLiteral("Last_Updated"), m_clock.now()},
         {QStringLiteral("User"), m_session.userFullName},
         {QStringLiteral("Household_ID"), household}});
    refreshKeeping(household);
    return true;
}

} // namespace kb
