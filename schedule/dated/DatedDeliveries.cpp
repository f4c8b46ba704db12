#include "dated/DatedDeliveries.h"

#include "UserInterface.h"
#include "dataset/Abort.h"
#include "dataset/DataSet.h"
#include "dataset/HookChain.h"
#include "records/History.h"
#include "store/Database.h"

namespace kb {

namespace {

const QString blankRoute = QStringLiteral("     ");

bool isEmptyValue(const QVariant& value)
{
    return value.isNull() || value.toString().trimmed().isEmpty();
}

void refuse(UserInterface& ui, const QString& text)
{
    ui.warning(text);
    throw Abort();
}

} // namespace

DatedRow DatedRow::fromDataSet(const DataSet& set)
{
    DatedRow row;
    row.recordId = set.fieldValue(u"RecordID").toLongLong();
    row.personId = set.fieldValue(u"Person_ID").toLongLong();
    row.clientId = set.fieldValue(u"Client_ID").toString();
    row.date = set.fieldValue(u"Deliv_Date").toDate();
    row.service = set.fieldValue(u"Svcs_Used").toLongLong();
    row.fulfilled = set.fieldValue(u"Fulfilled").toString();
    return row;
}

std::optional<DatedRow> DatedRow::read(Database& db, qint64 recordId)
{
    const ResultSet rows =
        db.execute(QStringLiteral("Select RecordID, Person_ID, Client_ID, Deliv_Date, Svcs_Used, "
                                  "Fulfilled from EpisodicDeliveries where RecordID = :RecordID"),
                   {{QStringLiteral("RecordID"), recordId}});
    if (rows.isEmpty()) return std::nullopt;
    DatedRow row;
    row.recordId = rows.value(0, 0).toLongLong();
    row.personId = rows.value(0, 1).toLongLong();
    row.clientId = rows.value(0, 2).toString();
    row.date = rows.value(0, 3).toDate();
    row.service = rows.value(0, 4).toLongLong();
    row.fulfilled = rows.value(0, 5).toString();
    return row;
}

DatedDeliveries::DatedDeliveries(Database& db, UserInterface& ui, QString userName)
    : DatedDeliveries(db, ui, [name = std::move(userName)] { return name; })
{
}

DatedDeliveries::DatedDeliveries(Database& db, UserInterface& ui, std::function<QString()> userName)
    : m_db(db), m_ui(ui), m_userName(std::move(userName))
{
}

QString DatedDeliveries::defaultDeliveryType(qint64 service)
{
    const ResultSet rows = m_db.execute(
        QStringLiteral("select Default_Delivery_Type from Services where Service_ID = :Service_ID"),
        {{QStringLiteral("Service_ID"), service}});
    const QString type = rows.isEmpty() ? QString() : rows.value(0, 0).toString().trimmed();
    return type.isEmpty() ? QStringLiteral("D") : type;
}

QDate DatedDeliveries::keyboardDate(const DatedClient& client, DatedKind kind)
{
    const QDate today = m_db.clock().today();
    if (client.startDate.isValid() && today < client.startDate) {
        m_ui.information(addBeforeStartText(kind));
        return client.startDate;
    }
    return today;
}

qint64 DatedDeliveries::add(const DatedClient& client, DatedKind kind, const QDate& date)
{
    const QString route = client.defaultRoute.isNull() ? blankRoute : client.defaultRoute;
    const QVariant stop = client.defaultStop.isNull() ? QVariant(0.0) : client.defaultStop;
    const QDateTime now = m_db.clock().now();
    m_db.execute(
        QStringLiteral("Insert into EpisodicDeliveries (Person_ID, Client_ID, Deliv_Date, Svcs_Used, "
                       "Delivery_Type, Schedule_Type, Route, Stop, Create_Date, Last_Updated, Created_By) "
                       "values (:Person_ID, :Client_ID, :Deliv_Date, :Svcs_Used, :Delivery_Type, "
                       ":Schedule_Type, :Route, :Stop, :Create_Date, :Last_Updated, :Created_By)"),
        {{QStringLiteral("Person_ID"), client.personId},
         {QStringLiteral("Client_ID"), client.clientId},
         {QStringLiteral("Deliv_Date"), date},
         {QStringLiteral("Svcs_Used"), client.service},
         {QStringLiteral("Delivery_Type"), defaultDeliveryType(client.service)},
         {QStringLiteral("Schedule_Type"), scheduleTypeOf(kind)},
         {QStringLiteral("Route"), route},
         {QStringLiteral("Stop"), stop},
         {QStringLiteral("Create_Date"), now.date()},
         {QStringLiteral("Last_Updated"), now},
         {QStringLiteral("Created_By"), m_userName().left(25)}});
    // The identity this session's insert got: another workstation adding a
    // row for the same client at the same moment can't be mistaken for it.
    return m_db.store().lastInsertRowId();
}

void DatedDeliveries::attachRules(DataSet& set, DatedKind kind,
                                  std::function<std::optional<DatedClient>()> currentClient)
{
    chainHook(set, DataSet::Hook::BeforeEdit, [this, kind](DataSet& s) {
        if (DatedRow::fromDataSet(s).credited()) refuse(m_ui, creditedEditText(kind));
    });
    chainHook(set, DataSet::Hook::BeforePost, [this, kind, currentClient](DataSet& s) {
        checkPost(s, kind, currentClient ? currentClient() : std::nullopt);
    });
}

void DatedDeliveries::checkPost(DataSet& set, DatedKind kind, const std::optional<DatedClient>& client)
{
    // The same words on both screens: they have always said "scheduled".
    if (isEmptyValue(set.fieldValue(u"Svcs_Used")) || set.fieldValue(u"Svcs_Used").toLongLong() == 0)
        refuse(m_ui, QStringLiteral("The Service for a scheduled delivery cannot be left blank!"));
    if (isEmptyValue(set.fieldValue(u"Route")))
        refuse(m_ui, QStringLiteral("The Route for a scheduled delivery cannot be left blank!"));
    if (!set.fieldValue(u"Deliv_Date").toDate().isValid())
        refuse(m_ui, QStringLiteral("The Delivery Date for a scheduled delivery cannot be left blank!"));
    if (isEmptyValue(set.fieldValue(u"Delivery_Type")))
        refuse(m_ui, QStringLiteral("The Delivery Type for a scheduled delivery cannot be left blank!"));

    const QDateTime now = m_db.clock().now();
    set.setFieldValue(u"Last_Updated", now);
    if (!set.fieldValue(u"Create_Date").toDate().isValid()) set.setFieldValue(u"Create_Date", now.date());
    // Only a row that came without a kind gets one, and it is "E" on both
    // sets: the screens add their rows with the kind already set.
    if (isEmptyValue(set.fieldValue(u"Schedule_Type")))
        set.setFieldValue(u"Schedule_Type", QStringLiteral("E"));
    if (client) {
        if (isEmptyValue(set.fieldValue(u"Client_ID"))) set.setFieldValue(u"Client_ID", client->clientId);
        if (isEmptyValue(set.fieldValue(u"Person_ID"))) set.setFieldValue(u"Person_ID", client->personId);
    }
    if (isEmptyValue(set.fieldValue(u"Created_By"))) set.setFieldValue(u"Created_By", m_userName().left(25));
    if (!client) return;

    const QDate date = set.fieldValue(u"Deliv_Date").toDate();
    if (client->startDate.isValid() && client->startDate > date) {
        m_ui.information(beforeStartDateText(kind));
        set.setFieldValue(u"Deliv_Date", client->startDate);
    }
    // The stop date itself is let through, although a run does not serve it.
    if (client->stopDate.isValid() && client->stopDate < set.fieldValue(u"Deliv_Date").toDate()) {
        m_ui.information(afterStopDateText(kind));
        set.setFieldValue(u"Deliv_Date", client->stopDate);
    }
}

bool DatedDeliveries::remove(const DatedRow& row, DatedKind kind, bool deleteCredited, EventsBy eventsBy)
{
    const bool credited = row.credited();
    if (credited && !deleteCredited) return false;
    TransactionGuard transaction(m_db);
    if (credited) {
        const ResultSet service =
            m_db.execute(QStringLiteral("select Default_Event from Services where Service_ID = :Service_ID"),
                         {{QStringLiteral("Service_ID"), row.service}});
        const QVariant eventId = service.isEmpty() ? QVariant() : service.value(0, 0);
        if (eventsBy == EventsBy::ClientId)
            m_db.execute(
                QStringLiteral("Delete from Events where Event_ID = :Event_ID and Client_id = :Client_ID "
                               "and Event_Date = :Event_Date"),
                {{QStringLiteral("Event_ID"), eventId},
                 {QStringLiteral("Client_ID"), row.clientId},
                 {QStringLiteral("Event_Date"), row.date}});
        else
            m_db.execute(
                QStringLiteral("Delete from Events where Event_ID = :Event_ID and Person_id = :Person_ID "
                               "and Event_Date = :Event_Date"),
                {{QStringLiteral("Event_ID"), eventId},
                 {QStringLiteral("Person_ID"), row.personId},
                 {QStringLiteral("Event_Date"), row.date}});
        m_db.execute(
            QStringLiteral("Delete from MealCrdt where Person_ID = :Person_ID and Service_ID = :Service_ID "
                           "and Deliv_Dt = :Deliv_Dt"),
            {{QStringLiteral("Person_ID"), row.personId},
             {QStringLiteral("Service_ID"), row.service},
             {QStringLiteral("Deliv_Dt"), row.date}});
        m_db.execute(
            QStringLiteral("Delete from Deliveri where Person_ID = :Person_ID and Svcs_Used = :Svcs_Used and "
                           "Deliv_Dt = :Deliv_Dt"),
            {{QStringLiteral("Person_ID"), row.personId},
             {QStringLiteral("Svcs_Used"), row.service},
             {QStringLiteral("Deliv_Dt"), row.date}});
    }
    m_db.execute(QStringLiteral("Delete from DefDels where Person_ID = :Person_ID and Deliv_ID = :Deliv_ID"),
                 {{QStringLiteral("Person_ID"), row.personId}, {QStringLiteral("Deliv_ID"), row.recordId}});
    m_db.execute(QStringLiteral("Delete from EpisodicDeliveries where RecordID = :RecordID"),
                 {{QStringLiteral("RecordID"), row.recordId}});
    QueryInsertHistory(
        m_db, m_userName(),
        {row.personId, row.clientId, deletedHistoryText(kind, credited, row.date), QVariant()});
    transaction.commit();
    return true;
}

bool DatedDeliveries::removeAsked(const DatedRow& row)
{
    const QString question =
        row.credited()
            ? QStringLiteral(
                  "This episodic delivery has been credited. The credits will be deleted as well. Proceed?")
            : QStringLiteral("Delete the selected episodic delivery?");
    if (m_ui.question(question, Buttons::YesNo) != Answer::Yes) return false;
    return remove(row, DatedKind::Episodic, true, EventsBy::PersonId);
}

} // namespace kb
