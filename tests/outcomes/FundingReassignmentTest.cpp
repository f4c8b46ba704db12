// Reassign Funding on both stores: deliveries and default events restamped
// together, removal, the screen's guards, and a failure part way through
// that changes nothing.

#include "SavedDeliveriesFixture.h"

#include "funding/TFormReassignFunding.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class FundingReassignmentTest : public SavedDeliveriesFixture
{
protected:
    void SetUp() override
    {
        SavedDeliveriesFixture::SetUp();
        if (IsSkipped()) return;
        addClient(11, QStringLiteral("C11"), QStringLiteral("Abbott"), QStringLiteral("Ann"));
        addClient(12, QStringLiteral("C12"), QStringLiteral("Baker"), QStringLiteral("Bo"));
        addService(1, QStringLiteral("Home Meals"), 7);
        addService(2, QStringLiteral("Frozen"));
        addFunding(QStringLiteral("AAA"), QStringLiteral("Area Agency"));
        addFunding(QStringLiteral("T3"), QStringLiteral("Title III"));
        // Client 11: service 1 on the 1st (missed), 4th and 8th; service 2 on the 4th.
        addDelivery(1, 11, QDate(2024, 3, 1), 1, QStringLiteral("OD"), QStringLiteral("AAA"),
                    QStringLiteral("M"));
        addDelivery(2, 11, QDate(2024, 3, 4), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
        addDelivery(3, 11, QDate(2024, 3, 8), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
        addDelivery(4, 11, QDate(2024, 3, 4), 2, QStringLiteral("OD"), QStringLiteral("AAA"));
        addDelivery(5, 12, QDate(2024, 3, 4), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
        addEvent(11, QDate(2024, 3, 4), 7, QStringLiteral("AAA"));
        addEvent(11, QDate(2024, 3, 4), 9, QStringLiteral("AAA"));
        addEvent(11, QDate(2024, 3, 8), 7, QStringLiteral("AAA"));
    }

    QString fundings(const QString& table)
    {
        const QString order =
            table == QLatin1String("Deliveri") ? QStringLiteral("Deliv_ID") : QStringLiteral("RecordID");
        const ResultSet r =
            db().execute(QStringLiteral("Select Funding_Desc from %1 order by %2").arg(table, order));
        QStringList out;
        for (qsizetype i = 0; i < r.rowCount(); ++i)
            out << (r.value(i, 0).isNull() ? QStringLiteral("-") : r.value(i, 0).toString());
        return out.join(u',');
    }

    void choose(TFormReassignFunding& form, const QDate& from, const QDate& to)
    {
        form.setClient(11);
        form.setService(form.services().value(0));
        form.setStart(from);
        form.setEnd(to);
    }
};

TEST_P(FundingReassignmentTest, ReassignsDeliveriesAndDefaultEventsOfTheRangeInOneGo)
{
    TFormReassignFunding form(db(), session, ui);
    EXPECT_EQ(form.services().value(0), QStringLiteral("Home Meals          [1]"));
    EXPECT_EQ(form.fundingSources().value(1), QStringLiteral("Title III     [T3]"));
    EXPECT_FALSE(form.okEnabled());
    choose(form, QDate(2024, 3, 1), QDate(2024, 3, 4));
    EXPECT_FALSE(form.okEnabled()); // neither removal nor a source yet
    form.setReassign(true);
    EXPECT_FALSE(form.okEnabled());
    form.setFunding(form.fundingSources().value(1));
    EXPECT_TRUE(form.okEnabled());
    form.setStart(QDate(2000, 1, 1));
    EXPECT_FALSE(form.okEnabled());
    form.setStart(QDate(2024, 3, 1));

    // No: nothing changes.
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Question).last(), FundingReassignment::question());
    EXPECT_EQ(fundings(QStringLiteral("Deliveri")), QStringLiteral("AAA,AAA,AAA,AAA,AAA"));

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information).last(), FundingReassignment::done());
    EXPECT_EQ(ui.busyDepth(), 0);
    // Both bounds included, the missed delivery too; other services, days
    // and clients keep theirs.
    EXPECT_EQ(fundings(QStringLiteral("Deliveri")), QStringLiteral("T3,T3,AAA,AAA,AAA"));
    EXPECT_EQ(fundings(QStringLiteral("Events")), QStringLiteral("T3,AAA,AAA"));
    ASSERT_EQ(form.result().deliveries.size(), 2u);
    EXPECT_EQ(form.result().deliveries[0].delivId, 1);
    EXPECT_EQ(form.result().deliveries[0].oldFunding, QStringLiteral("AAA"));
    EXPECT_EQ(form.result().events, 1);
    const ResultSet h = db().execute(QStringLiteral("Select Person_ID, Client_ID, User, Event from History"));
    ASSERT_EQ(h.rowCount(), 1);
    EXPECT_EQ(h.value(0, 1).toString(), QStringLiteral("C11"));
    EXPECT_EQ(h.value(0, 2).toString(), QStringLiteral("Dana Clerk"));
    EXPECT_EQ(FundingReassignment::historyEvent({11, 1, QStringLiteral("Home Meals"), QDate(2024, 3, 1),
                                                 QDate(2024, 3, 4), QStringLiteral("T3")}),
              QStringLiteral("Assigned funding T3 to Home Meals, 3/1/2024-3/4/2024"));
    // History.Event holds 50 characters.
    EXPECT_EQ(h.value(0, 3).toString(), QStringLiteral("Assigned funding T3 to Home Meals, 3/1/2024-3/4/20"));

    // Removal over the whole month.
    form.setEnd(QDate(2024, 3, 31));
    form.setRemove(true);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(fundings(QStringLiteral("Deliveri")), QStringLiteral("-,-,-,AAA,AAA"));
    EXPECT_EQ(fundings(QStringLiteral("Events")), QStringLiteral("-,AAA,-"));
    EXPECT_EQ(historyEvents().last().left(50),
              QStringLiteral("Removed funding source from Home Meals, 3/1/2024-3/31/2024").left(50));
}

TEST_P(FundingReassignmentTest, EmptyOrReversedRangesAndServicesWithoutEventStillSucceed)
{
    TFormReassignFunding form(db(), session, ui);
    choose(form, QDate(2024, 3, 20), QDate(2024, 3, 10));
    form.setRemove(true);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_TRUE(form.result().deliveries.empty());
    EXPECT_EQ(historyEvents().size(), 1);
    EXPECT_EQ(ui.texts(Kind::Information).last(), FundingReassignment::done());

    // A service without a default event changes deliveries only.
    form.setService(form.services().value(1));
    form.setStart(QDate(2024, 3, 1));
    form.setEnd(QDate(2024, 3, 31));
    form.setReassign(true);
    form.setFunding(form.fundingSources().value(1));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(fundings(QStringLiteral("Deliveri")), QStringLiteral("AAA,AAA,AAA,T3,AAA"));
    EXPECT_EQ(fundings(QStringLiteral("Events")), QStringLiteral("AAA,AAA,AAA"));
}

TEST_P(FundingReassignmentTest, AFailurePartWayChangesNothing)
{
    // The events statement, second of three, fails: the deliveries it
    // followed must not stay restamped.
    db().deleteTable(QStringLiteral("Events"));
    TFormReassignFunding form(db(), session, ui);
    choose(form, QDate(2024, 3, 1), QDate(2024, 3, 31));
    form.setRemove(true);
    ui.answerNext(Answer::Yes);
    EXPECT_ANY_THROW(form.ActionOK());
    EXPECT_EQ(fundings(QStringLiteral("Deliveri")), QStringLiteral("AAA,AAA,AAA,AAA,AAA"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from History")), 0);
    EXPECT_FALSE(db().inTransaction());
    EXPECT_EQ(ui.busyDepth(), 0);
    EXPECT_FALSE(form.working());
}

TEST(FundingReassignmentKeys, BracketKeyReadsFourCharactersAndCuts)
{
    EXPECT_EQ(TFormReassignFunding::bracketKey(QStringLiteral("Home Meals          [1]")),
              QStringLiteral("1"));
    EXPECT_EQ(TFormReassignFunding::bracketKey(QStringLiteral("Svc [1234]")), QStringLiteral("1234"));
    EXPECT_EQ(TFormReassignFunding::bracketKey(QStringLiteral("Title III     [T3]")), QStringLiteral("T3"));
    EXPECT_EQ(TFormReassignFunding::bracketKey(QStringLiteral("X [AB~C]")), QStringLiteral("AB"));
    EXPECT_EQ(TFormReassignFunding::bracketKey(QStringLiteral("No key")), QString());
}

INSTANTIATE_TEST_SUITE_P(Stores, FundingReassignmentTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
