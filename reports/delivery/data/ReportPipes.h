#pragma once

#include "store/ResultSet.h"

#include <QString>

#include <QStringList>

namespace kb {
class ConfigRecord;
}

namespace kb::reports {

struct ReportBuild;
struct ReportData;

// Rows of no row with these columns, for a pipe that has nothing to show.
ResultSet emptyRows(const QStringList& columns);
// The names of a column list such as "Clients.First_Name, Zip as Postal".
QStringList columnNames(const QString& columns);

// The rows whose Diet_Restr shares a bit with the mask: "Match Any
// Selection" of a diet list.
ResultSet rowsWithAnyDiet(const ResultSet& rows, qint64 mask);

// DBPipelineClients, with its service name and cuisine details, for the
// persons of ReportDeliveryKeys, following the report's main pipe by
// Person_ID. The cuisine follows the Cuisine_ID of the pipe named (the
// client's, or the delivery's on labels).
void addClientDetails(ReportBuild& build, ReportData& data,
                      const QString& cuisineMaster = QStringLiteral("DBPipelineClients"));
// DBPipelineSpecialDiets: the special meal diets of the persons and dates of
// ReportDeliveryKeys, following the main pipe by the fields given.
void addSpecialDiets(ReportBuild& build, ReportData& data,
                     const std::vector<std::pair<QString, QString>>& link);

// DBPipeline1, the alternate address that applies to each delivery of
// ReportDeliveryKeys (a single date before a weekday before a temporary
// address), and DBPipelineAddressOverRides, its details; both empty when
// the agency does not allow alternate addresses. DBPipeline1 follows the
// main pipe by Person_ID and Deliv_Dt.
void addAddressOverrides(ReportBuild& build, ReportData& data, const ConfigRecord& config);
// DBPipelineQueryLabelitems: the items of each delivery of
// ReportDeliveryKeys in their order, following the main pipe by Deliv_ID.
void addLabelItems(ReportBuild& build, ReportData& data);

} // namespace kb::reports
