#pragma once

#include "store/ResultSet.h"

#include <QDate>
#include <QString>
#include <QVariant>

#include <optional>
#include <utility>
#include <vector>

namespace kb {

class Database;

// The statements on a client's saved deliveries (Deliveri with its MealCrdt
// lines) that the Recent Deliveries list and the deliveries command share,
// so both change the rows the same way. Each change that touches more than
// one row runs in one transaction: a failure leaves everything as it was.
namespace delivery_records {

// One saved delivery as the list shows it.
struct Delivery
{
    qint64 delivId = 0;
    qint64 personId = 0;
    QDate date;
    qint64 service = 0;
    QString kind; // the two-letter Delivery_Type, "OD", "EW", ...
    QString status;
};

// The list's rows: deliveries after `after` (not on it), newest first.
ResultSet QueryDeliveries(Database& db, qint64 personId, const QDate& after);
// The same columns for the days from `from` to `to`, both included.
ResultSet deliveriesBetween(Database& db, qint64 personId, const QDate& from, const QDate& to);
// The latest saved date of the client; invalid when he has none.
QDate lastDelivery(Database& db, qint64 personId);
// The items of one delivery with their credits.
ResultSet deliveredItems(Database& db, qint64 delivId);

// The delivery, or none when no row has that Deliv_ID.
std::optional<Delivery> readDelivery(Database& db, qint64 delivId);
// The client's deliveries of a date, in Deliv_ID order.
std::vector<Delivery> deliveriesOn(Database& db, qint64 personId, const QDate& date);

// Client_ID of a person, for the History rows; null when there is none.
QVariant clientIdOf(Database& db, qint64 personId);

// The History text of a comp: "3/4/2024 deliv comped-Reason", or without
// "-Reason" when the reason is empty.
QString compEvent(const QDate& date, const QString& reason);
// Sets the status to "C" and logs it under recordedBy; one transaction.
void comp(Database& db, const Delivery& delivery, const QString& reason, const QString& recordedBy);
// Clears the status and logs "... comped deliv reversed"; one transaction.
void reverseComp(Database& db, const Delivery& delivery, const QString& user);

// Deletes one delivery, its items, the default event its run wrote and
// the fulfilled mark of the dated delivery it came from, and logs it; one
// transaction.
void deleteDelivery(Database& db, const Delivery& delivery, const QString& user);
// The History text of that deletion.
QString deletionEvent(const QString& kind, const QDate& date);

// Stores edited funding codes, Deliv_ID by Deliv_ID, in one transaction.
void applyFundingChanges(Database& db, const std::vector<std::pair<qint64, QString>>& changes);

} // namespace delivery_records

} // namespace kb
