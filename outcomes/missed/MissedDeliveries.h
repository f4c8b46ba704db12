#pragma once

#include "missed/MissedClient.h"

#include <QDate>
#include <QString>

#include <vector>

namespace kb {

class Database;

// Where a client's saved deliveries of a date stand, by the first row of
// QueryGetDeliveryStatus.
struct DateStatus
{
    bool delivered = false; // the client has a Deliveri row on the date
    QString status;         // its Delivery_Status, empty for none
};

// What recording a miss on a date needs first.
enum class MissCheck {
    Record,        // a saved delivery that stands as delivered
    Comped,        // "C": ask whether it becomes missed
    AlreadyMissed, // "M" or "E": refused
    NotDelivered,  // no delivery on the date: ask whether to record it anyway
};
MissCheck checkMiss(const DateStatus& status);

// One recorded miss in History.
struct MissEntry
{
    qint64 recordId = 0;
    QDate eventDate;
    QString event;
    bool isExcused() const { return event.contains(QStringLiteral("Excuse")); }
};

// The two halves of a missed delivery: the Delivery_Status of the client's
// Deliveri rows of the date (every service and type of that date changes
// together) and the client's History row, from which the lists and the
// counters are answered. A miss changes no quantity: Deliveri and MealCrdt
// rows stay as saved. Each change here is one step of a caller's
// transaction.
class MissedDeliveries
{
public:
    explicit MissedDeliveries(Database& db) : m_db(db) {}

    DateStatus status(qint64 personId, const QDate& date);
    // QueryUpdateDeliveryStatus; an empty status stores none, as saving does.
    void setStatus(qint64 personId, const QDate& date, const QString& status);
    // Holds the client's Deliveri rows of the date until the transaction ends,
    // so two workstations marking the same delivery take turns and the
    // second sees what the first recorded.
    void holdDeliveries(qint64 personId, const QDate& date);

    // The miss itself: "E" or "M" on the date, then the History row with
    // user as its User.
    void record(const MissedClient& client, const QDate& date, bool excused, const QString& user);
    // An entry of the excuse list made excused: its text gets " (Excused)",
    // Tran_Date becomes now, and the date's status "E".
    void excuse(const MissedClient& client, const MissEntry& entry);
    // An entry of the clear list cleared: the History row goes, a row saying
    // so takes its place, and the date's status becomes empty.
    void clear(const MissedClient& client, const MissEntry& entry, const QString& user);

    // The client's misses not yet excused (the excuse list), and every miss
    // not cleared, excused ones too (the clear list), in the statements' order.
    std::vector<MissEntry> excusable(qint64 personId);
    std::vector<MissEntry> clearable(qint64 personId);
    // Whether the client has a miss on the date that is not cleared.
    bool hasMiss(qint64 personId, const QDate& date);

private:
    std::vector<MissEntry> entries(const QString& statement, qint64 personId);

    Database& m_db;
};

// The first entry of a list with that Event_Date; null when none has it.
const MissEntry* findByDate(const std::vector<MissEntry>& entries, const QDate& date);

} // namespace kb
