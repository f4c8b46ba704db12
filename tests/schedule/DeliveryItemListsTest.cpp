// The order in which a delivery's item list is looked for, on both stores:
// the dated delivery's own lines, else the client's for the weekday and
// service, else the service's default; the first that keeps a line wins.

#include "DeliveryItemLists.h"

#include "InsertRow.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class DeliveryItemListsTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        for (int item = 1; item <= 5; ++item)
            insertRow(db(), QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), item},
                       {QStringLiteral("Meal_Item"), QStringLiteral("Item %1").arg(item)},
                       {QStringLiteral("Number_Meals"), 1}});
        db().execute(QStringLiteral("Create Table Memory Deliveries (Request_ID Integer, Person_ID Integer, "
                                    "Service_ID Integer, Dated_ID Integer)"));
    }

    Database& db() { return data->db(); }
    void line(int person, int service, const char* day, const QVariant& item, int sortOrder,
              const QVariant& delivId = {})
    {
        insertRow(db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Service_ID"), service},
                   {QStringLiteral("Del_Day"), QString::fromLatin1(day)},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), 1},
                   {QStringLiteral("Sort_Order"), sortOrder},
                   {QStringLiteral("Deliv_ID"), delivId}});
    }
    void delivery(int request, int person, int service, const QVariant& datedId = {})
    {
        db().execute(
            QStringLiteral("Insert into Memory Deliveries values (:Request, :Person, :Service, :Dated)"),
            {{QStringLiteral("Request"), request},
             {QStringLiteral("Person"), person},
             {QStringLiteral("Service"), service},
             {QStringLiteral("Dated"), datedId}});
    }
    DeliveryItemLists load(const char* day, const DeliveryItemLists::LineFilter& filter = {})
    {
        DeliveryItemLists lists;
        lists.load(
            db(), QStringLiteral("Select Request_ID, Person_ID, Service_ID, Dated_ID from Memory Deliveries"),
            {}, QString::fromLatin1(day), filter);
        return lists;
    }
    static QList<qint64> items(const DeliveryItemLists::Choice& choice)
    {
        QList<qint64> ids;
        for (const ItemListLine& l : choice.lines)
            ids.append(l.itemId);
        return ids;
    }

    std::unique_ptr<TempDataDir> data;
};

TEST_P(DeliveryItemListsTest, AClientsWeekdayListReplacesTheDefaultOnThatDayOnly)
{
    line(0, 1, "MON", 1, 1);
    line(0, 1, "TUE", 2, 1);
    line(10, 1, "MON", 3, 1); // client 10's own Monday list
    line(11, 2, "MON", 4, 1); // client 11's line of another service
    delivery(1, 10, 1);
    delivery(2, 11, 1);

    DeliveryItemLists monday = load("MON");
    EXPECT_EQ(monday.find(1).level, ItemListLevel::Client);
    EXPECT_EQ(items(monday.find(1)), QList<qint64>{3});
    EXPECT_EQ(monday.find(2).level, ItemListLevel::Default);
    EXPECT_EQ(items(monday.find(2)), QList<qint64>{1});
    DeliveryItemLists tuesday = load("TUE");
    EXPECT_EQ(tuesday.find(1).level, ItemListLevel::Default);
    EXPECT_EQ(items(tuesday.find(1)), QList<qint64>{2});
    EXPECT_EQ(items(tuesday.find(2)), QList<qint64>{2});
    EXPECT_EQ(load("WED").find(1).level, ItemListLevel::None);
    EXPECT_EQ(load("MON").find(99).level, ItemListLevel::None);
}

TEST_P(DeliveryItemListsTest, ADatedDeliverysLinesComeFirstAndNothingIsMerged)
{
    line(0, 1, "MON", 1, 1);
    line(10, 1, "MON", 2, 1);
    line(10, 3, "MON", 3, 2, 500); // lines of dated delivery 500, whatever their service
    line(10, 3, "MON", 4, 1, 500);
    line(10, 3, "MON", 5, 1, 500); // same Sort_Order: kept in the order made
    line(11, 1, "MON", 3, 1, 501); // another client's dated delivery
    delivery(1, 10, 1, 500);
    delivery(2, 10, 1);      // his weekly delivery
    delivery(3, 10, 1, 501); // a number of another client's delivery: nothing of his
    delivery(4, 12, 1, 502); // a dated delivery without lines, no list of his own

    const DeliveryItemLists lists = load("MON");
    EXPECT_EQ(lists.find(1).level, ItemListLevel::Dated);
    EXPECT_EQ(items(lists.find(1)), (QList<qint64>{4, 5, 3}));
    EXPECT_EQ(items(lists.find(2)), QList<qint64>{2});
    EXPECT_EQ(lists.find(3).level, ItemListLevel::Client);
    EXPECT_EQ(lists.find(4).level, ItemListLevel::Default);
    EXPECT_EQ(items(lists.find(4)), QList<qint64>{1});

    // A list the filter empties does not count; the next one is looked at.
    const DeliveryItemLists filtered = load("MON", [](const ItemListLine& l, ItemListLevel level) {
        return !(level == ItemListLevel::Dated && l.itemId != 5) && !(level == ItemListLevel::Client);
    });
    EXPECT_EQ(items(filtered.find(1)), QList<qint64>{5});
    EXPECT_EQ(filtered.find(2).level, ItemListLevel::Default);
    EXPECT_EQ(items({ItemListLevel::Default, filtered.defaultLines(1)}), QList<qint64>{1});
}

TEST_P(DeliveryItemListsTest, ALineWithoutAnItemIsNoLine)
{
    line(0, 1, "MON", QVariant(), 1); // picked on the default screen but no item yet
    line(10, 1, "MON", 9, 1);         // an item that is gone
    line(10, 1, "MON", 2, 2);
    delivery(1, 10, 1);
    delivery(2, 11, 1);
    const DeliveryItemLists lists = load("MON");
    EXPECT_EQ(items(lists.find(1)), QList<qint64>{2});
    EXPECT_EQ(lists.find(2).level, ItemListLevel::None);
    EXPECT_TRUE(lists.defaultLines(1).empty());
}

TEST_P(DeliveryItemListsTest, OneDeliveryTakesTheSameListAsTheRun)
{
    insertRow(db(), QStringLiteral("Clients"), {{QStringLiteral("Person_ID"), 10}});
    line(0, 1, "MON", 1, 1);
    line(0, 1, "TUE", 2, 1);
    line(10, 1, "MON", 3, 1);
    line(10, 2, "TUE", 4, 1); // another service's line
    line(10, 2, "TUE", 5, 1, 700);
    const auto ids = [](const DeliveryItemLists::OneDelivery& one) {
        QList<qint64> list;
        for (const ItemListLine& l : one.lines)
            list.append(l.itemId);
        return list;
    };
    const auto monday = DeliveryItemLists::forDelivery(db(), 10, 1, {}, QStringLiteral("MON"));
    EXPECT_EQ(monday.level, ItemListLevel::Client);
    EXPECT_EQ(ids(monday), QList<qint64>{3});
    const auto tuesday = DeliveryItemLists::forDelivery(db(), 10, 1, {}, QStringLiteral("TUE"));
    EXPECT_EQ(tuesday.level, ItemListLevel::Default);
    EXPECT_EQ(ids(tuesday), QList<qint64>{2});
    const auto dated = DeliveryItemLists::forDelivery(db(), 10, 1, 700, QStringLiteral("TUE"));
    EXPECT_EQ(dated.level, ItemListLevel::Dated);
    EXPECT_EQ(ids(dated), QList<qint64>{5});
    EXPECT_EQ(DeliveryItemLists::forDelivery(db(), 10, 1, {}, QStringLiteral("WED")).level, ItemListLevel::None);
}

INSTANTIATE_TEST_SUITE_P(Stores, DeliveryItemListsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
