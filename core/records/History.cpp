#include "records/History.h"

#include "store/Database.h"

namespace kb {

void QueryInsertHistory(Database& db, const QString& userFullName, const HistoryEntry& entry)
{
    // The text stays the same for every call, so the session prepares it once.
    static const QString text = QStringLiteral(
        "Insert into History (Person_ID, Client_ID, Tran_Date, User, Event, Event_Date) Values (:Person_ID, "
        ":Client_ID, :Tran_Date, :User, :Event, :Event_Date);");
    db.execute(text, {{QStringLiteral("Person_ID"), entry.personId},
                      {QStringLiteral("Client_ID"), entry.clientId},
                      {QStringLiteral("Tran_Date"), db.clock().now()},
                      {QStringLiteral("User"), userFullName},
                      {QStringLiteral("Event"), entry.event},
                      {QStringLiteral("Event_Date"), entry.eventDate}});
}

} // namespace kb
