#pragma once

#include "records/UniqueId.h"

#include <QDate>
#include <QHash>
#include <QString>

namespace kb {

class Database;
class MemTableDeliveries;
class UserInterface;

// What a credit stored.
struct CreditResult
{
    qint64 deliveries = 0;
    qint64 firstDelivId = 0;
    qint64 lastDelivId = 0; // firstDelivId - 1 when nothing was credited
    qint64 mealCrdtRows = 0;
};

// Saves the dated events of a credit list (a run's working table whose rows
// carry their own dates and, in Deliv_ID, the event's RecordID) as
// delivered, in one transaction, with the run's own writers and numbering:
// nothing stored is removed; each row takes its event's items, else the
// client's for the weekday of its own date, else the service's default ones
// for that weekday; its meals are summed from them and it has one label;
// funding is the client's FundUses row of that weekday, else the service's
// default. Each row's person and date are marked fulfilled, the counter
// moves past the numbers used, and History says what was credited.
class CreditSaver
{
public:
    CreditSaver(Database& db, UserInterface& ui, MemTableDeliveries& table)
        : m_db(db), m_ui(ui), m_table(table)
    {
    }

    // statuses: the Delivery_Status of each row by its event's RecordID ("C"
    // for a complimentary event). Throws MessageError or DbError; nothing is
    // then credited.
    CreditResult save(const QDate& through, const QHash<qint64, QString>& statuses,
                      const QString& userFullName);

    void setCounterTries(const UniqueIdTries& tries) { m_counterTries = tries; }

private:
    Database& m_db;
    UserInterface& m_ui;
    MemTableDeliveries& m_table;
    UniqueIdTries m_counterTries;
};

// "Episodics through 3/6/24 saved, 2 deliveries."
QString creditedHistoryText(const QDate& through, qint64 count);

} // namespace kb
