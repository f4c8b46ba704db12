// "Delivery Directions": the items of one client on one date as the client
// print-outs gather them, the place of the delivery on that date, and the
// page the driver gets, from the client window and from an alternate address.

#include "ReportTestSupport.h"

#include "InsertRow.h"
#include "ReportHolder.h"
#include "ReportOutput.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "printouts/DeliveryDirections.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;
using namespace kb::reports;

namespace {

using Kind = ScriptedUserInterface::Kind;

class DeliveryDirectionsTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        ensureGuiApplication();
        data = std::make_unique<TempDataDir>(GetParam());
        Database& d = db();
        insertRow(d, QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")}});
        insertRow(d, QStringLiteral("Services"),
                  {{QStringLiteral("Service_ID"), 2},
                   {QStringLiteral("Service_Desc"), QStringLiteral("Frozen Meals")}});
        int id = 1;
        for (const char* item : {"Hot Lunch", "Milk", "Frozen Dinner"})
            insertRow(d, QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), id++},
                       {QStringLiteral("Meal_Item"), QString::fromLatin1(item)}});
        insertRow(d, QStringLiteral("Clients"),
                  {{QStringLiteral("Person_ID"), 7},
                   {QStringLiteral("Client_ID"), QStringLiteral("1007")},
                   {QStringLiteral("First_Name"), QStringLiteral("Greta")},
                   {QStringLiteral("Last_Name"), QStringLiteral("Lindqvist")},
                   {QStringLiteral("Status"), QStringLiteral("A")},
                   {QStringLiteral("Delivery_Type"), QStringLiteral("O")},
                   {QStringLiteral("Svcs_Used"), 1},
                   {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                   {QStringLiteral("Def_Stop"), 4.0},
                   {QStringLiteral("Thu_Rte"), QStringLiteral("R2")},
                   {QStringLiteral("Thu_Stop"), 7.5},
                   {QStringLiteral("Address1"), QStringLiteral("88 Birch Road")},
                   {QStringLiteral("City"), QStringLiteral("Millbrook")},
                   {QStringLiteral("State"), QStringLiteral("PA")},
                   {QStringLiteral("ZIP"), QStringLiteral("19001")},
                   {QStringLiteral("Directions"), QStringLiteral("Side door, ring twice.")}});
        // The service's Thursday default, the client's own Friday items.
        defdel(0, 1, "THU", 1, 1, QVariant());
        defdel(7, 1, "FRI", 2, 2, QVariant());
        insertRow(d, QStringLiteral("Routes"),
                  {{QStringLiteral("Route_ID"), QStringLiteral("R1")},
                   {QStringLiteral("Route_Desc"), QStringLiteral("Downtown")}});
    }

    Database& db() { return data->db(); }
    void defdel(int person, int service, const char* day, int item, int quantity, const QVariant& delivId)
    {
        insertRow(db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Service_ID"), service},
                   {QStringLiteral("Del_Day"), QString::fromLatin1(day)},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Sort_Order"), item},
                   {QStringLiteral("Deliv_ID"), delivId}});
    }
    static QStringList items(const ResultSet& rows)
    {
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list << QStringLiteral("%1 %2")
                        .arg(rows.value(r, u"Quantity").toInt())
                        .arg(rows.value(r, u"Meal_Item").toString());
        return list;
    }
    QVariant parameter(ReportHolder& holder, const char* name)
    {
        return holder.parameter(QString::fromLatin1(name));
    }

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
};

TEST_P(DeliveryDirectionsTest, ItemsComeFromTheDateTheClientOrTheService)
{
    const DeliveryReportContext context{db(), db().clock(), ui, QStringLiteral("pat"), nullptr, QString()};
    DeliveryDirections directions(context);
    // Thursday: nothing of the client's own, so the service's defaults.
    EXPECT_EQ(items(directions.itemsForDeliveryReport(7, QStringLiteral("S"), 1, QStringLiteral("THU"),
                                                      QDate(2024, 3, 7))),
              QStringList{"1 Hot Lunch"});
    EXPECT_EQ(directions.delivId(), -1);
    // Friday: the client's own.
    EXPECT_EQ(items(directions.itemsForDeliveryReport(7, QStringLiteral("S"), 1, QStringLiteral("FRI"),
                                                      QDate(2024, 3, 8))),
              QStringList{"2 Milk"});
    EXPECT_TRUE(ui.messages().isEmpty());

    // A scheduled delivery on another service: the user is told, and its items come too.
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("Person_ID"), 7},
               {QStringLiteral("Deliv_Date"), QDate(2024, 3, 8)},
               {QStringLiteral("Schedule_Type"), QStringLiteral("S")},
               {QStringLiteral("Svcs_Used"), 2},
               {QStringLiteral("Route"), QStringLiteral("R5")},
               {QStringLiteral("Stop"), 3.0}});
    const qint64 dated =
        db().execute(QStringLiteral("Select RecordID from EpisodicDeliveries")).value(0, 0).toLongLong();
    defdel(7, 2, "FRI", 3, 1, dated);
    EXPECT_EQ(items(directions.itemsForDeliveryReport(7, QStringLiteral("S"), 1, QStringLiteral("FRI"),
                                                      QDate(2024, 3, 8))),
              (QStringList{"2 Milk", "1 Frozen Dinner"}));
    EXPECT_EQ(directions.delivId(), dated);
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{
                  "This client is receiving a Scheduled Delivery for the date you chose on a \nService other "
                  "than their normally assigned Service."});
}

TEST_P(DeliveryDirectionsTest, TheDriverGetsThePlaceAddressAndItemsOfTheDate)
{
    QTemporaryDir out;
    const QString pdf = out.filePath(QStringLiteral("directions.pdf"));
    PdfFileOutput output(pdf);
    ReportHolder holder(output, db().clock());
    const DeliveryReportContext context{db(), db().clock(), ui, QStringLiteral("pat"), nullptr, QString()};
    DeliveryDirections directions(context);
    using DKind = DeliveryDirections::Kind;

    // Thursday by the weekday route and its stop.
    ASSERT_TRUE(directions.prepare(holder, DKind::Client, 7, QDate(2024, 3, 7)));
    EXPECT_EQ(parameter(holder, "Route_ID").toString(), "R2");
    EXPECT_EQ(parameter(holder, "Stop").toDouble(), 7.5);
    EXPECT_EQ(parameter(holder, "Schedule_Type").toString(), "S");
    // Friday by the default route.
    ASSERT_TRUE(directions.prepare(holder, DKind::Client, 7, QDate(2024, 3, 8)));
    EXPECT_EQ(parameter(holder, "Route_ID").toString(), "R1");
    EXPECT_EQ(parameter(holder, "Stop").toDouble(), 4.0);

    // An alternate address in force on the date takes the delivery there.
    db().execute(QStringLiteral("Update Config set Enable_Alternate_Addresses = true"));
    insertRow(db(), QStringLiteral("Address_Overrides"),
              {{QStringLiteral("Person_ID"), 7},
               {QStringLiteral("Override_Type"), QStringLiteral("D")},
               {QStringLiteral("Deliv_Date"), QDate(2024, 3, 8)},
               {QStringLiteral("Addr_Desc"), QStringLiteral("Daughter")},
               {QStringLiteral("Address1"), QStringLiteral("5 Quay Street")},
               {QStringLiteral("City"), QStringLiteral("Harbourton")},
               {QStringLiteral("Directions"), QStringLiteral("Blue gate.")},
               {QStringLiteral("Route"), QStringLiteral("R9")},
               {QStringLiteral("Stop"), 2.0}});
    ASSERT_TRUE(directions.print(holder, DKind::Client, 7, QDate(2024, 3, 8), ReportDestination::Screen));
    EXPECT_EQ(output.reportsWritten(), 1);
    QString text = runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
                       .simplified();
    for (const char* expected : {"Delivery Directions", "Friday, March 8, 2024", "Greta Lindqvist", "R9 2",
                                 "Deliver to (Daughter)", "5 Quay Street", "Blue gate.", "2 Milk"})
        EXPECT_TRUE(text.contains(QString::fromLatin1(expected))) << expected << "\n" << text.toStdString();

    // Thursday at home: the home address and the client's directions.
    ASSERT_TRUE(directions.print(holder, DKind::Client, 7, QDate(2024, 3, 7), ReportDestination::Screen));
    text = runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
               .simplified();
    for (const char* expected : {"88 Birch Road", "Side door, ring twice.", "R2 7.5", "1 Hot Lunch"})
        EXPECT_TRUE(text.contains(QString::fromLatin1(expected))) << expected << "\n" << text.toStdString();
    EXPECT_FALSE(text.contains(QStringLiteral("Quay")));

    // From the address override screen: the address the user stands on.
    const qint64 alternate =
        db().execute(QStringLiteral("Select RecordID from Address_Overrides")).value(0, 0).toLongLong();
    ASSERT_TRUE(directions.print(holder, DKind::AddressOverride, 7, QDate(2024, 3, 7),
                                 ReportDestination::Screen, alternate));
    text = runTool(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")})
               .simplified();
    EXPECT_TRUE(text.contains(QStringLiteral("5 Quay Street"))) << text.toStdString();

    // A data directory without either template: the message, nothing printed.
    QTemporaryDir folder;
    const DeliveryReportContext inFolder{db(),    db().clock(), ui, QStringLiteral("pat"),
                                         nullptr, folder.path()};
    EXPECT_FALSE(DeliveryDirections(inFolder).print(holder, DKind::AddressOverride, 7, QDate(2024, 3, 7),
                                                    ReportDestination::Printer, alternate));
    EXPECT_EQ(ui.texts(Kind::Error),
              QStringList{"The report template OneClientOverrideDirections040415.rtm could not be found."});
    EXPECT_EQ(output.reportsWritten(), 3);
}

INSTANTIATE_TEST_SUITE_P(Stores, DeliveryDirectionsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
