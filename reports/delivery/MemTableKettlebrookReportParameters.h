#pragma once

#include "delivery/ReportLimits.h"
#include "store/ResultSet.h"

namespace kb {
class Database;
}

namespace kb::reports {

// The one row of report parameters that every delivery report can print
// (DBPipelineReportParameters): a memory table of the data session, made
// when first needed and rewritten by every report.
class MemTableKettlebrookReportParameters
{
public:
    static QString tableName() { return QStringLiteral("MemTableKettlebrookReportParameters"); }
    static QString pipeName() { return QStringLiteral("DBPipelineReportParameters"); }

    // Creates the table when the session does not have it yet.
    explicit MemTableKettlebrookReportParameters(Database& db);

    // Replaces the row.
    void rewrite(const ReportParameterRow& row);
    ResultSet rows();

    // "From" and "To" as the table keeps them: the date and time as text.
    static QString dateText(const QDate& date);

private:
    Database& m_db;
};

} // namespace kb::reports
