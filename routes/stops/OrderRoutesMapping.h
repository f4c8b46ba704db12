#pragma once

#include "MapPointOptions.h"

#include <QString>

#include <vector>

namespace kb {

class Database;
class OrderRoutesWorkingSet;
class UserInterface;

namespace map {
class MapServer;
}

// "Send to Mapping" of "Order Stops within Routes" once its questions are
// answered: MemMappingData is filled with the rows to map, ordered by stop
// with the start and end locations around them, and either written to the
// export file or pinned on the map server as the waypoints of one route.
// When the order is to be retrieved, the map server optimises the route and
// each waypoint's position becomes the New_Stop of its row, keeping the
// clients who share a whole stop number together; the rows that got a place
// then take it as their Stop. MemMappingData is deleted at the end, also
// after a failure.
class OrderRoutesMapping
{
public:
    struct Request
    {
        int dayIndex = 0;
        QString route;
        bool activeOnly = true;
        // Keys of the rows to map; empty maps the route's rows as retrieved.
        std::vector<int> selectedKeys;
        MapPointOptions options;
        QString postalFormat;
    };

    static QString tableName() { return QStringLiteral("MemMappingData"); }

    OrderRoutesMapping(Database& db, UserInterface& ui);

    // Throws map::MapServerError or MessageError; the caller shows it.
    void run(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer* server);

    // The street a map can find: Address2 when Address1 names only a unit.
    static QString streetToMap(const QString& address1, const QString& address2);

private:
    void fill(const OrderRoutesWorkingSet& rows, const Request& request);
    void exportFile(const Request& request);
    void drive(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server);
    void readBack(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server);

    Database& m_db;
    UserInterface& m_ui;
};

} // namespace kb
