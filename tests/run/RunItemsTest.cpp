// What each delivery of a run holds and who pays for it, on real stores: the
// order in which item lists are looked for, the confirmation of items, the
// meal and label counts, funding, and the service check.

#include "ItemsFixture.h"

#include "MessageError.h"
#include "save/MealCrdtWriter.h"

using namespace kb;
using namespace kb::test;

namespace {

using RunItemsTest = ItemsFixture;

enum Item { HotLunch = 1, Milk, FrozenDinner, Soup, Dessert = 10, FrozenBreakfast, EmergencyPack, Bread };

TEST_P(RunItemsTest, TheFirstListThatHasALineWinsAndListsAreNeverMerged)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Milk, QStringLiteral("Milk"), 0, 0);
    addItem(FrozenDinner, QStringLiteral("Frozen Dinner"), 1, 1);
    addItem(Soup, QStringLiteral("Soup"), 1, 1);
    addLine(0, 1, QStringLiteral("MON"), Milk, 1, 2);
    addLine(0, 1, QStringLiteral("MON"), HotLunch, 1, 1);
    addLine(0, 1, QStringLiteral("TUE"), Soup, 1, 1);
    addLine(0, 2, QStringLiteral("MON"), FrozenDinner, 2, 1);

    addClient(1); // nothing of his own: the service's list
    addClient(2); // his own Monday list, in its sort order
    addLine(2, 1, QStringLiteral("MON"), FrozenDinner, 2, 2);
    addLine(2, 1, QStringLiteral("MON"), Soup, 1, 1);
    addClient(3); // a line of another service does not count
    addLine(3, 2, QStringLiteral("MON"), Soup, 1, 1);
    addClient(4); // a dated delivery with lines of its own, besides his weekly one
    addDated(4, monday, QStringLiteral("S"));
    addLine(4, 2, QStringLiteral("MON"), Soup, 3, 1, datedId(4, monday, QStringLiteral("S")));
    addClient(5); // a dated delivery without lines: his own list of its service
    addDated(5, monday, QStringLiteral("S"));
    addLine(5, 2, QStringLiteral("MON"), Milk, 1, 1);
    addClient(6); // a dated delivery without lines, nothing of his own: the default
    addDated(6, monday, QStringLiteral("S"));

    const RunItems run = items(monday);
    ASSERT_EQ(run.deliveries().size(), 9u);
    EXPECT_EQ(of(run, 1).level, ItemListLevel::Default);
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, Milk}));
    EXPECT_FALSE(of(run, 1).customItems);
    EXPECT_EQ(of(run, 2).level, ItemListLevel::Client);
    EXPECT_EQ(itemIds(of(run, 2)), (QList<qint64>{Soup, FrozenDinner}));
    EXPECT_TRUE(of(run, 2).customItems);
    EXPECT_EQ(of(run, 2).numberMeals, 3);
    EXPECT_EQ(itemIds(of(run, 3)), (QList<qint64>{HotLunch, Milk}));
    EXPECT_EQ(of(run, 4, u'S').level, ItemListLevel::Dated);
    EXPECT_EQ(itemIds(of(run, 4, u'S')), (QList<qint64>{Soup}));
    EXPECT_EQ(of(run, 4, u'S').numberMeals, 3);
    EXPECT_EQ(itemIds(of(run, 4, u'O')), (QList<qint64>{HotLunch, Milk}));
    EXPECT_EQ(of(run, 5, u'S').level, ItemListLevel::Client);
    EXPECT_EQ(itemIds(of(run, 5, u'S')), (QList<qint64>{Milk}));
    EXPECT_TRUE(of(run, 5, u'S').customItems);
    EXPECT_EQ(of(run, 6, u'S').level, ItemListLevel::Default);
    EXPECT_EQ(itemIds(of(run, 6, u'S')), (QList<qint64>{FrozenDinner}));
    EXPECT_FALSE(of(run, 6, u'S').customItems);
    EXPECT_EQ(of(run, 6, u'S').numberMeals, 2);

    // On Tuesday client 2 has no list of his own: the service's Tuesday list.
    const RunItems tue = items(tuesday);
    EXPECT_EQ(of(tue, 2).level, ItemListLevel::Default);
    EXPECT_EQ(itemIds(of(tue, 2)), (QList<qint64>{Soup}));
    // Rows in the run's order: route, stop, client.
    QList<qint64> order;
    for (const DeliveryItems& d : run.deliveries())
        order.append(d.delivery.personId);
    EXPECT_EQ(order, (QList<qint64>{1, 2, 3, 4, 5, 6, 4, 5, 6}));
}

TEST_P(RunItemsTest, ConfirmationCodesOnWeeklyAndDatedLists)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Dessert, QStringLiteral("Holiday Dessert"), 0, 0, QStringLiteral("O"));
    addItem(FrozenBreakfast, QStringLiteral("Frozen Breakfast"), 1, 1, QStringLiteral("S"));
    addItem(EmergencyPack, QStringLiteral("Emergency Pack"), 5, 1, QStringLiteral("A"));
    addItem(Bread, QStringLiteral("Bread"), 0, 0, QStringLiteral("o")); // any other code never asks
    for (int item : {HotLunch, Dessert, FrozenBreakfast, EmergencyPack, Bread})
        addLine(0, 1, QStringLiteral("MON"), item, 1, item);
    addClient(1);
    addClient(2, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addDated(2, monday, QStringLiteral("E"));
    for (int item : {HotLunch, Dessert, FrozenBreakfast, EmergencyPack, Bread})
        addLine(2, 2, QStringLiteral("MON"), item, 1, item, datedId(2, monday, QStringLiteral("E")));

    RunItems run = items(monday);
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, FrozenBreakfast, Bread}));
    EXPECT_EQ(itemIds(of(run, 2, u'E')), (QList<qint64>{HotLunch, Dessert, Bread}));
    // The service's default counts obey the confirmation too.
    EXPECT_EQ(of(run, 1).numberMeals, 2);

    // "~O" and "~A" lines confirm for weekly lists, "~S" and "~A" for dated ones.
    run = items(monday, {{Dessert, EmergencyPack}, {EmergencyPack}});
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, Dessert, FrozenBreakfast, EmergencyPack, Bread}));
    EXPECT_EQ(of(run, 1).numberMeals, 7);
    EXPECT_EQ(itemIds(of(run, 2, u'E')), (QList<qint64>{HotLunch, Dessert, EmergencyPack, Bread}));
    run = items(monday, {{}, {FrozenBreakfast}});
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch, FrozenBreakfast, Bread}));
    EXPECT_EQ(itemIds(of(run, 2, u'E')), (QList<qint64>{HotLunch, Dessert, FrozenBreakfast, Bread}));
}

TEST_P(RunItemsTest, ADatedListThatLosesEveryLineFallsThrough)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Soup, QStringLiteral("Soup"), 1, 1);
    addItem(FrozenBreakfast, QStringLiteral("Frozen Breakfast"), 1, 1, QStringLiteral("S"));
    addLine(0, 2, QStringLiteral("MON"), HotLunch, 1, 1);
    for (int person : {1, 2}) {
        addClient(person);
        addDated(person, monday, QStringLiteral("S"));
        addLine(person, 2, QStringLiteral("MON"), FrozenBreakfast, 2, 1,
                datedId(person, monday, QStringLiteral("S")));
    }
    addLine(1, 2, QStringLiteral("MON"), Soup, 1, 1); // client 1's own list for the dated delivery's service

    RunItems run = items(monday);
    EXPECT_EQ(of(run, 1, u'S').level, ItemListLevel::Client);
    EXPECT_EQ(itemIds(of(run, 1, u'S')), (QList<qint64>{Soup}));
    EXPECT_TRUE(of(run, 1, u'S').customItems);
    EXPECT_EQ(of(run, 2, u'S').level, ItemListLevel::Default);
    EXPECT_EQ(itemIds(of(run, 2, u'S')), (QList<qint64>{HotLunch}));
    EXPECT_FALSE(of(run, 2, u'S').customItems);

    run = items(monday, {{}, {FrozenBreakfast}});
    EXPECT_EQ(of(run, 1, u'S').level, ItemListLevel::Dated);
    EXPECT_EQ(itemIds(of(run, 2, u'S')), (QList<qint64>{FrozenBreakfast}));
    EXPECT_EQ(of(run, 2, u'S').numberMeals, 2);

    // A row that continues a delivery ("sD") is no dated delivery of its own.
    prepare(monday);
    db().execute(
        QStringLiteral("Update Memory MemTableDeliveries set Delivery_Type = 'sD' where Person_ID = 2 and "
                       "Delivery_Type = 'SD'"));
    run = form().FindRunItems({{}, {FrozenBreakfast}});
    EXPECT_EQ(of(run, 2, u's').level, ItemListLevel::Default);
}

TEST_P(RunItemsTest, MealsMultiplyQuantitiesAndLabelsNeverFallBelowOne)
{
    addItem(1, QStringLiteral("Double Dinner"), 2, 0);
    addItem(2, QStringLiteral("Bread"), 0, 0);
    addItem(3, QStringLiteral("Lunch Pack"), 1, 3);
    addClient(1);
    addLine(1, 1, QStringLiteral("MON"), 1, 3, 1);
    addClient(2);
    addLine(2, 1, QStringLiteral("MON"), 2, 4, 1);
    addClient(3);
    addLine(3, 1, QStringLiteral("MON"), 3, 2, 1);
    addLine(3, 1, QStringLiteral("MON"), 1, 1, 2);
    addLine(3, 1, QStringLiteral("MON"), 2, QVariant(), 3); // no quantity: a line that counts nothing
    addClient(4);                                           // no list anywhere
    addClient(5);
    addLine(5, 1, QStringLiteral("MON"), 99, 1, 1); // an item that does not exist: no line

    const RunItems run = items(monday);
    EXPECT_EQ(of(run, 1).numberMeals, 6);
    EXPECT_EQ(of(run, 1).numberLabels, 1);
    EXPECT_EQ(of(run, 2).numberMeals, 0);
    EXPECT_EQ(of(run, 2).numberLabels, 1);
    EXPECT_EQ(of(run, 3).numberMeals, 4);
    EXPECT_EQ(of(run, 3).numberLabels, 6);
    EXPECT_EQ(itemIds(of(run, 3)), (QList<qint64>{3, 1, 2}));
    EXPECT_TRUE(of(run, 3).lines.back().quantity.isNull());
    for (int person : {4, 5}) {
        EXPECT_EQ(of(run, person).level, ItemListLevel::None);
        EXPECT_TRUE(of(run, person).lines.empty());
        EXPECT_EQ(of(run, person).numberMeals, 0);
        EXPECT_EQ(of(run, person).numberLabels, 1);
        EXPECT_FALSE(of(run, person).customItems);
    }
}

TEST_P(RunItemsTest, AServiceThatDoesNotDeliverKeepsItsItemsButNoCountsOrFunding)
{
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 3},
               {QStringLiteral("Service_Desc"), QStringLiteral("Counseling")},
               {QStringLiteral("Service_Type"), QStringLiteral("C")}});
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 4},
               {QStringLiteral("Service_Desc"), QStringLiteral("Weekend")},
               {QStringLiteral("Service_Type"), QStringLiteral("D")}});
    addFund(1, QStringLiteral("T3"));
    setDefaultFunding(3, 1);
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addLine(0, 3, QStringLiteral("MON"), HotLunch, 2, 1);
    addClient(1, {{QStringLiteral("Svcs_Used"), 3}});
    const RunItems run = items(monday);
    EXPECT_EQ(run.defaults().maxServiceId(), 4);
    EXPECT_EQ(of(run, 1).level, ItemListLevel::Default);
    EXPECT_EQ(itemIds(of(run, 1)), (QList<qint64>{HotLunch}));
    EXPECT_EQ(of(run, 1).numberMeals, 0);
    EXPECT_EQ(of(run, 1).numberLabels, 1);
    EXPECT_EQ(of(run, 1).fundingDesc, "");
}

TEST_P(RunItemsTest, FundingFollowsTheWeekdayElseTheServiceDefault)
{
    addFund(1, QStringLiteral("T3"));
    addFund(2, QStringLiteral("PRV"));
    setDefaultFunding(1, 1);
    setDefaultFunding(2, 2);
    addClient(1);
    addFundUse(1, 1, QStringLiteral("CDB"), {QStringLiteral("Tuesday")});
    addClient(2);
    addFundUse(2, 0, QStringLiteral("ALL"), {QStringLiteral("Monday")}); // every service of the client
    addClient(3);
    addFundUse(3, 1, QVariant(), {QStringLiteral("Monday")}); // a row without a code: no funding at all
    addClient(4);
    addFundUse(4, 2, QStringLiteral("XXX"), {QStringLiteral("Monday")}); // another service's
    addClient(5);
    addFundUse(5, 1, QStringLiteral("OWN"), {QStringLiteral("Monday")});
    addDated(5, monday, QStringLiteral("S")); // on service 2
    db().execute(QStringLiteral("Update Services set Default_Funding_Source = Null where Service_ID = 2"));
    addClient(6, {{QStringLiteral("Svcs_Used"), 2}});

    RunItems run = items(monday);
    EXPECT_EQ(of(run, 1).fundingDesc, "T3");
    EXPECT_EQ(of(run, 2).fundingDesc, "ALL");
    EXPECT_EQ(of(run, 3).fundingDesc, "");
    EXPECT_EQ(of(run, 4).fundingDesc, "T3");
    EXPECT_EQ(of(run, 5).fundingDesc, "OWN");
    EXPECT_EQ(of(run, 5, u'S').fundingDesc, ""); // service 2 has no default funding now
    EXPECT_EQ(of(run, 6).fundingDesc, "");
    EXPECT_EQ(run.defaults().funding(1), 1);
    run = items(tuesday);
    EXPECT_EQ(of(run, 1).fundingDesc, "CDB");
    EXPECT_EQ(of(run, 2).fundingDesc, "T3");
    EXPECT_EQ(of(run, 3).fundingDesc, "T3");
}

TEST_P(RunItemsTest, AnInvalidServiceStopsTheSaveWithItsMessage)
{
    addClient(1);
    addClient(7, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addDated(7, monday, QStringLiteral("E"),
             {{QStringLiteral("Svcs_Used"), 3}, {QStringLiteral("Stop"), 2.0}});
    addClient(8, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addDated(8, monday, QStringLiteral("E"),
             {{QStringLiteral("Svcs_Used"), 9}, {QStringLiteral("Stop"), 1.0}});
    prepare(monday);
    // The first such row in the run's order names its person.
    const auto expectRefusal = [&](const char* message) {
        try {
            form().FindRunItems({});
            ADD_FAILURE() << "the run's items were found";
        } catch (const MessageError& e) {
            EXPECT_EQ(e.message(), QString::fromLatin1(message));
        }
    };
    expectRefusal("The Service ID for Person ID 8 is not valid.");
    db().execute(QStringLiteral("Update Memory MemTableDeliveries set Svcs_Used = Null where Person_ID = 8"));
    db().execute(QStringLiteral("Update Memory MemTableDeliveries set Svcs_Used = 2 where Person_ID = 7"));
    expectRefusal("The Service ID for Person ID 8 is not valid.");
    db().execute(QStringLiteral("Update Memory MemTableDeliveries set Svcs_Used = -1 where Person_ID = 8"));
    expectRefusal("The Service ID for Person ID 8 is not valid.");
    db().execute(QStringLiteral("Update Memory MemTableDeliveries set Svcs_Used = 2 where Person_ID = 8"));
    EXPECT_EQ(form().FindRunItems({}).deliveries().size(), 3u);
}

TEST_P(RunItemsTest, MoveToMealCrdtsWritesEveryLineUnderItsDelivery)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Milk, QStringLiteral("Milk"), 0, 0);
    addLine(0, 1, QStringLiteral("MON"), HotLunch, 1, 1);
    addLine(0, 1, QStringLiteral("MON"), Milk, 2, 2);
    addClient(1, {{QStringLiteral("Diet_Restr"), 4}, {QStringLiteral("Org_Client"), QStringLiteral("Y")}});
    addClient(2, {{QStringLiteral("Svcs_Used"), 2}}); // no items: no row
    addClient(3);
    const RunItems run = items(monday);

    TransactionGuard transaction(db());
    MealCrdtWriter writer(db(), QStringLiteral("MON"));
    qint64 delivId = 500;
    for (const DeliveryItems& items : run.deliveries())
        writer.MoveToMealCrdts(items, delivId++);
    writer.flush();
    transaction.commit();
    EXPECT_EQ(writer.rowsWritten(), 4);
    const ResultSet rows = db().execute(QStringLiteral(
        "select Deliv_ID, Person_ID, Deliv_Dt, DOW, Item_ID, Quantity, Congregate, Modified_Ml, "
        "Service_ID, Sort_Order from MealCrdt order by RecordID"));
    ASSERT_EQ(rows.rowCount(), 4);
    const auto row = [&](int r) {
        QStringList cells;
        for (const QVariant& v : rows.row(r))
            cells << (v.typeId() == QMetaType::Bool ? (v.toBool() ? "true" : "false") : v.toString());
        return cells.join(u',');
    };
    EXPECT_EQ(row(0), "500,1,2024-03-11,MON,1,1,true,true,1,1");
    EXPECT_EQ(row(1), "500,1,2024-03-11,MON,2,2,true,true,1,2");
    EXPECT_EQ(row(2), "502,3,2024-03-11,MON,1,1,false,false,1,1");
    EXPECT_EQ(row(3), "502,3,2024-03-11,MON,2,2,false,false,1,2");

    // A value the table cannot take stops the writing with the engine's words.
    DeliveryItems bad = run.deliveries().front();
    bad.lines.front().quantity = QStringLiteral("many");
    MealCrdtWriter failing(db(), QStringLiteral("MON"));
    failing.MoveToMealCrdts(bad, 600);
    try {
        failing.flush();
        ADD_FAILURE() << "a bad quantity was written";
    } catch (const MessageError& e) {
        EXPECT_TRUE(e.message().startsWith(
            QStringLiteral("Unexpected error occurred while appending to the MealCrdt table: ")))
            << e.message().toStdString();
        EXPECT_GT(e.message().size(), 70);
    }
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from MealCrdt")).value(0, 0).toInt(), 4);
}

INSTANTIATE_TEST_SUITE_P(Stores, RunItemsTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
