#include "lists/TFormListMembership.h"

#include "Clock.h"
#include "UserInterface.h"
#include "records/RecordServices.h"

namespace kb {

TFormListMembership::TFormListMembership(RecordServices& services, UserInterface& ui, const Clock& clock,
                                         QString userName, QString accessLevel, Client client)
    : m_services(services), m_ui(ui), m_clock(clock), m_userName(std::move(userName)),
      m_level(accessLevel.trimmed().toUpper()), m_client(std::move(client)),
      m_members(
          services.db(),
          QStringLiteral("Select * from List_Members where Person_ID = :Person_ID and List_ID in (Select "
                         "Record_ID from Lists where Reason = 'LST')")),
      m_available(
          services.db(),
          QStringLiteral("Select Record_ID, List_Name from Lists where Reason = 'LST' and Record_ID not in "
                         "(Select List_ID from List_Members where Person_ID = :Person_ID) order by "
                         "List_Name"))
{
    m_members.addLookupField(QStringLiteral("List_Name"), QStringLiteral("List_ID"), QStringLiteral("Lists"),
                             QStringLiteral("Record_ID"), QStringLiteral("List_Name"));
    m_members.setParam(QStringLiteral("Person_ID"), m_client.personId);
    m_available.setParam(QStringLiteral("Person_ID"), m_client.personId);
    services.installErrorHooks(m_members);
    // Each change of a membership says who made it and when.
    m_members.setHook(DataSet::Hook::BeforePost, [this](DataSet& set) {
        set.setFieldValue(u"Last_Update", m_clock.now());
        set.setFieldValue(u"Updated_By", m_userName.left(25));
    });
}

bool TFormListMembership::FormShow()
{
    if (!AccessLevel::admitScreen(m_level, m_ui)) return false;
    if (!listsVisible()) return true;
    m_members.setRequestLive(mayChange());
    m_members.setReadOnly(!mayChange());
    m_available.setReadOnly(true);
    m_members.open();
    m_available.open();
    return true;
}

void TFormListMembership::refreshLists()
{
    m_members.refresh();
    m_available.refresh();
}

bool TFormListMembership::AddClientToList(int availableRow)
{
    if (!mayChange() || !m_available.isActive()) return false;
    if (m_available.isEmpty()) {
        m_ui.information(noListText());
        return false;
    }
    if (availableRow < 0 || availableRow >= m_available.recordCount()) availableRow = 0;
    m_available.setRecNo(availableRow + 1);
    const qint64 listId = m_available.fieldValue(u"Record_ID").toLongLong();
    m_members.append();
    m_members.setFieldValue(u"List_ID", listId);
    m_members.setFieldValue(u"RecVisible", true);
    m_members.setFieldValue(u"Person_ID", m_client.personId);
    m_members.setFieldValue(u"Client_ID", m_client.clientId);
    m_members.setFieldValue(u"Create_Date", m_clock.today());
    m_members.post();
    refreshLists();
    m_members.locate(QStringLiteral("List_ID"), listId);
    return true;
}

bool TFormListMembership::RemoveClientFromList(int memberRow)
{
    if (!mayChange() || !m_members.isActive() || m_members.isEmpty()) return false;
    if (memberRow < 0 || memberRow >= m_members.recordCount()) return false;
    m_members.setRecNo(memberRow + 1);
    if (m_ui.question(removeQuestion(), Buttons::YesNo) != Answer::Yes) return false;
    m_members.remove();
    m_available.refresh();
    return true;
}

void TFormListMembership::setMemberValue(int memberRow, const QString& column, const QVariant& value)
{
    if (!mayChange() || memberRow < 0 || memberRow >= m_members.recordCount()) return;
    m_members.setRecNo(memberRow + 1);
    m_members.edit();
    m_members.setFieldValue(column, value);
    m_members.post();
}

} // namespace kb
