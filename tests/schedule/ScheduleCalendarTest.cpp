// The delivery weeks calendar and the delivery condition check of one
// client: titles, marks and the span shown, and every condition line with
// its reason.

#include "defaults/TFormDeliveryConditionsVerification.h"
#include "defaults/TFormScheduleCalendar.h"

#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "TempDataDir.h"
#include "dataset/QueryDataSet.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

ClientSchedule everyMonday(const QString& frequency)
{
    ClientSchedule s;
    s.name = QStringLiteral("Ann Lee");
    s.frequency = frequency;
    s.days[0] = true;
    return s;
}

TEST(ScheduleCalendar, MarksTheCheckedWeekdaysOfTheDeliveryWeeks)
{
    ScriptedUserInterface ui;
    const QDate today(2024, 3, 6); // a Wednesday
    TFormScheduleCalendar calendar(everyMonday(QStringLiteral("O")), today, ui);
    EXPECT_EQ(calendar.title(), "\"A\" Delivery Weeks");
    EXPECT_EQ(calendar.clientName(), "Ann Lee");
    EXPECT_EQ(calendar.firstShown(), QDate(2024, 3, 4)); // the week's Monday
    EXPECT_EQ(calendar.lastShown(), QDate(2024, 3, 4).addDays(89));
    // 4 March 2024 is week 6479, odd; 11 March even.
    EXPECT_TRUE(calendar.isMarked(QDate(2024, 3, 4)));
    EXPECT_FALSE(calendar.isMarked(QDate(2024, 3, 11)));
    EXPECT_FALSE(calendar.isMarked(QDate(2024, 3, 5)));
    EXPECT_EQ(calendar.markedDates().front(), QDate(2024, 3, 4));
    EXPECT_EQ(calendar.markedDates().at(1), QDate(2024, 3, 18));
    calendar.showMonth(2024, 7);
    calendar.setMonthsShown(1);
    EXPECT_EQ(calendar.firstShown(), QDate(2024, 7, 1));
    EXPECT_EQ(calendar.lastShown(), QDate(2024, 7, 30));

    EXPECT_EQ(TFormScheduleCalendar(everyMonday(QStringLiteral(" ")), today, ui).title(),
              "All Delivery Weeks");
    EXPECT_EQ(TFormScheduleCalendar(everyMonday(QStringLiteral("3")), today, ui).title(),
              "Third Week of the Month Deliveries");
    TFormScheduleCalendar first(everyMonday(QStringLiteral("1")), today, ui);
    first.showMonth(2024, 1);
    EXPECT_EQ(first.markedDates(), (QList<QDate>{QDate(2024, 1, 1), QDate(2024, 2, 5), QDate(2024, 3, 4)}));

    // One print at a time.
    EXPECT_TRUE(calendar.startPrint());
    EXPECT_FALSE(calendar.startPrint());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Information),
              QStringList{TFormScheduleCalendar::printBusyText()});
    calendar.endPrint();
    EXPECT_TRUE(calendar.startPrint());
}

class ConditionsTest : public ::testing::TestWithParam<StoreKind>
{
protected:
    void SetUp() override
    {
        KB_REQUIRE_STORE(GetParam());
        data = std::make_unique<TempDataDir>(GetParam());
        client.personId = 7;
        client.clientId = QStringLiteral("C007");
        client.status = QStringLiteral("A");
        client.deliveryType = QStringLiteral("O");
        client.frequency = QStringLiteral("A");
        client.days.fill(true);
        client.serviceId = 1;
        client.defaultRoute = QStringLiteral("R1");
        client.start = QDate(2024, 1, 1);
        insertRow(db(), QStringLiteral("Clients"), {{QStringLiteral("Person_ID"), 7}});
    }
    Database& db() { return data->db(); }
    void dated(const QDate& date, const char* type, int service = 1)
    {
        insertRow(db(), QStringLiteral("EpisodicDeliveries"),
                  {{QStringLiteral("Person_ID"), 7},
                   {QStringLiteral("Deliv_Date"), date},
                   {QStringLiteral("Schedule_Type"), QString::fromLatin1(type)},
                   {QStringLiteral("Svcs_Used"), service}});
    }
    // "condition: OK" or "condition: reason", line by line.
    QStringList check(const QDate& date)
    {
        TFormDeliveryConditionsVerification form(db(), client, date);
        QStringList lines;
        for (const auto& l : form.lines())
            lines.append(l.condition + QStringLiteral(": ") + (l.ok ? QStringLiteral("OK") : l.reason));
        return lines;
    }
    bool thumbUp(const QDate& date)
    {
        return TFormDeliveryConditionsVerification(db(), client, date).thumbUp();
    }

    std::unique_ptr<TempDataDir> data;
    ClientSchedule client;
};

const QDate Monday(2024, 3, 11);

TEST_P(ConditionsTest, EveryLineWithItsReason)
{
    EXPECT_EQ(check(Monday),
              (QStringList{"The client's status must be 'Active': OK", "The client must be on a service: OK",
                           "The client must be assigned to a route: OK",
                           "Day of the week must be selected for the date: OK",
                           "The start date must be prior to the delivery date: OK",
                           "The stop date, if there is one, must be later than the delivery date: OK",
                           "A suspension cannot be in effect during the delivery: OK"}));
    EXPECT_TRUE(thumbUp(Monday));

    client.status = QStringLiteral("S");
    client.serviceId = 0;
    client.defaultRoute.clear();
    client.days[0] = false;
    client.start = Monday.addDays(1);
    client.stop = Monday;
    EXPECT_EQ(check(Monday),
              (QStringList{
                  "The client's status must be 'Active': Status is Stopped",
                  "The client must be on a service: No service has been assigned",
                  "The client must be assigned to a route: There is no default route",
                  "Day of the week must be selected for the date: The day of the week isn't selected",
                  "The start date must be prior to the delivery date: Chosen date is before the Start date",
                  "The stop date, if there is one, must be later than the delivery date: There is a stop "
                  "date in effect",
                  "A suspension cannot be in effect during the delivery: OK"}));
    EXPECT_FALSE(thumbUp(Monday));
    client.status = QStringLiteral("N");
    client.start = QDate();
    EXPECT_EQ(check(Monday).at(0), "The client's status must be 'Active': Status is Not Yet Started");
    EXPECT_EQ(check(Monday).at(4),
              "The start date must be prior to the delivery date: There is no Start Date");
    client.status = QStringLiteral("I");
    EXPECT_EQ(check(Monday).at(0), "The client's status must be 'Active': Status is Inactive");
}

TEST_P(ConditionsTest, WeeksScheduledDeliveriesAndSuspensions)
{
    client.frequency = QStringLiteral("O"); // 11 March 2024 is in an even week
    EXPECT_EQ(check(Monday).at(3),
              "Day of the week must be selected for the date: The day of the week isn't selected");
    EXPECT_TRUE(thumbUp(Monday.addDays(7)));
    // A scheduled delivery on the date is served whatever the week.
    dated(Monday, "S", 2);
    EXPECT_TRUE(thumbUp(Monday));

    db().execute(QStringLiteral("Update Config set SUSPEND_SCHEDULED_DELIVERIES = False"));
    insertRow(db(), QStringLiteral("Suspends"),
              {{QStringLiteral("Person_ID"), 7},
               {QStringLiteral("Client_ID"), QStringLiteral("C007")},
               {QStringLiteral("Stop_Dt"), Monday},
               {QStringLiteral("Resume_Dt"), Monday.addDays(8)}});
    EXPECT_EQ(check(Monday).last(), "A suspension exists but a scheduled delivery overrides it: OK");
    EXPECT_EQ(check(Monday.addDays(7)).last(),
              "A suspension is in effect for this date: There is a suspension in effect");
    EXPECT_EQ(check(Monday.addDays(8)).last(), "A suspension cannot be in effect during the delivery: OK");
    db().execute(QStringLiteral("Update Config set SUSPEND_SCHEDULED_DELIVERIES = True"));
    EXPECT_EQ(check(Monday).last(),
              "A suspension is in effect for this date: There is a suspension in effect");

    client.deliveryType = QStringLiteral("E");
    EXPECT_EQ(check(Monday).at(3),
              "There must be an episodic delivery for the date: There is no delivery scheduled.");
    EXPECT_EQ(check(Monday).last(), "A suspension exists but does not apply: OK");
    dated(Monday.addDays(1), "E");
    EXPECT_TRUE(thumbUp(Monday.addDays(1)));
}

TEST_P(ConditionsTest, ShowsTheItemsOfTheDateByTheRunsLookup)
{
    for (int item = 1; item <= 3; ++item)
        insertRow(db(), QStringLiteral("Items"),
                  {{QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Meal_Item"), QStringLiteral("Item %1").arg(item)}});
    const auto line = [&](int person, int service, const char* day, int item, int quantity) {
        insertRow(db(), QStringLiteral("Defdels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Service_ID"), service},
                   {QStringLiteral("Del_Day"), QString::fromLatin1(day)},
                   {QStringLiteral("Item_ID"), item},
                   {QStringLiteral("Quantity"), quantity},
                   {QStringLiteral("Sort_Order"), 1}});
    };
    line(0, 1, "MON", 1, 1);
    line(0, 1, "TUE", 2, 1);
    line(7, 1, "MON", 3, 2);
    TFormDeliveryConditionsVerification form(db(), client, Monday);
    ASSERT_EQ(form.items().size(), 1);
    EXPECT_EQ(form.items().front().name, "Item 3");
    EXPECT_EQ(form.items().front().quantity, 2);
    EXPECT_EQ(form.itemSource(), "The client's items for the weekday");
    form.setDate(Monday.addDays(1));
    EXPECT_EQ(form.items().front().name, "Item 2");
    EXPECT_EQ(form.itemSource(), "The service's default items");
}

INSTANTIATE_TEST_SUITE_P(Stores, ConditionsTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
