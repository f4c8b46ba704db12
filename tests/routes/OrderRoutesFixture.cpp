#include "OrderRoutesFixture.h"

namespace kb::test {

void OrderRoutesFixture::SetUp()
{
    KB_REQUIRE_STORE(GetParam());
    data = std::make_unique<TempDataDir>(GetParam());
    session.cUserName = QStringLiteral("pat");
    session.userFullName = QStringLiteral("Pat Tester");
    session.cAppDataFolder = appData.path() + QLatin1Char('/');
    insertRow(db(), QStringLiteral("Services"), {{QStringLiteral("Service_ID"), 1},
                                                 {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                                                 {QStringLiteral("Service_Type"), QStringLiteral("D")}});
    for (const char* route : {"R1", "R2"})
        insertRow(db(), QStringLiteral("Routes"), {{QStringLiteral("Route_ID"), QString::fromLatin1(route)},
                                                   {QStringLiteral("Route_Desc"), QStringLiteral("Route ") + route}});
}

void OrderRoutesFixture::addClient(int person, const Params& overrides)
{
    Params values = {{QStringLiteral("Person_ID"), person},
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
                     {QStringLiteral("Latitude"), 40.0 + person / 100.0},
                     {QStringLiteral("Longitude"), -75.0},
                     {QStringLiteral("Org_Client"), QStringLiteral("N")}};
    for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"})
        values.emplace_back(QString::fromLatin1(day), true);
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("Clients"), values);
}

void OrderRoutesFixture::addDated(int person, const QDate& date, const QString& scheduleType, const Params& overrides)
{
    Params values = {{QStringLiteral("Person_ID"), person},
                     {QStringLiteral("Deliv_Date"), date},
                     {QStringLiteral("Schedule_Type"), scheduleType},
                     {QStringLiteral("Svcs_Used"), 1},
                     {QStringLiteral("Delivery_Type"), QStringLiteral("D")},
                     {QStringLiteral("Route"), QStringLiteral("R1")},
                     {QStringLiteral("Stop"), double(person)}};
    for (const auto& [name, value] : overrides)
        values = with(values, name, value);
    insertRow(db(), QStringLiteral("EpisodicDeliveries"), values);
}

QVariant OrderRoutesFixture::clientValue(int person, const QString& column)
{
    return db()
        .execute(QStringLiteral("Select %1 from Clients where Person_ID = :P").arg(column), {{QStringLiteral("P"), person}})
        .value(0, 0);
}

TFormOrderRoutes& OrderRoutesFixture::form()
{
    if (!m_form)
        m_form = std::make_unique<TFormOrderRoutes>(db(), session, ui);
    return *m_form;
}

void OrderRoutesFixture::retrieve(const QString& route, int dayIndex)
{
    ASSERT_TRUE(form().setRoute(route));
    form().setDayIndex(dayIndex);
    form().ActionRetrieve();
}

QList<int> OrderRoutesFixture::persons()
{
    QList<int> list;
    for (int p = 0; p < form().rows().count(); ++p)
        list << int(form().rows().rowAt(p).personId);
    return list;
}

int OrderRoutesFixture::positionOf(int person)
{
    for (int p = 0; p < form().rows().count(); ++p)
        if (form().rows().rowAt(p).personId == person)
            return p;
    ADD_FAILURE() << "person " << person << " is not in the set";
    return -1;
}

double OrderRoutesFixture::stopOf(int person) { return form().displayedRow(positionOf(person)).stop; }

} // namespace kb::test
