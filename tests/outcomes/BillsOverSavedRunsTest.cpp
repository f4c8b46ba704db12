// Client bills over deliveries written by real run saves on both stores,
// while what a bill depends on changes inside the period: the client's
// funding use is replaced part way (the run stamps each delivery with the
// source of its day), weekends fall to the service's default source, a
// range is reassigned to another source afterwards, an item's price
// changes between two saves, a funder has its own rate for the item, and
// deliveries are comped and missed. Totals are worked out by hand here.

#include "OutcomesFixture.h"

#include "Money.h"
#include "bills/ClientBillCalculator.h"
#include "funding/FundingReassignment.h"
#include "records/TFormDeliveries.h"

using namespace kb;
using namespace kb::test;

namespace {

Money m(const char* text)
{
    return *Money::parse(QString::fromLatin1(text));
}

class BillsOverSavedRuns : public OutcomesFixture
{
protected:
    void SetUp() override
    {
        OutcomesFixture::SetUp();
        if (IsSkipped()) return;
        insertRow(db(), QStringLiteral("Fundsrcs"),
                  {{QStringLiteral("Fund_ID"), 2}, {QStringLiteral("Fund_CD"), "AAA"}});
        insertRow(db(), QStringLiteral("Fundsrcs"),
                  {{QStringLiteral("Fund_ID"), 3}, {QStringLiteral("Fund_CD"), "PVT"}});
        setPrice(10, "5.00");
        setPrice(11, "3.50");
        // A funder's own rate for the item: what the funder is charged,
        // never what the client's bill reads.
        insertRow(db(), QStringLiteral("Pricing"),
                  {{QStringLiteral("Person_ID"), 0},
                   {QStringLiteral("Fund_CD"), QStringLiteral("AAA")},
                   {QStringLiteral("Service_ID"), 1},
                   {QStringLiteral("Method"), QStringLiteral("F")},
                   {QStringLiteral("Unit"), QStringLiteral("10")},
                   {QStringLiteral("Item_ID"), 10},
                   {QStringLiteral("Amount"), QVariant::fromValue(m("4.00"))}});
        addClient(1);                                     // Hot Lunch every day, service 1
        addClient(2, {{QStringLiteral("Svcs_Used"), 2}}); // Frozen Pair every day, service 2
        fundUse(1, 1, "AAA");
    }

    void setPrice(int item, const char* price)
    {
        db().execute(QStringLiteral("Update Items set Billed_Amount = :A where Item_ID = :I"),
                     {{QStringLiteral("A"), QVariant::fromValue(m(price))}, {QStringLiteral("I"), item}});
    }
    // A funding use of the client's service on the working days only.
    void fundUse(int person, int service, const char* code)
    {
        Params row = {{QStringLiteral("Person_ID"), person},
                      {QStringLiteral("Service_ID"), service},
                      {QStringLiteral("Fund_CD"), QString::fromLatin1(code)},
                      {QStringLiteral("Reimbursement_Method"), QStringLiteral("I")}};
        for (const char* day : {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday"})
            row.emplace_back(QString::fromLatin1(day), true);
        for (const char* day : {"Saturday", "Sunday"})
            row.emplace_back(QString::fromLatin1(day), false);
        insertRow(db(), QStringLiteral("FundUses"), row);
    }
    void saveDays(const QDate& from, const QDate& to)
    {
        for (QDate d = from; d <= to; d = d.addDays(1))
            ASSERT_EQ(saveRun(d), 2) << d.toString(Qt::ISODate).toStdString();
    }
    std::optional<ClientBill> bill(qint64 person, const QDate& start, const QDate& end)
    {
        BillOptions options;
        options.start = start;
        options.end = end;
        ClientBillCalculator calculator(db(), options);
        calculator.prepare();
        return calculator.bill(person, QStringLiteral("1"));
    }
    // The slot whose item text is given; the test fails without one.
    static BillSlot slot(const ClientBill& bill, const QString& item)
    {
        for (const BillSlot& s : bill.entries)
            if (s.item == item) return s;
        ADD_FAILURE() << "no line " << item.toStdString();
        return {};
    }
    static int lines(const ClientBill& bill)
    {
        int n = 0;
        for (const BillSlot& s : bill.entries)
            n += s.quantity.has_value();
        return n;
    }
};

TEST_P(BillsOverSavedRuns, FundingAndPriceChangesInsideThePeriod)
{
    const QDate start(2024, 3, 4); // a Monday
    const QDate change(2024, 3, 8);
    const QDate end(2024, 3, 13);

    // Monday to Thursday: client 1 is funded by AAA on working days.
    saveDays(start, change.addDays(-1));
    {
        // Billed before the price changes: 4 x 5.00 under AAA.
        const auto early = bill(1, start, change.addDays(-1));
        ASSERT_TRUE(early);
        EXPECT_EQ(early->total, m("20.00"));
        EXPECT_EQ(slot(*early, QStringLiteral("Hot Lunch AAA")),
                  (BillSlot{4, QStringLiteral("Hot Lunch AAA"), m("5.00"), m("20.00")}));
    }

    // From Friday the 8th the client's working days go to PVT, and Hot
    // Lunch costs 5.50.
    db().execute(QStringLiteral("Delete from FundUses where Person_ID = 1"));
    fundUse(1, 1, "PVT");
    setPrice(10, "5.50");
    saveDays(change, end);

    // Every delivery carries the source of its day.
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from Deliveri where Person_ID = 1 and Funding_Desc = 'AAA'")),
        4);
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from Deliveri where Person_ID = 1 and Funding_Desc = 'PVT'")),
        4);
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from Deliveri where Person_ID = 1 and Funding_Desc = 'T3'")),
        2);
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from Deliveri where Person_ID = 2 and Funding_Desc = 'T3'")),
        10);

    // Client 1 missed Tuesday the 5th: billed in full all the same.
    db().execute(
        QStringLiteral("Update Deliveri set Delivery_Status = 'M' where Person_ID = 1 and Deliv_Dt = :D"),
        {{QStringLiteral("D"), QDate(2024, 3, 5)}});
    // Client 2's Wednesday the 6th is comped through Recent Deliveries.
    {
        TFormDeliveries list(db(), session, ui);
        list.FormShow(2);
        const qint64 comped =
            count(QStringLiteral("Select Deliv_ID from Deliveri where Person_ID = 2 and Deliv_Dt = :D"),
                  {{QStringLiteral("D"), QDate(2024, 3, 6)}});
        ASSERT_TRUE(list.locate(comped));
        ASSERT_TRUE(list.ActionCompedDelivery());
    }
    // Client 2's last three days are settled with AAA afterwards.
    FundingReassignment::Selection s;
    s.personId = 2;
    s.serviceId = 2;
    s.serviceText = QStringLiteral("Frozen Meals");
    s.start = QDate(2024, 3, 11);
    s.end = end;
    s.fundCd = QStringLiteral("AAA");
    EXPECT_EQ(FundingReassignment::run(db(), s, session.userFullName).deliveries.size(), 3u);

    // By hand, client 1: the bill prices every day of the period at the
    // item's price when the bill is made (the delivery keeps no price), and
    // splits the lines by the source stamped on each day; the funder's own
    // rate of 4.00 plays no part.
    //   AAA: Mon 4 - Thu 7, the miss included      4 x 5.50 = 22.00
    //   PVT: Fri 8, Mon 11 - Wed 13                4 x 5.50 = 22.00
    //   T3:  Sat 9, Sun 10 (no funding use)        2 x 5.50 = 11.00
    const auto one = bill(1, start, end);
    ASSERT_TRUE(one);
    EXPECT_EQ(lines(*one), 3);
    EXPECT_EQ(slot(*one, QStringLiteral("Hot Lunch AAA")),
              (BillSlot{4, QStringLiteral("Hot Lunch AAA"), m("5.50"), m("22.00")}));
    EXPECT_EQ(slot(*one, QStringLiteral("Hot Lunch PVT")),
              (BillSlot{4, QStringLiteral("Hot Lunch PVT"), m("5.50"), m("22.00")}));
    EXPECT_EQ(slot(*one, QStringLiteral("Hot Lunch T3")),
              (BillSlot{2, QStringLiteral("Hot Lunch T3"), m("5.50"), m("11.00")}));
    EXPECT_EQ(one->total, m("55.00"));

    // By hand, client 2 (Frozen Pair at 3.50):
    //   T3:  Mon 4, Tue 5, Thu 7 - Sun 10          6 x 3.50 = 21.00
    //   T3 comped: Wed 6                           1 x 0    =  0.00
    //   AAA: Mon 11 - Wed 13, reassigned           3 x 3.50 = 10.50
    const auto two = bill(2, start, end);
    ASSERT_TRUE(two);
    EXPECT_EQ(lines(*two), 3);
    EXPECT_EQ(slot(*two, QStringLiteral("Frozen Pair T3")),
              (BillSlot{6, QStringLiteral("Frozen Pair T3"), m("3.50"), m("21.00")}));
    EXPECT_EQ(slot(*two, QStringLiteral("Frozen Pair T3 (Complimentary)")),
              (BillSlot{1, QStringLiteral("Frozen Pair T3 (Complimentary)"), m("0"), m("0")}));
    EXPECT_EQ(slot(*two, QStringLiteral("Frozen Pair AAA")),
              (BillSlot{3, QStringLiteral("Frozen Pair AAA"), m("3.50"), m("10.50")}));
    EXPECT_EQ(two->total, m("31.50"));

    // A period cut inside the changes: Thursday 7 to Saturday 9.
    //   client 1: AAA Thu 7, PVT Fri 8, T3 Sat 9   3 x 5.50 = 16.50
    const auto cut = bill(1, QDate(2024, 3, 7), QDate(2024, 3, 9));
    ASSERT_TRUE(cut);
    EXPECT_EQ(lines(*cut), 3);
    EXPECT_EQ(cut->total, m("16.50"));
}

INSTANTIATE_TEST_SUITE_P(Stores, BillsOverSavedRuns,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
