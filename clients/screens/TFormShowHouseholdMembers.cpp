#include "screens/TFormShowHouseholdMembers.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"
#include "records/RecordServices.h"
#include "rules/ClientRules.h"
#include "rules/ClientStatus.h"
#include "store/Database.h"

namespace kb {

namespace {

QString frequencyCaption(const QString& code)
{
    const QString c = code.trimmed();
    if (c.isEmpty() || c == QLatin1String("A")) return QStringLiteral("Every Week");
    if (c == QLatin1String("O")) return QStringLiteral("A Weeks");
    if (c == QLatin1String("E")) return QStringLiteral("B Weeks");
    static const char* const nth[] = {"1st", "2nd", "3rd", "4th"};
    const int n = c.toInt();
    if (n >= 1 && n <= 4)
        return QString::fromLatin1(nth[n - 1]) + QStringLiteral(" occurrence of day in month");
    return c;
}

// The engine's own message, without the statement that an engine error carries besides.
QString exceptionText(const std::exception& e)
{
    if (const auto* db = dynamic_cast<const DbError*>(&e)) return db->message();
    return QString::fromUtf8(e.what());
}

} // namespace

TFormShowHouseholdMembers::TFormShowHouseholdMembers(ClientRules& rules, DataSet& clients, qint64 householdId,
                                                     qint64 personId)
    : m_rules(rules), m_clients(clients), m_householdId(householdId), m_personId(personId)
{
    read();
}

QStringList TFormShowHouseholdMembers::columnTitles()
{
    return {QStringLiteral("Client ID"),  QStringLiteral("Name"),      QStringLiteral("Status"),
            QStringLiteral("Start Date"), QStringLiteral("Stop Date"), QStringLiteral("Frequency"),
            QStringLiteral("Route"),      QStringLiteral("Service"),   QStringLiteral("Delivery Days")};
}

QString TFormShowHouseholdMembers::membersStatement()
{
    return QStringLiteral(
        "Select Household_Members.Person_ID, Clients.Client_ID, Clients.First_Name, Clients.Last_Name, "
        "Clients.Status, Clients.Start_Dte, Clients.Stop_Dte, Clients.Ongoing_Frequency, Clients.Def_Rte, "
        "Services.Service_Desc, Clients.Monday, Clients.Tuesday, Clients.Wednesday, Clients.Thursday, "
        "Clients.Friday, Clients.Saturday, Clients.Sunday "
        "from Household_Members join Clients on Household_Members.Person_ID = Clients.Person_ID "
        "left outer join Services on Clients.Svcs_Used = Services.Service_ID "
        "where Household_Members.Household_ID = :Household_ID and Household_Members.Person_ID <> :Person_ID "
        "order by Clients.Last_Name, Clients.First_Name");
}

void TFormShowHouseholdMembers::read()
{
    const ResultSet rows =
        m_rules.services().db().execute(membersStatement(), {{QStringLiteral("Household_ID"), m_householdId},
                                                             {QStringLiteral("Person_ID"), m_personId}});
    static const char* const dayCodes[] = {"Mo", "Tu", "We", "Th", "Fr", "Sa", "Su"};
    const qint64 chosen = m_current >= 0 && m_current < m_members.size() ? m_members[m_current].personId : 0;
    m_members.clear();
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        Member m;
        m.personId = rows.value(r, 0).toLongLong();
        m.clientId = rows.value(r, 1).toString();
        m.name =
            (rows.value(r, 2).toString().trimmed() + QLatin1Char(' ') + rows.value(r, 3).toString().trimmed())
                .trimmed();
        m.status = rows.value(r, 4).toString().isEmpty() ? QString()
                                                         : client_status::word(rows.value(r, 4).toString());
        m.startDate = rows.value(r, 5).toDate();
        m.stopDate = rows.value(r, 6).toDate();
        m.frequency = frequencyCaption(rows.value(r, 7).toString());
        m.route = rows.value(r, 8).toString();
        m.service = rows.value(r, 9).toString();
        for (int day = 0; day < 7; ++day)
            if (rows.value(r, 10 + day).toBool()) m.days += QLatin1String(dayCodes[day]);
        m_members.append(m);
    }
    m_current = m_members.isEmpty() ? -1 : 0;
    for (int i = 0; i < m_members.size(); ++i)
        if (m_members[i].personId == chosen) m_current = i;
    if (m_changed) m_changed();
}

void TFormShowHouseholdMembers::setCurrent(int index)
{
    m_current = index >= 0 && index < m_members.size() ? index : -1;
    if (m_changed) m_changed();
}

bool TFormShowHouseholdMembers::canMigrate() const
{
    return m_current >= 0 && m_clients.canModify() && m_rules.householdMemory().prior().held;
}

bool TFormShowHouseholdMembers::ActionMigrate()
{
    if (!canMigrate()) return false;
    UserInterface& ui = m_rules.ui();
    const Member member = m_members[m_current];
    if (!m_clients.locate(QStringLiteral("PERSON_ID"), member.personId)) {
        ui.error(
            QStringLiteral("For some reason the selected Household member could not be \r\nlocated in the "
                           "Clients table."));
        return false;
    }
    try {
        m_rules.MigrateDeliveryInfo();
    } catch (const Abort&) {
        // A rule refused the member's save and has said why.
        read();
        return false;
    } catch (const std::exception& e) {
        ui.error(QStringLiteral("Unable to migrate the delivery information: \r\n") + exceptionText(e));
        read();
        return false;
    }
    read();
    ui.information(QStringLiteral("Successfully migrated the delivery information to ") + member.name);
    return true;
}

} // namespace kb
