// The episodic and scheduled maintenance screens' presenter: adding by the
// calendar and the keyboard, range deletion, and the edits the rules allow.

#include "DatedFixture.h"

#include "dataset/QueryDataSet.h"
#include "dated/TFormEditEpisodicDeliveries.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class MaintenanceScreenTest : public DatedFixture
{
};

TEST_P(MaintenanceScreenTest, RangeDeletionTakesOneRowADayAndSkipsCreditedRowsUnlessAsked)
{
    TFormEditScheduledDeliveries form(db(), ui, QStringLiteral("Pat Tester"), 10);
    EXPECT_EQ(form.caption(), QStringLiteral("Maintain Scheduled Deliveries for Ada Ongoing"));
    EXPECT_EQ(form.lowestDate(), QDate(2024, 1, 1));
    EXPECT_EQ(form.highestDate(), QDate(2025, 6, 30));
    EXPECT_FALSE(form.deleteEnabled());
    for (int day : {11, 11, 12, 13, 14})
        form.ActionAddDelivery(QDate(2024, 3, day));
    form.ActionAddDelivery(std::nullopt); // today
    EXPECT_EQ(form.deliveryDates().size(), 5);
    EXPECT_EQ(form.dataSet().fieldValue(u"Deliv_Date").toDate(), QDate(2024, 3, 6))
        << "stands on the new row";
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = 'Y' where Deliv_Date = :D"),
                 {{QStringLiteral("D"), QDate(2024, 3, 13)}});
    form.dataSet().refresh();

    ASSERT_TRUE(form.locateDate(QDate(2024, 3, 13)));
    EXPECT_FALSE(form.setItemsEnabled());
    EXPECT_FALSE(form.setRowValue(QStringLiteral("Route"), QStringLiteral("R3")));
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{QStringLiteral("A scheduled delivery can't be edited once it has been credited.")});
    ASSERT_TRUE(form.locateDate(QDate(2024, 3, 12)));
    EXPECT_TRUE(form.setItemsEnabled());
    EXPECT_TRUE(form.setRowValue(QStringLiteral("Route"), QStringLiteral("R3")));

    DeliveryDeletionOptions options = DeliveryDeletionOptions::defaults(QDate(2024, 3, 6));
    EXPECT_EQ(options.ending, QDate(2024, 3, 7));
    options.range = true;
    options.setEnding(QDate(2024, 3, 14));
    options.setBeginning(QDate(2024, 3, 11));
    EXPECT_EQ(form.ActionDelete(options), 3) << "11 (one of two), 12 and 14; 13 is credited";
    EXPECT_EQ(count(QStringLiteral("Select count(*) from EpisodicDeliveries where Person_ID = 10")), 3);
    options.includeFulfilled = true;
    EXPECT_EQ(form.ActionDelete(options), 2) << "the second row of the 11th and the credited 13th";
    const ResultSet left = rowsOf(10);
    ASSERT_EQ(left.rowCount(), 1);
    EXPECT_EQ(left.value(0, 1).toDate(), QDate(2024, 3, 6));
    form.close();
}

TEST_P(MaintenanceScreenTest, TheEpisodicScreenAddsBeforeTheStartDateOnlyAsTheStartDate)
{
    TFormEditEpisodicDeliveries form(db(), ui, QStringLiteral("Pat Tester"), 20);
    EXPECT_EQ(form.caption(), QStringLiteral("Maintain Episodic Deliveries for Bo Episodic"));
    EXPECT_EQ(form.initialDate(), QDate(2024, 4, 1)) << "today is before the calendar's first date";
    form.ActionAddDelivery(std::nullopt);
    EXPECT_EQ(ui.texts(Kind::Information).size(), 1);
    EXPECT_EQ(form.dataSet().fieldValue(u"Deliv_Date").toDate(), QDate(2024, 4, 1));
    EXPECT_EQ(form.dataSet().fieldValue(u"Schedule_Type").toString(), QStringLiteral("E"));
    EXPECT_EQ(form.dataSet().fieldValue(u"Service").toString(), QStringLiteral("Frozen Meals"));
    // An edit left open is asked about on closing; No leaves the row as it was.
    form.dataSet().edit();
    form.dataSet().setFieldValue(u"Route", QStringLiteral("R2"));
    form.close();
    EXPECT_EQ(ui.texts(Kind::Question),
              QStringList{QStringLiteral("Save your changes to the delivery that you are editing?")});
    EXPECT_EQ(rowsOf(20).value(0, 5).toString(), QStringLiteral("     "));
}

INSTANTIATE_TEST_SUITE_P(Stores, MaintenanceScreenTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
