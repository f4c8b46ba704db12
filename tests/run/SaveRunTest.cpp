// Saving a run on real stores: the rows a save writes and the numbers it
// draws, consolidation, statuses carried over, what a save over an earlier
// one replaces, the agency's on-save statement, the count check, and that a
// failure at any step of the transaction leaves the stored run as it was.

#include "SaveFixture.h"

#include "Csv.h"
#include "dataset/RecordLocks.h"
#include "save/SaveStep.h"
#include "specialmeals/TFormSetSpecialMeals.h"

#include <QLocale>
#include <QTextStream>

using namespace kb;
using namespace kb::test;

namespace {

class SaveRunTest : public SaveFixture
{
protected:
    void SetUp() override
    {
        SaveFixture::SetUp();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }
};

enum Item { HotLunch = 1, Milk, Soup };

const QString unableToCommit = QStringLiteral("Unable to commit the Save Deliveries transaction.\r\n");

TEST_P(SaveRunTest, EachRowBecomesOneDeliveriRowWithItsItemsCountsAndFunding)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addItem(Milk, QStringLiteral("Milk"), 0, 0);
    addItem(Soup, QStringLiteral("Soup"), 1, 1);
    addLine(0, 1, QStringLiteral("MON"), HotLunch, 1, 1);
    addLine(0, 1, QStringLiteral("MON"), Milk, 1, 2);
    addFund(1, QStringLiteral("OAA"));
    setDefaultFunding(1, 1);

    addClient(1, {{QStringLiteral("Diet_Restr"), 5},
                  {QStringLiteral("Def_Stop"), 1.23456789},
                  {QStringLiteral("Cold_Bag_ID"), 2},
                  {QStringLiteral("Cuisine_ID"), 3},
                  {QStringLiteral("Org_Client"), QStringLiteral("Y")}});
    addClient(2);
    addLine(2, 1, QStringLiteral("MON"), Soup, 3, 1);
    addFundUse(2, 1, QStringLiteral("T3"), {QStringLiteral("Monday")});
    addClient(3, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    addDated(3, monday, QStringLiteral("E"));
    addDated(3, monday.addDays(7), QStringLiteral("E"));
    addLine(3, 2, QStringLiteral("MON"), Soup, 2, 1, datedId(3, monday, QStringLiteral("E")));

    const std::optional<SaveResult> saved = save(monday);
    ASSERT_TRUE(saved) << errors();
    EXPECT_EQ(saved->deliveries, 3);
    // IDNOS starts empty: the first number is 1, and without consolidation the
    // counter ends two above the last number used.
    EXPECT_EQ(saved->firstDelivId, 1);
    EXPECT_EQ(saved->lastDelivId, 3);
    EXPECT_EQ(idnos().toInt(), 5);

    const ResultSet rows = deliveries(monday);
    ASSERT_EQ(rows.rowCount(), 3);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Deliv_ID")).toInt(), 1);
    EXPECT_EQ(column(rows, 1, QStringLiteral("DOW")).toString(), "MON");
    EXPECT_EQ(column(rows, 1, QStringLiteral("Route_ID")).toString(), "R1");
    EXPECT_DOUBLE_EQ(column(rows, 1, QStringLiteral("Stop")).toDouble(), 1.2346);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Client_ID")).toString(), "C001");
    EXPECT_EQ(column(rows, 1, QStringLiteral("Delivery_Type")).toString(), "OD");
    EXPECT_EQ(column(rows, 1, QStringLiteral("Diet_Restr")).toInt(), 5);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Diet_Descr")).toString(), "LS / LF");
    EXPECT_EQ(column(rows, 1, QStringLiteral("Cold_Bag_ID")).toInt(), 2);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Cuisine_ID")).toInt(), 3);
    EXPECT_FALSE(column(rows, 1, QStringLiteral("Custom_Items")).toBool());
    EXPECT_EQ(column(rows, 1, QStringLiteral("Number_Meals")).toInt(), 1);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Number_Labels")).toInt(), 1);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Funding_Desc")).toString(), "OAA");
    EXPECT_EQ(column(rows, 1, QStringLiteral("ZIP")).toString(), "19000");
    EXPECT_TRUE(column(rows, 1, QStringLiteral("Delivery_Status")).isNull());
    EXPECT_FALSE(column(rows, 1, QStringLiteral("Label_Created")).toBool());
    EXPECT_TRUE(column(rows, 2, QStringLiteral("Custom_Items")).toBool());
    EXPECT_EQ(column(rows, 2, QStringLiteral("Number_Meals")).toInt(), 3);
    EXPECT_EQ(column(rows, 2, QStringLiteral("Funding_Desc")).toString(), "T3");
    EXPECT_EQ(column(rows, 3, QStringLiteral("Delivery_Type"), u'E').toString(), "ED");
    EXPECT_EQ(column(rows, 3, QStringLiteral("Route_ID"), u'E').toString(), "R2");
    EXPECT_TRUE(column(rows, 3, QStringLiteral("Custom_Items"), u'E').toBool());
    EXPECT_EQ(column(rows, 3, QStringLiteral("Number_Meals"), u'E').toInt(), 2);

    // MealCrdt rows carry their delivery's number, in the list's order.
    const ResultSet items = mealCrdt(monday);
    ASSERT_EQ(items.rowCount(), 4);
    EXPECT_EQ(items.row(0),
              (QVariantList{1, 1, monday, QStringLiteral("MON"), int(HotLunch), 1, true, true, 1, 1}));
    EXPECT_EQ(items.row(1),
              (QVariantList{1, 1, monday, QStringLiteral("MON"), int(Milk), 1, true, true, 1, 2}));
    EXPECT_EQ(items.row(2),
              (QVariantList{2, 2, monday, QStringLiteral("MON"), int(Soup), 3, false, false, 1, 1}));
    EXPECT_EQ(items.value(3, 0).toInt(), 3);
    EXPECT_EQ(items.value(3, 8).toInt(), 2);

    // The dated delivery is fulfilled; the one of the next week is not.
    EXPECT_EQ(db().execute(QStringLiteral("Select Fulfilled from EpisodicDeliveries order by Deliv_Date"))
                  .value(0, 0)
                  .toString(),
              "Y");
    EXPECT_TRUE(db().execute(QStringLiteral("Select Fulfilled from EpisodicDeliveries order by Deliv_Date"))
                    .value(1, 0)
                    .toString()
                    .isEmpty());

    const ResultSet history = db().execute(
        QStringLiteral("Select Event, Event_Date, User, Person_ID from History where Event like 'Saved%'"));
    ASSERT_EQ(history.rowCount(), 1);
    EXPECT_EQ(history.value(0, 0).toString(), "Saved 3/11/24 All Delivery Types, 3 names.");
    EXPECT_EQ(history.value(0, 1).toDate(), monday);
    EXPECT_EQ(history.value(0, 2).toString(), "Pat Tester");
    EXPECT_TRUE(history.value(0, 3).isNull());

    EXPECT_TRUE(form().saved());
    EXPECT_FALSE(form().isEnabled(RunAction::SaveData));
    EXPECT_EQ(form().transactionText(), "OK");
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Error).isEmpty());
    // The working table stays as it was.
    EXPECT_EQ(form().table().rowCount(), 3);
    EXPECT_FALSE(db().exists(QStringLiteral("DeliveryStatus")));
}

TEST_P(SaveRunTest, ConsolidationSharesANumberBetweenAdjacentRowsOfOnePersonOnly)
{
    // Client 1 has his weekly delivery and a scheduled one at the same route
    // and stop; client 2's rows have client 3's stop between them.
    addClient(1);
    addDated(1, monday, QStringLiteral("S"),
             {{QStringLiteral("Route"), QStringLiteral("R1")}, {QStringLiteral("Stop"), 1.0}});
    addClient(2);
    addDated(2, monday, QStringLiteral("S"),
             {{QStringLiteral("Route"), QStringLiteral("R1")}, {QStringLiteral("Stop"), 4.0}});
    addClient(3);
    setIdnos(10);

    setConfig(QStringLiteral("Consolidate_Deliveries"), true);
    ASSERT_TRUE(save(monday)) << errors();
    ResultSet rows = deliveries(monday);
    ASSERT_EQ(rows.rowCount(), 5);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Deliv_ID")).toInt(), 10);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Deliv_ID"), u's').toInt(), 10);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Delivery_Type"), u's').toString(), "sD");
    EXPECT_EQ(column(rows, 2, QStringLiteral("Deliv_ID")).toInt(), 11);
    EXPECT_EQ(column(rows, 3, QStringLiteral("Deliv_ID")).toInt(), 12);
    EXPECT_EQ(column(rows, 2, QStringLiteral("Deliv_ID"), u'S').toInt(), 13);
    EXPECT_EQ(column(rows, 2, QStringLiteral("Delivery_Type"), u'S').toString(), "SD");
    // The last row counts as continuing itself: the counter ends one above it.
    EXPECT_EQ(idnos().toInt(), 14);
    // The dated deliveries of both clients are fulfilled, consolidated or not.
    EXPECT_EQ(db().execute(QStringLiteral("Select Count(*) from EpisodicDeliveries where Fulfilled = 'Y'"))
                  .value(0, 0)
                  .toInt(),
              2);

    setConfig(QStringLiteral("Consolidate_Deliveries"), false);
    ASSERT_TRUE(save(monday)) << errors();
    rows = deliveries(monday);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Deliv_ID")).toInt(), 14);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Deliv_ID"), u'S').toInt(), 15);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Delivery_Type"), u'S').toString(), "SD");
    EXPECT_EQ(idnos().toInt(), 20);
}

TEST_P(SaveRunTest, ASaveOverAnEarlierOneReplacesItKeepingMatchingStatuses)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addLine(0, 1, QStringLiteral("MON"), HotLunch, 1, 1);
    addLine(0, 2, QStringLiteral("MON"), HotLunch, 2, 1);
    addClient(1);
    addClient(2);
    addClient(3);
    ASSERT_TRUE(save(monday)) << errors();
    const ResultSet first = deliveries(monday);
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'M' where Person_ID = 1"));
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'C' where Person_ID = 2"));
    db().execute(QStringLiteral("Update Deliveri set Delivery_Status = 'E' where Person_ID = 3"));
    // Client 2 changes service; client 3's stored row is of another delivery type.
    db().execute(QStringLiteral("Update Clients set Svcs_Used = 2 where Person_ID = 2"));
    db().execute(QStringLiteral("Update Deliveri set Delivery_Type = 'SD' where Person_ID = 3"));

    ASSERT_TRUE(save(monday)) << errors();
    const ResultSet second = deliveries(monday);
    ASSERT_EQ(second.rowCount(), 3);
    EXPECT_EQ(column(second, 1, QStringLiteral("Delivery_Status")).toString(), "M");
    EXPECT_TRUE(column(second, 2, QStringLiteral("Delivery_Status")).isNull());
    EXPECT_TRUE(column(second, 3, QStringLiteral("Delivery_Status")).isNull());
    EXPECT_EQ(column(second, 2, QStringLiteral("Number_Meals")).toInt(), 2);
    for (int person = 1; person <= 3; ++person)
        EXPECT_GT(column(second, person, QStringLiteral("Deliv_ID")).toInt(),
                  column(first, person, QStringLiteral("Deliv_ID"), u'O').toInt() + 3);
    // The earlier MealCrdt rows went with their deliveries.
    const ResultSet items = mealCrdt(monday);
    ASSERT_EQ(items.rowCount(), 3);
    EXPECT_EQ(items.value(0, 0).toInt(), column(second, 1, QStringLiteral("Deliv_ID")).toInt());
    EXPECT_EQ(db().execute(QStringLiteral("Select Count(*) from History where Event like 'Saved%'"))
                  .value(0, 0)
                  .toInt(),
              2);
}

TEST_P(SaveRunTest, AnOngoingOnlySaveClearsTheDatesDatedDeliveriesAndTheirMarks)
{
    addClient(1);
    addClient(2);
    addDated(2, monday, QStringLiteral("S"));
    ASSERT_TRUE(save(monday, u'A')) << errors();
    EXPECT_EQ(deliveries(monday).rowCount(), 3);
    ASSERT_TRUE(save(monday, u'O')) << errors();
    const ResultSet rows = deliveries(monday);
    EXPECT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(db().execute(QStringLiteral("Select Fulfilled from EpisodicDeliveries")).value(0, 0).toString(),
              "");
    EXPECT_EQ(db().execute(QStringLiteral(
                               "Select Event from History where Event like 'Saved%' order by RecordID desc"))
                  .value(0, 0)
                  .toString(),
              "Saved 3/11/24 Ongoing Only, 2 names.");
}

TEST_P(SaveRunTest, TheCounterAndTheRetentionOfOldItemLines)
{
    addClient(1);
    // IDNOS empty with stored deliveries: one above the highest number.
    insertRow(db(), QStringLiteral("Deliveri"),
              {{QStringLiteral("Deliv_ID"), 500},
               {QStringLiteral("Deliv_Dt"), QDate(2024, 1, 1)},
               {QStringLiteral("Person_ID"), 1}});
    for (const QDate& day : {QDate(2024, 1, 1), QDate(2024, 2, 5), QDate(2024, 2, 6)})
        insertRow(db(), QStringLiteral("MealCrdt"),
                  {{QStringLiteral("Deliv_ID"), 500},
                   {QStringLiteral("Deliv_Dt"), day},
                   {QStringLiteral("Item_ID"), 1}});
    setIdnos(QVariant());
    setConfig(QStringLiteral("Line_Item_Retention"), 0);
    std::optional<SaveResult> saved = save(monday);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->firstDelivId, 501);
    EXPECT_EQ(idnos().toInt(), 503);
    const QString count = QStringLiteral("Select Count(*) from MealCrdt where Deliv_Dt < '2024-03-01'");
    EXPECT_EQ(db().execute(count).value(0, 0).toInt(), 3);

    // Thirty days before the workstation's today (6 March), not the run's date.
    setConfig(QStringLiteral("Line_Item_Retention"), 30);
    saved = save(monday);
    ASSERT_TRUE(saved);
    EXPECT_EQ(saved->firstDelivId, 503);
    EXPECT_EQ(db().execute(count).value(0, 0).toInt(), 2);
    EXPECT_EQ(db().execute(QStringLiteral("Select Min(Deliv_Dt) from MealCrdt")).value(0, 0).toDate(),
              QDate(2024, 2, 5));
}

TEST_P(SaveRunTest, TheAgencysOnSaveStatementRunsWithTheDateAndItsFailureIsOnlyNoted)
{
    addClient(1);
    addClient(2);
    insertRow(
        db(), QStringLiteral("Queries"),
        {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_SAVE_DELIVERIES")},
         {QStringLiteral("Query_Lines"),
          QStringLiteral("Update Deliveri set Funding_Desc = 'HOOK' where Deliv_Dt = :Delivery_Date")}});
    ASSERT_TRUE(save(monday)) << errors();
    const ResultSet rows = deliveries(monday);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Funding_Desc")).toString(), "HOOK");
    EXPECT_EQ(column(rows, 2, QStringLiteral("Funding_Desc")).toString(), "HOOK");

    db().execute(QStringLiteral("Update Queries set Query_Lines = 'Update NoSuchTable set X = 1'"));
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(deliveries(monday).rowCount(), 2);
    EXPECT_TRUE(ui.texts(ScriptedUserInterface::Kind::Error).isEmpty());

    // A statement that adds a delivery of the date makes the count check
    // speak, after the commit.
    db().execute(
        QStringLiteral("Update Queries set Query_Lines = 'Insert into Deliveri (Deliv_ID, Deliv_Dt) values "
                       "(99999, :Delivery_Date)'"));
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Error),
        QStringList{"One or more deliveries may not have been saved correctly or the Deliveries table may be "
                    "corrupt."});
    EXPECT_EQ(deliveries(monday).rowCount(), 3);
    EXPECT_EQ(form().transactionText(), "OK");
}

TEST_P(SaveRunTest, AFailureAtAnyStepLeavesTheStoredRunAsItWas)
{
    addItem(HotLunch, QStringLiteral("Hot Lunch"), 1, 1);
    addLine(0, 1, QStringLiteral("MON"), HotLunch, 1, 1);
    addClient(1, {{QStringLiteral("Diet_Restr"), 3}});
    addClient(2, {{QStringLiteral("Diet_Restr"), 2}});
    addDated(2, monday, QStringLiteral("S"));
    addClient(3);
    setConfig(QStringLiteral("DELIV_REPORT_SHOW_SPEC_LABELS"), true);
    setConfig(QStringLiteral("SPECIAL1_LABEL"), QStringLiteral("Diabetic"));
    setConfig(QStringLiteral("Line_Item_Retention"), 3);
    insertRow(
        db(), QStringLiteral("Queries"),
        {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_SAVE_DELIVERIES")},
         {QStringLiteral("Query_Lines"),
          QStringLiteral("Update Deliveri set Funding_Desc = 'HOOK' where Deliv_Dt = :Delivery_Date")}});
    SpecialMealsSetup setup;
    setup.meal(1) = {QStringLiteral("S"), 2, false, QString()};
    setup.store(db(), monday);
    ASSERT_TRUE(save(monday)) << errors();
    ASSERT_EQ(db().execute(QStringLiteral("Select Count(*) from Special_Diets")).value(0, 0).toInt(), 3);
    // A MealCrdt row older than the retention period, which a save would delete.
    insertRow(db(), QStringLiteral("MealCrdt"),
              {{QStringLiteral("Deliv_ID"), 1}, {QStringLiteral("Deliv_Dt"), QDate(2024, 1, 1)}});
    const QString before = fingerprint();
    const qint64 history = db().recordCount(QStringLiteral("History"));

    for (int step = 0; step < saveStepCount; ++step) {
        SCOPED_TRACE(saveStepName(SaveStep(step)).toStdString());
        ui.clear();
        // The dialog's answer is stored before the transaction begins and stays.
        const qint64 mask = 1 + step % 2;
        dialogs.specialMeals = [mask](TFormSetSpecialMeals& f) {
            f.setRuleIndex(1, 3);
            f.setDietChecked(1, 0, mask & 1);
            f.setDietChecked(1, 1, mask & 2);
            return f.accept();
        };
        prepare(monday);
        form().saver().setFailAt(SaveStep(step));
        EXPECT_FALSE(form().ActionSaveData());
        EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error),
                  QStringList{unableToCommit + QStringLiteral("The save was made to fail at step %1.")
                                                   .arg(saveStepName(SaveStep(step)))});
        EXPECT_EQ(form().transactionText(), "Save Transaction rolled back");
        EXPECT_FALSE(form().saved());
        EXPECT_FALSE(db().inTransaction());
        EXPECT_EQ(fingerprint(), before);
        EXPECT_EQ(db().recordCount(QStringLiteral("History")), history);
        EXPECT_EQ(SpecialMealsSetup::read(db(), monday)->meal(1).specialRestr, mask);
    }

    // Nothing was left behind: the next save goes through.
    form().saver().setFailAt(std::nullopt);
    ui.clear();
    ASSERT_TRUE(save(monday)) << errors();
    EXPECT_NE(fingerprint(), before);
    EXPECT_EQ(deliveries(monday).rowCount(), 4);
}

TEST_P(SaveRunTest, ARowWithAServiceThatIsNotValidStopsTheWholeSave)
{
    addClient(1);
    addClient(2);
    addClient(3);
    ASSERT_TRUE(save(monday)) << errors();
    const QString before = fingerprint();
    db().execute(QStringLiteral("Update Clients set Svcs_Used = 9 where Person_ID = 2"));
    ui.clear();
    EXPECT_FALSE(save(monday));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error),
              QStringList{unableToCommit + QStringLiteral("The Service ID for Person ID 2 is not valid.")});
    EXPECT_EQ(fingerprint(), before);
}

TEST_P(SaveRunTest, ASaveIsRefusedWhileATransactionIsOpenOrTheCounterIsHeld)
{
    addClient(1);
    prepare(monday);
    const QString before = fingerprint();
    db().startTransaction();
    EXPECT_FALSE(form().ActionSaveData());
    db().rollback();
    prepare(monday);
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Error),
        QStringList{"Unable to start transaction! There is probably an earlier \r\ntransaction which did not "
                    "successfully commit."});
    EXPECT_EQ(form().transactionText(), "Error! There is a prior transaction still open!");
    EXPECT_EQ(fingerprint(), before);

    // Another workstation has the counter row in edit for longer than the
    // save tries.
    std::unique_ptr<Database> other = data.openAnother();
    const qint64 row = other->execute(QStringLiteral("Select KB_ROWID from IDNOS")).value(0, 0).toLongLong();
    int owner = 0;
    other->recordLocks().lock(&owner, QStringLiteral("IDNOS"), row);
    ui.clear();
    form().saver().setCounterTries({1, 1});
    db().recordLocks().setRetries(1, 10);
    EXPECT_FALSE(form().ActionSaveData());
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Error),
              QStringList{unableToCommit + QStringLiteral("Cannot lock IDNos. (btSaveIDNumber)")});
    EXPECT_EQ(fingerprint(), before);
    // A failed save also waits for the next change before it may run again.
    EXPECT_FALSE(form().isEnabled(RunAction::SaveData));
    other->recordLocks().unlock(&owner, QStringLiteral("IDNOS"), row);
    ui.clear();
    prepare(monday);
    EXPECT_TRUE(form().ActionSaveData()) << errors();
}

TEST_P(SaveRunTest, UsersWhoMayNotChangeDataCannotSave)
{
    addClient(1);
    session.accessLevel = QStringLiteral("R");
    prepare(monday);
    EXPECT_FALSE(form().isEnabled(RunAction::SaveData));
    EXPECT_FALSE(form().ActionSaveData());
    EXPECT_EQ(deliveries(monday).rowCount(), 0);
    session.accessLevel = QStringLiteral("W");
    EXPECT_TRUE(form().isEnabled(RunAction::SaveData));
}

TEST_P(SaveRunTest, RoutesAndStopsEditedInTheGridAreSavedWithTheRun)
{
    addClient(1);
    addClient(2);
    ASSERT_TRUE(save(monday)) << errors();
    MemTableDeliveriesModel& model = *form().model();
    ASSERT_TRUE(model.setData(model.index(0, 0), QStringLiteral("R2")));
    ASSERT_TRUE(model.setData(model.index(0, 1), QStringLiteral("7.5")));
    EXPECT_FALSE(form().saved());
    EXPECT_TRUE(form().isEnabled(RunAction::SaveData));
    ASSERT_TRUE(form().ActionSaveData()) << errors();
    const ResultSet rows = deliveries(monday);
    EXPECT_EQ(column(rows, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(column(rows, 1, QStringLiteral("Stop")).toDouble(), 7.5);
    EXPECT_EQ(column(rows, 2, QStringLiteral("Route_ID")).toString(), "R1");
}

TEST_P(SaveRunTest, ASavedDateIsReloadedAndSavedAgainUnderItsOwnDate)
{
    addClient(1, {{QStringLiteral("Diet_Restr"), 1}});
    addClient(2);
    addDated(2, monday, QStringLiteral("S"));
    setConfig(QStringLiteral("Consolidate_Deliveries"), true);
    ASSERT_TRUE(save(tuesday)) << errors();
    const QString tuesdayRows = [&] {
        QString text;
        QTextStream out(&text);
        writeCsv(out, deliveries(tuesday));
        out.flush();
        return text;
    }();
    ASSERT_TRUE(save(monday)) << errors();
    // The stored run was changed afterwards: a route and a stop.
    db().execute(
        QStringLiteral("Update Deliveri set Route_ID = 'R2', Stop = 12.5 where Person_ID = 1 and Deliv_Dt = "
                       ":Monday"),
        {{QStringLiteral("Monday"), monday}});
    const ResultSet stored = deliveries(monday);

    // A date without deliveries leaves the grid as it was.
    prepare(tuesday);
    dialogs.date = QDate(2024, 4, 1);
    form().ActionPopulateGridWithPreviouslySavedDeliveries();
    EXPECT_EQ(
        ui.texts(ScriptedUserInterface::Kind::Information),
        QStringList{"It doesn't appear that there are any previously saved deliveries \r\nfor that date!"});
    EXPECT_EQ(form().runDate(), tuesday);

    dialogs.date = monday;
    form().ActionPopulateGridWithPreviouslySavedDeliveries();
    EXPECT_EQ(form().runDate(), monday);
    EXPECT_EQ(form().DOW(), "MON");
    EXPECT_TRUE(form().saved());
    EXPECT_TRUE(form().isEnabled(RunAction::SaveData));
    EXPECT_EQ(form().clientCountText(), "Client Count: 3");
    EXPECT_EQ(form().caption(), "Daily Run Preparation: Monday, Monday, March 11, 2024");
    const ResultSet grid = form().table().select(DeliveriesIndex::RouteStopClient);
    EXPECT_EQ(field(grid, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_EQ(field(grid, 1, QStringLiteral("Diet_Restrictions_Named")).toString(), "LS");
    EXPECT_EQ(field(grid, 1, QStringLiteral("Deliv_ID")).toInt(),
              column(stored, 1, QStringLiteral("Deliv_ID")).toInt());

    ASSERT_TRUE(form().ActionSaveData()) << errors();
    const ResultSet again = deliveries(monday);
    ASSERT_EQ(again.rowCount(), 3);
    EXPECT_EQ(column(again, 1, QStringLiteral("Route_ID")).toString(), "R2");
    EXPECT_DOUBLE_EQ(column(again, 1, QStringLiteral("Stop")).toDouble(), 12.5);
    EXPECT_GT(column(again, 1, QStringLiteral("Deliv_ID")).toInt(),
              column(stored, 2, QStringLiteral("Deliv_ID")).toInt());
    // Lower-case letters stay as they were stored.
    EXPECT_EQ(column(again, 2, QStringLiteral("Delivery_Type"), u's').toString(), "sD");
    QString tuesdayAfter;
    QTextStream out(&tuesdayAfter);
    writeCsv(out, deliveries(tuesday));
    out.flush();
    EXPECT_EQ(tuesdayAfter.toStdString(), tuesdayRows.toStdString());
}

TEST_P(SaveRunTest, PreparingLeavesTheDataWritableForOtherWorkstations)
{
    addClient(1);
    addClient(2);
    std::unique_ptr<Database> other = data.openAnother();
    other->startTransaction();
    other->execute(QStringLiteral("Update Clients set City = 'Elsewhere' where Person_ID = 2"));
    // The other workstation writes while this one prepares.
    const ResultSet rows = prepare(monday);
    EXPECT_EQ(rows.rowCount(), 2);
    other->commit();
    EXPECT_EQ(field(prepare(monday), 2, QStringLiteral("City")).toString(), "Elsewhere");
}

INSTANTIATE_TEST_SUITE_P(Stores, SaveRunTest, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
