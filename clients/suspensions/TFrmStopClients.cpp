#include "suspensions/TFrmStopClients.h"

#include "Clock.h"
#include "rules/ClientHistoryTexts.h"

namespace kb {

TFrmStopClients::TFrmStopClients(RecordServices& services, UserInterface& ui, DataSet& clients,
                                 const Clock& clock)
    : StoppedClientsUtility(services, ui, clients, clock.today().addDays(-1))
{
}

QString TFrmStopClients::listTitle() const
{
    return QStringLiteral("Active Clients with stop dates prior to ") + client_history::dateText(date());
}

QString TFrmStopClients::selectionStatement() const
{
    return QStringLiteral(
        "select client_id, first_name, last_name, status, start_dte, stop_dte, Edit_Dte, First_Ml_Dte, "
        "StopReasons.Stop_Reason, Clients.stop_reason Note from clients left outer join stopreasons on "
        "clients.stop_code = stopreasons.stop_id where stop_dte <= :dStopDate and status='A' order by "
        "Stop_Dte");
}

} // namespace kb
