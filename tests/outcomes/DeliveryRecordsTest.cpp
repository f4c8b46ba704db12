// The Recent Deliveries list and Delete Delivery Credits on both stores:
// what the list shows, comps and their reversal, a funding edit that waits
// for the refresh, deleting one delivery and a group, and a deletion that
// fails part way.

#include "SavedDeliveriesFixture.h"

#include "records/DeliveryGroupDeletion.h"
#include "records/TFormCompDel.h"
#include "records/TFormDelDeliv.h"
#include "records/TFormDeliveredItems.h"
#include "records/TFormDeliveries.h"

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

const QDate monday(2024, 3, 4);

class DeliveryRecords : public SavedDeliveriesFixture
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
        addItem(1, QStringLiteral("Lunch"), QStringLiteral("L"), QStringLiteral("4.50"));
        addFunding(QStringLiteral("AAA"), QStringLiteral("Area Agency"));
        addFunding(QStringLiteral("PVT"), QStringLiteral("Private Pay"));
    }

    QString status(qint64 delivId)
    {
        return scalar(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = :I"),
                      {{QStringLiteral("I"), delivId}})
            .toString();
    }
    QString funding(qint64 delivId)
    {
        return scalar(QStringLiteral("Select Funding_Desc from Deliveri where Deliv_ID = :I"),
                      {{QStringLiteral("I"), delivId}})
            .toString();
    }
};

TEST_P(DeliveryRecords, ListShowsThePastDaysAfterTheLimitNewestFirstWithTheLastDelivery)
{
    // Today is 6 March 2024; 45 days back is 21 January.
    addDelivery(1, 11, QDate(2024, 1, 21), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(2, 11, QDate(2024, 1, 22), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(3, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(4, 12, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(5, 11, QDate(2024, 3, 8), 1, QStringLiteral("OD"), QStringLiteral("AAA"));

    TFormDeliveries list(db(), session, ui);
    list.FormShow(11);
    ASSERT_EQ(list.rows().rowCount(), 3);
    EXPECT_EQ(list.value(0, TFormDeliveries::DelivId).toLongLong(), 5);
    EXPECT_EQ(list.value(2, TFormDeliveries::DelivId).toLongLong(), 2);
    EXPECT_EQ(list.lastDelivery(), QDate(2024, 3, 8));
    list.setDays(46);
    EXPECT_EQ(list.rows().rowCount(), 4);
    list.setDays(5000);
    EXPECT_EQ(list.days(), TFormDeliveries::MaxDays);
    list.setDays(0);
    EXPECT_EQ(list.days(), TFormDeliveries::MinDays);

    TFormDeliveries empty(db(), session, ui);
    empty.FormShow(99);
    EXPECT_FALSE(empty.canDelete());
    EXPECT_FALSE(empty.canComp());
    EXPECT_FALSE(empty.canReverse());
    EXPECT_FALSE(empty.lastDelivery().isValid());
}

TEST_P(DeliveryRecords, CompAndReverseWorkOnOneDeliveryAndLeaveHistory)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(2, 11, monday, 2, QStringLiteral("OD"), QStringLiteral("AAA"));
    TFormDeliveries list(db(), session, ui);
    list.setCompDialog([](TFormCompDel& dialog) {
        EXPECT_EQ(dialog.recordedBy(), QStringLiteral("Dana Clerk"));
        dialog.setReason(QStringLiteral("Cold food"));
        dialog.setRecordedBy(QStringLiteral("Sam"));
        return dialog.ActionOK();
    });
    list.FormShow(11);
    ASSERT_TRUE(list.locate(1));
    EXPECT_TRUE(list.canComp());
    EXPECT_FALSE(list.canReverse());
    EXPECT_TRUE(list.ActionCompedDelivery());
    EXPECT_EQ(status(1), QStringLiteral("C"));
    EXPECT_EQ(status(2), QString()); // the other delivery of the day stays
    EXPECT_EQ(list.value(list.currentRow(), TFormDeliveries::DeliveryStatus).toString(), QStringLiteral("C"));
    EXPECT_TRUE(list.canReverse());
    const ResultSet h =
        db().execute(QStringLiteral("Select Person_ID, Client_ID, User, Event, Event_Date from History"));
    ASSERT_EQ(h.rowCount(), 1);
    EXPECT_EQ(h.value(0, 1).toString(), QStringLiteral("C11"));
    EXPECT_EQ(h.value(0, 2).toString(), QStringLiteral("Sam"));
    EXPECT_EQ(h.value(0, 3).toString(), QStringLiteral("3/4/2024 deliv comped-Cold food"));
    EXPECT_EQ(h.value(0, 4).toDate(), monday);

    // Comping it again is refused by the list.
    EXPECT_FALSE(list.ActionCompedDelivery());
    EXPECT_EQ(ui.texts(Kind::Information).last(), QStringLiteral("That delivery has already been Comped!"));

    // Reversal asks; No keeps the comp, Yes clears it.
    EXPECT_FALSE(list.ActionReverseCompedDelivery());
    EXPECT_EQ(ui.texts(Kind::Question).last(), QStringLiteral("Reverse the 3/4/2024 Comped delivery?"));
    EXPECT_EQ(status(1), QStringLiteral("C"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(list.ActionReverseCompedDelivery());
    EXPECT_TRUE(scalar(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = 1")).isNull());
    EXPECT_EQ(historyEvents().last(), QStringLiteral("3/4/2024 comped deliv reversed"));
    EXPECT_EQ(scalar(QStringLiteral("Select User from History order by RecordID desc")).toString(),
              QStringLiteral("Dana Clerk"));
    ASSERT_TRUE(list.locate(1));
    EXPECT_FALSE(list.ActionReverseCompedDelivery());
    EXPECT_EQ(ui.texts(Kind::Information).last(), QStringLiteral("The 3/4/2024 delivery was not Comped!"));

    // Without a reason the text ends at "comped".
    list.setCompDialog({});
    ASSERT_TRUE(list.locate(2));
    EXPECT_TRUE(list.ActionCompedDelivery());
    EXPECT_EQ(historyEvents().last(), QStringLiteral("3/4/2024 deliv comped"));
}

TEST_P(DeliveryRecords, CompDialogReadsTheRowAgainAndAsksBeforeReplacingAMiss)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), QStringLiteral("M"));
    addDelivery(2, 11, monday, 2, QStringLiteral("OD"), QStringLiteral("AAA"));
    delivery_records::Delivery missed{1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("M")};

    TFormCompDel dialog(db(), ui, missed, session.userFullName);
    EXPECT_FALSE(dialog.ActionOK()); // No keeps the dialog open
    EXPECT_EQ(ui.texts(Kind::Question).last(),
              QStringLiteral("That delivery was missed! Change it to Comped?"));
    EXPECT_EQ(status(1), QStringLiteral("M"));
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(dialog.ActionOK());
    EXPECT_EQ(status(1), QStringLiteral("C"));

    // Comped meanwhile by another workstation, or deleted.
    EXPECT_FALSE(dialog.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information).last(), QStringLiteral("That delivery has already been Comped."));
    delivery_records::Delivery gone{2, 11, monday, 2, QStringLiteral("OD"), {}};
    db().execute(QStringLiteral("Delete from Deliveri where Deliv_ID = 2"));
    TFormCompDel second(db(), ui, gone, session.userFullName);
    EXPECT_FALSE(second.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information).last(),
              QStringLiteral("The client did not receive a delivery on that date."));
    EXPECT_EQ(historyEvents().size(), 1);

    // A reversal of a comp that replaced a miss leaves no status at all.
    TFormDeliveries list(db(), session, ui);
    list.FormShow(11);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(list.ActionReverseCompedDelivery());
    EXPECT_TRUE(scalar(QStringLiteral("Select Delivery_Status from Deliveri where Deliv_ID = 1")).isNull());
}

TEST_P(DeliveryRecords, FundingEditWaitsUntilRefreshOrClose)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    addDelivery(2, 11, monday.addDays(1), 1, QStringLiteral("OD"), QStringLiteral("AAA"));
    TFormDeliveries list(db(), session, ui);
    list.FormShow(11);
    EXPECT_EQ(list.fundingCodes(), (QStringList{QStringLiteral("AAA"), QStringLiteral("PVT")}));
    ASSERT_TRUE(list.locate(1));
    list.setFunding(list.currentRow(), QStringLiteral("PVT"));
    EXPECT_EQ(list.value(list.currentRow(), TFormDeliveries::FundingDesc).toString(), QStringLiteral("PVT"));
    EXPECT_EQ(funding(1), QStringLiteral("AAA"));
    list.ActionRefresh();
    EXPECT_EQ(funding(1), QStringLiteral("PVT"));
    EXPECT_EQ(funding(2), QStringLiteral("AAA"));

    ASSERT_TRUE(list.locate(2));
    list.setFunding(list.currentRow(), QStringLiteral("PVT"));
    EXPECT_EQ(funding(2), QStringLiteral("AAA"));
    list.FormClose();
    EXPECT_EQ(funding(2), QStringLiteral("PVT"));
}

TEST_P(DeliveryRecords, DeletingOneDeliveryTakesItsItemsEventAndFulfilledMark)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("EW"), QStringLiteral("AAA"), {}, {{1, 2}});
    addDelivery(2, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDated(11, monday, QStringLiteral("E"), QStringLiteral("W"), 1);
    addDated(11, monday, QStringLiteral("S"), QStringLiteral("D"), 1);
    addEvent(11, monday, 7, QStringLiteral("AAA"));
    addEvent(11, monday, 8, QStringLiteral("AAA"));

    TFormDeliveries list(db(), session, ui);
    list.FormShow(11);
    // The items window follows the list's current delivery.
    TFormDeliveredItems& items = list.deliveredItems();
    ASSERT_TRUE(list.locate(1));
    EXPECT_TRUE(items.follow(list));
    EXPECT_EQ(items.delivId(), 1);
    ASSERT_EQ(items.items().rowCount(), 1);
    EXPECT_EQ(items.items().value(0, 2).toInt(), 2);
    EXPECT_EQ(items.items().value(0, 3).toString().trimmed(), QStringLiteral("Lunch"));
    EXPECT_FALSE(items.follow(list)); // still there: nothing read
    ASSERT_TRUE(list.locate(2));
    EXPECT_TRUE(items.follow(list));
    EXPECT_EQ(items.items().value(0, 2).toInt(), 1);
    ASSERT_TRUE(list.locate(1));
    EXPECT_FALSE(list.ActionDeleteDelivery());
    EXPECT_EQ(ui.texts(Kind::Question).last(),
              QStringLiteral("Delete the 3/4/2024 delivery?\nA deletion can not be reversed!"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 2);

    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(list.ActionDeleteDelivery());
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri where Deliv_ID = 1")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt where Deliv_ID = 1")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt where Deliv_ID = 2")), 1);
    // The walk-in may be credited again; the delivered dated row stays fulfilled.
    EXPECT_EQ(scalar(QStringLiteral("Select Fulfilled from EpisodicDeliveries where Delivery_Type = 'W'"))
                  .toString(),
              QString());
    EXPECT_EQ(scalar(QStringLiteral("Select Fulfilled from EpisodicDeliveries where Delivery_Type = 'D'"))
                  .toString(),
              QStringLiteral("Y"));
    // The service's default event of that day goes, another event stays.
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Events where Event_ID = 7")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Events where Event_ID = 8")), 1);
    EXPECT_EQ(historyEvents(), QStringList{QStringLiteral("Walk-in credits for 3/4/2024 deleted.")});
    EXPECT_EQ(list.rows().rowCount(), 1);
    ui.answerNext(Answer::Yes);
    EXPECT_TRUE(list.ActionDeleteDelivery());
    EXPECT_EQ(historyEvents().last(), QStringLiteral("Delivery credits for 3/4/2024 deleted."));
    EXPECT_FALSE(list.canDelete());
    // With the list empty the items window empties too.
    EXPECT_TRUE(items.follow(list));
    EXPECT_EQ(items.delivId(), 0);
    EXPECT_EQ(items.items().rowCount(), 0);
}

TEST_P(DeliveryRecords, GroupDeletionByServiceAndByClient)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDelivery(2, 11, monday, 1, QStringLiteral("EW"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDelivery(3, 12, monday, 1, QStringLiteral("EW"), QStringLiteral("AAA"), {}, {{1, 3}});
    addDelivery(4, 12, monday, 2, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDelivery(5, 12, monday.addDays(1), 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDated(11, monday, QStringLiteral("E"), QStringLiteral("W"), 1);
    addDated(12, monday, QStringLiteral("E"), QStringLiteral("W"), 1);

    TFormDelDeliv form(db(), session, ui);
    ASSERT_EQ(form.services().size(), 3u);
    EXPECT_EQ(form.services()[0].text, QStringLiteral("Any service received                  [0]"));
    EXPECT_EQ(form.services()[1].text, QStringLiteral("Home Meals     [1]"));
    form.clientLookup().search(QString());
    EXPECT_EQ(form.clientLookup().rows().size(), 2u);
    form.setDate(QDate(2000, 1, 1));
    form.setService(1);
    form.setKinds(2);
    EXPECT_FALSE(form.okEnabled());
    form.setDate(monday);
    EXPECT_TRUE(form.okEnabled());

    // Walk-ins only, of service 1: the delivered rows of the date stay.
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(form.result().deliveries, 2);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 3);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt")), 3);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from EpisodicDeliveries where Fulfilled = 'Y'")), 0);
    EXPECT_EQ(historyEvents().last(), QStringLiteral("Deleted wlk-in Home Meals crdts,3/4/2024"));
    EXPECT_TRUE(scalar(QStringLiteral("Select Person_ID from History")).isNull());

    // Nothing left to match.
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information).last(), DeliveryGroupDeletion::noneByService());

    // By client, every kind: only that client's rows of that date.
    form.setPage(TFormDelDeliv::Page::ByClient);
    form.setClient(12);
    form.setKinds(1);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(form.result().deliveries, 1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 2);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri where Deliv_ID = 5")), 1);
    EXPECT_EQ(historyEvents().last(), QStringLiteral("All meal credits for 3/4/2024 deleted."));
    EXPECT_EQ(scalar(QStringLiteral("Select Client_ID from History order by RecordID desc")).toString(),
              QStringLiteral("C12"));
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Information).last(), DeliveryGroupDeletion::noneByClient());

    // Any service, delivered only.
    form.setPage(TFormDelDeliv::Page::ByService);
    form.setService(0);
    form.setKinds(0);
    EXPECT_TRUE(form.ActionOK());
    EXPECT_EQ(historyEvents().last(), QStringLiteral("Deleted all credits, all servcs,3/4/2024"));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 1);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt")), 1);
}

TEST_P(DeliveryRecords, GroupDeletionThatFailsPartWayDeletesNothing)
{
    addDelivery(1, 11, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDelivery(2, 12, monday, 1, QStringLiteral("OD"), QStringLiteral("AAA"), {}, {{1, 1}});
    addDated(11, monday, QStringLiteral("S"), QStringLiteral("D"), 1);
    // The History row, written last, cannot be written.
    db().deleteTable(QStringLiteral("History"));

    TFormDelDeliv form(db(), session, ui);
    form.setDate(monday);
    form.setService(0);
    form.setKinds(1);
    EXPECT_FALSE(form.ActionOK());
    EXPECT_EQ(ui.texts(Kind::Error).value(0), QStringLiteral("Unable to commit the delete transaction."));
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 2);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt")), 2);
    EXPECT_EQ(scalar(QStringLiteral("Select Fulfilled from EpisodicDeliveries")).toString(),
              QStringLiteral("Y"));
    EXPECT_FALSE(db().inTransaction());
}

INSTANTIATE_TEST_SUITE_P(Stores, DeliveryRecords, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
