// Walk-in visits and the credit of dated events: who may be listed, the
// events a recorded list writes, the credit list's rows, and what a credit
// stores, compared with what a run stores for the same client and date.

#include "OutcomesFixture.h"

#include "RunCommand.h"
#include "TFormRunPrepare.h"
#include "confirmation/GivenItemConfirmation.h"
#include "walkins/TFormBatchAddWalkIns.h"
#include "walkins/TFormCreditWalkIns.h"
#include "walkins/WalkInRecorder.h"

#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

using Kind = ScriptedUserInterface::Kind;

class WalkInCreditTest : public OutcomesFixture
{
protected:
    void SetUp() override
    {
        OutcomesFixture::SetUp();
        for (int p = 1; p <= 4; ++p)
            addClient(p);
    }

    std::optional<CreditResult> credit(const QDate& through, qint64* listed = nullptr)
    {
        TFormCreditWalkIns form(db(), session, ui);
        form.FormShow();
        form.setThrough(through);
        form.ActionApplyChanges();
        if (listed) *listed = form.table().rowCount();
        std::optional<CreditResult> result = form.ActionSaveData();
        form.FormClose();
        return result;
    }
    QString rowsOf(const QString& statement) { return deliveriTextOf(db().execute(statement)); }
    static QString deliveriTextOf(const ResultSet& rows)
    {
        QStringList lines;
        for (qsizetype r = 0; r < rows.rowCount(); ++r) {
            QStringList cells;
            for (const QVariant& v : rows.row(r))
                cells << v.toString();
            lines << cells.join(u',');
        }
        return lines.join(u'\n');
    }
};

TEST_P(WalkInCreditTest, TheListTakesEligibleClientsAndAsksAboutTheOthers)
{
    db().execute(QStringLiteral("Update Clients set Status = 'I', Stop_Dte = :D where Person_ID = 2"),
                 {{QStringLiteral("D"), QDate(2024, 3, 1)}});
    db().execute(QStringLiteral("Update Clients set Svcs_Used = 0, Status = 'W' where Person_ID = 3"));
    TFormBatchAddWalkIns form(db(), session, ui);
    EXPECT_EQ(form.caption(), "Record Walk-In Visits");
    EXPECT_EQ(form.serviceChoices(), (QStringList{"Frozen Meals   [2]", "Hot Meals   [1]"}));
    EXPECT_FALSE(form.setDate(QDate(2025, 3, 7)));
    ASSERT_TRUE(form.setDate(monday));
    form.setServiceIndex(0);
    form.setRoute(QStringLiteral("CTR"));

    form.setSearchText(QStringLiteral("1"));
    form.setComplimentary(true);
    form.ActionAddToList();
    EXPECT_FALSE(form.complimentary());
    form.setSearchText(QStringLiteral("1"));
    form.ActionAddToList();
    EXPECT_EQ(ui.texts(Kind::Warning),
              QStringList{"That Client has already been added to the list for that date!"});

    form.setSearchText(QStringLiteral("2"));
    ui.answerNext(Answer::Yes);
    form.ActionAddToList();
    EXPECT_EQ(
        ui.texts(Kind::Question).value(0),
        "First2 Last2 may not be eligible for the following reason(s): \n- the client is not currently "
        "active.\n- the client has a Stop Date in effect for the date your are recording.\nAdd the client "
        "to the list anyway?");
    ui.answerNext(Answer::Yes);
    form.setSearchBy(ClientSearchBy::ClientName);
    form.setSearchText(QStringLiteral("last3, first")); // without regard to case
    form.ActionAddToList();
    EXPECT_TRUE(ui.texts(Kind::Warning)
                    .contains("First3 Last3 has not been assigned to a service\nand therefore will not be "
                              "added to the list."));
    ASSERT_EQ(form.walkIns().size(), 2u);
    EXPECT_TRUE(form.walkIns()[0].comp);
    EXPECT_EQ(form.walkIns()[0].svcsUsed, 2);
    EXPECT_EQ(form.walkIns()[1].defRte, "CTR");

    // Person 1 has an event that day already: the second is confirmed.
    addDated(1, monday, QStringLiteral("S"));
    ui.clear();
    ui.answerNext(Answer::Yes);
    EXPECT_EQ(form.ActionRecordWalkIns(), 2);
    EXPECT_EQ(
        ui.texts(Kind::Question),
        QStringList{"First1 Last1 already has a scheduled/episodic\n delivery recorded for 3/4/24! Record "
                    "another?"});
    EXPECT_EQ(ui.texts(Kind::Information), QStringList{"Successfully added 2 walk-in events."});
    EXPECT_EQ(
        rowsOf(QStringLiteral(
            "Select Person_ID, Client_ID, Deliv_Date, Svcs_Used, Delivery_Type, Schedule_Type, Route, Stop, "
            "Fulfilled, Create_Date, Created_By from EpisodicDeliveries where Delivery_Type = 'W' order by "
            "Person_ID")),
        "1,C001,2024-03-04,2,W,S,CTR,,C,2024-03-06,Pat Tester\n"
        "2,C002,2024-03-04,2,W,S,CTR,,,2024-03-06,Pat Tester");
    EXPECT_TRUE(form.FormCloseQuery());
    EXPECT_EQ(WalkInRecorder::recordedText(0), "There were no new walk-in events to record.");
    EXPECT_EQ(WalkInRecorder::recordedText(1), "Successfully added one walk-in event.");
}

TEST_P(WalkInCreditTest, AWalkInCreditStoresTheRowsARunWouldForThatClientAndDate)
{
    addLine(1, 1, QStringLiteral("MON"), 11, 1);
    insertRow(db(), QStringLiteral("FundUses"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Fund_CD"), QStringLiteral("OWN")},
               {QStringLiteral("Monday"), true}});
    WalkInRecorder(db(), ui).record({WalkIn::ofClient(db(), 1, monday)}, QStringLiteral("Pat Tester"));
    const QString columns = QStringLiteral("Deliv_Dt, DOW, Route_ID, Client_ID, Person_ID, Stop, "
                                           "Delivery_Type, Svcs_Used, Cuisine_ID, Diet_Restr, "
                                           "Diet_Descr, Cold_Bag_ID, Custom_Items, Number_Meals, "
                                           "Number_Labels, Address_Overridden, Funding_Desc, "
                                           "ZIP, Delivery_Status");
    const QString items = QStringLiteral(
        "Select m.Person_ID, m.Deliv_Dt, m.DOW, m.Item_ID, m.Quantity, m.Congregate, m.Modified_Ml, "
        "m.Service_ID, "
        "m.Sort_Order from MealCrdt m, Deliveri d where m.Deliv_ID = d.Deliv_ID and d.Delivery_Type = 'SW'");

    qint64 listed = 0;
    const std::optional<CreditResult> credited = credit(QDate(2024, 3, 6), &listed);
    ASSERT_TRUE(credited.has_value()) << ui.texts(Kind::Error).join('\n').toStdString();
    EXPECT_EQ(credited->deliveries, 1);
    const QString creditRow = rowsOf(QStringLiteral("Select %1 from Deliveri").arg(columns));
    const QString creditItems = rowsOf(items);
    EXPECT_EQ(creditRow.toStdString(), "2024-03-04,MON,R1,C001,1,0,SW,1,0,0,,0,true,2,1,false,OWN,19000,");
    EXPECT_EQ(creditItems, "1,2024-03-04,MON,11,1,false,false,1,1");
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from EpisodicDeliveries where Fulfilled = 'Y'")), 1);

    // The run of that date, for scheduled deliveries only, selects the same
    // event and stores the same row and items.
    db().execute(QStringLiteral("Delete from Deliveri"));
    db().execute(QStringLiteral("Delete from MealCrdt"));
    db().execute(QStringLiteral("Update EpisodicDeliveries set Fulfilled = ''"));
    TFormRunPrepare run(db(), session, ui);
    GivenItemConfirmation all = GivenItemConfirmation::all();
    run.setItemConfirmation(&all);
    run.FormShow();
    run.SetDeliveryType(u'S');
    run.SetPrepareDate(monday);
    run.ActionPrepare();
    ASSERT_TRUE(run.ActionSaveData().has_value());
    run.FormClose();
    EXPECT_EQ(rowsOf(QStringLiteral("Select %1 from Deliveri").arg(columns)).toStdString(),
              creditRow.toStdString());
    EXPECT_EQ(rowsOf(items), creditItems);
}

TEST_P(WalkInCreditTest, TheCreditListAndWhatACreditAdds)
{
    saveRun(QDate(2024, 3, 1)); // a stored run the credit must leave alone
    const QString stored = deliveriText();
    const qint64 own =
        addDated(1, monday, QStringLiteral("S"),
                 {{QStringLiteral("Route"), QVariant()}, {QStringLiteral("Stop"), QVariant()}});
    addLine(1, 2, QString(), 10, 3, own); // the event's own items
    addDated(1, monday, QStringLiteral("S"), {{QStringLiteral("Delivery_Type"), QStringLiteral("W")}});
    addDated(2, tuesday, QStringLiteral("S"), {{QStringLiteral("Fulfilled"), QStringLiteral("C")}});
    addLine(2, 2, QStringLiteral("TUE"), 10, 4);         // the client's own for Tuesday
    addDated(3, QDate(2024, 3, 6), QStringLiteral("S")); // the cut-off date itself
    addDated(3, QDate(2024, 3, 7), QStringLiteral("S")); // after it
    addDated(4, monday, QStringLiteral("S"), {{QStringLiteral("Fulfilled"), QStringLiteral("Y")}});
    db().execute(QStringLiteral("Delete from Defdels where Person_ID = 0 and Del_Day = 'WED'"));

    TFormCreditWalkIns form(db(), session, ui);
    EXPECT_EQ(form.caption(), "Credit Walk-In Clients and Episodic/Scheduled Deliveries");
    form.FormShow();
    EXPECT_FALSE(form.isEnabled(RunAction::SaveData));
    form.ActionApplyChanges();
    EXPECT_EQ(form.clientCountText(), "Client Count: 4");
    ASSERT_TRUE(form.isEnabled(RunAction::SaveData));
    const ResultSet listed = form.table().select(DeliveriesIndex::RouteStopClient);
    EXPECT_EQ(listed.value(0, u"Route_ID"), "R1"); // person 1's own event: no route, the client's
    EXPECT_EQ(listed.value(0, u"Stop").toDouble(), 0.0);
    EXPECT_EQ(form.statusOf(own + 2), "C");
    const std::optional<CreditResult> credited = form.ActionSaveData();
    form.FormClose();
    ASSERT_TRUE(credited.has_value()) << ui.texts(Kind::Error).join('\n').toStdString();
    EXPECT_EQ(credited->deliveries, 4);

    EXPECT_EQ(deliveriText(QStringLiteral("where Deliv_Dt = '2024-03-01'")), stored);
    EXPECT_EQ(rowsOf(QStringLiteral(
                  "Select Person_ID, Deliv_Dt, DOW, Delivery_Type, Svcs_Used, Custom_Items, "
                  "Number_Meals, Number_Labels, Funding_Desc, Delivery_Status from Deliveri where "
                  "Deliv_Dt > '2024-03-01' order by Person_ID, Deliv_Dt, Delivery_Type")),
              "1,2024-03-04,MON,SD,2,true,3,1,T3,\n"
              "1,2024-03-04,MON,SW,2,false,2,1,T3,\n"
              "2,2024-03-05,TUE,SD,2,true,4,1,T3,C\n"
              "3,2024-03-06,WED,SD,2,false,0,1,T3,");
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from MealCrdt where Deliv_Dt = '2024-03-06'")), 0);
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from EpisodicDeliveries where Fulfilled = 'Y'")), 5);
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from EpisodicDeliveries where Deliv_Date = '2024-03-07' and "
                             "Fulfilled is null")),
        1);
    EXPECT_EQ(
        count(QStringLiteral("Select Count(*) from History where Event = 'Episodics through 3/6/24 saved, 4 "
                             "deliveries.'")),
        1);
    // Nothing is left to credit.
    TFormCreditWalkIns again(db(), session, ui);
    again.FormShow();
    again.ActionApplyChanges();
    EXPECT_EQ(again.clientCountText(), "Client Count: 0");
    EXPECT_FALSE(again.isEnabled(RunAction::SaveData));
    again.FormClose();
}

TEST_P(WalkInCreditTest, ARowWithoutARouteStopsTheListing)
{
    db().execute(QStringLiteral("Update Clients set Def_Rte = null where Person_ID = 2"));
    addDated(1, monday, QStringLiteral("S"));
    addDated(2, monday, QStringLiteral("S"), {{QStringLiteral("Route"), QVariant()}});
    addDated(3, QDate(2024, 3, 2), QStringLiteral("S"), {{QStringLiteral("Svcs_Used"), 9}});
    TFormCreditWalkIns form(db(), session, ui);
    form.FormShow();
    form.ActionApplyChanges();
    const QStringList errors = ui.texts(Kind::Error);
    ASSERT_EQ(errors.size(), 1);
    EXPECT_TRUE(
        errors[0] == "First2 Last2 is missing a Route for 3/4/24. This date will not appear in the list "
                     "to be credited!" ||
        errors[0] == "First3 Last3 has an invalid Service for 3/2/24. This date will not appear in the "
                     "list to be credited!")
        << errors[0].toStdString();
    EXPECT_FALSE(form.isEnabled(RunAction::SaveData));
    EXPECT_FALSE(form.ActionSaveData().has_value());
    form.FormClose();
    EXPECT_EQ(count(QStringLiteral("Select Count(*) from Deliveri")), 0);
}

TEST_P(WalkInCreditTest, TheCommandsRecordAWalkInAndCreditIt)
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
    const QStringList user =
        data.commandLocation() + QStringList{"--today", "2024-03-06", "--user", "keeperin"};
    db().execute(QStringLiteral("Update Clients set Status = 'I' where Person_ID = 2"));
    CommandResult refused = runKettlebrook(user + QStringList{"walkin", "add", "2", "--date", "2024-03-04"});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains("may not be eligible")) << refused.err.toStdString();
    CommandResult added =
        runKettlebrook(user + QStringList{"walkin", "add", "2", "--date", "2024-03-04", "--comp", "--yes"});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_EQ(added.out, "recorded\n1\n");
    EXPECT_EQ(runKettlebrook(user + QStringList{"walkin", "add", "2"}).exitCode, 2);

    CommandResult early =
        runKettlebrook(user + QStringList{"credit", "--from", "2024-03-05", "--to", "2024-03-06"});
    EXPECT_EQ(early.exitCode, 1);
    CommandResult credited =
        runKettlebrook(user + QStringList{"credit", "--from", "2024-03-01", "--to", "2024-03-06"});
    ASSERT_EQ(credited.exitCode, 0) << credited.err.toStdString();
    EXPECT_EQ(credited.out, "deliveries\n1\n");
    EXPECT_EQ(statusOf(2, monday), "C");
    EXPECT_EQ(
        runKettlebrook(user + QStringList{"credit", "--from", "2024-03-01", "--to", "2024-03-06"}).exitCode,
        1);
}

INSTANTIATE_TEST_SUITE_P(Stores, WalkInCreditTest,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const auto& info) { return storeName(info.param); });

} // namespace
