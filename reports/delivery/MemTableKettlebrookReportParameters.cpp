#include "delivery/MemTableKettlebrookReportParameters.h"

#include "store/Database.h"

#include <QDate>
#include <QDateTime>

namespace kb::reports {

MemTableKettlebrookReportParameters::MemTableKettlebrookReportParameters(Database& db) : m_db(db)
{
    if (!m_db.memoryTable(tableName()))
        m_db.execute(QStringLiteral("Create Table if not exists Memory MemTableKettlebrookReportParameters "
                                    "(Period_Beginning VarChar(25), Period_Ending VarChar(25), "
                                    "Restrictions1 VarChar(150), Restrictions2 VarChar(150))"));
}

void MemTableKettlebrookReportParameters::rewrite(const ReportParameterRow& row)
{
    m_db.execute(QStringLiteral("Delete from Memory MemTableKettlebrookReportParameters"));
    m_db.execute(QStringLiteral("Insert into Memory MemTableKettlebrookReportParameters (Period_Beginning, "
                                "Period_Ending, Restrictions1, Restrictions2) values (:Period_Beginning, "
                                ":Period_Ending, :Restrictions1, :Restrictions2)"),
                 {{QStringLiteral("Period_Beginning"), row.periodBeginning.left(25)},
                  {QStringLiteral("Period_Ending"), row.periodEnding.left(25)},
                  {QStringLiteral("Restrictions1"), row.restrictions1.left(150)},
                  {QStringLiteral("Restrictions2"), row.restrictions2.left(150)}});
}

ResultSet MemTableKettlebrookReportParameters::rows()
{
    return m_db.execute(QStringLiteral("Select Period_Beginning, Period_Ending, Restrictions1, Restrictions2 "
                                       "from Memory MemTableKettlebrookReportParameters"));
}

QString MemTableKettlebrookReportParameters::dateText(const QDate& date)
{
    return date.isValid() ? date.startOfDay().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) : QString();
}

} // namespace kb::reports
