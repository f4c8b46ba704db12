#pragma once

#include "delivery/DeliveryReportContext.h"

#include "ReportOutput.h"
#include "store/ResultSet.h"

#include <QDate>
#include <QString>

namespace kb::reports {

class ReportHolder;

// "Recent Stops and Suspensions", laid out by the template RecentStops.rtm:
// the clients of a date's delivery list stopped or suspended since a day.
// The rows are the pipe DBPipelineRecentStops (the columns of Clients and
// Changes); the dates are the parameters Stop_Date, Recency_Date,
// Delivery_Date (null when no list of the date was saved) and Printed;
// Config is DBPipelineConfig.
class RecentStopsReport
{
public:
    static QString templateFileName() { return QStringLiteral("RecentStops.rtm"); }
    static QString pipeName() { return QStringLiteral("DBPipelineRecentStops"); }

    struct Dates
    {
        QDate stopDate;
        QDate recencyDate;
        QDate deliveryDate;
    };

    explicit RecentStopsReport(const DeliveryReportContext& context) : m_context(context) {}

    // Makes the holder ready; false when the template is missing (nothing
    // told: the screen tells it in its own words).
    bool prepare(ReportHolder& holder, ResultSet rows, const Dates& dates);
    // To the preview (from which it may be saved to a file) or the printer.
    bool print(ReportHolder& holder, ResultSet rows, const Dates& dates, ReportDestination destination);

private:
    const DeliveryReportContext& m_context;
};

} // namespace kb::reports
