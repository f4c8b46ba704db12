#include "OutcomesFixture.h"

#include "Csv.h"
#include "TFormRunPrepare.h"
#include "confirmation/GivenItemConfirmation.h"

#include <QLocale>
#include <QTextStream>

namespace kb::test {

namespace {

StoreKind usable(StoreKind kind)
{
    return kind == StoreKind::PostgreSQL && postgresTestAddress().isEmpty() ? StoreKind::SQLite : kind;
}

} // namespace

OutcomesFixture::OutcomesFixture() : data(usable(GetParam()))
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    session.cUserName = QStringLiteral("pat");
    session.userFullName = QStringLiteral("Pat Tester");
    session.accessLevel = QStringLiteral("W");
    insertRow(db(), QStringLiteral("Fundsrcs"),
              {{QStringLiteral("Fund_ID"), 1}, {QStringLiteral("Fund_CD"), "T3"}});
    const char* const services[] = {"Hot Meals", "Frozen Meals"};
    for (int s = 1; s <= 2; ++s)
        insertRow(db(), QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), s},
                   {QStringLiteral("Service_Desc"), QString::fromLatin1(services[s - 1])},
                   {QStringLiteral("Service_Type"), QStringLiteral("D")},
                   {QStringLiteral("Default_Funding_Source"), 1}});
    for (const char* route : {"R1", "R2"})
        insertRow(db(), QStringLiteral("Routes"),
                  {{QStringLiteral("Route_ID"), QString::fromLatin1(route)},
                   {QStringLiteral("Route_Desc"), QStringLiteral("Route ") + route}});
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 10},
               {QStringLiteral("Meal_Item"), QStringLiteral("Hot Lunch")},
               {QStringLiteral("Number_Meals"), 1},
               {QStringLiteral("Number_Labels"), 1}});
    insertRow(db(), QStringLiteral("Items"),
              {{QStringLiteral("Item_ID"), 11},
               {QStringLiteral("Meal_Item"), QStringLiteral("Frozen Pair")},
               {QStringLiteral("Number_Meals"), 2},
               {QStringLiteral("Number_Labels"), 1}});
    for (const char* day : {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN"}) {
        addLine(0, 1, QString::fromLatin1(day), 10, 1);
        addLine(0, 2, QString::fromLatin1(day), 11, 1);
    }
}

void OutcomesFixture::SetUp()
{
    KB_REQUIRE_STORE(GetParam());
}

void OutcomesFixture::addClient(int person, const Params& overrides)
{
    Params values = {
        {QStringLiteral("Person_ID"), person},
        {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(person, 3, 10, QLatin1Char('0'))},
        {QStringLiteral("First_Name"), QStringLiteral("First%1").arg(person)},
        {QStringLiteral("Last_Name"), QStringLiteral("Last%1").arg(person)},
        {QStringLiteral("Status"), QStringLiteral("A")},
        {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
        {QStringLiteral("Ongoing_Frequency"), QStringLiteral("A")},
        {QStringLiteral("Svcs_Used"), 1},
        {QStringLiteral("Start_Dte"), QDate(2024, 1, 1)},
        {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
        {QStringLiteral("Def_Stop"), double(person)},
        {QStringLiteral("Address1"), QStringLiteral("%1 Main St").arg(person)},
        {QStringLiteral("City"), QStringLiteral("Springfield")},
        {QStringLiteral("State"), QStringLiteral("PA")},
        {QStringLiteral("ZIP"), QStringLiteral("19000")},
        {QStringLiteral("Phone"), QStringLiteral("555-01%1").arg(person, 2, 10, QLatin1Char('0'))},
        {QStringLiteral("Org_Client"), QStringLiteral("N")}};
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        values.emplace_back(QString::fromLatin1(day), true);
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("Clients"), values);
}

qint64 OutcomesFixture::addDated(int person, const QDate& date, const QString& scheduleType,
                                 const Params& overrides)
{
    Params values = {
        {QStringLiteral("Person_ID"), person},
        {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(person, 3, 10, QLatin1Char('0'))},
        {QStringLiteral("Deliv_Date"), date},
        {QStringLiteral("Schedule_Type"), scheduleType},
        {QStringLiteral("Svcs_Used"), 2},
        {QStringLiteral("Delivery_Type"), QStringLiteral("D")},
        {QStringLiteral("Route"), QStringLiteral("R2")},
        {QStringLiteral("Stop"), 50.0 + person}};
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("EpisodicDeliveries"), values);
    return db()
        .execute(QStringLiteral("Select Max(RecordID) from EpisodicDeliveries"))
        .value(0, 0)
        .toLongLong();
}

void OutcomesFixture::addLine(int person, int service, const QString& day, int item, int quantity,
                              const QVariant& delivId)
{
    insertRow(db(), QStringLiteral("Defdels"),
              {{QStringLiteral("Person_ID"), person},
               {QStringLiteral("Service_ID"), service},
               {QStringLiteral("Del_Day"), day},
               {QStringLiteral("Item_ID"), item},
               {QStringLiteral("Quantity"), quantity},
               {QStringLiteral("Sort_Order"), 1},
               {QStringLiteral("Deliv_ID"), delivId}});
}

qint64 OutcomesFixture::saveRun(const QDate& date)
{
    TFormRunPrepare form(db(), session, ui);
    GivenItemConfirmation all = GivenItemConfirmation::all();
    form.setItemConfirmation(&all);
    form.FormShow();
    form.SetPrepareDate(date);
    form.ActionPrepare();
    const std::optional<SaveResult> saved = form.ActionSaveData();
    form.FormClose();
    EXPECT_TRUE(saved.has_value()) << ui.texts(ScriptedUserInterface::Kind::Error).join('\n').toStdString();
    return saved ? saved->deliveries : -1;
}

QString OutcomesFixture::deliveriText(const QString& where)
{
    QString text;
    QTextStream out(&text);
    writeCsv(out, db().execute(QStringLiteral("Select * from Deliveri %1 order by Deliv_ID, Person_ID, "
                                              "Delivery_Type")
                                   .arg(where)));
    out.flush();
    return text;
}

QString OutcomesFixture::mealCrdtText()
{
    QString text;
    QTextStream out(&text);
    writeCsv(out,
             db().execute(QStringLiteral(
                 "Select Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, Modified_Ml, "
                 "Service_ID, Sort_Order from MealCrdt order by Deliv_ID, Sort_Order, Item_ID")));
    out.flush();
    return text;
}

QVariant OutcomesFixture::statusOf(int person, const QDate& date)
{
    return db()
        .execute(
            QStringLiteral("Select Delivery_Status from Deliveri where Person_ID = :P and Deliv_Dt = :D"),
            {{QStringLiteral("P"), person}, {QStringLiteral("D"), date}})
        .value(0, 0);
}

qint64 OutcomesFixture::count(const QString& statement, const Params& params)
{
    return db().execute(statement, params).value(0, 0).toLongLong();
}

QStringList OutcomesFixture::events(int person)
{
    const ResultSet rows =
        db().execute(QStringLiteral("Select Event from History where Person_ID = :P order by RecordID"),
                     {{QStringLiteral("P"), person}});
    QStringList list;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        list.append(rows.value(r, 0).toString());
    return list;
}

} // namespace kb::test
