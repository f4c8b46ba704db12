#include "households/HouseholdActions.h"

#include "Clock.h"
#include "MessageError.h"
#include "UserInterface.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "session/SessionState.h"
#include "store/Database.h"

namespace kb {

HouseholdActions::HouseholdActions(RecordServices& services, UserInterface& ui, const SessionState& session,
                                   const Clock& clock, DataSet& clients)
    : m_services(services), m_ui(ui), m_session(session), m_clock(clock), m_clients(clients)
{
}

QString HouseholdActions::suggestedName(const QString& lastName, const QString& address1)
{
    const QString name = (lastName.trimmed() + QLatin1Char(' ') + address1.trimmed()).trimmed();
    return name.isEmpty() ? QStringLiteral("New Household") : name;
}

QString HouseholdActions::suggestedName() const
{
    return suggestedName(m_clients.fieldValue(u"LAST_NAME").toString(),
                         m_clients.fieldValue(u"ADDRESS1").toString());
}

qint64 HouseholdActions::createHousehold(const QString& name)
{
    Database& db = m_services.db();
    // The row is found again by its Last_Updated, so the time is one every
    // store keeps exactly: whole seconds (a server rounds away the rest).
    QDateTime now = m_clock.now();
    now.setTime(QTime(now.time().hour(), now.time().minute(), now.time().second()));
    const Params values{{QStringLiteral("Household_Name"), name},
                        {QStringLiteral("Create_Date"), now.date()},
                        {QStringLiteral("Last_Updated"), now},
                        {QStringLiteral("User"), m_session.userFullName}};
    db.execute(
        QStringLiteral("Insert into Households fields (Household_Name, Create_Date, Last_Updated, User) "
                       "values (:Household_Name, :Create_Date, :Last_Updated, :User);"),
        values);
    const ResultSet found = db.execute(
        QStringLiteral("Select max(Household_ID) from Households where Household_Name = :Household_Name "
                       "and Last_Updated = :Last_Updated and User = :User"),
        values);
    const qint64 id = found.isEmpty() ? 0 : found.value(0, 0).toLongLong();
    if (id <= 0) throw MessageError(notCreatedText());
    return id;
}

bool HouseholdActions::householdExists(qint64 householdId, QString* name) const
{
    const ResultSet row = m_services.db().execute(
        QStringLiteral("Select Household_Name from Households where Household_ID = :H"),
        {{QStringLiteral("H"), householdId}});
    if (row.isEmpty()) return false;
    if (name) *name = row.value(0, 0).toString();
    return true;
}

QList<HouseholdActions::Member> HouseholdActions::members(qint64 householdId) const
{
    const ResultSet rows = m_services.db().execute(
        QStringLiteral("Select Household_Members.RecordID, Household_Members.Person_ID, Clients.First_Name, "
                       "Clients.Last_Name, Household_Members.Role, Household_Members.Head_of_Household from "
                       "Household_Members left outer join Clients on Household_Members.Person_ID = "
                       "Clients.Person_ID where Household_Members.Household_ID = :Household_ID order by "
                       "Household_Members.RecordID"),
        {{QStringLiteral("Household_ID"), householdId}});
    QList<Member> list;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        Member m;
        m.recordId = rows.value(r, 0).toLongLong();
        m.personId = rows.value(r, 1).toLongLong();
        m.name =
            (rows.value(r, 2).toString().trimmed() + QLatin1Char(' ') + rows.value(r, 3).toString().trimmed())
                .trimmed();
        m.role = rows.value(r, 4).toString();
        m.head = rows.value(r, 5).toBool();
        list.append(m);
    }
    return list;
}

bool HouseholdActions::addCurrentClient(qint64 householdId, const QString& role, bool head)
{
    return insertCurrentMember(
        householdId,
        QStringLiteral(
            "Insert into Household_Members fields ( Household_ID, Person_ID, Role, Head_of_Household, "
            "Create_Date, Last_Updated, User ) values ( :Household_ID, :Person_ID, :Role, "
            ":Head_of_Household,:Create_Date, :Last_Updated, :User );"),
        {{QStringLiteral("Role"), role.isEmpty() ? QVariant() : QVariant(role)},
         {QStringLiteral("Head_of_Household"), head}});
}

bool HouseholdActions::addCurrentClient(qint64 householdId)
{
    return insertCurrentMember(
        householdId,
        QStringLiteral(
            "Insert into Household_Members fields ( Household_ID, Person_ID, Create_Date, "
            "Last_Updated, User ) values ( :Household_ID, :Person_ID, :Create_Date, :Last_Updated, "
            ":User );"),
        {});
}

void HouseholdActions::claimCurrentClient()
{
    const qint64 personId = m_clients.fieldValue(u"PERSON_ID").toLongLong();
    m_services.db().execute(
        QStringLiteral("Update Clients set Household_ID = Household_ID where Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    rereadClient(personId);
}

bool HouseholdActions::insertCurrentMember(qint64 householdId, const QString& statement, const Params& values)
{
    m_clients.checkBrowseMode();
    claimCurrentClient();
    if (m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() > 0) {
        m_ui.warning(alreadyMemberText());
        return false;
    }
    if (householdId <= 0 || !householdExists(householdId)) throw MessageError(notCreatedText());
    const QDateTime now = m_clock.now();
    Params params{{QStringLiteral("Household_ID"), householdId},
                  {QStringLiteral("Person_ID"), m_clients.fieldValue(u"PERSON_ID")},
                  {QStringLiteral("Create_Date"), now.date()},
                  {QStringLiteral("Last_Updated"), now},
                  {QStringLiteral("User"), m_session.userFullName}};
    params.insert(params.end(), values.begin(), values.end());
    m_services.db().execute(statement, params);
    m_clients.edit();
    m_clients.setFieldValue(u"HOUSEHOLD_ID", householdId);
    m_clients.post();
    m_clients.flushBuffers();
    return true;
}

bool HouseholdActions::removeCurrentClient()
{
    m_clients.checkBrowseMode();
    const qint64 personId = m_clients.fieldValue(u"PERSON_ID").toLongLong();
    claimCurrentClient();
    if (m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() <= 0) return false;
    Database& db = m_services.db();
    db.execute(QStringLiteral("Delete from Household_Members where Person_ID = :Person_ID"),
               {{QStringLiteral("Person_ID"), personId}});
    db.execute(QStringLiteral("Update Clients set Household_ID = NULL where Person_ID = :Person_ID"),
               {{QStringLiteral("Person_ID"), personId}});
    rereadClient(personId);
    return true;
}

bool HouseholdActions::moveCurrentClient(qint64 householdId, const QString& role, bool head)
{
    m_clients.checkBrowseMode();
    const qint64 from = m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong();
    if (from <= 0 || from == householdId) return false;
    if (!householdExists(householdId)) throw MessageError(notCreatedText());
    removeCurrentClient();
    return addCurrentClient(householdId, role, head);
}

void HouseholdActions::deleteHousehold(qint64 householdId)
{
    Database& db = m_services.db();
    const Params household{{QStringLiteral("Household_ID"), householdId}};
    const bool current = m_clients.fieldValue(u"HOUSEHOLD_ID").toLongLong() == householdId;
    db.execute(QStringLiteral("Update Clients set Household_ID = NULL where Household_ID = :Household_ID"),
               household);
    db.execute(QStringLiteral("Delete from Household_Members where Household_ID = :Household_ID"), household);
    db.execute(QStringLiteral("Delete from Households where Household_ID = :Household_ID"), household);
    if (current) rereadClient(m_clients.fieldValue(u"PERSON_ID").toLongLong());
}

void HouseholdActions::rereadClient(qint64 personId)
{
    if (m_clients.isActive() && m_clients.fieldValue(u"PERSON_ID").toLongLong() == personId)
        m_clients.refreshRecord();
}

} // namespace kb
