#pragma once

#include <QString>
#include <QVariant>

namespace kb {

class Database;

// The client a miss is recorded for, as the messages name them.
struct MissedClient
{
    qint64 personId = 0;
    QVariant clientId;
    QString firstName;
    QString lastName;
    QString status; // Clients.STATUS

    // First name, blank, last name.
    QString name() const { return firstName + QLatin1Char(' ') + lastName; }

    // The client of a Person_ID; throws MessageError "No person has
    // Person_ID n." when there is none.
    static MissedClient read(Database& db, qint64 personId);
};

} // namespace kb
