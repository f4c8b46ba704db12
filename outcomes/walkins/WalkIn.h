#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

namespace kb {

class Database;

// A line of the walk-in list: a client served on a date, and with what.
struct WalkIn
{
    QDate delivDate;
    qint64 personId = 0;
    QVariant clientId;
    QString status;
    QString firstName;
    QString midName;
    QString lastName;
    QString address1;
    QString city;
    QString state;
    QString zip;
    qint64 svcsUsed = 0;
    QString defRte;       // the route or centre
    QString deliveryType; // the client's: "O" ongoing, "E" episodic
    bool comp = false;    // complimentary

    // First name, blank, last name.
    QString name() const { return firstName + QLatin1Char(' ') + lastName; }
    // A line the list keeps: a person, a date and a service.
    bool isComplete() const { return personId > 0 && delivDate.isValid() && svcsUsed != 0; }

    // The client's columns for a walk-in on a date; throws MessageError "No
    // person has Person_ID n." when there is none.
    static WalkIn ofClient(Database& db, qint64 personId, const QDate& date);
};

} // namespace kb
