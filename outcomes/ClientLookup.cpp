#include "ClientLookup.h"

#include "store/Database.h"

namespace kb {

std::vector<ClientChoice> clientChoices(Database& db)
{
    const ResultSet r = db.execute(QStringLiteral(
        "Select Person_ID, Client_ID, Last_Name+', '+First_Name as Last_First, Address1, City, State, ZIP, "
        "Phone from Clients where Client_ID > '' Order by Last_First NoCase"));
    std::vector<ClientChoice> out;
    out.reserve(r.rowCount());
    for (qsizetype i = 0; i < r.rowCount(); ++i) {
        const QString clientId = r.value(i, 1).toString().trimmed();
        out.push_back(
            {r.value(i, 0).toLongLong(), clientId,
             QStringLiteral("%1  [%2]  %3")
                 .arg(r.value(i, 2).toString().trimmed(), clientId, r.value(i, 3).toString().trimmed())});
    }
    return out;
}

} // namespace kb
