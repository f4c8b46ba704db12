// The default item lists of the services, kept on "Set Default Deliveries":
// which services and days it offers, and how lines are added, ordered,
// copied from Monday and deleted, on both stores.

#include "defaults/TFormSetDefaultDeliveries.h"

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "dataset/QueryDataSet.h"
#include "records/RecordServices.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class SetDefaultDeliveriesTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        services = std::make_unique<RecordServices>(db(), ui);
        const auto service = [&](int id, const char* desc, const char* type) {
            insertRow(db(), QStringLiteral("Services"),
                      {{QStringLiteral("Service_ID"), id},
                       {QStringLiteral("Service_Desc"), QString::fromLatin1(desc)},
                       {QStringLiteral("Service_Type"), QString::fromLatin1(type)}});
        };
        service(1, "Hot Meals", "D");
        service(2, "Custom", "D");     // a part of "CUSTOM": left out
        service(3, "Counseling", "C"); // no delivery service
        service(4, "Frozen-Packs", "D");
        service(5, "Customers", "D"); // not a part of "CUSTOM": shown
        for (int item = 1; item <= 4; ++item)
            insertRow(db(), QStringLiteral("Items"),
                      {{QStringLiteral("Item_ID"), item},
                       {QStringLiteral("Meal_Item"), QStringLiteral("Item %1").arg(QChar(u'E' - item))}});
        // The agency serves Monday to Friday and Sunday.
        db().execute(QStringLiteral("Update Config set DMON = True, DTUE = True, DWED = True, DTHU = True, "
                                    "DFRI = True, DSAT = False, DSUN = True"));
    }

    Database& db() { return data->db(); }
    // Item and Sort_Order of a day's default lines of a service, by Sort_Order then RecordID.
    QList<QPair<int, int>> lines(int service, const char* day)
    {
        const ResultSet rows = db().execute(
            QStringLiteral(
                "select Item_ID, Sort_Order from DefDels where Person_ID = 0 and Service_ID = :S and "
                "Del_Day = :D and Deliv_ID is null order by Sort_Order, RecordID"),
            {{QStringLiteral("S"), service}, {QStringLiteral("D"), QString::fromLatin1(day)}});
        QList<QPair<int, int>> list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append({rows.value(r, 0).toInt(), rows.value(r, 1).toInt()});
        return list;
    }
    void addLine(TFormSetDefaultDeliveries& form, int item)
    {
        form.ActionAddItem();
        ASSERT_TRUE(form.setValue(QStringLiteral("Item_ID"), item));
        ASSERT_TRUE(form.post());
    }

    std::unique_ptr<TempDataDir> data;
    ScriptedUserInterface ui;
    std::unique_ptr<RecordServices> services;
};

TEST_P(SetDefaultDeliveriesTest, OffersTheDeliveryServicesAndTheAgencysDays)
{
    TFormSetDefaultDeliveries form(*services);
    form.FormShow();
    EXPECT_EQ(form.serviceEntries(),
              (QStringList{QStringLiteral("1 - Hot Meals"), QStringLiteral("4 - Frozen-Packs"),
                           QStringLiteral("5 - Customers")}));
    EXPECT_EQ(form.serviceIndex(), 0);
    EXPECT_EQ(form.serviceId(), 1);
    EXPECT_EQ(TFormSetDefaultDeliveries::serviceIdOf(QStringLiteral(" 4 - Frozen-Packs")), 4);
    EXPECT_EQ(form.day(), 0);
    EXPECT_TRUE(form.isDayEnabled(4));
    EXPECT_FALSE(form.isDayEnabled(5));
    form.setDay(5); // Saturday is off: nothing changes
    EXPECT_EQ(form.day(), 0);
    // The items are offered by name, without regard to case.
    ASSERT_EQ(form.itemChoices().size(), 4);
    EXPECT_EQ(form.itemChoices().front().name, "Item A");

    // No day served: no day chosen, the list empty and adding refused.
    db().execute(QStringLiteral("Update Config set DMON = False, DTUE = False, DWED = False, DTHU = False, "
                                "DFRI = False, DSAT = False, DSUN = False"));
    TFormSetDefaultDeliveries none(*services);
    none.FormShow();
    EXPECT_EQ(none.day(), -1);
    EXPECT_TRUE(none.list().isEmpty());
    none.ActionAddItem();
    EXPECT_EQ(db().recordCount(QStringLiteral("DefDels")), 0);
}

TEST_P(SetDefaultDeliveriesTest, AddsMovesAndDeletesTheLinesOfOneList)
{
    TFormSetDefaultDeliveries form(*services);
    form.FormShow();
    addLine(form, 1);
    addLine(form, 2);
    addLine(form, 3);
    EXPECT_EQ(lines(1, "MON"), (QList<QPair<int, int>>{{1, 1}, {2, 2}, {3, 3}}));
    EXPECT_EQ(form.list().fieldValue(u"Quantity").toInt(), 1);
    EXPECT_EQ(form.list().fieldValue(u"Item").toString(), "Item B");

    // A line being added has no item until it is picked: it is still a line here.
    form.ActionAddItem();
    EXPECT_EQ(form.list().recordCount(), 4);
    EXPECT_TRUE(form.list().fieldValue(u"Item_ID").isNull());
    EXPECT_EQ(form.list().fieldValue(u"Sort_Order").toInt(), 4);
    ASSERT_TRUE(form.setValue(QStringLiteral("Item_ID"), 4));
    EXPECT_FALSE(form.setValue(QStringLiteral("Quantity"), 1000));
    EXPECT_FALSE(form.setValue(QStringLiteral("Sort_Order"), -1));
    ASSERT_TRUE(form.setValue(QStringLiteral("Quantity"), 999));
    ASSERT_TRUE(form.post());

    // The last line down and the first line up change nothing.
    form.ActionMoveDown();
    form.list().first();
    form.ActionMoveUp();
    EXPECT_EQ(lines(1, "MON"), (QList<QPair<int, int>>{{1, 1}, {2, 2}, {3, 3}, {4, 4}}));
    // The third line up: it takes 2, the line that had 2 takes 3.
    form.list().setRecNo(3);
    form.ActionMoveUp();
    EXPECT_EQ(lines(1, "MON"), (QList<QPair<int, int>>{{1, 1}, {3, 2}, {2, 3}, {4, 4}}));
    EXPECT_EQ(form.list().fieldValue(u"Item_ID").toInt(), 3);
    form.ActionMoveDown();
    form.ActionMoveDown();
    EXPECT_EQ(lines(1, "MON"), (QList<QPair<int, int>>{{1, 1}, {2, 2}, {4, 3}, {3, 4}}));
    // Another service's Monday list is not touched by the moves.
    form.setServiceIndex(1);
    addLine(form, 1);
    form.setServiceIndex(0);
    EXPECT_EQ(lines(4, "MON"), (QList<QPair<int, int>>{{1, 1}}));

    // Deleting asks; the numbers of the remaining lines aren't closed up.
    form.list().setRecNo(2);
    form.ActionDeleteItem(); // answered No
    EXPECT_EQ(lines(1, "MON").size(), 4);
    ui.answerNext(Answer::Yes);
    form.ActionDeleteItem();
    EXPECT_EQ(lines(1, "MON"), (QList<QPair<int, int>>{{1, 1}, {4, 3}, {3, 4}}));
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Question)
                    .contains(TFormSetDefaultDeliveries::deleteQuestion()));
}

TEST_P(SetDefaultDeliveriesTest, DupeMondayCopiesToEveryServedDayAndAddsAgainOnASecondPress)
{
    TFormSetDefaultDeliveries form(*services);
    form.FormShow();
    addLine(form, 1);
    addLine(form, 2);
    form.setDay(2);
    addLine(form, 3); // Wednesday has a line of its own, which stays
    form.ActionDupeMonday();
    EXPECT_EQ(form.day(), 2); // the day shown before comes back
    EXPECT_EQ(form.list().recordCount(), 3);
    EXPECT_EQ(lines(1, "TUE"), (QList<QPair<int, int>>{{1, 1}, {2, 2}}));
    EXPECT_EQ(lines(1, "WED"), (QList<QPair<int, int>>{{3, 1}, {1, 1}, {2, 2}}));
    EXPECT_TRUE(lines(1, "SAT").isEmpty()); // not served
    EXPECT_EQ(lines(1, "SUN").size(), 2);
    form.ActionDupeMonday();
    EXPECT_EQ(lines(1, "TUE").size(), 4);
    EXPECT_EQ(lines(1, "MON").size(), 2);
    EXPECT_TRUE(lines(4, "TUE").isEmpty());
}

TEST_P(SetDefaultDeliveriesTest, ClosingAsksAboutAPendingEdit)
{
    TFormSetDefaultDeliveries form(*services);
    form.FormShow();
    addLine(form, 1);
    ASSERT_TRUE(form.setValue(QStringLiteral("Quantity"), 5));
    EXPECT_TRUE(form.FormClose()); // No: the edit goes
    EXPECT_EQ(db().execute(QStringLiteral("select Quantity from DefDels")).value(0, 0).toInt(), 1);

    form.FormShow();
    ASSERT_TRUE(form.setValue(QStringLiteral("Quantity"), 6));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.FormClose());
    EXPECT_EQ(db().execute(QStringLiteral("select Quantity from DefDels")).value(0, 0).toInt(), 6);
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Question).count(TFormSetDefaultDeliveries::closeQuestion()), 2);
    EXPECT_FALSE(form.list().isActive());

    // Changing the day posts the pending edit first.
    form.FormShow();
    ASSERT_TRUE(form.setValue(QStringLiteral("Quantity"), 7));
    form.setDay(1);
    EXPECT_EQ(db().execute(QStringLiteral("select Quantity from DefDels")).value(0, 0).toInt(), 7);
}

INSTANTIATE_TEST_SUITE_P(Stores, SetDefaultDeliveriesTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
