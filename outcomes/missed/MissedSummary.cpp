#include "missed/MissedSummary.h"

#include "UserInterface.h"
#include "WriteTransaction.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString QueryMissedDeliveries =
    QStringLiteral("select Client_ID, Count(Event) from History where Tran_Date >= :dDate and Event like "
                   "'%Missed Delivery%' "
                   "and not Event like '%eleted%' and not Event like '%xcused%' and not Client_ID is null "
                   "group by Client_ID");
const QString QueryExcusedDeliveries =
    QStringLiteral("select Client_ID, Count(Event) from History where Tran_Date >= :dDate and Event like "
                   "'%Missed Delivery%' "
                   "and Event like '%Excused%' and not Client_ID is null group by Client_ID");
const QString QueryResetMissedDeliveries =
    QStringLiteral("update clients set missed_deliveries = null, excused_deliveries = null where (true)");

// Writes one count per client of the grouped rows into the column, with the
// progress bar moving by row.
void fill(Database& db, UserInterface& ui, const ResultSet& counts, const QString& column)
{
    Query update =
        db.query(QStringLiteral("Update Clients set %1 = :nCount where Client_ID = :Client_ID").arg(column));
    // Rows go to the store in batches of this size, each moving the bar.
    constexpr qsizetype chunk = 500;
    std::vector<Params> batch;
    for (qsizetype r = 0; r < counts.rowCount(); ++r) {
        batch.push_back({{QStringLiteral("nCount"), counts.value(r, 1)},
                         {QStringLiteral("Client_ID"), counts.value(r, 0)}});
        if (batch.size() == size_t(chunk) || r + 1 == counts.rowCount()) {
            update.execBatch(batch);
            batch.clear();
            ui.progressStep(int((r + 1) * 100 / counts.rowCount()));
        }
    }
}

} // namespace

MissedSummaryResult summarizeMissedDeliveries(Database& db, UserInterface& ui, const QDate& since)
{
    ui.progressStart(QStringLiteral("Summarizing Missed Deliveries..."));
    struct End
    {
        UserInterface& ui;
        ~End() { ui.progressEnd(); }
    } end{ui};
    const BusyGuard busy(ui);
    const Params period = {{QStringLiteral("dDate"), QDateTime(since, QTime(0, 0))}};
    MissedSummaryResult result;
    inWriteTransaction(db, [&] {
        db.execute(QueryResetMissedDeliveries);
        const ResultSet missed = db.execute(QueryMissedDeliveries, period);
        fill(db, ui, missed, QStringLiteral("Missed_Deliveries"));
        ui.progressStart(QStringLiteral("Summarizing Excused Deliveries..."));
        const ResultSet excused = db.execute(QueryExcusedDeliveries, period);
        fill(db, ui, excused, QStringLiteral("Excused_Deliveries"));
        const ResultSet counted = db.execute(
            QStringLiteral("Select Count(Missed_Deliveries), Count(Excused_Deliveries) from Clients"));
        result.missedClients = counted.value(0, 0).toLongLong();
        result.excusedClients = counted.value(0, 1).toLongLong();
    });
    ui.progressStart(QStringLiteral("Finished summarizing!"));
    return result;
}

ResultSet missedCounters(Database& db)
{
    return db.execute(QStringLiteral(
        "Select Person_ID, Client_ID, Missed_Deliveries, Excused_Deliveries from Clients where not "
        "Missed_Deliveries is null or not Excused_Deliveries is null order by Client_ID, Person_ID"));
}

} // namespace kb
