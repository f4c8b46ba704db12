#include "records/DeliveryRecords.h"

#include "records/History.h"
#include "rules/ClientHistoryTexts.h"
#include "store/Database.h"

namespace kb::delivery_records {

namespace {

const QString listColumns = QStringLiteral(
    "select Deliv_Dt, Svcs_Used, Delivery_Type, DOW, Address_Overridden, Route_ID, Stop, Number_Meals, "
    "Custom_Items, Diet_Descr, Delivery_Status, Deliv_ID, Funding_Desc from deliveri ");

Delivery deliveryOf(const ResultSet& rows, qsizetype r)
{
    Delivery d;
    d.delivId = rows.value(r, u"Deliv_ID").toLongLong();
    d.personId = rows.value(r, u"Person_ID").toLongLong();
    d.date = rows.value(r, u"Deliv_Dt").toDate();
    d.service = rows.value(r, u"Svcs_Used").toLongLong();
    d.kind = rows.value(r, u"Delivery_Type").toString();
    d.status = rows.value(r, u"Delivery_Status").toString();
    return d;
}

const QString deliveryColumns = QStringLiteral(
    "Select Deliv_ID, Person_ID, Deliv_Dt, Svcs_Used, Delivery_Type, Delivery_Status from Deliveri ");

// The kind letter of a two-letter Delivery_Type: "D" delivered, "W" walk-in.
QString kindLetter(const QString& kind)
{
    return kind.mid(1, 1);
}

void writeHistory(Database& db, const Delivery& delivery, const QString& user, const QString& event)
{
    QueryInsertHistory(db, user,
                       {delivery.personId, clientIdOf(db, delivery.personId), event, delivery.date});
}

} // namespace

ResultSet QueryDeliveries(Database& db, qint64 personId, const QDate& after)
{
    return db.execute(listColumns +
                          QStringLiteral("where Person_ID = :Person_id and deliv_Dt > :Date order by "
                                         "Deliv_dt descending"),
                      {{QStringLiteral("Person_id"), personId}, {QStringLiteral("Date"), after}});
}

ResultSet deliveriesBetween(Database& db, qint64 personId, const QDate& from, const QDate& to)
{
    return db.execute(listColumns + QStringLiteral("where Person_ID = :Person_id and Deliv_Dt >= :From and "
                                                   "Deliv_Dt <= :To order by Deliv_dt descending, Deliv_ID"),
                      {{QStringLiteral("Person_id"), personId},
                       {QStringLiteral("From"), from},
                       {QStringLiteral("To"), to}});
}

QDate lastDelivery(Database& db, qint64 personId)
{
    const ResultSet r =
        db.execute(QStringLiteral("Select Max( Deliv_Dt ) from Deliveri where Person_ID = :Person_ID"),
                   {{QStringLiteral("Person_ID"), personId}});
    return r.isEmpty() ? QDate() : r.value(0, 0).toDate();
}

ResultSet deliveredItems(Database& db, qint64 delivId)
{
    return db.execute(
        QStringLiteral(
            "Select MealCrdt.Deliv_Dt, MealCrdt.DOW, MealCrdt.Quantity, Items.Meal_Item, "
            "Items.Number_Meals, MealCrdt.Quantity * Items.Number_Meals as Total_Credits from MealCrdt "
            "join Items on MealCrdt.Item_ID = Items.Item_ID where MealCrdt.Deliv_ID = :Deliv_ID"),
        {{QStringLiteral("Deliv_ID"), delivId}});
}

std::optional<Delivery> readDelivery(Database& db, qint64 delivId)
{
    const ResultSet r = db.execute(deliveryColumns + QStringLiteral("where Deliv_ID = :Deliv_ID"),
                                   {{QStringLiteral("Deliv_ID"), delivId}});
    if (r.isEmpty()) return std::nullopt;
    return deliveryOf(r, 0);
}

std::vector<Delivery> deliveriesOn(Database& db, qint64 personId, const QDate& date)
{
    const ResultSet r = db.execute(
        deliveryColumns +
            QStringLiteral("where Person_ID = :Person_ID and Deliv_Dt = :Deliv_Dt order by Deliv_ID"),
        {{QStringLiteral("Person_ID"), personId}, {QStringLiteral("Deliv_Dt"), date}});
    std::vector<Delivery> out;
    for (qsizetype i = 0; i < r.rowCount(); ++i)
        out.push_back(deliveryOf(r, i));
    return out;
}

QVariant clientIdOf(Database& db, qint64 personId)
{
    const ResultSet r =
        db.execute(QStringLiteral("Select Client_ID from Clients where Person_ID = :Person_ID"),
                   {{QStringLiteral("Person_ID"), personId}});
    return r.isEmpty() ? QVariant() : r.value(0, 0);
}

QString compEvent(const QDate& date, const QString& reason)
{
    const QString day = client_history::dateText(date);
    return reason.isEmpty() ? day + QStringLiteral(" deliv comped")
                            : day + QStringLiteral(" deliv comped-") + reason;
}

void comp(Database& db, const Delivery& delivery, const QString& reason, const QString& recordedBy)
{
    TransactionGuard transaction(db);
    db.execute(
        QStringLiteral("Update Deliveri set Delivery_Status= :Delivery_Status where Deliv_ID = :Deliv_ID"),
        {{QStringLiteral("Delivery_Status"), QStringLiteral("C")},
         {QStringLiteral("Deliv_ID"), delivery.delivId}});
    writeHistory(db, delivery, recordedBy, compEvent(delivery.date, reason));
    transaction.commit();
}

void reverseComp(Database& db, const Delivery& delivery, const QString& user)
{
    TransactionGuard transaction(db);
    db.execute(
        QStringLiteral("Update Deliveri set Delivery_Status= :Delivery_Status where Deliv_ID = :Deliv_ID"),
        {{QStringLiteral("Delivery_Status"), QVariant()}, {QStringLiteral("Deliv_ID"), delivery.delivId}});
    writeHistory(db, delivery, user,
                 client_history::dateText(delivery.date) + QStringLiteral(" comped deliv reversed"));
    transaction.commit();
}

QString deletionEvent(const QString& kind, const QDate& date)
{
    const QString day = client_history::dateText(date);
    const QString letter = kindLetter(kind);
    if (letter == QLatin1String("D")) return QStringLiteral("Delivery credits for %1 deleted.").arg(day);
    if (letter == QLatin1String("W")) return QStringLiteral("Walk-in credits for %1 deleted.").arg(day);
    return QStringLiteral("%1 %2 deleted.").arg(kind, day);
}

void deleteDelivery(Database& db, const Delivery& delivery, const QString& user)
{
    TransactionGuard transaction(db);
    // A dated delivery or walk-in of that day may be credited again.
    db.execute(
        QStringLiteral(" Update EpisodicDeliveries set Fulfilled = '' where Deliv_Date = :Delivery_Date and "
                       "Person_ID = :Person_ID and Delivery_Type = :Delivery_Type "),
        {{QStringLiteral("Delivery_Date"), delivery.date},
         {QStringLiteral("Person_ID"), delivery.personId},
         {QStringLiteral("Delivery_Type"), kindLetter(delivery.kind)}});
    const ResultSet service =
        db.execute(QStringLiteral(" Select Default_Event from Services where Service_ID = :iService_ID "),
                   {{QStringLiteral("iService_ID"), delivery.service}});
    const qint64 defaultEvent = service.isEmpty() ? 0 : service.value(0, 0).toLongLong();
    if (defaultEvent != 0) {
        // The event the run posted for this delivery goes with it. The
        // join of Events with the delivery's rows is written as an exists,
        // which both stores can run as a delete.
        db.execute(QStringLiteral(
                       "delete from Events where (Events.Person_ID = :Person_ID) and (Events.Event_Date = "
                       ":dChosen_Date) and (Events.Event_ID = :iEvent_ID) and exists (select Deliv_ID "
                       "from Deliveri where (Deliveri.Person_ID = Events.Person_ID) and "
                       "(Deliveri.Deliv_Dt = :dChosen_Date) and (Substring(Deliveri.Delivery_Type from 2 "
                       "for 1) = :Delivery_Type ))"),
                   {{QStringLiteral("dChosen_Date"), delivery.date},
                    {QStringLiteral("Person_ID"), delivery.personId},
                    {QStringLiteral("Delivery_Type"), kindLetter(delivery.kind)},
                    {QStringLiteral("iEvent_ID"), defaultEvent}});
    }
    writeHistory(db, delivery, user, deletionEvent(delivery.kind, delivery.date));
    const Params id{{QStringLiteral("Deliv_ID"), delivery.delivId}};
    db.execute(QStringLiteral(" Delete from MealCrdt where Deliv_ID = :Deliv_ID"), id);
    db.execute(QStringLiteral(" Delete from Deliveri where Deliv_ID = :Deliv_ID"), id);
    transaction.commit();
}

void applyFundingChanges(Database& db, const std::vector<std::pair<qint64, QString>>& changes)
{
    if (changes.empty()) return;
    std::vector<Params> rows;
    rows.reserve(changes.size());
    for (const auto& [delivId, code] : changes)
        rows.push_back({{QStringLiteral("Deliv_ID"), delivId},
                        {QStringLiteral("Funding_Desc"), code.isEmpty() ? QVariant() : QVariant(code)}});
    TransactionGuard transaction(db);
    db.query(QStringLiteral("Update Deliveri set Funding_Desc = :Funding_Desc where Deliv_ID = :Deliv_ID;"))
        .execBatch(rows);
    transaction.commit();
}

} // namespace kb::delivery_records
