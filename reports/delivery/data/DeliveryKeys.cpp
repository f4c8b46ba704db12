#include "delivery/data/DeliveryKeys.h"

#include "selection/RunStatements.h"
#include "store/Database.h"

#include <QDate>
#include <QSet>

namespace kb::reports {

void DeliveryKeys::fill(Database& db, const ResultSet& rows)
{
    if (!db.memoryTable(tableName()))
        db.execute(QStringLiteral("Create Table if not exists Memory ReportDeliveryKeys "
                                  "(Person_ID Integer, Deliv_Dt Date, DOW VarChar(3))"));
    db.execute(QStringLiteral("Delete from Memory ReportDeliveryKeys"));
    const int person = rows.columnIndex(u"Person_ID");
    const int date = rows.columnIndex(u"Deliv_Dt");
    const int dow = rows.columnIndex(u"DOW");
    QSet<QString> seen;
    std::vector<Params> keys;
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QVariant p = person >= 0 ? rows.value(r, person) : QVariant();
        const QVariant d = date >= 0 ? rows.value(r, date) : QVariant();
        const QString key = p.toString() + u'|' + d.toDate().toString(Qt::ISODate);
        if (p.isNull() || seen.contains(key)) continue;
        seen.insert(key);
        // Rows that do not keep their weekday (the copies of a label run)
        // still find the weekday's alternate address.
        QVariant day = dow >= 0 ? rows.value(r, dow) : QVariant();
        if ((day.isNull() || day.toString().isEmpty()) && d.toDate().isValid())
            day = RunStatements::dayCode(d.toDate());
        keys.push_back({{QStringLiteral("Person_ID"), p},
                        {QStringLiteral("Deliv_Dt"), d},
                        {QStringLiteral("DOW"), day}});
    }
    if (!keys.empty())
        db.query(QStringLiteral("Insert into Memory ReportDeliveryKeys (Person_ID, Deliv_Dt, DOW) "
                                "values (:Person_ID, :Deliv_Dt, :DOW)"))
            .execBatch(keys);
}

} // namespace kb::reports
