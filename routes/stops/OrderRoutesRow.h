#pragma once

#include <QString>
#include <QVariant>

namespace kb {

// One client of the route being ordered, as the retrieve statement gives it.
// Route and Stop are what the user edits; a null stop reads as 0, which
// like 0 means the client has no place yet.
struct OrderRoutesRow
{
    qint64 recordId = 0;
    qint64 personId = 0;
    QString routeDay; // three blanks by the default route, "MON" ... "SUN" by that weekday's route
    QString route;
    double stop = 0;
    QString clientId;
    QVariant householdId;
    QString status;
    QString firstName;
    QString lastName;
    QString name; // first name, a blank, first letter of the last name
    QString address1;
    QString crossStreet;
    QString city;
    QString state;
    QString zip;
    QVariant latitude;
    QVariant longitude;
    double newStop = -1.0; // -1 until the map server has given the row a place

    // "Rte: " + route + " Stop: " + the stop as text: the grid's group and the pushpin's identity.
    QString routeStop() const;
    // Both coordinates set and not 0.
    bool hasCoordinates() const;
};

// A stop as the statements cast it to text: no trailing zeros, "12" and "12.5".
QString stopText(double stop);

} // namespace kb
