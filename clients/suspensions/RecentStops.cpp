#include "suspensions/RecentStops.h"

#include "store/Database.h"

#include <QHash>
#include <QStringList>

#include <map>

namespace kb {

namespace {

struct Selection
{
    const char* change;
    const char* sql;
};

// The three ways onto the list. Each is run on its own so that the list can
// say why a client is on it; together they are the union of the three.
const Selection Selections[] = {
    {"Stop date", "Select Person_ID from Memory StopDates where Event_Date >= :StopDate and Person_ID in "
                  "(Select Person_ID "
                  "from Deliveri where Deliv_Dt = :StopDate)"},
    {"Suspension",
     "Select Person_ID from Suspends where Create_Date  >=  :RecencyDate and Stop_Dt <= :StopDate and "
     "Resume_Dt > :StopDate  and Person_ID in (Select Person_ID from Deliveri where Deliv_Dt = :StopDate)"},
    {"Stopped",
     "Select Person_ID from History where Event = 'Status changed from Active to Stopped.' and Tran_Date >= "
     ":RecencyDate  and Event_Date >= :StopDate and Person_ID in (Select Person_ID from Deliveri where "
     "Deliv_Dt = :StopDate)"},
};

} // namespace

ResultSet RecentStops::select(Database& db, const QDate& stopDate, const QDate& recencyDate)
{
    const Params params{{QStringLiteral("StopDate"), stopDate}, {QStringLiteral("RecencyDate"), recencyDate}};
    db.execute(QStringLiteral("Drop table if exists Memory StopDates"));
    db.execute(
        QStringLiteral("Select Person_ID, Event_Date into Memory StopDates from History where Event like "
                       "'Stop date of%' and Tran_Date >= :RecencyDate and Event_Date >= :StopDate"),
        params);
    std::map<qint64, QStringList> changes;
    for (const Selection& selection : Selections) {
        const ResultSet ids = db.execute(QString::fromLatin1(selection.sql), params);
        for (qsizetype r = 0; r < ids.rowCount(); ++r) {
            QStringList& kinds = changes[ids.value(r, 0).toLongLong()];
            const QString change = QString::fromLatin1(selection.change);
            if (!kinds.contains(change)) kinds.append(change);
        }
    }
    db.execute(QStringLiteral("Drop table if exists Memory StopDates"));

    // The clients' rows in one statement over the people found.
    db.execute(QStringLiteral("Drop table if exists Memory RecentStopChanges"));
    db.execute(
        QStringLiteral("Create table Memory RecentStopChanges (Person_ID integer, Changes varchar(40))"));
    std::vector<Params> rows;
    rows.reserve(changes.size());
    for (const auto& [personId, kinds] : changes)
        rows.push_back({{QStringLiteral("Person_ID"), personId},
                        {QStringLiteral("Changes"), kinds.join(QStringLiteral(", "))}});
    if (!rows.empty())
        db.query(
              QStringLiteral("Insert into Memory RecentStopChanges (Person_ID, Changes) values (:Person_ID, "
                             ":Changes)"))
            .execBatch(rows);
    ResultSet result = db.execute(QStringLiteral(
        "Select Clients.*, RecentStopChanges.Changes from Clients join Memory RecentStopChanges on "
        "Clients.Person_ID = RecentStopChanges.Person_ID order by Clients.Def_Rte, Clients.Last_Name, "
        "Clients.First_Name, Clients.Person_ID"));
    db.execute(QStringLiteral("Drop table if exists Memory RecentStopChanges"));
    return result;
}

QDate RecentStops::deliveryDate(Database& db, const QDate& stopDate)
{
    const ResultSet row =
        db.execute(QStringLiteral("Select Distinct Deliv_Dt from Deliveri where Deliv_Dt = :Deliv_Dt"),
                   {{QStringLiteral("Deliv_Dt"), stopDate}});
    return row.rowCount() > 0 ? row.value(0, 0).toDate() : QDate();
}

} // namespace kb
