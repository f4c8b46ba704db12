#include "missed/MissedDeliveries.h"

#include "missed/MissEventText.h"
#include "records/History.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString QueryGetDeliveryStatus = QStringLiteral(
    "Select Deliv_Dt, Delivery_Status from Deliveri where Deliv_Dt = :Deliv_Dt and Person_ID = :Person_ID");
const QString QueryUpdateDeliveryStatus = QStringLiteral(
    "Update Deliveri set Delivery_Status= :Delivery_Status where Person_ID = :Person_ID and Deliv_Dt = "
    ":Deliv_Dt");
const QString QueryGetExcusableMeals = QStringLiteral("Select * from History where Person_ID = :Person_ID "
                                                      "and (event like '%Missed Deliv%') and not (event like "
                                                      "'%Excused%') and not (event like '%Deleted%')");
const QString QueryGetClearableMeals =
    QStringLiteral("Select * from History where Person_ID = :Person_ID and event like '%Missed Deliv%' and "
                   "not event like '%Delete%'");

Params personAndDate(qint64 personId, const QDate& date)
{
    return {{QStringLiteral("Person_ID"), personId}, {QStringLiteral("Deliv_Dt"), date}};
}

} // namespace

MissCheck checkMiss(const DateStatus& status)
{
    if (status.status == QLatin1String("C")) return MissCheck::Comped;
    if (status.status == QLatin1String("M") || status.status == QLatin1String("E"))
        return MissCheck::AlreadyMissed;
    if (!status.delivered) return MissCheck::NotDelivered;
    return MissCheck::Record;
}

DateStatus MissedDeliveries::status(qint64 personId, const QDate& date)
{
    const ResultSet rows = m_db.execute(QueryGetDeliveryStatus, personAndDate(personId, date));
    DateStatus status;
    status.delivered = !rows.isEmpty();
    if (status.delivered) status.status = rows.value(0, 1).toString().trimmed();
    return status;
}

void MissedDeliveries::setStatus(qint64 personId, const QDate& date, const QString& status)
{
    Params values = personAndDate(personId, date);
    values.emplace_back(QStringLiteral("Delivery_Status"), status.isEmpty() ? QVariant() : QVariant(status));
    m_db.execute(QueryUpdateDeliveryStatus, values);
}

void MissedDeliveries::holdDeliveries(qint64 personId, const QDate& date)
{
    // Changes nothing; on a server it takes the rows' locks to the end of
    // the transaction (a data directory's write transaction holds them all).
    m_db.execute(QStringLiteral("Update Deliveri set Delivery_Status = Delivery_Status where Person_ID = "
                                ":Person_ID and Deliv_Dt = :Deliv_Dt"),
                 personAndDate(personId, date));
}

void MissedDeliveries::record(const MissedClient& client, const QDate& date, bool excused,
                              const QString& user)
{
    setStatus(client.personId, date, excused ? QStringLiteral("E") : QStringLiteral("M"));
    QueryInsertHistory(m_db, user,
                       {client.personId, client.clientId, miss_text::recorded(date, excused), date});
}

void MissedDeliveries::excuse(const MissedClient& client, const MissEntry& entry)
{
    m_db.execute(QStringLiteral("Update History set Event = :Event, Event_Date = :Event_Date, Tran_Date = "
                                ":Tran_Date where RecordID = :RecordID"),
                 {{QStringLiteral("Event"), miss_text::excused(entry.event)},
                  {QStringLiteral("Event_Date"), entry.eventDate},
                  {QStringLiteral("Tran_Date"), m_db.clock().now()},
                  {QStringLiteral("RecordID"), entry.recordId}});
    setStatus(client.personId, entry.eventDate, QStringLiteral("E"));
}

void MissedDeliveries::clear(const MissedClient& client, const MissEntry& entry, const QString& user)
{
    m_db.execute(QStringLiteral("Delete from History where RecordID = :RecordID"),
                 {{QStringLiteral("RecordID"), entry.recordId}});
    QueryInsertHistory(
        m_db, user, {client.personId, client.clientId, miss_text::cleared(entry.eventDate), entry.eventDate});
    setStatus(client.personId, entry.eventDate, QString());
}

std::vector<MissEntry> MissedDeliveries::entries(const QString& statement, qint64 personId)
{
    const ResultSet rows = m_db.execute(statement, {{QStringLiteral("Person_ID"), personId}});
    const int id = rows.columnIndex(u"RecordID");
    const int date = rows.columnIndex(u"Event_Date");
    const int event = rows.columnIndex(u"Event");
    std::vector<MissEntry> list;
    list.reserve(size_t(rows.rowCount()));
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        list.push_back(
            {rows.value(r, id).toLongLong(), rows.value(r, date).toDate(), rows.value(r, event).toString()});
    return list;
}

std::vector<MissEntry> MissedDeliveries::excusable(qint64 personId)
{
    return entries(QueryGetExcusableMeals, personId);
}

std::vector<MissEntry> MissedDeliveries::clearable(qint64 personId)
{
    return entries(QueryGetClearableMeals, personId);
}

bool MissedDeliveries::hasMiss(qint64 personId, const QDate& date)
{
    return findByDate(clearable(personId), date) != nullptr;
}

const MissEntry* findByDate(const std::vector<MissEntry>& entries, const QDate& date)
{
    for (const MissEntry& e : entries)
        if (e.eventDate == date) return &e;
    return nullptr;
}

} // namespace kb
