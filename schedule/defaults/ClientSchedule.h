#pragma once

#include <QDate>
#include <QString>
#include <QVariant>

#include <array>

namespace kb {

class DataSet;

// What the schedule screens read of a client: the client window's current
// row as it stands, edits not yet saved included, so that the calendar and
// the condition check answer for what the user sees.
struct ClientSchedule
{
    qint64 personId = 0;
    QString clientId;
    QString name; // first, middle and last name
    QString status;
    QString deliveryType; // "O" ongoing, "E" episodic
    QString frequency;    // Ongoing_Frequency
    std::array<bool, 7> days{};
    qint64 serviceId = 0;
    QString defaultRoute;
    QDate start;
    QDate stop;

    bool episodic() const { return deliveryType == QLatin1String("E"); }
    // The weekday box is checked and IsDeliveryWeek holds: a standing
    // delivery is possible on the date, before start, stop and suspensions.
    bool deliveryPossible(const QDate& date) const;

    // The current row of a set of Clients columns.
    static ClientSchedule fromRow(const DataSet& clients);
};

} // namespace kb
