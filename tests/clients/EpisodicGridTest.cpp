// The client window's grid of episodic deliveries is a live set: whatever
// edits a row there meets the rules of the delivery screens, with their
// messages. A refused post stays in edit and writes nothing.

#include "ClientWindowFixture.h"

#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "window/ClientPageData.h"
#include "window/ClientPages.h"

using namespace kb;
using namespace kb::test;
using Kind = ScriptedUserInterface::Kind;

namespace {

class EpisodicGrid : public ClientWindowFixture
{
protected:
    void SetUp() override
    {
        ClientWindowFixture::SetUp();
        if (!data) return;
        db().execute(
            QStringLiteral("Update Clients set Start_Dte = :Start, Stop_Dte = :Stop, Svcs_Used = 1, "
                           "Def_Rte = 'R1' where Person_ID = 5"),
            {{QStringLiteral("Start"), QDate(2024, 3, 1)}, {QStringLiteral("Stop"), QDate(2024, 6, 30)}});
        for (const auto& [day, fulfilled] : {std::pair{13, ""}, {20, "Y"}})
            insertRow(db(), QStringLiteral("EpisodicDeliveries"),
                      {{QStringLiteral("Person_ID"), 5},
                       {QStringLiteral("Client_ID"), QStringLiteral("105.0")},
                       {QStringLiteral("Deliv_Date"), QDate(2024, 3, day)},
                       {QStringLiteral("Svcs_Used"), 1},
                       {QStringLiteral("Delivery_Type"), QStringLiteral("D")},
                       {QStringLiteral("Schedule_Type"), QStringLiteral("E")},
                       {QStringLiteral("Route"), QStringLiteral("R1")},
                       {QStringLiteral("Fulfilled"), QString::fromLatin1(fulfilled)}});
    }
    QVariant stored(const QString& column, const QDate& date)
    {
        return db()
            .execute(
                QStringLiteral("Select %1 from EpisodicDeliveries where Person_ID = 5 and Deliv_Date = :D")
                    .arg(column),
                {{QStringLiteral("D"), date}})
            .value(0, 0);
    }
};

TEST_P(EpisodicGrid, EditsMeetTheRulesOfTheDeliveryScreens)
{
    TFormClients& w = open(QStringLiteral("userW"));
    moveToPerson(5);
    w.changePage(client_page::DeliveryRoute);
    QueryDataSet& grid = w.pageData().query(QStringLiteral("QueryEpisodicDeliveries"));
    ASSERT_TRUE(grid.isActive());
    ASSERT_EQ(grid.recordCount(), 2);
    ui.clear();

    // A blank route is refused, the row stays in edit and nothing is written.
    ASSERT_TRUE(grid.locate(QStringLiteral("Deliv_Date"), QDate(2024, 3, 13)));
    grid.edit();
    grid.setFieldValue(u"Route", QString());
    EXPECT_THROW(grid.post(), Abort);
    EXPECT_EQ(grid.state(), DataSet::State::Edit);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("The Route for a scheduled delivery cannot be left blank!")});
    grid.cancel();
    EXPECT_EQ(stored(QStringLiteral("Route"), QDate(2024, 3, 13)).toString().trimmed(), QStringLiteral("R1"));

    // A date after the client's stop date is moved to it, and the user told.
    ui.clear();
    grid.edit();
    grid.setFieldValue(u"Deliv_Date", QDate(2024, 8, 1));
    grid.post();
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{QStringLiteral("An episodic delivery can't occur after a client's Stop Date. This "
                                         "Delivery Date will now be set to this client's Stop Date.")});
    EXPECT_EQ(stored(QStringLiteral("Route"), QDate(2024, 6, 30)).toString().trimmed(), QStringLiteral("R1"));

    // A credited row can't be edited at all.
    ui.clear();
    ASSERT_TRUE(grid.locate(QStringLiteral("Deliv_Date"), QDate(2024, 3, 20)));
    EXPECT_THROW(grid.edit(), Abort);
    EXPECT_EQ(grid.state(), DataSet::State::Browse);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("An episodic delivery can't be edited once it has been credited.")});

    // A row added in the grid takes the client, the kind and the user.
    grid.append();
    grid.setFieldValue(u"Deliv_Date", QDate(2024, 4, 2));
    grid.setFieldValue(u"Svcs_Used", 1);
    grid.setFieldValue(u"Route", QStringLiteral("R1"));
    grid.setFieldValue(u"Delivery_Type", QStringLiteral("D"));
    grid.post();
    EXPECT_EQ(stored(QStringLiteral("Client_ID"), QDate(2024, 4, 2)).toString(), QStringLiteral("105.0"));
    EXPECT_EQ(stored(QStringLiteral("Schedule_Type"), QDate(2024, 4, 2)).toString(), QStringLiteral("E"));
    EXPECT_EQ(stored(QStringLiteral("Created_By"), QDate(2024, 4, 2)).toString(),
              QStringLiteral("Level W User"));
    EXPECT_TRUE(ui.texts(Kind::Error).isEmpty()) << ui.texts(Kind::Error).join(u'\n').toStdString();
}

INSTANTIATE_TEST_SUITE_P(Stores, EpisodicGrid, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
