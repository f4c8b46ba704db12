#pragma once

#include "dated/DatedKind.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <array>
#include <optional>

namespace kb {

class Database;

// What the rules of dated deliveries need to know of the client they
// belong to, read from Clients.
struct DatedClient
{
    qint64 personId = 0;
    QString clientId;
    QString firstName;
    QString lastName;
    QDate startDate; // invalid when empty (a date before 1901 counts as empty)
    QDate stopDate;  // likewise
    qint64 service = 0;
    QString deliveryType; // Clients.Delivery_Type: "O" or "E"
    QString defaultRoute;
    QVariant defaultStop;
    std::array<QString, 7> dayRoutes; // MON_RTE ... SUN_RTE
    std::array<QVariant, 7> dayStops; // MON_STOP ... SUN_STOP

    // First and last name.
    QString name() const;
    DatedKind kind() const { return datedKindOfClient(deliveryType); }

    static std::optional<DatedClient> byPersonId(Database& db, qint64 personId);
    static std::optional<DatedClient> byClientId(Database& db, const QString& clientId);

    // The calendar of the maintenance screens runs from the start date (or
    // today - 1095 days) to the stop date (or today + 1095 days).
    QDate lowestDate(const QDate& today) const;
    QDate highestDate(const QDate& today) const;
};

} // namespace kb
