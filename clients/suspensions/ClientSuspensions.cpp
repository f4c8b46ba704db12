#include "suspensions/ClientSuspensions.h"

#include "records/RecordServices.h"

namespace kb {

ClientSuspensions::ClientSuspensions(RecordServices& services, UserInterface& ui, const SessionState& session,
                                     const Clock& clock, DataSet& clients)
    : m_clients(clients), m_suspends(services.db(), statement()), m_rules(services, session, clock, clients),
      m_editor(services, ui, session, clock, clients, m_suspends)
{
    m_suspends.setRequestLive(true);
    services.installErrorHooks(m_suspends);
    m_rules.attach(m_suspends);
}

ClientSuspensions::~ClientSuspensions()
{
    m_suspends.close();
    m_rules.detach();
}

void ClientSuspensions::open()
{
    m_suspends.close();
    m_suspends.setParam(QStringLiteral("Person_ID"), m_clients.fieldValue(u"PERSON_ID"));
    m_suspends.open();
}

} // namespace kb
