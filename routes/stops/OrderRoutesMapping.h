#pragma once

#include "MapPointOptions.h"

#include "map/FixedEnds.h"

#include <QString>

#include <functional>

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

    // Holds the read-back until the user has looked at the optimised route
    // and perhaps changed its order on the map; the map must stay usable
    // while it waits. Returns when the user says the route is ready.
    using Pause = std::function<void(const QString& text)>;

    OrderRoutesMapping(Database& db, UserInterface& ui);

    // Without one the user interface's information message holds it.
    void setPause(Pause pause) { m_pause = std::move(pause); }

    // Throws map::MapServerError or MessageError; the caller shows it.
    void run(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer* server);

    // The street a map can find: Address2 when Address1 names only a unit.
    static QString streetToMap(const QString& address1, const QString& address2);

private:
    void fill(const OrderRoutesWorkingSet& rows, const Request& request);
    void exportFile(const Request& request);
    void drive(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server);
    // `pinned` says which ends of the route really hold a start or end pin:
    // a location that could not be found is not on the route at all.
    void readBack(OrderRoutesWorkingSet& rows, const Request& request, map::MapServer& server,
                  map::FixedEnds pinned);

    Database& m_db;
    UserInterface& m_ui;
    Pause m_pause;
};

} // namespace kb
