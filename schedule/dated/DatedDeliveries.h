#pragma once

#include "dated/DatedClient.h"
#include "dated/DatedKind.h"

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

namespace kb {

class DataSet;
class Database;
class UserInterface;

// One EpisodicDeliveries row as the rules of deletion need it.
struct DatedRow
{
    qint64 recordId = 0;
    qint64 personId = 0;
    QString clientId;
    QDate date;
    qint64 service = 0;
    QString fulfilled;

    // "Y": a saved run (or a credit) has delivered it.
    bool credited() const { return fulfilled.trimmed() == QLatin1String("Y"); }

    // The current row of a data set over EpisodicDeliveries.
    static DatedRow fromDataSet(const DataSet& set);
    static std::optional<DatedRow> read(Database& db, qint64 recordId);
};

// The rules of dated deliveries (EpisodicDeliveries rows): adding one,
// the checks every edit and post of a row goes through, and deleting one
// with its items, its credits and the History row that tells it. The
// maintenance screens, the client window's grid, the dated command and
// the crediting of events all come here, so each rule lives once.
//
// Generated rows (the Auto Schedule patterns) are written by
// RecurrenceWriter; a run's save marks rows fulfilled and clears them
// again (RunSaver).
class DatedDeliveries
{
public:
    // userName: the signed-in user's name, written to Created_By and History.
    DatedDeliveries(Database& db, UserInterface& ui, QString userName);
    // For rules that live longer than one sign-in (the client window's):
    // the name is asked for whenever a row is written.
    DatedDeliveries(Database& db, UserInterface& ui, std::function<QString()> userName);

    // Inserts one row for the client on the date, straight into the table
    // (no hook runs; two rows on one date are not refused): service, route
    // and stop from the client's defaults (five blanks and 0 without them),
    // Delivery_Type the service's default or "D". Gives the new RecordID.
    qint64 add(const DatedClient& client, DatedKind kind, const QDate& date);
    // The date of a row added without a calendar date: today, or the start
    // date (with the user told) when today is before it.
    QDate keyboardDate(const DatedClient& client, DatedKind kind);
    // Services.Default_Delivery_Type, "D" when null or empty.
    QString defaultDeliveryType(qint64 service);

    // Hangs the row rules on a data set over EpisodicDeliveries: a credited
    // row cannot be edited; a post needs a service, route, date and
    // delivery type, and fills the dates, the kind and the client; a date
    // before the start or after the stop date is moved there, with the user
    // told. currentClient gives the client the rows belong to. The rules
    // go in front of what the hooks did already.
    void attachRules(DataSet& set, DatedKind kind, std::function<std::optional<DatedClient>()> currentClient);

    // How the credits of a credited row find its Events row.
    enum class EventsBy { ClientId, PersonId };
    // Deletes one row in a transaction of its own: a credited row only with
    // deleteCredited, its Events, MealCrdt and Deliveri rows going first;
    // then its own items and the row; History tells it. false when the row
    // was credited and left alone. Throws (the transaction rolled back) on
    // a database error.
    bool remove(const DatedRow& row, DatedKind kind, bool deleteCredited,
                EventsBy eventsBy = EventsBy::ClientId);

    // The client window's delete of the current episodic row: asks first
    // ("Delete the selected episodic delivery?", or that the credits go
    // too), then deletes it with its credits. false when not deleted.
    bool removeAsked(const DatedRow& row);

private:
    void checkPost(DataSet& set, DatedKind kind, const std::optional<DatedClient>& client);

    Database& m_db;
    UserInterface& m_ui;
    std::function<QString()> m_userName;
};

} // namespace kb
