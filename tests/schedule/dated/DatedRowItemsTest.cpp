// The Items column of the dated delivery screens, on both stores: a row with
// lines of its own shows them; a row without shows what its weekday's lookup
// gives (the client's standing list, else the service's default), and a
// change of the row's lines or date shows at once.

#include "DatedFixture.h"

#include "dataset/QueryDataSet.h"
#include "dated/TFormEditEpisodicDeliveries.h"

using namespace kb;
using namespace kb::test;

namespace {

class DatedRowItemsTest : public DatedFixture
{
protected:
    void item(int id, const char* name)
    {
        insertRow(db(), QStringLiteral("Items"),
                  {{QStringLiteral("Item_ID"), id},
                   {QStringLiteral("Meal_Item"), QString::fromLatin1(name)},
                   {QStringLiteral("Number_Meals"), 1}});
    }
    void line(int person, const char* day, int item, int quantity, int sortOrder,
              const QVariant& delivId = {})
    {
        insertRow(db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Del_Day"), QString::fromLatin1(day)},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Sort_Order"), sortOrder},
                   {QStringLiteral("Deliv_ID"), delivId}});
    }
    // The items of the row of the date.
    static const DatedRowItems& of(TFormEditEpisodicDeliveries& form, const QDate& date)
    {
        EXPECT_TRUE(form.locateDate(date)) << date.toString(Qt::ISODate).toStdString();
        return form.itemsAt(form.dataSet().recNo() - 1);
    }
};

TEST_P(DatedRowItemsTest, OwnLinesElseTheWeekdaysStandingItems)
{
    item(1, "Hot Meal");
    item(2, "Milk");
    item(3, "Salad");
    line(0, "MON", 3, 1, 1);  // the service's Monday default
    line(0, "TUE", 3, 5, 1);  // the service's Tuesday default, beaten by the client's own
    line(10, "TUE", 1, 1, 1); // client 10's standing Tuesday list
    TFormEditScheduledDeliveries form(db(), ui, QStringLiteral("Pat Tester"), 10);
    for (int day : {11, 12, 13, 19})
        form.ActionAddDelivery(QDate(2024, 3, day));
    const qint64 own = count(QStringLiteral("Select RecordID from EpisodicDeliveries where Deliv_Date = :D"),
                             {{QStringLiteral("D"), QDate(2024, 3, 12)}});
    line(10, "TUE", 2, 1, 2, own);
    line(10, "TUE", 1, 2, 1, own);
    line(10, "TUE", 3, 1, 1, 999999); // another delivery's line
    form.reload();

    const DatedRowItems& tuesday = of(form, QDate(2024, 3, 12));
    EXPECT_EQ(tuesday.level, ItemListLevel::Dated);
    EXPECT_EQ(tuesday.summary(), QStringLiteral("2 \u00d7 Hot Meal, 1 \u00d7 Milk"));
    EXPECT_EQ(tuesday.details(QDate(2024, 3, 12)),
              QStringLiteral("Items of this delivery:\n  2 \u00d7 Hot Meal\n  1 \u00d7 Milk"));
    const DatedRowItems& nextTuesday = of(form, QDate(2024, 3, 19));
    EXPECT_EQ(nextTuesday.level, ItemListLevel::Client);
    EXPECT_EQ(nextTuesday.summary(), QStringLiteral("1 \u00d7 Hot Meal"));
    EXPECT_TRUE(nextTuesday.details(QDate(2024, 3, 19))
                    .startsWith(QStringLiteral("No items of its own: the client's items for Tuesday:")));
    const DatedRowItems& monday = of(form, QDate(2024, 3, 11));
    EXPECT_EQ(monday.level, ItemListLevel::Default);
    EXPECT_EQ(monday.summary(), QStringLiteral("1 \u00d7 Salad"));
    const DatedRowItems& wednesday = of(form, QDate(2024, 3, 13));
    EXPECT_EQ(wednesday.level, ItemListLevel::None);
    EXPECT_TRUE(wednesday.summary().isEmpty());
    EXPECT_EQ(form.itemsAt(99).level, ItemListLevel::None);

    // Moving the Wednesday row to a Monday gives it Monday's default at once;
    // the own lines move with their row to any date.
    ASSERT_TRUE(form.locateDate(QDate(2024, 3, 13)));
    ASSERT_TRUE(form.setRowValue(QStringLiteral("Deliv_Date"), QDate(2024, 3, 18)));
    EXPECT_EQ(of(form, QDate(2024, 3, 18)).summary(), QStringLiteral("1 \u00d7 Salad"));
    ASSERT_TRUE(form.locateDate(QDate(2024, 3, 12)));
    ASSERT_TRUE(form.setRowValue(QStringLiteral("Deliv_Date"), QDate(2024, 3, 14)));
    EXPECT_EQ(of(form, QDate(2024, 3, 14)).summary(), QStringLiteral("2 \u00d7 Hot Meal, 1 \u00d7 Milk"));
    form.close();
}

TEST_P(DatedRowItemsTest, ReassignRoutesNeedsASessionThatMayWrite)
{
    TFormEditEpisodicDeliveries form(db(), ui, QStringLiteral("Pat Tester"), 20);
    EXPECT_TRUE(form.reassignRoutesEnabled());
    db().setWriteRefusal(QStringLiteral("Read only"));
    EXPECT_FALSE(form.reassignRoutesEnabled());
    db().setWriteRefusal({});
}

INSTANTIATE_TEST_SUITE_P(Stores, DatedRowItemsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
