#pragma once

#include "ReportOutput.h"
#include "delivery/DeliveryReportContext.h"

#include "store/ResultSet.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>

namespace kb::reports {

class ReportHolder;

// "Delivery Directions": what a driver needs for one client on one date,
// with the items that date would bring. Printed from the client window
// (OneClientDeliveryDirections040415.rtm, or ...040406.rtm when the first
// is missing) and from the client's address overrides
// (OneClientOverrideDirections040415.rtm or ...040406.rtm), where it prints
// the alternate address the user stands on.
//
// Pipes: DBPipelineClientInfo (the client with race and service),
// DBPipelineDeliveryDirectionsItems (the items of the date),
// DBPipelineAddressOverride (the alternate address: the one chosen, or the
// one in force on the date; no row when none is), DBPipelineOverridden_Addresses
// (the client's addresses in force today and single dates to come),
// DBPipelineDefaultRouteName and DBPipelineConfig. Parameters: Deliv_Date,
// Del_Day, Route_ID and Stop (the place of the delivery on that date),
// Schedule_Type, Deliv_ID.
class DeliveryDirections
{
public:
    enum class Kind { Client, AddressOverride };

    static QString caption() { return QStringLiteral("Delivery Directions"); }
    // The templates tried, in order.
    static QStringList templateFiles(Kind kind);
    static QString itemsPipe() { return QStringLiteral("DBPipelineDeliveryDirectionsItems"); }

    explicit DeliveryDirections(const DeliveryReportContext& context) : m_context(context) {}

    // The items of one client on one date (GetItemsForDeliveryReport): a
    // dated delivery of the client's service, else of any service (the user
    // is told), gives the date's own items; the client's own items of the
    // weekday, else the service's, come with them.
    ResultSet itemsForDeliveryReport(qint64 personId, const QString& scheduleType, const QVariant& svcsUsed,
                                     const QString& dayCode, const QDate& date);
    // The Deliv_ID the last call found: a dated delivery's RecordID, or -1.
    qint64 delivId() const { return m_delivId; }

    // Makes the holder ready. False when neither template exists, which it
    // tells. overrideId: the alternate address to print (Kind::AddressOverride).
    // Throws MessageError when there is no such client.
    bool prepare(ReportHolder& holder, Kind kind, qint64 personId, const QDate& date,
                 std::optional<qint64> overrideId = {});
    // Prepares and sends to the destination. False when nothing was printed.
    bool print(ReportHolder& holder, Kind kind, qint64 personId, const QDate& date,
               ReportDestination destination, std::optional<qint64> overrideId = {});

private:
    const DeliveryReportContext& m_context;
    qint64 m_delivId = -1;
};

} // namespace kb::reports
