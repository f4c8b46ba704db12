#pragma once

#include "store/ResultSet.h"

#include <QStringList>

namespace kb::reports {

struct ReportBuild;
struct ReportData;

// Rows of no row with these columns, for a pipe that has nothing to show.
ResultSet emptyRows(const QStringList& columns);
// The names of a column list such as "Clients.First_Name, Zip as Postal".
QStringList columnNames(const QString& columns);

// DBPipelineClients, with its service name and cuisine details, for the
// persons of ReportDeliveryKeys, following the report's main pipe by
// Person_ID.
void addClientDetails(ReportBuild& build, ReportData& data);
// DBPipelineSpecialDiets: the special meal diets of the persons and dates of
// ReportDeliveryKeys, following the main pipe by the fields given.
void addSpecialDiets(ReportBuild& build, ReportData& data,
                     const std::vector<std::pair<QString, QString>>& link);

} // namespace kb::reports
