#pragma once

#include "ReportOutput.h"
#include "delivery/DeliveryReportContext.h"

#include "store/ResultSet.h"

#include <QString>

namespace kb::reports {

class ReportHolder;

// "Quick Clients Listing": the rows of a delivery grid (a prepared run, or
// the dated events to be credited) in the grid's order, laid out by the
// template DailyRunQuickListing.rtm of the data directory. The rows are the
// pipe DBPipelineDeliveries, with the working table's columns; Config is
// DBPipelineConfig; Heading and Printed are report parameters.
class QuickListingReport
{
public:
    static QString templateFileName() { return QStringLiteral("DailyRunQuickListing.rtm"); }
    static QString pipeName() { return QStringLiteral("DBPipelineDeliveries"); }

    explicit QuickListingReport(const DeliveryReportContext& context) : m_context(context) {}

    // Makes the holder ready. False when the template is missing, which it
    // tells ("Could not locate the report template file:" and the path).
    bool prepare(ReportHolder& holder, ResultSet rows, const QString& heading);
    // Sends the listing to the destination. False when nothing was shown or
    // printed.
    bool print(ReportHolder& holder, ResultSet rows, const QString& heading, ReportDestination destination);

private:
    const DeliveryReportContext& m_context;
};

} // namespace kb::reports
