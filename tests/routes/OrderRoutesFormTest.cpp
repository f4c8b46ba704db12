// "Order Stops within Routes": retrieving a route by day, reordering and
// renumbering in the working set, and making the changes permanent.

#include "OrderRoutesFixture.h"

#include "OrderRoutesStatements.h"
#include "TFormRunPrepare.h"

#include <QSettings>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class OrderRoutesForm : public OrderRoutesFixture
{
};

TEST_P(OrderRoutesForm, RetrievesTheDefaultRouteOrAWeekdayThenDefault)
{
    addClient(1);
    addClient(2, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")}, {QStringLiteral("Mon_Stop"), 9.0}});
    addClient(3, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")},
                  {QStringLiteral("Mon_Rte"), QStringLiteral("R1")},
                  {QStringLiteral("Mon_Stop"), 1.5}});
    addClient(4, {{QStringLiteral("Status"), QStringLiteral("I")}});

    EXPECT_EQ(form().routeEntries(), (QStringList{"R1 - Route R1", "R2 - Route R2"}));
    EXPECT_EQ(OrderRoutesStatements::dayTexts().value(1), "Monday then Default");
    EXPECT_TRUE(form().activeOnly());
    EXPECT_FALSE(form().isEnabled(OrderRoutesAction::MoveUp));

    retrieve(QStringLiteral("R1"), 0);
    EXPECT_EQ(persons(), (QList<int>{1, 2}));
    EXPECT_EQ(form().rows().rowAt(0).routeDay, "   ");
    EXPECT_EQ(form().rows().rowAt(0).name, "First1 L");
    EXPECT_TRUE(form().isEnabled(OrderRoutesAction::MoveUp));
    EXPECT_TRUE(form().isEnabled(OrderRoutesAction::PrintListing));

    // Monday: client 2 is on R2 that day, client 3 comes to R1 by his Monday route.
    retrieve(QStringLiteral("R1"), 1);
    EXPECT_EQ(persons(), (QList<int>{1, 3}));
    EXPECT_EQ(form().rows().rowAt(1).routeDay, "MON");
    EXPECT_EQ(stopOf(3), 1.5);
    EXPECT_EQ(form().rows().rowAt(0).routeStop(), "Rte: R1 Stop: 1");

    form().setActiveOnly(false);
    retrieve(QStringLiteral("R1"), 0);
    EXPECT_EQ(persons(), (QList<int>{1, 2, 4}));

    form().sortByColumn(QStringLiteral("LAST_NAME"));
    EXPECT_EQ(form().rows().index(), OrderRoutesIndex::Last_First);
    form().sortByColumn(QStringLiteral("Latitude"));
    EXPECT_EQ(ui.texts(Kind::Warning), QStringList{"You can't sort on that column!"});
    EXPECT_EQ(form().rows().index(), OrderRoutesIndex::Last_First);
}

TEST_P(OrderRoutesForm, MoveUpAndDownSwapStopsAndRefuseWhatTheyCannotDo)
{
    addClient(1, {{QStringLiteral("Def_Stop"), 0.0}});
    addClient(2, {{QStringLiteral("Def_Stop"), 2.5}});
    addClient(3, {{QStringLiteral("Def_Stop"), 4.0}});
    addClient(4, {{QStringLiteral("Def_Stop"), 4.0}});
    addClient(5, {{QStringLiteral("Def_Stop"), 7.0}});
    retrieve(QStringLiteral("R1"));
    ASSERT_EQ(persons(), (QList<int>{1, 2, 3, 4, 5}));

    // Stop 0 has no place: Move Up does nothing.
    form().setCurrentPosition(positionOf(1));
    form().ActionMoveUp();
    EXPECT_EQ(persons(), (QList<int>{1, 2, 3, 4, 5}));

    // The swap keeps the decimals of both values; the cursor stays on the moved row.
    form().setCurrentPosition(positionOf(3));
    form().ActionMoveUp();
    EXPECT_EQ(persons(), (QList<int>{1, 3, 2, 4, 5}));
    EXPECT_EQ(stopOf(3), 2.5);
    EXPECT_EQ(stopOf(2), 4.0);
    EXPECT_EQ(form().currentPosition(), positionOf(3));

    // Client 2 (now 4) and client 4 share a stop.
    form().setCurrentPosition(positionOf(4));
    form().ActionMoveUp();
    EXPECT_EQ(ui.texts(Kind::Warning).value(0),
              "The record being moved has the same Stop as the one \r\nabove it. You will need to change the Stop on "
              "one or the other \r\nmanually in order to move this record up.");
    form().setCurrentPosition(positionOf(5));
    form().ActionMoveDown();
    EXPECT_EQ(ui.texts(Kind::Warning).value(1),
              "The record being moved, based upon the Stop number, is \r\nalready at the bottom of the list.");
    form().setCurrentPosition(positionOf(2));
    form().ActionMoveDown();
    EXPECT_EQ(ui.texts(Kind::Warning).value(2),
              "The record being moved has the same Stop as the one \r\nbelow it. You will need to change the Stop on "
              "one or the other \r\nmanually in order to move this record down.");
    form().setCurrentPosition(positionOf(4));
    form().ActionMoveDown();
    EXPECT_EQ(stopOf(4), 7.0);
    EXPECT_EQ(stopOf(5), 4.0);

    form().setSelection({0, 1});
    form().ActionMoveUp();
    EXPECT_EQ(ui.texts(Kind::Warning).value(3), "Only one line can be selected when using the Up and Down \r\nbuttons.");
    EXPECT_TRUE(form().hasChanges());
}

TEST_P(OrderRoutesForm, ResetIncrementAndRouteChangesGoToTheSelectedRows)
{
    for (int p = 1; p <= 4; ++p)
        addClient(p);
    retrieve(QStringLiteral("R1"));

    // A pending edit is asked about first; No cancels it.
    form().editField(positionOf(4), QStringLiteral("Stop"), 40);
    EXPECT_TRUE(form().hasPendingEdit());
    EXPECT_EQ(stopOf(4), 40.0);
    form().setSelection({positionOf(1), positionOf(2)});
    form().ActionResetStops(9);
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"Save the changes to the current record before resetting stops?"});
    EXPECT_FALSE(form().hasPendingEdit());
    EXPECT_EQ(stopOf(4), 4.0);
    EXPECT_EQ(stopOf(1), 9.0);
    EXPECT_EQ(stopOf(2), 9.0);

    form().ActionIncrementStops(-2.5);
    EXPECT_EQ(stopOf(1), 6.5);
    EXPECT_EQ(stopOf(2), 6.5);
    EXPECT_EQ(stopOf(3), 3.0);

    // Yes posts the pending edit; a negative stop becomes 0.
    form().editField(positionOf(3), QStringLiteral("Stop"), -3);
    ui.answerNext(Answer::Yes);
    form().ActionResetRoutes(QStringLiteral("R2 - Route R2"));
    EXPECT_EQ(stopOf(3), 0.0);
    EXPECT_EQ(form().displayedRow(positionOf(1)).route, "R2");
    EXPECT_EQ(form().displayedRow(positionOf(3)).route, "R1");

    // Changing a value back is no change at all.
    EXPECT_TRUE(form().rows().isChanged(form().rows().keyAt(positionOf(4))) == false);
}

TEST_P(OrderRoutesForm, RetrieveAsksToMakeChangesPermanentAndCancelKeepsTheSet)
{
    addClient(1);
    addClient(2);
    retrieve(QStringLiteral("R1"));
    form().setSelection({positionOf(1)});
    form().ActionResetStops(5);

    ui.answerNext(Answer::Cancel);
    form().ActionRetrieve();
    EXPECT_EQ(ui.texts(Kind::Question), QStringList{"Make all of the changes to this Route permanent?"});
    EXPECT_EQ(stopOf(1), 5.0);
    EXPECT_TRUE(form().hasChanges());
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Stop")).toDouble(), 1.0);

    ui.answerNext(Answer::No);
    form().ActionRetrieve();
    EXPECT_EQ(stopOf(1), 1.0);
    EXPECT_FALSE(form().hasChanges());

    form().setSelection({positionOf(1)});
    form().ActionResetStops(5);
    ui.answerNext(Answer::Yes);
    form().ActionRetrieve();
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Stop")).toDouble(), 5.0);
    EXPECT_EQ(clientValue(1, QStringLiteral("Edit_Dte")).toDate(), QDate(2024, 3, 6));
    EXPECT_EQ(persons(), (QList<int>{2, 1}));
}

TEST_P(OrderRoutesForm, AWeekdayWriteBackGivesTheClientAWeekdayRouteAndFollowsDatedDeliveries)
{
    addClient(1);
    addClient(2);
    const QDate pastMonday(2024, 3, 4), nextMonday(2024, 3, 11), nextTuesday(2024, 3, 12);
    addDated(1, pastMonday, QStringLiteral("S"));
    addDated(1, nextMonday, QStringLiteral("S"));
    addDated(1, nextTuesday, QStringLiteral("S"));
    form().setIncludeEpisodics(true);
    retrieve(QStringLiteral("R1"), 1);
    form().setSelection({positionOf(1)});
    form().ActionResetStops(7);
    ASSERT_TRUE(form().applyChanges());

    // Client 1 came by his default route; Monday now has a route of its own.
    EXPECT_EQ(clientValue(1, QStringLiteral("Mon_Rte")).toString(), "R1");
    EXPECT_EQ(clientValue(1, QStringLiteral("Mon_Stop")).toDouble(), 7.0);
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Stop")).toDouble(), 1.0);
    EXPECT_TRUE(clientValue(2, QStringLiteral("Mon_Rte")).isNull());
    const ResultSet dated = db().execute(
        QStringLiteral("Select Deliv_Date, Stop from EpisodicDeliveries where Person_ID = 1 order by Deliv_Date"));
    ASSERT_EQ(dated.rowCount(), 3);
    EXPECT_EQ(dated.value(0, 1).toDouble(), 1.0); // past
    EXPECT_EQ(dated.value(1, 1).toDouble(), 7.0); // a future Monday
    EXPECT_EQ(dated.value(2, 1).toDouble(), 1.0); // a Tuesday
    EXPECT_FALSE(form().hasChanges());

    // The checkbox's state is kept for the next time.
    form().FormClose();
    QSettings ini(session.cAppDataFolder + QStringLiteral("Kettbrk.ini"), QSettings::IniFormat);
    EXPECT_EQ(ini.value(QStringLiteral("FormOrderRoutes/IncludeEpisodics")).toString(), "1");
    TFormOrderRoutes again(db(), session, ui);
    EXPECT_TRUE(again.includeEpisodics());
}

TEST_P(OrderRoutesForm, APreparedRunAfterwardsShowsTheNewOrder)
{
    for (int p = 1; p <= 3; ++p)
        addClient(p);
    retrieve(QStringLiteral("R1"));
    form().setCurrentPosition(positionOf(3));
    form().ActionMoveUp();
    form().ActionMoveUp();
    ASSERT_EQ(persons(), (QList<int>{3, 1, 2}));
    ui.answerNext(Answer::Yes);
    form().FormClose();

    TFormRunPrepare run(db(), session, ui);
    run.FormShow();
    run.SetPrepareDate(QDate(2024, 3, 11));
    run.ActionPrepare();
    const ResultSet rows = run.table().select(DeliveriesIndex::RouteStopClient, {QStringLiteral("Person_ID"),
                                                                                QStringLiteral("Stop")});
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(rows.value(0, 0).toInt(), 3);
    EXPECT_EQ(rows.value(1, 0).toInt(), 1);
    EXPECT_EQ(rows.value(2, 0).toInt(), 2);
    run.FormClose();
}

TEST_P(OrderRoutesForm, AFailedWriteBackWritesNothingAndKeepsTheChanges)
{
    addClient(1);
    addClient(2);
    form().setIncludeEpisodics(true);
    retrieve(QStringLiteral("R1"));
    form().setSelection({0, 1});
    form().ActionIncrementStops(10);
    // The second statement of the write-back cannot run.
    db().deleteTable(QStringLiteral("EpisodicDeliveries"));
    EXPECT_FALSE(form().applyChanges());
    EXPECT_EQ(ui.texts(Kind::Error).size(), 1);
    EXPECT_EQ(clientValue(1, QStringLiteral("Def_Stop")).toDouble(), 1.0);
    EXPECT_EQ(clientValue(2, QStringLiteral("Def_Stop")).toDouble(), 2.0);
    EXPECT_TRUE(form().hasChanges());
}

INSTANTIATE_TEST_SUITE_P(Stores, OrderRoutesForm, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
