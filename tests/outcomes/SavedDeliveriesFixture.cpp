#include "SavedDeliveriesFixture.h"

#include "Money.h"

namespace kb::test {

void SavedDeliveriesFixture::SetUp()
{
    KB_REQUIRE_STORE(GetParam());
    data = std::make_unique<TempDataDir>(GetParam());
    session.cUserName = QStringLiteral("clerk");
    session.userFullName = QStringLiteral("Dana Clerk");
    session.accessLevel = QStringLiteral("W");
}

void SavedDeliveriesFixture::addClient(qint64 personId, const QString& clientId, const QString& last,
                                const QString& first, const Params& more)
{
    Params row{{QStringLiteral("Person_ID"), personId},
               {QStringLiteral("Client_ID"), clientId},
               {QStringLiteral("Last_Name"), last},
               {QStringLiteral("First_Name"), first},
               {QStringLiteral("Status"), QStringLiteral("A")}};
    for (const auto& [name, value] : more)
        row = with(row, name, value);
    insertRow(db(), QStringLiteral("Clients"), row);
}

void SavedDeliveriesFixture::addService(qint64 id, const QString& name, qint64 defaultEvent)
{
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), id},
               {QStringLiteral("Service_Desc"), name},
               {QStringLiteral("Service_Type"), QStringLiteral("D")},
               {QStringLiteral("Mutl_Excl"), true},
               {QStringLiteral("Sort_Order"), id},
               {QStringLiteral("Default_Event"), defaultEvent == 0 ? QVariant() : QVariant(defaultEvent)}});
}

void SavedDeliveriesFixture::addItem(qint64 id, const QString& name, const QString& meal, const QString& price)
{
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), id},
               {QStringLiteral("Meal_Item"), name},
               {QStringLiteral("Meal"), meal},
               {QStringLiteral("Number_Meals"), 1},
               {QStringLiteral("Billed_Amount"), QVariant::fromValue(*Money::parse(price))}});
}

void SavedDeliveriesFixture::addFunding(const QString& code, const QString& name)
{
    insertRow(db(), QStringLiteral("Fundsrcs"),
              {{QStringLiteral("Fund_CD"), code}, {QStringLiteral("Fund_Srce"), name}});
}

void SavedDeliveriesFixture::addDelivery(qint64 delivId, qint64 personId, const QDate& date, qint64 service,
                                  const QString& kind, const QString& funding, const QString& status,
                                  const std::vector<std::pair<qint64, int>>& items)
{
    const QVariant clientId =
        db().execute(QStringLiteral("Select Client_ID from Clients where Person_ID = :P"),
                     {{QStringLiteral("P"), personId}})
            .value(0, 0);
    static const char* days[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"};
    insertRow(db(), QStringLiteral("Deliveri"),
              {{QStringLiteral("Deliv_ID"), delivId},
               {QStringLiteral("Deliv_Dt"), date},
               {QStringLiteral("DOW"), QString::fromLatin1(days[date.dayOfWeek() - 1])},
               {QStringLiteral("Person_ID"), personId},
               {QStringLiteral("Client_ID"), clientId},
               {QStringLiteral("Route_ID"), QStringLiteral("R1")},
               {QStringLiteral("Stop"), 1.0},
               {QStringLiteral("Delivery_Type"), kind},
               {QStringLiteral("Svcs_Used"), service},
               {QStringLiteral("Number_Meals"), 1},
               {QStringLiteral("Funding_Desc"), funding.isEmpty() ? QVariant() : QVariant(funding)},
               {QStringLiteral("Delivery_Status"), status.isEmpty() ? QVariant() : QVariant(status)}});
    int sort = 0;
    for (const auto& [item, quantity] : items)
        insertRow(db(), QStringLiteral("MealCrdt"),
                  {{QStringLiteral("Deliv_ID"), delivId},
                   {QStringLiteral("Person_ID"), personId},
                   {QStringLiteral("Deliv_Dt"), date},
                   {QStringLiteral("DOW"), QString::fromLatin1(days[date.dayOfWeek() - 1])},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Service_ID"), service},
                   {QStringLiteral("Sort_Order"), ++sort}});
}

void SavedDeliveriesFixture::addEvent(qint64 personId, const QDate& date, qint64 eventId, const QString& funding)
{
    insertRow(db(), QStringLiteral("Events"),
              {{QStringLiteral("Person_ID"), personId},
               {QStringLiteral("Event_Date"), date},
               {QStringLiteral("Event_ID"), eventId},
               {QStringLiteral("Funding_Desc"), funding.isEmpty() ? QVariant() : QVariant(funding)}});
}

void SavedDeliveriesFixture::addDated(qint64 personId, const QDate& date, const QString& scheduleType,
                               const QString& kind, qint64 service)
{
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("Person_ID"), personId},
               {QStringLiteral("Deliv_Date"), date},
               {QStringLiteral("Schedule_Type"), scheduleType},
               {QStringLiteral("Delivery_Type"), kind},
               {QStringLiteral("Svcs_Used"), service},
               {QStringLiteral("Fulfilled"), QStringLiteral("Y")}});
}

void SavedDeliveriesFixture::addUsers(const QStringList& levels)
{
    int id = 40;
    for (const QString& level : levels)
        insertRow(db(), QStringLiteral("Staff"),
                  {{QStringLiteral("Staff_ID"), id++},
                   {QStringLiteral("User_ID"), QStringLiteral("user") + level},
                   {QStringLiteral("Staff_Name"), QStringLiteral("Level ") + level},
                   {QStringLiteral("Access_Level"), level},
                   {QStringLiteral("Active"), true}});
}

void SavedDeliveriesFixture::isolateHome()
{
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
}

CommandResult SavedDeliveriesFixture::runAs(const QString& user, const QStringList& words)
{
    return runKettlebrook(
        data->commandLocation() +
        QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"), QStringLiteral("--user"), user} +
        words);
}

QVariant SavedDeliveriesFixture::scalar(const QString& text, const Params& params)
{
    const ResultSet r = db().execute(text, params);
    return r.isEmpty() ? QVariant() : r.value(0, 0);
}

QStringList SavedDeliveriesFixture::historyEvents()
{
    const ResultSet r = db().execute(QStringLiteral("Select Event from History order by RecordID"));
    QStringList out;
    for (qsizetype i = 0; i < r.rowCount(); ++i)
        out << r.value(i, 0).toString();
    return out;
}

} // namespace kb::test
