#pragma once

#include <QString>
#include <QVariant>

namespace kb {
class UserInterface;
}

namespace kb::map {

class MapServer;

// One client's home on the map ("MapPoint Map" of the client window): the
// map is shown without a side pane, the earlier pins go, and one pin stands
// for the client, placed by the client's coordinates when both are set and
// else by looking the address up.
class ClientOnMap
{
public:
    struct Client
    {
        QString firstName;
        QString lastName;
        QString address1;
        QString city;
        QString state;
        QString zip;
        QVariant latitude;
        QVariant longitude;
    };

    // Pins the client; false (the user told) when the address cannot be
    // mapped. Failures of the map server are thrown as MapServerError.
    static bool show(MapServer& server, UserInterface& ui, const Client& client, const QString& postalFormat);

    // The pin's name: the first and last name, else the street, else "Client Address".
    static QString pinName(const Client& client);
    // Symbol 1 from major version 16 on, 292 before it, for the same plain pin.
    static int pinSymbol(const QString& version);
    static bool isPostOfficeBox(const QString& street);
};

} // namespace kb::map
