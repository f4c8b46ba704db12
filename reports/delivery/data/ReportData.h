#pragma once

#include "data/RowsPipe.h"

#include <QString>

#include <memory>
#include <vector>

namespace kb::reports {

class DataPipe;

// What a delivery report hands to the report engine: its template, its
// named pipes (the contract with the template) and which of them is the
// report's own data set, the one the headless command writes as CSV.
struct ReportData
{
    QString templateFile;
    QString mainPipe;
    std::vector<std::unique_ptr<DataPipe>> pipes;

    // The data of a fixed report: its template, its main pipe, no pipes yet.
    static ReportData forReport(int report, const QString& mainPipe);

    // The pipe of that name (without regard to case), or null.
    DataPipe* pipe(const QString& name) const;
    DataPipe& mainData() const;
    // Adds a pipe over rows already read.
    RowsPipe& addRows(const QString& name, ResultSet rows);
    RowsPipe& addRows(const QString& name, std::shared_ptr<const ResultSet> rows);
    // Makes the pipe `detail` show the rows whose fields equal the current
    // row of `master`: pairs of (detail field, master field).
    void link(const QString& detail, const QString& master,
              const std::vector<std::pair<QString, QString>>& fields);
};

} // namespace kb::reports
