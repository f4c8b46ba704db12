// The calendar-based items of a client on both stores: which deliveries
// show, their meal lines, and saving changed lines and dropped dates.

#include "DatedFixture.h"

#include "dated/DatedDeliveries.h"
#include "dated/TFormClientEpisodicItems.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class CalendarItemsTest : public DatedFixture
{
protected:
    void SetUp() override
    {
        DatedFixture::SetUp();
        if (!data) return;
        int id = 100;
        for (const auto& [meal, name] : {std::pair{"B", "Oatmeal"},
                                         {"L", "Soup"},
                                         {"L", "Salad"},
                                         {"D", "Stew"},
                                         {"MF", "Shake"},
                                         {"S", "Cookie"}})
            insertRow(db(), QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), ++id},
                       {QStringLiteral("Meal"), QString::fromLatin1(meal)},
                       {QStringLiteral("Meal_Item"), QString::fromLatin1(name)},
                       {QStringLiteral("Item_Sort"), id}});
    }
    void line(qint64 delivery, int item, int quantity)
    {
        insertRow(db(), QStringLiteral("DefDels"),
                  {{QStringLiteral("Person_ID"), 20},
                   {QStringLiteral("Deliv_ID"), delivery},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity}});
    }
    qint64 lines(qint64 delivery)
    {
        return count(QStringLiteral("Select Count(*) from DefDels where Deliv_ID = :D"),
                     {{QStringLiteral("D"), delivery}});
    }
};

TEST_P(CalendarItemsTest, RetrievesUnsavedDatesAndSavesTheirMeals)
{
    DatedDeliveries rules(db(), ui, QStringLiteral("Pat Tester"));
    const DatedClient bo = *DatedClient::byPersonId(db(), 20);
    const qint64 first = rules.add(bo, DatedKind::Episodic, QDate(2024, 4, 2));
    const qint64 second = rules.add(bo, DatedKind::Episodic, QDate(2024, 4, 3));
    const qint64 credited = rules.add(bo, DatedKind::Episodic, QDate(2024, 4, 4));
    rules.add(bo, DatedKind::Episodic, QDate(2024, 6, 1)); // after the range
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = 'Y' where RecordID = :R"),
                 {{QStringLiteral("R"), credited}});
    line(first, 102, 2); // lunch: soup
    line(first, 103, 1); // lunch: salad, a second line of the meal
    line(first, 106, 3); // a snack, in no column

    TFormClientEpisodicItems form(db(), ui, QStringLiteral("Pat Tester"), 20, QDate(2024, 3, 6));
    EXPECT_EQ(form.begin(), QDate(2024, 3, 6));
    EXPECT_EQ(form.end(), QDate(2024, 4, 5));
    ASSERT_EQ(form.items(1).size(), 2u);
    EXPECT_EQ(form.items(1)[0].text, QStringLiteral("Soup"));
    EXPECT_EQ(form.items(3).size(), 1u); // "MF"
    form.ActionRetrieve();
    ASSERT_EQ(form.rows().size(), 2u); // neither the credited nor the later date
    EXPECT_EQ(form.rows()[0].date, QDate(2024, 4, 2));
    EXPECT_EQ(form.rows()[0].meals[1].itemId, 102);
    EXPECT_EQ(form.rows()[0].meals[1].quantity, 2);
    EXPECT_EQ(form.rows()[0].meals[0].itemId, 0);
    EXPECT_FALSE(form.modified());

    // Lunch becomes one salad, dinner is added, the snack stays; the second date goes.
    form.setMeal(0, 1, 1, 103);
    form.setMeal(0, 2, 2, 104);
    form.setMeal(1, 0, 1, 101); // dropped with its date below
    form.setDeliver(1, false);
    ui.answerNext(Answer::No);
    EXPECT_FALSE(form.ActionSave());
    EXPECT_EQ(lines(first), 3);
    EXPECT_EQ(rowsOf(20).rowCount(), 4);

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionSave());
    EXPECT_EQ(lines(first), 3); // salad, stew, the snack
    EXPECT_EQ(count(QStringLiteral("Select Quantity from DefDels where Deliv_ID = :D and Item_ID = 103"),
                    {{QStringLiteral("D"), first}}),
              1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from DefDels where Deliv_ID = :D and Item_ID = 102"),
                    {{QStringLiteral("D"), first}}),
              0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from DefDels where Deliv_ID = :D and Item_ID = 106"),
                    {{QStringLiteral("D"), first}}),
              1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from EpisodicDeliveries where RecordID = :R"),
                    {{QStringLiteral("R"), second}}),
              0);
    ASSERT_EQ(form.rows().size(), 1u);
    EXPECT_EQ(form.rows()[0].meals[2].itemId, 104);
    EXPECT_FALSE(form.modified());
}

INSTANTIATE_TEST_SUITE_P(Stores, CalendarItemsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
