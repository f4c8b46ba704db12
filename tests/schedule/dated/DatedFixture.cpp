#include "DatedFixture.h"

namespace kb::test {

void DatedFixture::SetUp()
{
    KB_REQUIRE_STORE(GetParam());
    data = std::make_unique<TempDataDir>(GetParam());
    const auto days = [](const QString& on) {
        Params p;
        const char* names[] = {"DMON", "DTUE", "DWED", "DTHU", "DFRI", "DSAT", "DSUN"};
        for (int d = 0; d < 7; ++d)
            p.emplace_back(QString::fromLatin1(names[d]), on[d] == QLatin1Char('x'));
        return p;
    };
    Params hot = {{QStringLiteral("Service_ID"), 1},
                  {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
                  {QStringLiteral("Service_Type"), QStringLiteral("D")},
                  {QStringLiteral("Default_Delivery_Type"), QStringLiteral("W")},
                  {QStringLiteral("Default_Event"), 5}};
    for (const auto& v : days(QStringLiteral("xxxxx..")))
        hot.push_back(v);
    insertRow(db(), QStringLiteral("Services"), hot);
    Params frozen = {{QStringLiteral("Service_ID"), 2},
                     {QStringLiteral("Service_Desc"), QStringLiteral("Frozen Meals")},
                     {QStringLiteral("Service_Type"), QStringLiteral("D")}};
    for (const auto& v : days(QStringLiteral("x..x...")))
        frozen.push_back(v);
    insertRow(db(), QStringLiteral("Services"), frozen);
    for (const auto& [column, value] : days(QStringLiteral("xxxxxx.")))
        db().execute(QStringLiteral("Update Config set %1 = :Value").arg(column),
                     {{QStringLiteral("Value"), value}});
    for (const char* route : {"R1", "R2", "R3"})
        insertRow(db(), QStringLiteral("Routes"),
                  {{QStringLiteral("Route_ID"), QString::fromLatin1(route)},
                   {QStringLiteral("Route_Desc"), QStringLiteral("Route ") + QString::fromLatin1(route)}});
    insertRow(db(), QStringLiteral("Clients"),
              {{QStringLiteral("Person_ID"), 10},
               {QStringLiteral("Client_ID"), QStringLiteral("C010")},
               {QStringLiteral("First_Name"), QStringLiteral("Ada")},
               {QStringLiteral("Last_Name"), QStringLiteral("Ongoing")},
               {QStringLiteral("Status"), QStringLiteral("A")},
               {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
               {QStringLiteral("Svcs_Used"), 1},
               {QStringLiteral("Start_Dte"), QDate(2024, 1, 1)},
               {QStringLiteral("Stop_Dte"), QDate(2025, 6, 30)},
               {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
               {QStringLiteral("Def_Stop"), 4.0},
               {QStringLiteral("Tue_Rte"), QStringLiteral("R2")},
               {QStringLiteral("Tue_Stop"), 7.0}});
    insertRow(db(), QStringLiteral("Clients"),
              {{QStringLiteral("Person_ID"), 20},
               {QStringLiteral("Client_ID"), QStringLiteral("C020")},
               {QStringLiteral("First_Name"), QStringLiteral("Bo")},
               {QStringLiteral("Last_Name"), QStringLiteral("Episodic")},
               {QStringLiteral("Status"), QStringLiteral("A")},
               {QStringLiteral("Delivery_Type"), QStringLiteral("E")},
               {QStringLiteral("Svcs_Used"), 2},
               {QStringLiteral("Start_Dte"), QDate(2024, 4, 1)}});
}

ResultSet DatedFixture::rowsOf(int person)
{
    return db().execute(
        QStringLiteral("Select RecordID, Deliv_Date, Schedule_Type, Svcs_Used, Delivery_Type, Route, "
                       "Stop, Fulfilled, List_ID, Created_By, Client_ID from EpisodicDeliveries "
                       "where Person_ID = :Person_ID order by Deliv_Date, RecordID"),
        {{QStringLiteral("Person_ID"), person}});
}

qint64 DatedFixture::count(const QString& sql, const Params& params)
{
    return db().execute(sql, params).value(0, 0).toLongLong();
}

} // namespace kb::test
