#include "OrderRoutesWriteBack.h"

#include "OrderRoutesStatements.h"

#include "store/Database.h"

namespace kb {

void OrderRoutesWriteBack::apply(Database& db, int dayIndex, const std::vector<StopChange>& changes,
                                 bool includeEpisodics)
{
    if (changes.empty())
        return;
    const QDate today = db.clock().today();
    std::vector<Params> clientRows;
    clientRows.reserve(changes.size());
    for (const StopChange& c : changes)
        clientRows.push_back({{QStringLiteral("Route"), c.route},
                              {QStringLiteral("Stop"), c.stop},
                              {QStringLiteral("Person_ID"), c.personId}});

    TransactionGuard transaction(db);
    Query clients = db.query(OrderRoutesStatements::clientUpdate(dayIndex));
    clients.bind(QStringLiteral("Edit_Dte"), today);
    clients.execBatch(clientRows);
    if (includeEpisodics) {
        Query dated = db.query(OrderRoutesStatements::episodicUpdate(dayIndex));
        dated.bind(QStringLiteral("Last_Updated"), db.clock().now()).bind(QStringLiteral("Deliv_Date"), today);
        if (dayIndex >= 1)
            dated.bind(QStringLiteral("DOW"), dayIndex);
        dated.execBatch(clientRows);
    }
    transaction.commit();
}

} // namespace kb
