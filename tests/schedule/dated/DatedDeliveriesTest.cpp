// The rules of one dated delivery on both stores: adding, the checks of an
// edit and a post, and deleting with or without its credits.

#include "DatedFixture.h"

#include "dataset/Abort.h"
#include "dataset/QueryDataSet.h"
#include "dated/DatedDeliveries.h"

#include <QLocale>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class DatedDeliveriesTest : public DatedFixture
{
protected:
    DatedClient client(int person) { return *DatedClient::byPersonId(db(), person); }
};

TEST_P(DatedDeliveriesTest, AddTakesTheClientsDefaultsAndTheServicesDeliveryType)
{
    DatedDeliveries rules(db(), ui, QStringLiteral("Pat Tester"));
    const qint64 id = rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 12));
    rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 12)); // a second on one date is not refused
    rules.add(client(20), DatedKind::Episodic, QDate(2024, 4, 2));
    const ResultSet ongoing = rowsOf(10);
    ASSERT_EQ(ongoing.rowCount(), 2);
    EXPECT_EQ(ongoing.value(0, 0).toLongLong(), id);
    EXPECT_EQ(ongoing.value(0, 2).toString(), QStringLiteral("S"));
    EXPECT_EQ(ongoing.value(0, 4).toString(), QStringLiteral("W"));  // the service's default
    EXPECT_EQ(ongoing.value(0, 5).toString(), QStringLiteral("R1")); // not the Tuesday route
    EXPECT_EQ(ongoing.value(0, 6).toDouble(), 4.0);
    EXPECT_EQ(ongoing.value(0, 9).toString(), QStringLiteral("Pat Tester"));
    const ResultSet episodic = rowsOf(20);
    EXPECT_EQ(episodic.value(0, 2).toString(), QStringLiteral("E"));
    EXPECT_EQ(episodic.value(0, 4).toString(), QStringLiteral("D"));
    EXPECT_EQ(episodic.value(0, 5).toString(), QStringLiteral("     ")); // no default route: five blanks
    EXPECT_EQ(episodic.value(0, 6).toDouble(), 0.0);

    // By the keyboard today is used, or the start date with the user told.
    EXPECT_EQ(rules.keyboardDate(client(10), DatedKind::Scheduled), QDate(2024, 3, 6));
    EXPECT_TRUE(ui.messages().isEmpty());
    EXPECT_EQ(rules.keyboardDate(client(20), DatedKind::Episodic), QDate(2024, 4, 1));
    EXPECT_EQ(
        ui.texts(Kind::Information),
        QStringList{QStringLiteral(
            "You're attempting to add an episodic delivery earlier than this \r\nclient's start date! ")});
}

TEST_P(DatedDeliveriesTest, EditsAndPostsGoThroughTheRowRules)
{
    DatedDeliveries rules(db(), ui, QStringLiteral("Pat Tester"));
    rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 12));
    rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 13));
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = 'Y' where Deliv_Date = :D"),
                 {{QStringLiteral("D"), QDate(2024, 3, 13)}});
    QueryDataSet set(
        db(), QStringLiteral("select * from EpisodicDeliveries where Person_ID = :Person_ID and (not "
                             "Person_ID is null ) and Schedule_Type = 'S' order by Deliv_Date descending"));
    set.setParam(QStringLiteral("Person_ID"), 10);
    set.setRequestLive(true);
    rules.attachRules(set, DatedKind::Scheduled, [this] { return client(10); });
    set.open();

    // The credited row (13 March, first by the descending order) can't be edited.
    EXPECT_THROW(set.edit(), Abort);
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("A scheduled delivery can't be edited once it has been credited.")});
    EXPECT_EQ(set.state(), DataSet::State::Browse);

    set.next();
    const QStringList blanks = {QStringLiteral("Svcs_Used"), QStringLiteral("Route"),
                                QStringLiteral("Deliv_Date"), QStringLiteral("Delivery_Type")};
    const QStringList words = {QStringLiteral("Service"), QStringLiteral("Route"),
                               QStringLiteral("Delivery Date"), QStringLiteral("Delivery Type")};
    for (qsizetype i = 0; i < blanks.size(); ++i) {
        ui.clear();
        set.edit();
        set.setFieldValue(blanks[i], QVariant());
        EXPECT_THROW(set.post(), Abort);
        EXPECT_EQ(ui.texts(Kind::Warning).value(0),
                  QStringLiteral("The %1 for a scheduled delivery cannot be left blank!").arg(words[i]));
        EXPECT_EQ(set.state(), DataSet::State::Edit) << "the edit stays open";
        set.cancel();
    }

    // Before the start: moved to it, told; after the stop: moved to it.
    ui.clear();
    set.edit();
    set.setFieldValue(u"Deliv_Date", QDate(2023, 12, 1));
    set.post();
    EXPECT_EQ(set.fieldValue(u"Deliv_Date").toDate(), QDate(2024, 1, 1));
    set.locate(QStringLiteral("Deliv_Date"), QDate(2024, 1, 1));
    set.edit();
    set.setFieldValue(u"Deliv_Date", QDate(2026, 1, 1));
    set.post();
    EXPECT_EQ(
        ui.texts(Kind::Information),
        (QStringList{QStringLiteral("A scheduled delivery can't occur prior to a client's Start Date. This "
                                    "Delivery Date will now be set to this client's Start Date."),
                     QStringLiteral("A scheduled delivery can't occur after a client's Stop Date. This "
                                    "Delivery Date will now be set to this client's Stop Date.")}));
    EXPECT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries where Deliv_Date = :D"),
                    {{QStringLiteral("D"), QDate(2025, 6, 30)}}),
              1);
    set.close();
}

TEST_P(DatedDeliveriesTest, DeletingACreditedRowTakesItsCreditsOnlyWhenAsked)
{
    DatedDeliveries rules(db(), ui, QStringLiteral("Pat Tester"));
    const qint64 credited = rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 12));
    const qint64 open = rules.add(client(10), DatedKind::Scheduled, QDate(2024, 3, 14));
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = 'Y' where RecordID = :R"),
                 {{QStringLiteral("R"), credited}});
    for (qint64 id : {credited, open})
        insertRow(db(), QStringLiteral("DefDels"),
                  {{QStringLiteral("Person_ID"), 10},
                   {QStringLiteral("Deliv_ID"), id},
                   {QStringLiteral("Item_ID"), 1}});
    const Params saved = {{QStringLiteral("Person_ID"), 10},
                          {QStringLiteral("Client_ID"), QStringLiteral("C010")},
                          {QStringLiteral("Deliv_Dt"), QDate(2024, 3, 12)}};
    insertRow(db(), QStringLiteral("Deliveri"), with(saved, QStringLiteral("Svcs_Used"), 1));
    insertRow(db(), QStringLiteral("MealCrdt"),
              {{QStringLiteral("Person_ID"), 10},
               {QStringLiteral("Deliv_Dt"), QDate(2024, 3, 12)},
               {QStringLiteral("Service_ID"), 1}});
    insertRow(db(), QStringLiteral("Events"),
              {{QStringLiteral("Person_ID"), 10},
               {QStringLiteral("Client_ID"), QStringLiteral("C010")},
               {QStringLiteral("Event_ID"), 5},
               {QStringLiteral("Event_Date"), QDate(2024, 3, 12)}});

    EXPECT_FALSE(rules.remove(*DatedRow::read(db(), credited), DatedKind::Scheduled, false));
    EXPECT_TRUE(rules.remove(*DatedRow::read(db(), open), DatedKind::Scheduled, false));
    EXPECT_EQ(rowsOf(10).rowCount(), 1);
    EXPECT_EQ(count(QStringLiteral("Select count(*) from Deliveri")), 1);

    ASSERT_TRUE(rules.remove(*DatedRow::read(db(), credited), DatedKind::Scheduled, true));
    EXPECT_EQ(rowsOf(10).rowCount(), 0);
    for (const char* table : {"Deliveri", "MealCrdt", "Events", "DefDels"})
        EXPECT_EQ(count(QStringLiteral("Select count(*) from %1").arg(QLatin1String(table))), 0) << table;
    const ResultSet history = db().execute(QStringLiteral(
        "Select Event, Person_ID, Client_ID from History where Person_ID = 10 order by RecordID"));
    ASSERT_EQ(history.rowCount(), 2);
    EXPECT_TRUE(
        history.value(0, 0).toString().startsWith(QStringLiteral("Uncredited scheduled delivery for ")));
    EXPECT_TRUE(
        history.value(1, 0).toString().startsWith(QStringLiteral("Credited scheduled delivery for ")));
    // The text is cut to the column's 50 characters when the date is long.
    EXPECT_EQ(history.value(1, 0).toString().left(50),
              (QStringLiteral("Credited scheduled delivery for ") +
               QLocale().toString(QDate(2024, 3, 12), QLocale::ShortFormat) + QStringLiteral(" deleted"))
                  .left(50));

    // The client window asks first; No keeps the row.
    const qint64 episodic = rules.add(client(20), DatedKind::Episodic, QDate(2024, 4, 2));
    EXPECT_FALSE(rules.removeAsked(*DatedRow::read(db(), episodic)));
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{QStringLiteral("Delete the selected episodic delivery?")});
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(rules.removeAsked(*DatedRow::read(db(), episodic)));
    EXPECT_EQ(rowsOf(20).rowCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, DatedDeliveriesTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
