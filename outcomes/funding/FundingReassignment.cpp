#include "funding/FundingReassignment.h"

#include "records/DeliveryRecords.h"
#include "rules/ClientHistoryTexts.h"
#include "store/Database.h"

namespace kb {

QString FundingReassignment::historyEvent(const Selection& s)
{
    const QString range =
        client_history::dateText(s.start) + QStringLiteral("-") + client_history::dateText(s.end);
    if (!s.fundCd)
        return QStringLiteral("Removed funding source from ") + s.serviceText + QStringLiteral(", ") + range;
    return QStringLiteral("Assigned funding ") + *s.fundCd + QStringLiteral(" to ") + s.serviceText +
           QStringLiteral(", ") + range;
}

FundingReassignment::Result FundingReassignment::run(Database& db, const Selection& s, const QString& user)
{
    const QVariant funding = s.fundCd ? QVariant(*s.fundCd) : QVariant();
    Result result;
    TransactionGuard transaction(db);
    const Params deliveries{{QStringLiteral("Person_ID"), s.personId},
                            {QStringLiteral("Svcs_Used"), s.serviceId},
                            {QStringLiteral("StartDate"), s.start},
                            {QStringLiteral("EndDate"), s.end}};
    // What is about to move, read inside the transaction so it is exactly
    // what the update changes.
    const ResultSet before = db.execute(
        QStringLiteral(
            "Select Deliv_ID, Deliv_Dt, Funding_Desc from Deliveri where Person_ID = :Person_ID and "
            "Svcs_Used = :Svcs_Used and Deliv_Dt >= :StartDate and Deliv_Dt <= :EndDate order by "
            "Deliv_Dt, Deliv_ID"),
        deliveries);
    for (qsizetype r = 0; r < before.rowCount(); ++r)
        result.deliveries.push_back(
            {before.value(r, 0).toLongLong(), before.value(r, 1).toDate(), before.value(r, 2).toString()});

    Params update = deliveries;
    update.emplace_back(QStringLiteral("Funding_Desc"), funding);
    db.execute(
        QStringLiteral("Update Deliveri set Funding_Desc = :Funding_Desc where Person_ID = :Person_ID and "
                       "Svcs_Used = :Svcs_Used and Deliv_Dt >= :StartDate and Deliv_Dt <= :EndDate"),
        update);

    const ResultSet service =
        db.execute(QStringLiteral(" Select Default_Event from Services where Service_ID = :Service_ID "),
                   {{QStringLiteral("Service_ID"), s.serviceId}});
    // No default event reads as 0, which names no event.
    const qint64 eventId = service.isEmpty() ? 0 : service.value(0, 0).toLongLong();
    result.events =
        db.execute(QStringLiteral("Update Events set Funding_Desc = :Funding_Desc where Person_ID = "
                                  ":Person_ID and Event_ID = :Event_ID and Event_Date >= :StartDate and "
                                  "Event_Date <= :EndDate"),
                   {{QStringLiteral("Funding_Desc"), funding},
                    {QStringLiteral("Person_ID"), s.personId},
                    {QStringLiteral("Event_ID"), eventId},
                    {QStringLiteral("StartDate"), s.start},
                    {QStringLiteral("EndDate"), s.end}})
            .rowsAffected();

    db.execute(QStringLiteral(
                   "Insert into History (Person_ID, Client_ID, Tran_Date, Event, User) Values (:Person_ID, "
                   ":Client_ID, :Tran_Date, :Event, :User) "),
               {{QStringLiteral("Person_ID"), s.personId},
                {QStringLiteral("Client_ID"), delivery_records::clientIdOf(db, s.personId)},
                {QStringLiteral("Tran_Date"), db.clock().now()},
                {QStringLiteral("Event"), historyEvent(s)},
                {QStringLiteral("User"), user}});
    transaction.commit();
    return result;
}

} // namespace kb
