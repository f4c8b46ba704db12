#include "missed/MissedClient.h"

#include "MessageError.h"
#include "store/Database.h"

namespace kb {

MissedClient MissedClient::read(Database& db, qint64 personId)
{
    const ResultSet row = db.execute(
        QStringLiteral("Select Person_ID, Client_ID, First_Name, Last_Name, Status from Clients where "
                       "Person_ID = :Person_ID"),
        {{QStringLiteral("Person_ID"), personId}});
    if (row.isEmpty()) throw MessageError(QStringLiteral("No person has Person_ID %1.").arg(personId));
    MissedClient client;
    client.personId = personId;
    client.clientId = row.value(0, 1);
    client.firstName = row.value(0, 2).toString();
    client.lastName = row.value(0, 3).toString();
    client.status = row.value(0, 4).toString();
    return client;
}

} // namespace kb
