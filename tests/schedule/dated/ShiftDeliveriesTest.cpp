// Shifting a saved day's deliveries to another date on both stores: what
// moves, what stays, the questions and the History row.

#include "DatedFixture.h"

#include "dated/TFormAssignDeliveriesToNewDate.h"

#include <QLocale>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

QString shortDate(const QDate& date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

class ShiftDeliveriesTest : public DatedFixture
{
protected:
    void saved(int deliveryId, int person, const QDate& date)
    {
        insertRow(db(), QStringLiteral("Deliveri"),
                  {{QStringLiteral("Deliv_ID"), deliveryId},
                   {QStringLiteral("Deliv_Dt"), date},
                   {QStringLiteral("DOW"), QStringLiteral("XXX")},
                   {QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Svcs_Used"), 1}});
        insertRow(db(), QStringLiteral("MealCrdt"),
                  {{QStringLiteral("Deliv_ID"), deliveryId},
                   {QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Deliv_Dt"), date},
                   {QStringLiteral("Item_ID"), 1},
                   {QStringLiteral("Quantity"), 1}});
    }
    qint64 on(const char* table, const QDate& date)
    {
        return count(QStringLiteral("Select Count(*) from %1 where Deliv_Dt = :D").arg(QLatin1String(table)),
                     {{QStringLiteral("D"), date}});
    }
};

TEST_P(ShiftDeliveriesTest, MovesTheSavedDayAndLeavesThePlannedRows)
{
    // A locale whose short dates begin with the day.
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    struct Restore
    {
        QLocale locale;
        ~Restore() { QLocale::setDefault(locale); }
    } restore{before};
    const QDate monday(2024, 3, 4), tuesday(2024, 3, 5), friday(2024, 3, 1);
    saved(1, 10, monday);
    saved(2, 20, monday);
    saved(3, 10, friday);
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("RecordID"), 1},
               {QStringLiteral("Person_ID"), 20},
               {QStringLiteral("Deliv_Date"), monday},
               {QStringLiteral("Schedule_Type"), QStringLiteral("E")},
               {QStringLiteral("Fulfilled"), QStringLiteral("Y")}});

    TFormAssignDeliveriesToNewDate form(db(), ui, QStringLiteral("Pat Tester"), QDate(2024, 3, 6));
    EXPECT_EQ(TFormAssignDeliveriesToNewDate::caption(),
              QStringLiteral("Shift Deliveries From One Date To Another"));
    EXPECT_EQ(form.oldDate(), QDate(2024, 3, 5)); // yesterday to today
    EXPECT_EQ(form.newDate(), QDate(2024, 3, 6));
    EXPECT_TRUE(form.okEnabled());
    form.setOldDate(monday);
    form.setNewDate(monday);
    EXPECT_FALSE(form.okEnabled()); // nothing to move to
    form.setNewDate(QDate(2024, 3, 6).addDays(-750));
    EXPECT_FALSE(form.okEnabled()); // too far back
    form.setNewDate(QDate(2024, 3, 6).addDays(-749));
    EXPECT_TRUE(form.okEnabled());
    form.setNewDate(tuesday);

    // No: nothing changes.
    ui.answerNext(Answer::No);
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{QStringLiteral("This will shift all 2 deliveries that fall on ") +
                          shortDate(monday) + QStringLiteral(" to ") + shortDate(tuesday) +
                          QStringLiteral(".\r\nProceed with shifting the deliveries?")});
    EXPECT_EQ(on("Deliveri", monday), 2);

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(form.shifted(), 2);
    EXPECT_EQ(on("Deliveri", monday), 0);
    EXPECT_EQ(on("MealCrdt", monday), 0);
    EXPECT_EQ(on("Deliveri", tuesday), 2);
    EXPECT_EQ(on("MealCrdt", tuesday), 2);
    EXPECT_EQ(on("Deliveri", friday), 1); // another day stays
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri where DOW = 'TUE'")), 2);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri where DOW = 'XXX'")), 1);
    // The planned row keeps its date.
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from EpisodicDeliveries where Deliv_Date = :D"),
                    {{QStringLiteral("D"), monday}}),
              1);
    EXPECT_EQ(ui.texts(Kind::Information).value(0),
              QStringLiteral("2 deliveries successfully reassigned to ") + shortDate(tuesday));

    const ResultSet history = db().execute(
        QStringLiteral("Select Event, Person_ID, Client_ID, Event_Date, User from History where Event like "
                       "'Saved %'"));
    ASSERT_EQ(history.rowCount(), 1);
    // Numeric dates in the locale's order, so both fit.
    EXPECT_EQ(history.value(0, 0).toString(),
              QStringLiteral("Saved 2 deliv. by moving from 4/3/24 to 5/3/24"));
    EXPECT_TRUE(history.value(0, 1).isNull() || history.value(0, 1).toLongLong() == 0);
    EXPECT_TRUE(history.value(0, 2).toString().isEmpty());
    EXPECT_EQ(history.value(0, 3).toDate(), tuesday);
    EXPECT_EQ(history.value(0, 4).toString(), QStringLiteral("Pat Tester"));

    // The old date is empty now: the user is told and the screen stays.
    ui.clear();
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information),
              QStringList{QStringLiteral("There are no deliveries that fall on ") + shortDate(monday) +
                          QStringLiteral(".")});
    EXPECT_TRUE(ui.texts(Kind::Question).isEmpty());
}

TEST_P(ShiftDeliveriesTest, AReadOnlySessionChangesNothing)
{
    const QDate monday(2024, 3, 4), tuesday(2024, 3, 5);
    saved(1, 10, monday);
    db().setWriteRefusal(QStringLiteral("Read-only"));
    EXPECT_ANY_THROW(TFormAssignDeliveriesToNewDate::shift(db(), QStringLiteral("Pat"), monday, tuesday));
    db().setWriteRefusal(QString());
    EXPECT_EQ(on("Deliveri", monday), 1);
    EXPECT_EQ(on("MealCrdt", monday), 1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History where Event like 'Saved %'")), 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, ShiftDeliveriesTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
