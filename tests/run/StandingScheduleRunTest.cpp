// The standing schedule against what a prepared and saved run does with it:
// the order of the item lists on saved rows, the default lists as templates
// read at run time, and the delivery weeks calendar and the condition check
// agreeing with the run's selection over a whole year of dates.

#include "SaveFixture.h"

#include "dataset/QueryDataSet.h"
#include "defaults/ClientSchedule.h"
#include "defaults/TFormDeliveryConditionsVerification.h"
#include "defaults/TFormScheduleCalendar.h"
#include "defaults/TFormSetDefaultDeliveries.h"
#include "records/RecordServices.h"

#include <QSet>

using namespace kb;
using namespace kb::test;

namespace {

using StandingSchedule = SaveFixture;

QList<int> savedItems(const ResultSet& rows, int person)
{
    QList<int> items;
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        if (rows.value(r, 1).toInt() == person) items.append(rows.value(r, 4).toInt());
    return items;
}

TEST_P(StandingSchedule, AClientsMondayListServesMondaysOnlyAndAnotherServicesLineDoesNotCount)
{
    addItem(1, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(2, QStringLiteral("Frozen Dinner"), 1, 1);
    addItem(3, QStringLiteral("Kosher Lunch"), 1, 1);
    addItem(4, QStringLiteral("Soup"), 1, 1);
    addLine(0, 1, QStringLiteral("MON"), 1, 1, 1);
    addLine(0, 1, QStringLiteral("TUE"), 2, 1, 1);
    addClient(10);
    addLine(10, 1, QStringLiteral("MON"), 3, 2, 1); // his own Monday list
    addClient(11);
    addLine(11, 2, QStringLiteral("MON"), 4, 1, 1); // a line of a service he is not on

    ASSERT_TRUE(save(monday)) << errors();
    const ResultSet mon = mealCrdt(monday);
    EXPECT_EQ(savedItems(mon, 10), QList<int>{3});
    EXPECT_EQ(savedItems(mon, 11), QList<int>{1});
    ASSERT_TRUE(save(tuesday)) << errors();
    const ResultSet tue = mealCrdt(tuesday);
    EXPECT_EQ(savedItems(tue, 10), QList<int>{2});
    EXPECT_EQ(savedItems(tue, 11), QList<int>{2});

    // The default list is a template: a line added on the screen reaches
    // the next run of everyone without a list of his own.
    RecordServices services(db(), ui);
    TFormSetDefaultDeliveries defaults(services);
    defaults.FormShow();
    defaults.ActionAddItem();
    ASSERT_TRUE(defaults.setValue(QStringLiteral("Item_ID"), 4));
    ASSERT_TRUE(defaults.post());
    ASSERT_TRUE(defaults.FormClose());
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(savedItems(mealCrdt(monday), 11), (QList<int>{1, 4}));
    EXPECT_EQ(savedItems(mealCrdt(monday), 10), QList<int>{3});
}

INSTANTIATE_TEST_SUITE_P(Stores, StandingSchedule,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

// Ongoing clients of every frequency on several weekday patterns: for each
// date of a year, the run's ongoing selection, the calendar's marks and the
// condition check give the same clients.
using ScheduleAgreement = RunFixture;

TEST_F(ScheduleAgreement, CalendarAndConditionCheckAgreeWithThePreparedRunOverAYear)
{
    const QStringList frequencies = {
        QStringLiteral("A"), QStringLiteral("O"), QStringLiteral("E"), QStringLiteral("1"),
        QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"), QString()};
    const char* const days[] = {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"};
    int person = 0;
    QList<int> always; // clients no date, stop or suspension limits
    for (const QString& frequency : frequencies)
        for (int pattern = 0; pattern < 3; ++pattern) {
            Params values = {
                {QStringLiteral("Ongoing_Frequency"), frequency.isEmpty() ? QVariant() : frequency}};
            for (int d = 0; d < 7; ++d)
                values.emplace_back(QString::fromLatin1(days[d]), (d + pattern) % (pattern + 2) == 0);
            addClient(++person, values);
            always.append(person);
        }
    // The run's other limits, which the calendar leaves out and the check does not.
    addClient(++person, {{QStringLiteral("Stop_Dte"), QDate(2024, 6, 3)}});
    addClient(++person, {{QStringLiteral("Start_Dte"), QDate(2024, 9, 2)},
                         {QStringLiteral("Ongoing_Frequency"), QStringLiteral("E")}});
    addClient(++person, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("O")}});
    addSuspension(person, QDate(2024, 4, 1), QDate(2024, 4, 22));

    QueryDataSet clients(db(), QStringLiteral("select * from Clients order by Person_ID"));
    clients.open();
    std::vector<ClientSchedule> schedules;
    for (clients.first(); !clients.eof(); clients.next())
        schedules.push_back(ClientSchedule::fromRow(clients));
    ASSERT_EQ(int(schedules.size()), person);

    const QDate first(2024, 3, 6);
    std::vector<TFormScheduleCalendar> calendars;
    for (const ClientSchedule& s : schedules) {
        calendars.emplace_back(s, first, ui);
        calendars.back().setMonthsShown(13);
        calendars.back().showMonth(2024, 3);
    }
    std::vector<QSet<QDate>> marked;
    for (const TFormScheduleCalendar& c : calendars) {
        const QList<QDate> dates = c.markedDates();
        marked.emplace_back(dates.begin(), dates.end());
    }

    int deliveries = 0;
    for (QDate date = first; date < first.addYears(1); date = date.addDays(1)) {
        const QList<int> run = persons(prepare(date, u'O'));
        const QSet<int> selected(run.begin(), run.end());
        deliveries += int(selected.size());
        for (int p = 1; p <= person; ++p) {
            const ClientSchedule& s = schedules[size_t(p - 1)];
            const bool inRun = selected.contains(p);
            if (always.contains(p))
                ASSERT_EQ(marked[size_t(p - 1)].contains(date), inRun)
                    << "calendar, person " << p << " on " << date.toString(Qt::ISODate).toStdString();
            ASSERT_EQ(calendars[size_t(p - 1)].isMarked(date), s.deliveryPossible(date));
            TFormDeliveryConditionsVerification check(db(), s, date);
            ASSERT_EQ(check.thumbUp(), inRun)
                << "check, person " << p << " on " << date.toString(Qt::ISODate).toStdString();
        }
    }
    EXPECT_GT(deliveries, 1000); // the year was not empty
}

} // namespace
