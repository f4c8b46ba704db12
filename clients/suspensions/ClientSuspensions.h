#pragma once

#include "dataset/QueryDataSet.h"
#include "suspensions/SuspensionEditor.h"
#include "suspensions/SuspensionRules.h"

namespace kb {

// One client's suspensions away from the client window (a headless
// command, a test): the live QuerySuspends set over the person the Clients
// set stands on, with the suspension rules on it and the editor over both.
class ClientSuspensions
{
public:
    ClientSuspensions(RecordServices& services, UserInterface& ui, const SessionState& session,
                      const Clock& clock, DataSet& clients);
    ~ClientSuspensions();
    ClientSuspensions(const ClientSuspensions&) = delete;
    ClientSuspensions& operator=(const ClientSuspensions&) = delete;

    // QuerySuspends.
    static QString statement()
    {
        return QStringLiteral("select * from Suspends where Person_ID = :Person_ID order by Stop_Dt desc");
    }

    // Reads the suspensions of the client the Clients set stands on.
    void open();
    QueryDataSet& suspends() { return m_suspends; }
    SuspensionEditor& editor() { return m_editor; }

private:
    DataSet& m_clients;
    QueryDataSet m_suspends;
    SuspensionRules m_rules;
    SuspensionEditor m_editor;
};

} // namespace kb
