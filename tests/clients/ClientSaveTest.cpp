// A client's save through the rules on a real data set: what History gets
// for each kind of change, word for word, and what the save does to dated
// deliveries and to the row's own dates.

#include "ClientRulesFixture.h"

#include "dataset/Abort.h"

using namespace kb;
using namespace kb::test;

namespace {

using ClientSave = ClientRulesFixture;

TEST_P(ClientSave, ASaveThatChangesNothingWritesNoHistoryAndStampsTheEditDateOncePerDay)
{
    addClient(1);
    save(1, {});
    EXPECT_TRUE(history(1).isEmpty());
    EXPECT_EQ(stored(1, QStringLiteral("Edit_Dte")).toDate(), today());
    EXPECT_EQ(clients().fieldValue(u"Edit_Dte").toDate(), today());
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_TRUE(told().isEmpty());

    // The same values typed again on the same day change nothing at all.
    save(1, {{QStringLiteral("Last_Name"), QStringLiteral("Last1")},
             {QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_TRUE(history(1).isEmpty());
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from History")).value(0, 0).toInt(), 0);
    EXPECT_EQ(clients().state(), DataSet::State::Browse);
}

TEST_P(ClientSave, StatusTransitionsWriteExactlyTheirRows)
{
    struct Case
    {
        QString from;
        QString to;
        QStringList rows;
    };
    const QList<Case> cases = {
        {"A", "S", {"Status changed from Active to Stopped."}},
        {"S", "I", {"Status changed from Stopped to Inactive."}},
        {"", "N", {"Client created with status of Never Started."}},
        {"", "W", {"Added status of Wait List."}},
        {"W", "", {"Status changed from Wait List to no status."}},
        {"N", "A", {"Status changed from Never Started to Active."}},
        {"W", "A", {"Status changed from Wait List to Active."}},
        {"A", "W", {"Status changed from Active to Wait List."}},
    };
    int person = 0;
    for (const Case& c : cases) {
        ++person;
        // No days, so that no other rule speaks up.
        addClient(person, {{QStringLiteral("Status"), c.from.isEmpty() ? QVariant() : QVariant(c.from)},
                           {QStringLiteral("Monday"), false},
                           {QStringLiteral("Wednesday"), false}});
        save(person, {{QStringLiteral("Status"), c.to}});
        EXPECT_EQ(history(person), c.rows) << c.from.toStdString() << " to " << c.to.toStdString();
        EXPECT_EQ(stored(person, QStringLiteral("Status")).toString(), c.to);
    }
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(dialogs().resetStartDateShown, 0);
    // Inactive_D is stamped only on the way into "I".
    EXPECT_EQ(stored(2, QStringLiteral("Inactive_D")).toDate(), today());
    EXPECT_TRUE(stored(1, QStringLiteral("Inactive_D")).isNull());
}

TEST_P(ClientSave, ReactivatingAnInactiveClientAsksFirstAndShowsTheResetScreen)
{
    setConfig(QStringLiteral("RECERT_WKS"), 26);
    addClient(1, {{QStringLiteral("Status"), QStringLiteral("I")},
                  {QStringLiteral("Recert_Dte"), QDate(2024, 6, 1)}});
    addClient(2, {{QStringLiteral("Status"), QStringLiteral("I")}});

    // No: the status goes back to "I" and the save goes on without it.
    save(1, {{QStringLiteral("Status"), QStringLiteral("A")},
             {QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    EXPECT_EQ(questions(),
              QStringList{"You are activating a Client who had previously been inactive. \r\nAre you sure "
                          "you want to do this?"});
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "I");
    EXPECT_TRUE(history(1).isEmpty());
    EXPECT_EQ(dialogs().resetStartDateShown, 0);

    // Yes: the reminder, the screen with both dates, and one History row.
    ui().clear();
    ui().answerNext(Answer::Yes);
    dialogs().onResetStartDate = [](TFormResetStartDate& form) {
        EXPECT_EQ(form.caption(), "Reset Start Date");
        EXPECT_EQ(form.startDate(), QDate(2024, 1, 2));
        EXPECT_EQ(form.recertificationDate(), QDate(2024, 6, 1));
        EXPECT_TRUE(form.recertificationVisible());
        return false;
    };
    save(1, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "A");
    EXPECT_EQ(history(1), QStringList{"Status changed from Inactive to Active."});
    EXPECT_EQ(told(), QStringList{"Please reset the Re-Certification and Start Dates for this client!"});
    EXPECT_EQ(dialogs().resetStartDateShown, 1);

    // OK keeps the dates shown: a new start date is saved with its History
    // row and becomes the first meal date; without recertification the
    // screen shows the start date alone.
    setConfig(QStringLiteral("RECERT_WKS"), 0);
    ui().clear();
    ui().answerNext(Answer::Yes);
    dialogs().onResetStartDate = [](TFormResetStartDate& form) {
        EXPECT_FALSE(form.recertificationVisible());
        form.setStartDate(QDate(2024, 3, 11));
        return true;
    };
    save(2, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_EQ(told(), QStringList{"Please reset the Start Date for this client!"});
    EXPECT_EQ(history(2),
              (QStringList{"Status changed from Inactive to Active.", "Start Date of 3/11/2024 added."}));
    EXPECT_EQ(eventDate(2, QStringLiteral("Start Date of 3/11/2024 added.")), QDate(2024, 3, 11));
    EXPECT_EQ(stored(2, QStringLiteral("Start_Dte")).toDate(), QDate(2024, 3, 11));
    EXPECT_EQ(stored(2, QStringLiteral("First_Ml_Dte")).toDate(), QDate(2024, 3, 11));
    EXPECT_EQ(clients().fieldValue(u"Start_Dte").toDate(), QDate(2024, 3, 11));
}

TEST_P(ClientSave, ABirthDateInTheFutureIsRefusedAndTheRecordStaysInEdit)
{
    addClient(1);
    editClient(1);
    clients().setFieldValue(u"DOB", today().addDays(1));
    clients().setFieldValue(u"Phone", QStringLiteral("555-0199"));
    EXPECT_THROW(clients().post(), Abort);
    EXPECT_EQ(ui().texts(ScriptedUserInterface::Kind::Warning),
              QStringList{"You have entered a birth date that is in the future!"});
    EXPECT_EQ(clients().state(), DataSet::State::Edit);
    EXPECT_EQ(clients().fieldValue(u"Phone").toString(), "555-0199");
    EXPECT_TRUE(stored(1, QStringLiteral("Phone")).isNull());
    EXPECT_TRUE(history(1).isEmpty());

    // Today is no future: corrected, the same edit saves.
    clients().setFieldValue(u"DOB", today());
    clients().post();
    EXPECT_EQ(stored(1, QStringLiteral("DOB")).toDate(), today());
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), "555-0199");
}

TEST_P(ClientSave, EachChangedColumnWritesItsRowWordForWord)
{
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 1},
               {QStringLiteral("Service_Desc"), QStringLiteral("Hot Meals")},
               {QStringLiteral("Default_Frequency"), QStringLiteral("O")}});
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 2},
               {QStringLiteral("Service_Desc"), QStringLiteral("Frozen")},
               {QStringLiteral("Default_Frequency"), QStringLiteral("O")}});
    db().execute(QStringLiteral("delete from Diet"));
    insertRow(db(), QStringLiteral("Diet"),
              {{QStringLiteral("Diet_ID"), 1}, {QStringLiteral("Diet_Code"), QStringLiteral("LS")}});
    insertRow(db(), QStringLiteral("Diet"),
              {{QStringLiteral("Diet_ID"), 2}, {QStringLiteral("Diet_Code"), QStringLiteral("DB")}});
    insertRow(db(), QStringLiteral("Diet"),
              {{QStringLiteral("Diet_ID"), 3}, {QStringLiteral("Diet_Code"), QStringLiteral("RN")}});
    addClient(1, {{QStringLiteral("Svcs_Used"), 1},
                  {QStringLiteral("Diet_Restr"), 1},
                  {QStringLiteral("Def_Rte"), QStringLiteral("R1")},
                  {QStringLiteral("Phone"), QStringLiteral("555-0100")},
                  {QStringLiteral("Phone_Desc"), QStringLiteral("C")},
                  {QStringLiteral("Recert_Dte"), QDate(2024, 4, 1)}});
    save(1, {{QStringLiteral("Svcs_Used"), 2},
             {QStringLiteral("Diet_Restr"), 6},
             {QStringLiteral("Def_Rte"), QStringLiteral("R2")},
             {QStringLiteral("Address1"), QStringLiteral("40 Oak Avenue")},
             {QStringLiteral("Phone"), QStringLiteral("555-0101")},
             {QStringLiteral("Friday"), true},
             {QStringLiteral("Recert_Dte"), QDate(2024, 10, 1)}});
    EXPECT_EQ(history(1), (QStringList{"Changed from Hot Meals to Frozen", "Diet chgd frm: LS",
                                       "Diet chgd to: DB/RN", "Default rte chgd frm R1 to R2",
                                       "Old address: 12 Elm Street", "New address: 40 Oak Avenue",
                                       "Old phone (Mobile): 555-0100", "Deliv Days chgd frm MoWe to MoWeFr",
                                       "Recertification Date updated from 4/1/2024"}));
    EXPECT_EQ(eventDate(1, QStringLiteral("Recertification Date updated from 4/1/2024")), QDate(2024, 4, 1));

    // The other way round: everything taken away.
    save(1, {{QStringLiteral("Svcs_Used"), 9},
             {QStringLiteral("Diet_Restr"), 0},
             {QStringLiteral("Def_Rte"), QVariant()},
             {QStringLiteral("Address1"), QVariant()},
             {QStringLiteral("Phone"), QVariant()},
             {QStringLiteral("Monday"), false},
             {QStringLiteral("Wednesday"), false},
             {QStringLiteral("Recert_Dte"), QVariant()}});
    EXPECT_EQ(history(1).mid(9),
              (QStringList{"Changed from Frozen to unnamed service", "Dietary restriction removed",
                           "Default rte chgd frm R2 to none", "Old address: 40 Oak Avenue",
                           "Replaced with empty address.", "Old phone (Mobile): 555-0101",
                           "Deliv Days chgd frm MoWeFr to Fr", "Recertification Date (10/1/2024) removed"}));

    // And back from nothing.
    save(1, {{QStringLiteral("Svcs_Used"), 0}});
    save(1, {{QStringLiteral("Svcs_Used"), 1},
             {QStringLiteral("Diet_Restr"), 5},
             {QStringLiteral("Address1"), QStringLiteral("7 Pine Road")},
             {QStringLiteral("Phone"), QStringLiteral("555-0102")},
             {QStringLiteral("Monday"), true}});
    EXPECT_EQ(history(1).mid(18),
              (QStringList{"Started on Hot Meals", "Diet added: LS/RN", "Empty address replaced",
                           "New address: 7 Pine Road", "Deliv Day chgd frm Fr to MoFr"}));
    EXPECT_TRUE(questions().isEmpty());
}

TEST_P(ClientSave, SmallChangesAndUnknownCodesReadAsThePartSays)
{
    addClient(1, {{QStringLiteral("Address1"), QStringLiteral("1234 Long Street Name")},
                  {QStringLiteral("Latitude"), 41.5},
                  {QStringLiteral("Longitude"), -72.25},
                  {QStringLiteral("Phone"), QStringLiteral("555-0100")},
                  {QStringLiteral("Status"), QStringLiteral("A")}});
    addClient(
        2, {{QStringLiteral("Phone"), QStringLiteral("555-0200")}, {QStringLiteral("Status"), QVariant()}});
    addClient(3, {{QStringLiteral("Phone"), QStringLiteral("555-0300")},
                  {QStringLiteral("Phone_Desc"), QStringLiteral("Q")}});
    // A house number past the tenth character is no move: no row, no question.
    save(1, {{QStringLiteral("Address1"), QStringLiteral("1234 Long Street Nam")},
             {QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    EXPECT_TRUE(history(1).isEmpty());
    EXPECT_TRUE(questions().isEmpty());
    // Days of a person without a status are not written; a null description reads "Old Phone: ".
    save(2, {{QStringLiteral("Friday"), true}, {QStringLiteral("Phone"), QStringLiteral("555-0201")}});
    EXPECT_EQ(history(2), QStringList{"Old Phone: 555-0200"});
    save(3, {{QStringLiteral("Phone"), QStringLiteral("555-0301")}});
    EXPECT_EQ(history(3), QStringList{"Old phone: 555-0300"});

    // A moved client with a position is asked about it; Yes clears it.
    ui().answerNext(Answer::Yes);
    save(1, {{QStringLiteral("Address1"), QStringLiteral("99 Other Road")}});
    EXPECT_EQ(questions(),
              QStringList{"The address appears to have changed. \r\nShould the latitude and longitude from "
                          "the old address be cleared?"});
    EXPECT_TRUE(stored(1, QStringLiteral("Latitude")).isNull());
    EXPECT_TRUE(stored(1, QStringLiteral("Longitude")).isNull());
    EXPECT_EQ(history(1), (QStringList{"Old address: 1234 Long Street Nam", "New address: 99 Other Road"}));
}

TEST_P(ClientSave, StopAndStartDatesWriteTheirRowsDatedByTheirDates)
{
    addClient(1);
    // "A" to "A" with a new stop date: the stop date row alone.
    save(1, {{QStringLiteral("Stop_Dte"), QDate(2024, 4, 1)}});
    EXPECT_EQ(history(1), QStringList{"Stop date of 4/1/2024 added."});
    EXPECT_EQ(eventDate(1, QStringLiteral("Stop date of 4/1/2024 added.")), QDate(2024, 4, 1));

    save(1, {{QStringLiteral("Stop_Dte"), QDate(2024, 4, 2)},
             {QStringLiteral("Stop_Code"), 1},
             {QStringLiteral("Stop_Reason"), QStringLiteral("to Ohio")}});
    save(1, {{QStringLiteral("Stop_Dte"), QVariant()}});
    save(1, {{QStringLiteral("Start_Dte"), QVariant()}});
    save(1, {{QStringLiteral("Start_Dte"), QDate(2024, 3, 20)}});
    EXPECT_EQ(history(1),
              (QStringList{"Stop date of 4/1/2024 added.", "Stop date of 4/2/2024 - Moved to Ohio",
                           "Stop date of 4/2/2024 removed.", "Start date of 1/2/2024 removed.",
                           "Start Date of 3/20/2024 added."}));
    EXPECT_EQ(eventDate(1, QStringLiteral("Stop date of 4/2/2024 removed.")), QDate(2024, 4, 2));
    EXPECT_EQ(eventDate(1, QStringLiteral("Start date of 1/2/2024 removed.")), QDate(2024, 1, 2));
    EXPECT_EQ(eventDate(1, QStringLiteral("Start Date of 3/20/2024 added.")), QDate(2024, 3, 20));
    // The first meal date follows a new start date when it had none.
    EXPECT_EQ(stored(1, QStringLiteral("First_Ml_Dte")).toDate(), QDate(2024, 3, 20));
    save(1, {{QStringLiteral("Start_Dte"), QDate(2024, 3, 25)}});
    EXPECT_EQ(stored(1, QStringLiteral("First_Ml_Dte")).toDate(), QDate(2024, 3, 20));
}

TEST_P(ClientSave, AContractStopFillsAnEmptyStopDateAndAStartAfterTheStopOffersToClearIt)
{
    addClient(1, {{QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 9, 30)}});
    save(1, {{QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    EXPECT_EQ(stored(1, QStringLiteral("Stop_Dte")).toDate(), QDate(2024, 9, 30));
    EXPECT_TRUE(history(1).isEmpty());

    addClient(2, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 1)},
                  {QStringLiteral("Stop_Code"), 3},
                  {QStringLiteral("Stop_Reason"), QStringLiteral("x")}});
    save(2, {{QStringLiteral("Start_Dte"), QDate(2024, 3, 4)}});
    EXPECT_EQ(questions(),
              QStringList{"You have entered a Start Date more recent than the Stop Date. \r\nShould the old "
                          "Stop Date be cleared?"});
    EXPECT_EQ(stored(2, QStringLiteral("Stop_Dte")).toDate(), QDate(2024, 3, 1));
    ui().answerNext(Answer::Yes);
    save(2, {{QStringLiteral("Start_Dte"), QDate(2024, 3, 5)}});
    EXPECT_TRUE(stored(2, QStringLiteral("Stop_Dte")).isNull());
    EXPECT_TRUE(stored(2, QStringLiteral("Stop_Code")).isNull());
    EXPECT_TRUE(stored(2, QStringLiteral("Stop_Reason")).isNull());
    EXPECT_EQ(history(2), (QStringList{"Start Date of 3/4/2024 added.", "Start Date of 3/5/2024 added.",
                                       "Due to new start date, stop date 3/1/2024 cleared."}));
}

TEST_P(ClientSave, ReactivationHandlesTheStopDateByItsPlaceInTime)
{
    // From "S" there is no "are you sure", and a past stop date goes without asking.
    addClient(1, {{QStringLiteral("Status"), QStringLiteral("S")},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 3, 1)},
                  {QStringLiteral("Stop_Code"), 2}});
    save(1, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(history(1), (QStringList{"Status changed from Stopped to Active.",
                                       "Due to reactivation, stop date 3/1/2024 cleared."}));
    EXPECT_TRUE(stored(1, QStringLiteral("Stop_Dte")).isNull());
    EXPECT_TRUE(stored(1, QStringLiteral("Stop_Code")).isNull());
    EXPECT_TRUE(clients().fieldValue(u"Stop_Dte").isNull());

    // A stop date of today stays.
    addClient(2, {{QStringLiteral("Status"), QStringLiteral("S")}, {QStringLiteral("Stop_Dte"), today()}});
    save(2, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_EQ(stored(2, QStringLiteral("Stop_Dte")).toDate(), today());
    EXPECT_EQ(history(2), QStringList{"Status changed from Stopped to Active."});

    // A future one is asked about.
    addClient(3, {{QStringLiteral("Status"), QStringLiteral("W")},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 5, 1)}});
    ui().answerNext(Answer::Yes);
    save(3, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_EQ(
        questions(),
        QStringList{"This client has a future Stop Date of 5/1/2024. Should the stop date be cleared?"});
    EXPECT_TRUE(stored(3, QStringLiteral("Stop_Dte")).isNull());

    // With a future contract stop the user is only told.
    ui().clear();
    addClient(4, {{QStringLiteral("Status"), QStringLiteral("S")},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 5, 1)},
                  {QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 6, 1)}});
    save(4, {{QStringLiteral("Status"), QStringLiteral("A")}});
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(told(), QStringList{"This client has a future Contractual Stop Date.\r\nYou may want to see if "
                                  "that date needs to be updated."});
    EXPECT_EQ(stored(4, QStringLiteral("Stop_Dte")).toDate(), QDate(2024, 5, 1));
}

TEST_P(ClientSave, InactivationDeletesUncreditedDatedDeliveriesAndStoppingOffersTo)
{
    addClient(1);
    addClient(2);
    auto dated = [&](int recordId, int person, const QDate& date, const QString& type,
                     const QVariant& fulfilled) {
        insertRow(db(), QStringLiteral("EpisodicDeliveries"),
                  {{QStringLiteral("RecordID"), recordId},
                   {QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Deliv_Date"), date},
                   {QStringLiteral("Schedule_Type"), type},
                   {QStringLiteral("Fulfilled"), fulfilled}});
        insertRow(db(), QStringLiteral("DefDels"),
                  {{QStringLiteral("Person_ID"), person},
                   {QStringLiteral("Deliv_ID"), recordId},
                   {QStringLiteral("Item_ID"), 1}});
    };
    dated(1, 1, QDate(2024, 3, 1), QStringLiteral("S"), QVariant());
    dated(2, 1, QDate(2024, 3, 8), QStringLiteral("E"), QStringLiteral(""));
    dated(3, 1, QDate(2024, 3, 1), QStringLiteral("S"), QStringLiteral("Y"));
    dated(11, 2, QDate(2024, 3, 1), QStringLiteral("S"), QVariant()); // past
    dated(12, 2, today(), QStringLiteral("S"), QVariant());           // today counts as future
    dated(13, 2, QDate(2024, 3, 9), QStringLiteral("E"), QVariant()); // another kind
    dated(14, 2, QDate(2024, 3, 9), QStringLiteral("S"), QStringLiteral("Y"));
    int refreshed = 0;
    rules().setOnDatedDeliveriesChanged([&] { ++refreshed; });

    auto remaining = [&](int person) {
        const ResultSet rows = db().execute(
            QStringLiteral("select RecordID from EpisodicDeliveries where Person_ID = :P order by RecordID"),
            {{QStringLiteral("P"), person}});
        QList<int> ids;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            ids.append(rows.value(r, 0).toInt());
        return ids;
    };
    auto items = [&](int person) {
        return db()
            .execute(QStringLiteral("select count(*) from DefDels where Person_ID = :P"),
                     {{QStringLiteral("P"), person}})
            .value(0, 0)
            .toInt();
    };

    save(1, {{QStringLiteral("Status"), QStringLiteral("I")}});
    EXPECT_EQ(remaining(1), QList<int>{3});
    EXPECT_EQ(items(1), 1);
    EXPECT_EQ(history(1), (QStringList{"Status changed from Active to Inactive.",
                                       "All uncredited sched/episodic deliveries deleted"}));
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(refreshed, 1);

    // Stopping asks about the future uncredited rows of the client's kind; No keeps them.
    save(2, {{QStringLiteral("Status"), QStringLiteral("S")}});
    EXPECT_EQ(
        questions(),
        QStringList{"There are uncredited future scheduled deliveries on file for this client.\r\nWould "
                    "you like those deliveries deleted?"});
    EXPECT_EQ(remaining(2), (QList<int>{11, 12, 13, 14}));
    save(2, {{QStringLiteral("Status"), QStringLiteral("A")}});
    ui().answerNext(Answer::Yes);
    save(2, {{QStringLiteral("Status"), QStringLiteral("S")}});
    EXPECT_EQ(remaining(2), (QList<int>{11, 13, 14}));
    EXPECT_EQ(items(2), 3);
    // The text is longer than the column, which keeps the first 50 characters.
    EXPECT_EQ(history(2).last(),
              QStringLiteral("Future uncredited sched/episodic deliveries deleted").left(50));
    EXPECT_EQ(refreshed, 2);

    // An episodic client is asked about the episodic ones.
    ui().clear();
    save(2, {{QStringLiteral("Status"), QStringLiteral("A")},
             {QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    save(2, {{QStringLiteral("Status"), QStringLiteral("S")}});
    EXPECT_EQ(questions(),
              QStringList{"There are uncredited future episodic deliveries on file for this client.\r\nWould "
                          "you like those deliveries deleted?"});
}

TEST_P(ClientSave, ARouteChangeRemindsOfFutureDatedDeliveries)
{
    addClient(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R1")}});
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("Person_ID"), 1},
               {QStringLiteral("Deliv_Date"), QDate(2024, 3, 9)},
               {QStringLiteral("Schedule_Type"), QStringLiteral("S")},
               {QStringLiteral("Fulfilled"), QStringLiteral("Y")}});
    save(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R2")}});
    EXPECT_EQ(told(),
              QStringList{
                  "There is at least one future Scheduled Delivery.\r\nYou may want to see if any Scheduled "
                  "Deliveries need to have their route changed."});
    ui().clear();
    save(1, {{QStringLiteral("Def_Rte"), QStringLiteral("R3")},
             {QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    EXPECT_TRUE(told().isEmpty());
    EXPECT_EQ(history(1), (QStringList{"Default rte chgd frm R1 to R2", "Delivery type changed to Episodic",
                                       "Default rte chgd frm R2 to R3"}));
}

TEST_P(ClientSave, TheServiceSetsOrOffersItsFrequency)
{
    insertRow(db(), QStringLiteral("Services"),
              {{QStringLiteral("Service_ID"), 4},
               {QStringLiteral("Service_Desc"), QStringLiteral("Hot")},
               {QStringLiteral("Default_Frequency"), QStringLiteral("O")}});
    addClient(1, {{QStringLiteral("Delivery_Type"), QVariant()}, {QStringLiteral("Svcs_Used"), 0}});
    save(1, {{QStringLiteral("Svcs_Used"), 4}});
    EXPECT_EQ(stored(1, QStringLiteral("Delivery_Type")).toString(), "O");
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(history(1), (QStringList{"Started on Hot", "Delivery type set to Ongoing"}));

    save(1, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    EXPECT_EQ(
        questions(),
        QStringList{"This client's delivery frequency is different than that for \r\ntheir service. Should "
                    "their frequency be set to that of their \r\nservice?"});
    EXPECT_EQ(stored(1, QStringLiteral("Delivery_Type")).toString(), "E");
    ui().clear();
    save(1, {{QStringLiteral("Delivery_Type"), QStringLiteral("O")}});
    ui().answerNext(Answer::Yes);
    save(1, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
    EXPECT_EQ(questions().size(), 1);
    EXPECT_EQ(stored(1, QStringLiteral("Delivery_Type")).toString(), "O");
}

TEST_P(ClientSave, TheOnPostStatementRunsWithItsValuesAndAFailingOneIsPassedOver)
{
    addClient(1);
    insertRow(
        db(), QStringLiteral("Queries"),
        {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_POST")},
         {QStringLiteral("Query_Lines"),
          QStringLiteral("update Clients set URN = 'S:staff_id-:Person_ID' where Person_ID = :Person_ID")}});
    save(1, {{QStringLiteral("Phone"), QStringLiteral("555-0100")}});
    EXPECT_EQ(stored(1, QStringLiteral("URN")).toString(), "S7-1");
    EXPECT_EQ(clients().fieldValue(u"URN").toString(), "S7-1");

    db().execute(QStringLiteral("update Queries set Query_Lines = 'update NoSuchTable set X = 1'"));
    save(1, {{QStringLiteral("Phone"), QStringLiteral("555-0101")}});
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), "555-0101");
    EXPECT_EQ(history(1), (QStringList{"Old Phone: 555-0100"}));
    EXPECT_TRUE(told().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientSave, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace
