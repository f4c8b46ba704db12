#pragma once

#include "OrderRoutesRow.h"

#include "store/ResultSet.h"

#include <QDate>
#include <QString>

#include <functional>
#include <vector>

namespace kb {

// What "Print Listing" hands to the report engine: the working set as the
// grid shows it (pending edit included, in the grid's order) and the values
// of its heading, "Client Listing for Route". The screen does not print
// itself; the desktop gives it a printer that lays this out with the report
// template RouteList.rtm.
struct RouteListing
{
    static QString heading() { return QStringLiteral("Client Listing for Route"); }

    QString route;            // the code retrieved
    QString routeDescription; // its description in Routes
    QString dayText;          // "Default Route", "Monday then Default" ...
    bool activeOnly = true;
    QDate printed;
    // One row per client: Route, Stop, RouteStop, Route_Day, Client_ID,
    // Household_ID, Status, First_Name, Last_Name, Name, Address1,
    // Cross_Street, City, State, Zip, Latitude, Longitude, Person_ID.
    ResultSet rows;

    // The heading values as report parameters, by name.
    std::vector<std::pair<QString, QVariant>> parameters() const;
};

// The rows as the listing's data set.
ResultSet routeListingRows(const std::vector<OrderRoutesRow>& rows);

// Prints a listing; throws MessageError with what went wrong.
using RouteListPrinter = std::function<void(const RouteListing& listing)>;

} // namespace kb
