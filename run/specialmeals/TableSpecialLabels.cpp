#include "specialmeals/TableSpecialLabels.h"

#include "save/BatchedStatement.h"
#include "store/Database.h"

namespace kb {

TableSpecialLabels::TableSpecialLabels(Database& db)
    : m_db(db), m_name(QStringLiteral("KBSpecLabels%1").arg(db.clock().now().toMSecsSinceEpoch()))
{
}

bool TableSpecialLabels::exists() const
{
    return m_db.memoryTable(m_name) != nullptr;
}

void TableSpecialLabels::create()
{
    m_db.execute(QStringLiteral("Create Table if not exists Memory %1 (Deliv_Dt Date, Person_ID Integer)")
                     .arg(m_name));
}

void TableSpecialLabels::drop()
{
    m_db.execute(QStringLiteral("Drop table if exists Memory %1").arg(m_name));
}

void TableSpecialLabels::empty()
{
    m_db.execute(QStringLiteral("Delete from Memory %1").arg(m_name));
}

qint64 TableSpecialLabels::rowCount()
{
    return m_db.execute(QStringLiteral("Select Count(*) from Memory %1").arg(m_name))
        .value(0, 0)
        .toLongLong();
}

void TableSpecialLabels::fill(const QDate& date, const std::vector<qint64>& personIds)
{
    BatchedStatement insert(
        m_db, QStringLiteral("Insert into Memory %1 (Deliv_Dt, Person_ID) values (:Deliv_Dt, :Person_ID)")
                  .arg(m_name));
    for (const qint64 person : personIds)
        insert.add({{QStringLiteral("Deliv_Dt"), date}, {QStringLiteral("Person_ID"), person}});
    insert.flush();
}

} // namespace kb
