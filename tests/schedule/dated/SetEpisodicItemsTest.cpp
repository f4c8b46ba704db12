// "Set Episodic Items": the item list of one dated delivery. Its lines are
// kept under the delivery's RecordID and nowhere else; the comparison list
// is the client's own list of the weekday, else the service default; and
// clearing, copying and ordering touch the delivery's lines only.

#include "DatedFixture.h"

#include "dataset/QueryDataSet.h"
#include "dated/DatedClient.h"
#include "dated/DatedDeliveries.h"
#include "items/TFormSetEpisodicItems.h"
#include "records/RecordServices.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;
enum Item { Soup = 1, Bread, Milk };

class SetEpisodicItemsTest : public DatedFixture
{
protected:
    void SetUp() override
    {
        DatedFixture::SetUp();
        if (IsSkipped()) return;
        services = std::make_unique<RecordServices>(db(), ui);
        for (const auto& [id, name] : {std::pair{Soup, "Soup"}, {Bread, "Bread"}, {Milk, "Milk"}})
            insertRow(db(), QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), int(id)},
                       {QStringLiteral("Meal_Item"), QString::fromLatin1(name)}});
        line(0, Soup, 1, 1);  // the Wednesday default of Hot Meals
        line(10, Milk, 2, 1); // client 10's own Wednesday list
        line(10, Bread, 1, 2);
    }
    void line(int person, int item, int quantity, int order, const QVariant& delivId = {})
    {
        insertRow(db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Del_Day"), QStringLiteral("WED")},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Sort_Order"), order},
                   {QStringLiteral("Deliv_ID"), delivId}});
    }
    qint64 addDelivery(int person, const QDate& date)
    {
        const DatedClient client = *DatedClient::byPersonId(db(), person);
        return DatedDeliveries(db(), ui, QStringLiteral("Pat Tester")).add(client, client.kind(), date);
    }
    // Item and Sort_Order of a delivery's lines.
    QList<QPair<int, int>> linesOf(qint64 delivId)
    {
        const ResultSet rows = db().execute(
            QStringLiteral("Select Item_ID, Sort_Order from DefDels where Deliv_ID = :D order by Sort_Order, "
                           "RecordID"),
            {{QStringLiteral("D"), delivId}});
        QList<QPair<int, int>> list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append({rows.value(r, 0).toInt(), rows.value(r, 1).toInt()});
        return list;
    }
    qint64 standingLines()
    {
        return count(QStringLiteral("Select count(*) from DefDels where Deliv_ID is null"));
    }

    std::unique_ptr<RecordServices> services;
};

TEST_P(SetEpisodicItemsTest, KeepsTheLinesUnderTheDeliveryAndComparesWithTheClientsOwnList)
{
    const QDate wednesday(2024, 3, 13);
    const qint64 id = addDelivery(10, wednesday);
    const qint64 other = addDelivery(10, wednesday.addDays(7));
    TFormSetEpisodicItems form(*services, 10, id, 1, wednesday);
    form.FormShow();
    EXPECT_EQ(form.title(), QStringLiteral("Set Episodic Items"));
    EXPECT_EQ(form.serviceEntries(), QStringList{QStringLiteral("1 - Hot Meals")});
    EXPECT_EQ(form.day(), 2);
    for (int d = 0; d < 7; ++d)
        EXPECT_FALSE(form.isDayEnabled(d)) << "the day buttons are off";
    form.setDay(0);
    EXPECT_EQ(form.day(), 2) << "only the delivery's weekday";
    EXPECT_TRUE(form.list().isEmpty());
    EXPECT_TRUE(form.comparisonIsStanding());
    ASSERT_EQ(form.comparison().recordCount(), 2);
    EXPECT_EQ(form.comparison().fieldValue(u"Item").toString(), QStringLiteral("Milk"));

    form.ActionAddItem();
    ASSERT_TRUE(form.setValue(QStringLiteral("Item_ID"), int(Soup)));
    form.ActionAddItem();
    ASSERT_TRUE(form.setValue(QStringLiteral("Item_ID"), int(Bread)));
    ASSERT_TRUE(form.post());
    EXPECT_EQ(linesOf(id), (QList<QPair<int, int>>{{Soup, 1}, {Bread, 2}}));
    form.ActionMoveUp(); // Bread first; the line it passes moves down
    EXPECT_EQ(linesOf(id), (QList<QPair<int, int>>{{Bread, 1}, {Soup, 2}}));
    form.ActionMoveUp(); // the first line stays
    EXPECT_EQ(linesOf(id), (QList<QPair<int, int>>{{Bread, 1}, {Soup, 2}}));

    form.ActionCopy(); // the client's own Wednesday lines join, in their order
    EXPECT_EQ(linesOf(id), (QList<QPair<int, int>>{{Bread, 1}, {Milk, 1}, {Soup, 2}, {Bread, 2}}));
    EXPECT_EQ(form.list().recordCount(), 4);

    ui.answerNext(Answer::No);
    form.ActionClear();
    EXPECT_EQ(linesOf(id).size(), 4);
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{TFormSetEpisodicItems::clearQuestion()});
    ui.answerNext(Answer::Yes);
    form.ActionClear();
    EXPECT_TRUE(linesOf(id).isEmpty());
    EXPECT_TRUE(form.list().isEmpty());
    EXPECT_TRUE(linesOf(other).isEmpty()) << "the other date never had lines";
    EXPECT_EQ(standingLines(), 3) << "the standing lists are untouched";
    EXPECT_TRUE(form.FormClose());
}

TEST_P(SetEpisodicItemsTest, WithoutAListOfHisOwnTheDefaultIsComparedAndCopied)
{
    // Client 20 is on Frozen Meals; this delivery is of Hot Meals.
    const QDate wednesday(2024, 4, 3);
    const qint64 id = addDelivery(20, wednesday);
    db().execute(QStringLiteral("Update EpisodicDeliveries set Svcs_Used = 1 where RecordID = :R"),
                 {{QStringLiteral("R"), id}});
    TFormSetEpisodicItems form(*services, 20, id, 1, wednesday);
    form.FormShow();
    EXPECT_FALSE(form.comparisonIsStanding());
    EXPECT_EQ(form.comparisonText(), TFormSetEpisodicItems::defaultText());
    ASSERT_EQ(form.comparison().recordCount(), 1);
    form.ActionCopy();
    EXPECT_EQ(linesOf(id), (QList<QPair<int, int>>{{Soup, 1}}));
    const ResultSet copied = db().execute(
        QStringLiteral("Select Person_ID, Service_ID, Del_Day, Quantity from DefDels where Deliv_ID = :D"),
        {{QStringLiteral("D"), id}});
    EXPECT_EQ(copied.value(0, 0).toInt(), 20);
    EXPECT_EQ(copied.value(0, 1).toInt(), 1);
    EXPECT_EQ(copied.value(0, 2).toString(), QStringLiteral("WED"));
    EXPECT_EQ(copied.value(0, 3).toInt(), 1);

    // A quantity out of range is refused; a pending edit is asked about on close.
    EXPECT_FALSE(form.setValue(QStringLiteral("Quantity"), 1000));
    ASSERT_TRUE(form.setValue(QStringLiteral("Quantity"), 4));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.FormClose());
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{TFormSetDefaultDeliveries::closeQuestion()});
    EXPECT_EQ(count(QStringLiteral("Select Quantity from DefDels where Deliv_ID = :D"),
                    {{QStringLiteral("D"), id}}),
              4);
    EXPECT_EQ(standingLines(), 3);
}

INSTANTIATE_TEST_SUITE_P(Stores, SetEpisodicItemsTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
