#include "suspensions/TFrmInactivateClients.h"

#include "Clock.h"
#include "records/RecordServices.h"
#include "store/Database.h"

namespace kb {

int TFrmInactivateClients::configuredDays(Database& db)
{
    const ResultSet config = db.execute(QStringLiteral("Select STOPPED2INACTIVE_DAYS from Config"));
    return config.isEmpty() ? 0 : config.value(0, 0).toInt();
}

TFrmInactivateClients::TFrmInactivateClients(RecordServices& services, UserInterface& ui, DataSet& clients,
                                             const Clock& clock)
    : StoppedClientsUtility(services, ui, clients, clock.today()), m_days(configuredDays(services.db()))
{
    setDate(clock.today().addDays(-m_days));
}

QString TFrmInactivateClients::listTitle() const
{
    return QStringLiteral("Clients stopped over %1 days.").arg(m_days);
}

QString TFrmInactivateClients::selectionStatement() const
{
    return QStringLiteral(
        "select client_id, first_name, last_name, status, start_dte, stop_dte, Edit_Dte, First_Ml_Dte, "
        "stopreasons.Stop_reason Stop_Reason, Clients.stop_reason Note from clients left outer join "
        "stopreasons "
        "on clients.stop_code = stopreasons.stop_id where stop_dte <= :dStopDate and status='S' order by "
        "Stop_Dte");
}

} // namespace kb
