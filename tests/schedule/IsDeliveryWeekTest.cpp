// The frequency test that decides whether a date is in a client's delivery
// weeks, on the dates where its arithmetic could go wrong.

#include "IsDeliveryWeek.h"

#include <gtest/gtest.h>

using namespace kb;

namespace {

TEST(IsDeliveryWeek, WeekNumbersRunMondayToSunday)
{
    // Monday 1 January 2024 is day 45292 and opens week 6470.
    EXPECT_EQ(deliveryWeekNumber(QDate(2024, 1, 1)), 6470);
    EXPECT_EQ(deliveryWeekNumber(QDate(2024, 1, 7)), 6470); // the Sunday after it
    EXPECT_EQ(deliveryWeekNumber(QDate(2023, 12, 31)), 6469); // the Sunday before it
    EXPECT_EQ(deliveryWeekNumber(QDate(2024, 1, 8)), 6471);
    // A Sunday and the Monday before it share a week; the Monday after it is the next.
    EXPECT_EQ(deliveryWeekNumber(QDate(2024, 3, 10)), deliveryWeekNumber(QDate(2024, 3, 4)));
    EXPECT_EQ(deliveryWeekNumber(QDate(2024, 3, 11)), deliveryWeekNumber(QDate(2024, 3, 10)) + 1);
}

TEST(IsDeliveryWeek, EmptyAndAMeanEveryWeek)
{
    for (const QDate& d : {QDate(2024, 1, 1), QDate(2024, 1, 8), QDate(2024, 2, 29)}) {
        EXPECT_TRUE(IsDeliveryWeek(QString(), d));
        EXPECT_TRUE(IsDeliveryWeek(QStringLiteral(" "), d));
        EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("A"), d));
    }
}

TEST(IsDeliveryWeek, OddAndEvenWeeks)
{
    // Week 6470 is even: "E" ("B Weeks") delivers, "O" ("A Weeks") does not.
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("E"), QDate(2024, 1, 1)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("O"), QDate(2024, 1, 1)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("E"), QDate(2024, 1, 7)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("O"), QDate(2024, 1, 8)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("E"), QDate(2024, 1, 14)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("E"), QDate(2024, 1, 15)));
}

TEST(IsDeliveryWeek, NthOccurrenceOfTheWeekdayInItsMonth)
{
    // Mondays of April 2024: 1, 8, 15, 22, 29.
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("1"), QDate(2024, 4, 1)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("1"), QDate(2024, 4, 8)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("2"), QDate(2024, 4, 8)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("3"), QDate(2024, 4, 15)));
    // "4" delivers from the 22nd to the 28th, never on the 29th or later.
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("4"), QDate(2024, 4, 22)));
    EXPECT_TRUE(IsDeliveryWeek(QStringLiteral("4"), QDate(2024, 4, 28)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("4"), QDate(2024, 4, 29)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("4"), QDate(2024, 4, 21)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("4"), QDate(2024, 3, 31)));
}

TEST(IsDeliveryWeek, UnknownValuesNeverDeliver)
{
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("X"), QDate(2024, 4, 1)));
    EXPECT_FALSE(IsDeliveryWeek(QStringLiteral("0"), QDate(2024, 4, 1)));
}

} // namespace
