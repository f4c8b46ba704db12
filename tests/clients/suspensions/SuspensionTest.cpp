// Adding, editing and deleting suspensions through the suspension rules and
// editor, with their contract, household and scheduled-delivery follow-ups.

#include "ClientRulesFixture.h"
#include "SuspensionDesk.h"

#include "settings/SettingsFile.h"

namespace kb::test {

namespace {

class Suspensions : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        desk = std::make_unique<SuspensionDesk>(ws->services, ws->ui, ws->session, data->clock(), clients());
    }
    void TearDown() override
    {
        desk.reset();
        ClientRulesFixture::TearDown();
    }
    // Stands on the client and shows its suspensions.
    void standOn(int personId)
    {
        if (!clients().isActive()) clients().open();
        if (!clients().locate(QStringLiteral("PERSON_ID"), personId)) clients().refresh();
        ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), personId));
        desk->open();
    }
    void addMember(int householdId, int personId)
    {
        insertRow(db(), QStringLiteral("Household_Members"),
                  {{QStringLiteral("Household_ID"), householdId}, {QStringLiteral("Person_ID"), personId}});
    }
    // The person's suspensions as "stop..resume/group", by stop date.
    QStringList rowsOf(int personId)
    {
        const ResultSet rows = db().execute(
            QStringLiteral(
                "select Stop_Dt, Resume_Dt, Group_ID from Suspends where Person_ID = :P order by Stop_Dt"),
            {{QStringLiteral("P"), personId}});
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append(rows.value(r, 0).toDate().toString(Qt::ISODate) + QStringLiteral("..") +
                        rows.value(r, 1).toDate().toString(Qt::ISODate) + QLatin1Char('/') +
                        rows.value(r, 2).toString());
        return list;
    }

    std::unique_ptr<SuspensionDesk> desk;
};

const QDate Mon(2024, 3, 11);

} // namespace

TEST_P(Suspensions, NewRowTakesTheClientAndTheDefaultsAndKeepsTheFormsDates)
{
    addClient(5);
    standOn(5);
    desk->stop.reset();
    desk->resume.reset();
    ASSERT_TRUE(desk->editor.EditHolds(SuspensionEditor::Mode::Add));
    const ResultSet row = db().execute(QStringLiteral("select * from Suspends"));
    ASSERT_EQ(row.rowCount(), 1);
    EXPECT_EQ(row.value(0, u"Person_ID").toInt(), 5);
    EXPECT_EQ(row.value(0, u"Client_ID").toString(), QStringLiteral("5.0"));
    EXPECT_EQ(row.value(0, u"Stop_Dt").toDate(), QDate(2024, 3, 7)); // tomorrow
    EXPECT_EQ(row.value(0, u"Resume_Dt").toDate(), QDate(2024, 3, 8));
    EXPECT_EQ(row.value(0, u"Tran_Type").toString(), QStringLiteral("SUSP"));
    EXPECT_TRUE(row.value(0, u"Valid").toBool());
    EXPECT_EQ(row.value(0, u"User").toString(), QStringLiteral("Pat Tester"));
    EXPECT_EQ(row.value(0, u"Create_Date").toDate(), today());
    EXPECT_TRUE(row.value(0, u"Group_ID").isNull());
    EXPECT_GT(desk->editor.savedRecordId(), 0);

    // Cancel leaves nothing behind; editing moves the dates of the row.
    desk->ok = false;
    EXPECT_FALSE(desk->add(Mon, Mon.addDays(3)));
    desk->ok = true;
    EXPECT_EQ(rowsOf(5), QStringList{QStringLiteral("2024-03-07..2024-03-08/")});
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(1)));
    EXPECT_EQ(rowsOf(5), QStringList{QStringLiteral("2024-03-11..2024-03-12/")});
    // An overlapping suspension is a row of its own; each covers its own days.
    ASSERT_TRUE(desk->add(Mon.addDays(1), Mon.addDays(4)));
    EXPECT_EQ(rowsOf(5), (QStringList{QStringLiteral("2024-03-11..2024-03-12/"),
                                      QStringLiteral("2024-03-12..2024-03-15/")}));
    EXPECT_TRUE(questions().isEmpty());
}

TEST_P(Suspensions, ContractStopFollowsTheChangeOfTheSpan)
{
    addClient(5, {{QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 6, 30)},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 6, 30)}});
    standOn(5);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(3))); // 3 days
    EXPECT_EQ(questions(),
              QStringList{QStringLiteral("Should the Contractual Stop Date be extended by 3 day(s)?")});
    EXPECT_EQ(stored(5, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 7, 3));
    EXPECT_TRUE(history(5).contains(QStringLiteral("Contract Stop extended by 3 days, now 7/3/2024")));

    // From 3 to 5 days asks about 2 more; from 5 to 4 about reducing by 1.
    ui().clear();
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(5)));
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(4)));
    EXPECT_EQ(questions(),
              (QStringList{QStringLiteral("Should the Contractual Stop Date be extended by 2 day(s)?"),
                           QStringLiteral("Should the Contractual Stop Date be reduced by 1 day(s)?")}));
    EXPECT_EQ(stored(5, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 7, 4));
    EXPECT_TRUE(history(5).contains(QStringLiteral("Contract Stop reduced by 1 day, now 7/4/2024")));

    // No answers No: the date stays. Deleting gives the 4 days back.
    ui().clear();
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(6)));
    EXPECT_EQ(stored(5, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 7, 4));
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(4)));
    ui().clear();
    ui().answerNext(Answer::Yes);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->editor.DeleteSuspension1Click());
    EXPECT_EQ(questions(),
              (QStringList{QStringLiteral("Delete the selected Suspension?"),
                           QStringLiteral("Should the Contractual Stop Date be reduced by 4 day(s)?")}));
    EXPECT_EQ(stored(5, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 6, 30));
    EXPECT_TRUE(history(5).contains(QStringLiteral("Suspension (3/11/2024-3/15/2024) deleted.")));
    EXPECT_TRUE(rowsOf(5).isEmpty());
}

TEST_P(Suspensions, PastOrMissingContractStopAsksNothing)
{
    addClient(5, {{QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 3, 5)}});
    addClient(6);
    standOn(5);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(3)));
    standOn(6);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(3)));
    EXPECT_TRUE(questions().isEmpty());
    EXPECT_EQ(stored(5, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 3, 5));
}

TEST_P(Suspensions, HouseholdSuspensionIsMadeForTheOtherClientsAndDeletedWithItsGroup)
{
    addClient(5, {{QStringLiteral("Household_ID"), 9}});
    addClient(6, {{QStringLiteral("Household_ID"), 9}});
    addClient(7, {{QStringLiteral("Household_ID"), 9}});
    addClient(8, {{QStringLiteral("Household_ID"), 9},
                  {QStringLiteral("Client_ID"), QString()},
                  {QStringLiteral("Status"), QString()}});
    for (int person : {5, 6, 7, 8})
        addMember(9, person);
    standOn(5);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(2), QStringLiteral("Vacation")));
    EXPECT_EQ(questions(), QStringList{SuspensionEditor::householdAddQuestion()});
    const qint64 group = desk->editor.groupId();
    ASSERT_GT(group, 0);
    const QString expected = QStringLiteral("2024-03-11..2024-03-13/%1").arg(group);
    EXPECT_EQ(rowsOf(5), QStringList{expected});
    EXPECT_EQ(rowsOf(6), QStringList{expected});
    EXPECT_EQ(rowsOf(7), QStringList{expected});
    EXPECT_TRUE(rowsOf(8).isEmpty()); // no client, no suspension
    EXPECT_EQ(
        db().execute(QStringLiteral("select Reason, Client_ID, Tran_Type from Suspends where Person_ID = 6"))
            .row(0),
        (QVariantList{QStringLiteral("Vacation"), QStringLiteral("6.0"), QStringLiteral("SUSP")}));

    // One member's dates change: deleting another's row with Yes removes
    // the equal ones and names the changed one.
    db().execute(QStringLiteral("update Suspends set Resume_Dt = :R where Person_ID = 7"),
                 {{QStringLiteral("R"), Mon.addDays(4)}});
    standOn(6);
    ui().clear();
    ui().answerNext(Answer::Yes);
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->editor.DeleteSuspension1Click());
    EXPECT_EQ(questions(),
              (QStringList{SuspensionEditor::deleteQuestion(), SuspensionEditor::householdDeleteQuestion()}));
    EXPECT_EQ(told(),
              QStringList{QStringLiteral("The dates of the suspension for First7 Last7 were changed. That "
                                         "\r\nsuspension will have to be manually deleted!")});
    EXPECT_TRUE(rowsOf(5).isEmpty());
    EXPECT_TRUE(rowsOf(6).isEmpty());
    EXPECT_EQ(rowsOf(7).size(), 1);
    EXPECT_TRUE(history(5).contains(QStringLiteral("Suspension (3/11/2024-3/13/2024) deleted.")));
    EXPECT_TRUE(history(6).contains(QStringLiteral("Suspension (3/11/2024-3/13/2024) deleted.")));
}

TEST_P(Suspensions, HouseholdWithoutOthersOrWithoutGroupAsksNothingButReminds)
{
    addClient(5, {{QStringLiteral("Household_ID"), 9}});
    addMember(9, 5);
    standOn(5);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(2)));
    EXPECT_TRUE(questions().isEmpty()); // nobody else in the household

    addClient(6, {{QStringLiteral("Household_ID"), 9}});
    addMember(9, 6);
    standOn(6);
    ui().answerNext(Answer::No);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(2)));
    EXPECT_TRUE(rowsOf(5).size() == 1 && rowsOf(6).size() == 1);

    // Edited dates remind; a row without a group only reminds at deletion.
    ui().clear();
    ASSERT_TRUE(desk->change(Mon, Mon.addDays(3)));
    EXPECT_EQ(told(), QStringList{SuspensionEditor::householdEditNotice()});
    ui().clear();
    ui().answerNext(Answer::Yes);
    ASSERT_TRUE(desk->editor.DeleteSuspension1Click());
    EXPECT_EQ(questions(), QStringList{SuspensionEditor::deleteQuestion()});
    EXPECT_EQ(told(), QStringList{SuspensionEditor::householdDeleteReminder()});
    EXPECT_EQ(rowsOf(5).size(), 1);
}

TEST_P(Suspensions, DeleteAskedNoOrEmptyDoesNothing)
{
    addClient(5);
    standOn(5);
    EXPECT_FALSE(desk->editor.DeleteSuspension1Click()); // no rows: nothing asked
    EXPECT_FALSE(desk->editor.EditHolds(SuspensionEditor::Mode::Edit));
    EXPECT_TRUE(questions().isEmpty());
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(2)));
    EXPECT_FALSE(desk->editor.DeleteSuspension1Click()); // answered No
    EXPECT_EQ(rowsOf(5).size(), 1);
    EXPECT_TRUE(history(5).isEmpty());
}

TEST_P(Suspensions, ScheduledDeliveryInsideTheSuspensionIsPointedOut)
{
    addClient(5);
    insertRow(db(), QStringLiteral("EpisodicDeliveries"),
              {{QStringLiteral("Person_ID"), 5},
               {QStringLiteral("Deliv_Date"), Mon.addDays(1)},
               {QStringLiteral("Schedule_Type"), QStringLiteral("S")}});
    standOn(5);
    setConfig(QStringLiteral("SUSPEND_SCHEDULED_DELIVERIES"), true);
    ASSERT_TRUE(desk->add(Mon, Mon.addDays(2)));
    EXPECT_TRUE(told().isEmpty());
    setConfig(QStringLiteral("SUSPEND_SCHEDULED_DELIVERIES"), false);
    ASSERT_TRUE(desk->add(Mon.addDays(2), Mon.addDays(3))); // after it
    EXPECT_TRUE(told().isEmpty());
    ASSERT_TRUE(desk->add(Mon.addDays(1), Mon.addDays(2)));
    EXPECT_EQ(told(), QStringList{SuspensionEditor::scheduledNotice()});
}

INSTANTIATE_TEST_SUITE_P(Stores, Suspensions, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

TEST(SuspensionForm, DatesAndCalendarShowOneRange)
{
    SettingsFile settings;
    TempDataDir data;
    QueryDataSet row(data.db(), QStringLiteral("select * from Suspends"));
    row.setRequestLive(true);
    row.open();
    row.append();
    row.setFieldValue(u"Stop_Dt", Mon);
    row.setFieldValue(u"Resume_Dt", Mon.addDays(1));

    TFormAddSuspension form(row, &settings);
    EXPECT_EQ(form.view(), TFormAddSuspension::View::Calendar); // the default
    // Monday to Tuesday: Monday alone is selected.
    EXPECT_EQ(form.selectionStart(), Mon);
    EXPECT_EQ(form.selectionEnd(), Mon);
    form.setStopDate(Mon.addDays(5)); // after the resume date
    EXPECT_EQ(form.resumeDate(), Mon.addDays(6));
    form.setResumeDate(Mon.addDays(2)); // before the stop date
    EXPECT_EQ(form.stopDate(), Mon.addDays(1));
    form.setSelection(Mon, Mon.addDays(400));
    EXPECT_EQ(form.resumeDate(), Mon.addDays(365));
    form.setSelection(Mon.addDays(3), Mon.addDays(1)); // dragged backwards
    EXPECT_EQ(form.stopDate(), Mon.addDays(1));
    EXPECT_EQ(form.resumeDate(), Mon.addDays(4));
    form.setView(TFormAddSuspension::View::Dates);
    form.setReason(QStringLiteral("Hospital"));
    form.close();
    EXPECT_EQ(row.fieldValue(u"Stop_Dt").toDate(), Mon.addDays(1));
    EXPECT_EQ(row.fieldValue(u"Resume_Dt").toDate(), Mon.addDays(4));
    EXPECT_EQ(row.fieldValue(u"Reason").toString(), QStringLiteral("Hospital"));
    EXPECT_EQ(settings.readString(QStringLiteral("FormAddSuspension"), QStringLiteral("CalendarOrDates")),
              QStringLiteral("Dates"));
    EXPECT_EQ(TFormAddSuspension(row, &settings).view(), TFormAddSuspension::View::Dates);
    row.cancel();
}

} // namespace kb::test
