#include "households/TFormHouseholdMembers.h"

#include "Clock.h"
#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"
#include "households/ClientLocator.h"
#include "households/HouseholdActions.h"
#include "households/PendingClientEdit.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "store/Database.h"


namespace kb {

namespace {

constexpr int MaxCandidates = 100;

QString fullName(const QVariant& first, const QVariant& last)
{
    return (first.toString().trimmed() + QLatin1Char(' ') + last.toString().trimmed()).trimmed();
}

} // namespace

TFormHouseholdMembers::TFormHouseholdMembers(RecordServices& services, UserInterface& ui,
                                             const SessionState& session, const Clock& clock,
                                             DataSet& clients, qint64 householdId, qint64 personId)
    : m_services(services), m_ui(ui), m_session(session), m_clock(clock), m_clients(clients),
      m_householdId(householdId), m_startPerson(personId), m_members(services.db(), membersStatement())
{
    m_members.addCalculatedField(QStringLiteral("FullName"), FieldType::String, 41);
    m_members.addCalculatedField(QStringLiteral("ClientID"), FieldType::String, 7);
    m_members.setOnCalcFields([this](DataSet& set) {
        const auto name = m_names.value(set.fieldValue(u"Person_ID").toLongLong());
        set.setFieldValue(u"FullName", name.first);
        set.setFieldValue(u"ClientID", name.second);
    });
    m_members.setHook(DataSet::Hook::BeforePost, [this](DataSet& set) { beforePost(set); });
    m_members.setHook(DataSet::Hook::AfterPost, [this](DataSet& set) { afterPost(set); });
    services.installErrorHooks(m_members);
}

QString TFormHouseholdMembers::membersStatement()
{
    return QStringLiteral(
        "Select RecordID, Household_ID, Person_ID, Role, head_of_household, Last_Updated from "
        "Household_Members where Household_Members.Household_ID = :Household_ID");
}

bool TFormHouseholdMembers::FormShow()
{
    if (!AccessLevel::admitScreen(m_session.accessLevel, m_ui)) return false;
    m_editing = m_session.access().mayChangeData();
    const ResultSet name = m_services.db().execute(
        QStringLiteral("Select Household_Name from Households where Household_ID = :Household_ID"),
        {{QStringLiteral("Household_ID"), m_householdId}});
    m_householdName = name.isEmpty() ? QString() : name.value(0, 0).toString().trimmed();
    readNames();
    m_members.setRequestLive(m_editing);
    m_members.setReadOnly(!m_editing);
    m_members.setParam(QStringLiteral("Household_ID"), m_householdId);
    m_members.open();
    if (m_startPerson > 0) m_members.locate(QStringLiteral("Person_ID"), m_startPerson);
    return true;
}

bool TFormHouseholdMembers::FormClose()
{
    if (isEditing()) {
        if (m_members.state() == DataSet::State::Insert &&
            m_members.fieldValue(u"Person_ID").toLongLong() <= 0)
            m_members.cancel();
        else if (m_ui.question(closeQuestion(), Buttons::YesNo) == Answer::Yes) {
            if (!post()) return false;
        } else
            m_members.cancel();
    }
    m_members.close();
    if (m_editing)
        m_services.db().execute(
            QStringLiteral("Delete from Household_Members where Household_ID = :Household_ID "
                           "and (Person_ID is null or Person_ID <= 0)"),
            {{QStringLiteral("Household_ID"), m_householdId}});
    return true;
}

QString TFormHouseholdMembers::windowCaption() const
{
    return m_householdName.isEmpty() ? caption() : m_householdName + QStringLiteral(" household");
}

bool TFormHouseholdMembers::isEditing() const
{
    return m_members.state() == DataSet::State::Edit || m_members.state() == DataSet::State::Insert;
}

qint64 TFormHouseholdMembers::currentClient() const
{
    return m_clients.isActive() && !m_clients.isEmpty() ? m_clients.fieldValue(u"PERSON_ID").toLongLong() : 0;
}

void TFormHouseholdMembers::readNames()
{
    const ResultSet rows = m_services.db().execute(
        QStringLiteral(
            "Select Household_Members.Person_ID, Clients.First_Name, Clients.Last_Name, Clients.Client_ID "
            "from Household_Members join Clients on Household_Members.Person_ID = Clients.Person_ID "
            "where Household_Members.Household_ID = :Household_ID"),
        {{QStringLiteral("Household_ID"), m_householdId}});
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        m_names.insert(rows.value(r, 0).toLongLong(),
                       {fullName(rows.value(r, 1), rows.value(r, 2)), rows.value(r, 3).toString().trimmed()});
}

bool TFormHouseholdMembers::ActionAddMember()
{
    if (!m_editing || m_householdId <= 0 || !m_members.isActive()) return false;
    if (isEditing() && !post()) return false;
    m_members.append();
    m_members.setFieldValue(u"Household_ID", m_householdId);
    m_members.setFieldValue(u"head_of_household", false);
    return true;
}

QList<TFormHouseholdMembers::Candidate> TFormHouseholdMembers::findPeople(const QString& text) const
{
    const QString key = text.trimmed();
    QList<Candidate> list;
    if (key.isEmpty()) return list;
    const ResultSet rows = m_services.db().execute(
        QStringLiteral(
            "Select top 100 Person_ID, Client_ID, First_Name, Last_Name, Address1, Household_ID from "
            "Clients where Upper(Last_Name) like :Name or Client_ID = :Client_ID "
            "order by Last_Name, First_Name, Person_ID"),
        {{QStringLiteral("Name"), key.toUpper() + QLatin1Char('%')}, {QStringLiteral("Client_ID"), key}});
    for (qsizetype r = 0; r < rows.rowCount() && r < MaxCandidates; ++r) {
        Candidate c;
        c.personId = rows.value(r, 0).toLongLong();
        c.clientId = rows.value(r, 1).toString().trimmed();
        const QString last = rows.value(r, 3).toString().trimmed();
        const QString first = rows.value(r, 2).toString().trimmed();
        c.text = (first.isEmpty() ? last : last + QStringLiteral(", ") + first) + QStringLiteral("  [") +
                 c.clientId + QStringLiteral("]  ") + rows.value(r, 4).toString().trimmed();
        c.householdId = rows.value(r, 5).toLongLong();
        list.append(c);
    }
    return list;
}

bool TFormHouseholdMembers::setPerson(qint64 personId)
{
    if (!personChoosable() || personId <= 0) return false;
    const ResultSet row = m_services.db().execute(
        QStringLiteral("Select First_Name, Last_Name, Client_ID from Clients where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (row.isEmpty()) return false;
    m_names.insert(personId,
                   {fullName(row.value(0, 0), row.value(0, 1)), row.value(0, 2).toString().trimmed()});
    m_members.setFieldValue(u"Person_ID", personId);
    return true;
}

bool TFormHouseholdMembers::setRole(const QString& role)
{
    if (!m_editing || !hasMember()) return false;
    const QString text = role.trimmed().left(50);
    if (text == m_members.fieldValue(u"Role").toString()) return true;
    if (!isEditing()) m_members.edit();
    m_members.setFieldValue(u"Role", text.isEmpty() ? QVariant() : QVariant(text));
    return true;
}

bool TFormHouseholdMembers::setHead(bool head)
{
    if (!m_editing || !hasMember()) return false;
    if (head == m_members.fieldValue(u"head_of_household").toBool()) return true;
    if (!isEditing()) m_members.edit();
    m_members.setFieldValue(u"head_of_household", head);
    return true;
}

void TFormHouseholdMembers::beforePost(DataSet& set)
{
    if (set.fieldValue(u"Household_ID").toLongLong() <= 0) set.setFieldValue(u"Household_ID", m_householdId);
    set.setFieldValue(u"Last_Updated", m_clock.now());
    const qint64 person = set.fieldValue(u"Person_ID").toLongLong();
    m_postedPerson = person;
    if (person <= 0) return;
    Database& db = m_services.db();
    const qint64 household = set.fieldValue(u"Household_ID").toLongLong();
    const qint64 recordId =
        set.state() == DataSet::State::Insert ? 0 : set.fieldValue(u"RecordID").toLongLong();
    // A person is in at most one household, and once in it.
    if (!db.execute(
               QStringLiteral("Select RecordID from Household_Members where Household_ID = :Household_ID "
                              "and Person_ID = :Person_ID and RecordID <> :RecordID"),
               {{QStringLiteral("Household_ID"), household},
                {QStringLiteral("Person_ID"), person},
                {QStringLiteral("RecordID"), recordId}})
             .isEmpty()) {
        m_ui.warning(alreadyHereText());
        throw Abort();
    }
    // The person's row is taken for the rest of the save before it is read,
    // so two workstations adding one person to two households go one after
    // the other and the second is refused.
    db.execute(QStringLiteral("Update Clients set Household_ID = Household_ID where Person_ID = :Person_ID"),
               {{QStringLiteral("Person_ID"), person}});
    const ResultSet own =
        db.execute(QStringLiteral("Select Household_ID from Clients where Person_ID = :Person_ID"),
                   {{QStringLiteral("Person_ID"), person}});
    const qint64 current = own.isEmpty() ? 0 : own.value(0, 0).toLongLong();
    if (current > 0 && current != household) {
        m_ui.warning(HouseholdActions::alreadyMemberText());
        throw Abort();
    }
    // QuerySetPersonsHouseholdID
    db.execute(QStringLiteral("Update Clients set Household_ID = :Household_ID where Person_ID = :Person_ID"),
               {{QStringLiteral("Household_ID"), household}, {QStringLiteral("Person_ID"), person}});
}

void TFormHouseholdMembers::afterPost(DataSet& set)
{
    // The member's first save also says when and by whom it was made.
    m_services.db().execute(
        QStringLiteral(
            "Update Household_Members set Create_Date = :Create_Date, User = :User where RecordID = "
            ":RecordID and Create_Date is null"),
        {{QStringLiteral("Create_Date"), m_clock.today()},
         {QStringLiteral("User"), m_session.userFullName},
         {QStringLiteral("RecordID"), set.fieldValue(u"RecordID")}});
    m_roles.remember(set.fieldValue(u"Role").toString());
    rereadClient(m_postedPerson);
}

bool TFormHouseholdMembers::post()
{
    if (!isEditing()) return true;
    try {
        TransactionGuard transaction(m_services.db());
        m_members.post();
        transaction.commit();
    } catch (const Abort&) {
        return false;
    }
    return true;
}

void TFormHouseholdMembers::cancel()
{
    if (isEditing()) m_members.cancel();
}

bool TFormHouseholdMembers::ActionRemoveSelected()
{
    if (!m_editing || !hasMember()) return false;
    if (m_members.state() == DataSet::State::Insert) {
        m_members.cancel(); // a member not saved yet only goes away
        return true;
    }
    if (m_ui.question(removeQuestion(), Buttons::YesNo) != Answer::Yes) return false;
    const qint64 person = m_members.fieldValue(u"Person_ID").toLongLong();
    if (person > 0 && person == currentClient() &&
        !PendingClientEdit::saveBeforeChange(m_clients, m_ui, removeEditQuestion()))
        return false;
    if (isEditing()) m_members.cancel();
    {
        TransactionGuard transaction(m_services.db());
        m_members.remove();
        // QueryRemoveMembersHouseholdID
        if (person > 0)
            m_services.db().execute(
                QStringLiteral("Update Clients set Household_ID = NULL where Person_ID = :Person_ID"),
                {{QStringLiteral("Person_ID"), person}});
        transaction.commit();
    }
    rereadClient(person);
    return true;
}

bool TFormHouseholdMembers::ActionLocateSelected()
{
    if (!hasMember() || !m_locator) return false;
    if (isEditing() && !post()) return false;
    if (m_locator->moveTo(m_members.fieldValue(u"Person_ID").toLongLong(), locateFilterNotice())) return true;
    m_ui.error(locateFailedText());
    return false;
}

void TFormHouseholdMembers::rereadClient(qint64 personId)
{
    if (personId > 0 && personId == currentClient() && m_clients.state() == DataSet::State::Browse)
        m_clients.refreshRecord();
}

} // namespace kb
