// The items of one dated delivery, set on its items screen, are what a run
// of that date delivers: exactly those lines, in their order, in place of
// the client's own list and the service default, and saved to MealCrdt.

#include "SaveFixture.h"

#include "dataset/QueryDataSet.h"
#include "dated/DatedKind.h"
#include "dated/TFormEditEpisodicDeliveries.h"
#include "items/TFormSetEpisodicItems.h"
#include "records/RecordServices.h"

#include <QLocale>

using namespace kb;
using namespace kb::test;

namespace {

using EpisodicItemsRunTest = SaveFixture;

enum Item { HotLunch = 1, Milk, FrozenDinner, Soup };

TEST_P(EpisodicItemsRunTest, ARunDeliversExactlyTheLinesSetForTheDelivery)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Milk, QStringLiteral("Milk"), 0, 0);
    addItem(FrozenDinner, QStringLiteral("Frozen Dinner"), 1, 1);
    addItem(Soup, QStringLiteral("Soup"), 1, 1);
    addLine(0, 2, QStringLiteral("MON"), FrozenDinner, 1, 1); // the service default
    addClient(1, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addLine(1, 2, QStringLiteral("MON"), Milk, 1, 1); // his own Monday list of the service
    addDated(1, monday, QStringLiteral("E"));
    addDated(1, monday.addDays(7), QStringLiteral("E")); // a second date keeps its own (no) lines
    const qint64 delivId = datedId(1, monday, QStringLiteral("E"));

    RecordServices services(db(), ui);
    TFormEditEpisodicDeliveries screen(db(), ui, QStringLiteral("Pat Tester"), 1);
    ASSERT_TRUE(screen.locateDate(monday));
    ASSERT_TRUE(screen.setItemsEnabled());
    {
        const std::unique_ptr<TFormSetEpisodicItems> items = screen.ActionSetItems(services);
        ASSERT_TRUE(items);
        EXPECT_EQ(items->title(),
                  QStringLiteral("Episodic Items for ") + QLocale().toString(monday, QLocale::LongFormat));
        items->FormShow();
        EXPECT_TRUE(items->comparisonIsStanding()); // his own Monday list, not the default
        items->ActionAddItem();
        ASSERT_TRUE(items->setValue(QStringLiteral("Item_ID"), int(Soup)));
        ASSERT_TRUE(items->setValue(QStringLiteral("Quantity"), 2));
        items->ActionAddItem();
        ASSERT_TRUE(items->setValue(QStringLiteral("Item_ID"), int(HotLunch)));
        items->ActionMoveUp(); // Hot Lunch first
        EXPECT_TRUE(items->FormClose());
    }
    const ResultSet lines = db().execute(
        QStringLiteral("Select Item_ID, Quantity, Sort_Order, Person_ID, Service_ID, Del_Day from DefDels "
                       "where Deliv_ID = :D order by Sort_Order"),
        {{QStringLiteral("D"), delivId}});
    ASSERT_EQ(lines.rowCount(), 2);
    EXPECT_EQ(lines.value(0, 0).toInt(), HotLunch);
    EXPECT_EQ(lines.value(0, 2).toInt(), 1);
    EXPECT_EQ(lines.value(1, 0).toInt(), Soup);
    EXPECT_EQ(lines.value(1, 1).toInt(), 2);
    EXPECT_EQ(lines.value(1, 3).toInt(), 1);
    EXPECT_EQ(lines.value(1, 4).toInt(), 2);
    EXPECT_EQ(lines.value(1, 5).toString(), QStringLiteral("MON"));

    const RunItems run = items(monday);
    EXPECT_EQ(of(run, 1, u'E').level, ItemListLevel::Dated);
    EXPECT_EQ(itemIds(of(run, 1, u'E')), (QList<qint64>{HotLunch, Soup}));
    EXPECT_EQ(of(run, 1, u'E').numberMeals, 3);
    // The next Monday's delivery has no lines of its own: his own list.
    EXPECT_EQ(itemIds(of(items(monday.addDays(7)), 1, u'E')), (QList<qint64>{Milk}));

    ASSERT_TRUE(save(monday)) << errors();
    const ResultSet saved = db().execute(
        QStringLiteral(
            "Select Item_ID, Quantity from MealCrdt where Person_ID = 1 and Deliv_Dt = :D order by "
            "Sort_Order"),
        {{QStringLiteral("D"), monday}});
    ASSERT_EQ(saved.rowCount(), 2);
    EXPECT_EQ(saved.value(0, 0).toInt(), HotLunch);
    EXPECT_EQ(saved.value(1, 0).toInt(), Soup);
    EXPECT_EQ(saved.value(1, 1).toInt(), 2);

    // Saved and credited: the screen tells first that a change waits for the
    // date to be saved again, and the button is off.
    screen.reload();
    ASSERT_TRUE(screen.locateDate(monday));
    EXPECT_FALSE(screen.setItemsEnabled());
    ui.clear();
    EXPECT_TRUE(screen.ActionSetItems(services));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information), QStringList{creditedItemsText()});
}

INSTANTIATE_TEST_SUITE_P(Stores, EpisodicItemsRunTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
