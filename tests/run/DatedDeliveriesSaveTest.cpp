// Dated deliveries made by the recurrence generator go through a run: the
// run of a date picks up exactly the rows written for it, its save marks
// them fulfilled, and saving the date again neither doubles the deliveries
// nor touches the rows of other dates.

#include "SaveFixture.h"

#include "dated/DatedClient.h"
#include "recurrence/RecurrenceWriter.h"

using namespace kb;
using namespace kb::test;

namespace {

class DatedDeliveriesSaveTest : public SaveFixture
{
protected:
    // Writes the dates of a pattern for a person as the Auto Schedule screen does.
    void generate(int person, const RecurrencePattern& pattern)
    {
        const DatedClient client = *DatedClient::byPersonId(db(), person);
        RecurrenceDayTest test;
        test.stopDate = client.stopDate;
        const std::vector<QDate> dates = generateRecurrence(pattern, test).dates;
        RecurrenceWriter(db(), ui, QStringLiteral("Pat Tester"))
            .write(client, dates, client.service, clientsRegularRoute, false);
    }
    qint64 count(const QString& sql, const QDate& date)
    {
        return db().execute(sql, {{QStringLiteral("D"), date}}).value(0, 0).toLongLong();
    }
};

TEST_P(DatedDeliveriesSaveTest, ASavedRunMarksTheGeneratedRowsOfItsDateOnce)
{
    addClient(1, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")}, {QStringLiteral("Mon_Stop"), 9.0}});
    addClient(2, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addClient(3); // no dated deliveries
    RecurrencePattern weekly;
    weekly.style = RecurrencePattern::Style::Weekly;
    weekly.weekdays[0] = true; // Mondays
    weekly.start = monday;
    weekly.occurrences = 3;
    generate(1, weekly);
    RecurrencePattern daily;
    daily.start = monday.addDays(-1);
    daily.occurrences = 4;
    generate(2, daily);
    ASSERT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries where Deliv_Date >= :D"), monday),
              6);

    const ResultSet prepared = prepare(monday);
    int dated = 0;
    for (qsizetype r = 0; r < prepared.rowCount(); ++r) {
        const QString type = prepared.value(r, prepared.columnIndex(u"Delivery_Type")).toString();
        if (type.startsWith(u'S') || type.startsWith(u'E')) ++dated;
    }
    EXPECT_EQ(dated, 2) << "the scheduled row of client 1 and the episodic row of client 2";
    EXPECT_EQ(column(prepared, 1, QStringLiteral("Route_ID"), u'S').toString(), QStringLiteral("R2"));
    EXPECT_EQ(column(prepared, 1, QStringLiteral("Stop"), u'S').toDouble(), 9.0);

    ASSERT_TRUE(save(monday)) << errors();
    const QString marked =
        QStringLiteral("Select count(*) from EpisodicDeliveries where Fulfilled = 'Y' and Deliv_Date = :D");
    EXPECT_EQ(count(marked, monday), 2);
    EXPECT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries where Fulfilled = 'Y' and "
                                   "Deliv_Date <> :D"),
                    monday),
              0);
    const QString savedDated = QStringLiteral("Select count(*) from Deliveri where Deliv_Dt = :D and "
                                              "(Delivery_Type = 'SD' or Delivery_Type = 'ED')");
    EXPECT_EQ(count(savedDated, monday), 2);

    // The same date saved again: the same rows, marked once.
    const qint64 allBefore =
        count(QStringLiteral("Select count(*) from Deliveri where Deliv_Dt = :D"), monday);
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(count(marked, monday), 2);
    EXPECT_EQ(count(savedDated, monday), 2);
    EXPECT_EQ(count(QStringLiteral("Select count(*) from Deliveri where Deliv_Dt = :D"), monday), allBefore);

    // The next date's rows are picked up by its own run only.
    ASSERT_TRUE(save(tuesday)) << errors();
    EXPECT_EQ(count(marked, tuesday), 1);
    EXPECT_EQ(count(marked, monday), 2);
}

INSTANTIATE_TEST_SUITE_P(Stores, DatedDeliveriesSaveTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
