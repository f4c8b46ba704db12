#include "items/RunFunding.h"

#include "selection/RunStatements.h"
#include "store/Database.h"

namespace kb {

QHash<qint64, QString> fundingOfRun(Database& db, int dayOfWeek)
{
    const ResultSet rows = db.execute(
        QStringLiteral(
            "select m.RecordID, f.Fund_CD from Memory MemTableDeliveries m join FundUses f on (f.Person_ID = "
            "m.Person_ID) and ((f.Service_ID = m.Svcs_Used) or (f.Service_ID = 0)) where (f.%1 = True) "
            "order by m.RecordID, f.RecordID")
            .arg(RunStatements::weekdayColumn(dayOfWeek)));
    QHash<qint64, QString> funding;
    funding.reserve(rows.rowCount());
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const qint64 record = rows.value(r, 0).toLongLong();
        if (!funding.contains(record)) funding.insert(record, rows.value(r, 1).toString());
    }
    return funding;
}

} // namespace kb
