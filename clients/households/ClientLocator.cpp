#include "households/ClientLocator.h"

#include "UserInterface.h"
#include "dataset/DataSet.h"

namespace kb {

ClientLocator::ClientLocator(DataSet& clients, UserInterface& ui) : m_clients(clients), m_ui(ui) {}

bool ClientLocator::moveTo(qint64 personId, const QString& filterNotice)
{
    if (personId <= 0 || !m_clients.isActive()) return false;
    m_clients.checkBrowseMode();
    if (m_clients.isFiltered()) {
        m_ui.information(filterNotice);
        if (m_filterOff)
            m_filterOff();
        else
            m_clients.setFiltered(false);
    }
    if (m_clients.locate(QStringLiteral("PERSON_ID"), personId)) return true;
    // A person added by another workstation since the list was read.
    m_clients.refresh();
    return m_clients.locate(QStringLiteral("PERSON_ID"), personId);
}

} // namespace kb
