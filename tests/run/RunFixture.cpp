#include "RunFixture.h"

namespace kb::test {

namespace {

StoreKind usable(StoreKind kind)
{
    return kind == StoreKind::PostgreSQL && postgresTestAddress().isEmpty() ? StoreKind::SQLite : kind;
}

} // namespace

RunFixture::RunFixture(StoreKind kind) : data(usable(kind))
{
    session.cUserName = QStringLiteral("pat");
    session.userFullName = QStringLiteral("Pat Tester");
    insertRow(db(), QStringLiteral("Services"), {{QStringLiteral("Service_ID"), 1},
                                                 {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                                                 {QStringLiteral("Service_Type"), QStringLiteral("D")}});
    insertRow(db(), QStringLiteral("Services"), {{QStringLiteral("Service_ID"), 2},
                                                 {QStringLiteral("Service_Desc"), QStringLiteral("Frozen Meals")},
                                                 {QStringLiteral("Service_Type"), QStringLiteral("D")}});
    const char* const diets[] = {"LS", "DB", "LF"};
    for (int i = 0; i < 3; ++i)
        insertRow(db(), QStringLiteral("Diet"), {{QStringLiteral("Diet_ID"), i + 1},
                                                 {QStringLiteral("Diet_Code"), QString::fromLatin1(diets[i])}});
    for (const char* route : {"R1", "R2"})
        insertRow(db(), QStringLiteral("Routes"), {{QStringLiteral("Route_ID"), QString::fromLatin1(route)},
                                                   {QStringLiteral("Route_Desc"), QStringLiteral("Route ") + route}});
}

void RunFixture::addClient(int person, const Params& overrides)
{
    Params values = {{QStringLiteral("Person_ID"), person},
                     {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(person, 3, 10, QLatin1Char('0'))},
                     {QStringLiteral("First_Name"), QStringLiteral("First%1").arg(person)},
                     {QStringLiteral("Mid_Name"), QString()},
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
                     {QStringLiteral("Latitude"), 40.0 + person / 100.0},
                     {QStringLiteral("Longitude"), -75.0},
                     {QStringLiteral("Cross_Street"), QStringLiteral("Oak Ave")},
                     {QStringLiteral("Org_Client"), QStringLiteral("N")}};
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        values.emplace_back(QString::fromLatin1(day), true);
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("Clients"), values);
}

void RunFixture::addDated(int person, const QDate& date, const QString& scheduleType, const Params& overrides)
{
    Params values = {{QStringLiteral("Person_ID"), person},
                     {QStringLiteral("Deliv_Date"), date},
                     {QStringLiteral("Schedule_Type"), scheduleType},
                     {QStringLiteral("Svcs_Used"), 2},
                     {QStringLiteral("Delivery_Type"), QStringLiteral("D")},
                     {QStringLiteral("Route"), QStringLiteral("R2")},
                     {QStringLiteral("Stop"), 50.0 + person}};
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("EpisodicDeliveries"), values);
}

void RunFixture::addSuspension(int person, const QDate& stop, const QDate& resume)
{
    insertRow(db(), QStringLiteral("Suspends"),
              {{QStringLiteral("Person_ID"), person},
               {QStringLiteral("Client_ID"), QStringLiteral("C%1").arg(person, 3, 10, QLatin1Char('0'))},
               {QStringLiteral("Stop_Dt"), stop},
               {QStringLiteral("Resume_Dt"), resume}});
}

void RunFixture::addOverride(int person, const QString& type, const Params& values)
{
    Params all = {{QStringLiteral("Person_ID"), person}, {QStringLiteral("Override_Type"), type}};
    for (const auto& [name, value] : values)
        all = with(all, name, value);
    insertRow(db(), QStringLiteral("Address_Overrides"), all);
}

void RunFixture::setConfig(const QString& column, const QVariant& value)
{
    db().execute(QStringLiteral("Update Config set %1 = :Value").arg(column), {{QStringLiteral("Value"), value}});
}

TFormRunPrepare& RunFixture::form()
{
    if (!m_form) {
        m_form = std::make_unique<TFormRunPrepare>(db(), session, ui);
        m_form->FormShow();
    }
    return *m_form;
}

ResultSet RunFixture::prepare(const QDate& date, QChar letter)
{
    form().SetDeliveryType(letter);
    form().SetPrepareDate(date);
    form().ActionPrepare();
    return form().table().select(DeliveriesIndex::RouteStopClient);
}

QList<int> RunFixture::persons(const ResultSet& rows)
{
    QList<int> list;
    const int column = rows.columnIndex(u"Person_ID");
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        list.append(rows.value(r, column).toInt());
    return list;
}

QVariantList RunFixture::rowOf(const ResultSet& rows, int person)
{
    const int column = rows.columnIndex(u"Person_ID");
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        if (rows.value(r, column).toInt() == person)
            return rows.row(r);
    ADD_FAILURE() << "no row for person " << person;
    return QVariantList(rows.columnCount());
}

QVariant RunFixture::field(const ResultSet& rows, int person, const QString& column)
{
    return rowOf(rows, person).value(rows.columnIndex(column));
}

} // namespace kb::test
