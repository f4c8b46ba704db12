// The headless prepare command: the same sign-in and the same run as the
// screen's presenter, printed as CSV.

#include "confirmation/GivenItemConfirmation.h"
#include "Csv.h"
#include "items/RunItemRows.h"
#include "RunFixture.h"

#include "RunCommand.h"

#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

class PrepareCommand : public RunFixture
{
protected:
    void SetUp() override
    {
        insertRow(db(), QStringLiteral("Staff"), {{QStringLiteral("Staff_ID"), 1},
                                                  {QStringLiteral("User_ID"), QStringLiteral("pat")},
                                                  {QStringLiteral("Staff_Name"), QStringLiteral("Pat Tester")},
                                                  {QStringLiteral("Access_Level"), QStringLiteral("W")},
                                                  {QStringLiteral("Active"), true}});
        setConfig(QStringLiteral("ENABLE_ALTERNATE_ADDRESSES"), true);
        addClient(1, {{QStringLiteral("Mon_Rte"), QStringLiteral("R2")}});
        addClient(2, {{QStringLiteral("Def_Rte"), QVariant()}, {QStringLiteral("Last_Name"), QStringLiteral("Noroute")}});
        addClient(3, {{QStringLiteral("Delivery_Type"), QStringLiteral("E")}});
        addClient(4, {{QStringLiteral("Ongoing_Frequency"), QStringLiteral("O")}});
        addClient(5, {{QStringLiteral("Mid_Name"), QStringLiteral("Lee, Jr")}});
        addDated(3, monday, QStringLiteral("E"), {{QStringLiteral("Delivery_Type"), QStringLiteral("W")}});
        addDated(5, monday, QStringLiteral("S"));
        // The user's own settings and folders stay untouched by the program.
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
        addOverride(5, QStringLiteral("D"), {{QStringLiteral("Deliv_Date"), monday},
                                             {QStringLiteral("Address1"), QStringLiteral("9 \"Quoted\" Rd")},
                                             {QStringLiteral("Route"), QStringLiteral("R1")}});
    }

    static CommandResult run(const QStringList& arguments) { return runKettlebrook(arguments); }

    QTemporaryDir home;
};

TEST_F(PrepareCommand, PrintsTheSameRunAsTheScreen)
{
    const CommandResult outcome = run({QStringLiteral("--data"), data.path(), QStringLiteral("--user"), QStringLiteral("pat"),
                                 QStringLiteral("prepare"), QStringLiteral("2024-03-11")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.err, "First2 Noroute is missing a Route for this day. Processing can not proceed!\n");

    QString expected;
    QTextStream stream(&expected);
    writeCsv(stream, prepare(monday, u'A'));
    stream.flush();
    EXPECT_EQ(outcome.out, expected);
    EXPECT_TRUE(outcome.out.startsWith(MemTableDeliveries::columnNames().join(u',') + u'\n'));
    EXPECT_EQ(outcome.out.count(u'\n'), 1 + 5); // clients 1, 2 and 5 ongoing, 3 walk-in, 5 scheduled

    const ResultSet history = db().execute(QStringLiteral("select Event, User from History order by RecordID"));
    ASSERT_EQ(history.rowCount(), 2);
    EXPECT_EQ(history.value(0, 0).toString(), "Pat Tester logged into Kettlebrook");
    EXPECT_EQ(history.value(1, 0).toString(), "Pat Tester logged out of Kettlebrook");
}

TEST_F(PrepareCommand, TheTypeLetterChoosesTheSelections)
{
    const CommandResult outcome = run({QStringLiteral("--data"), data.path(), QStringLiteral("--user"), QStringLiteral("pat"),
                                 QStringLiteral("prepare"), QStringLiteral("2024-03-11"), QStringLiteral("--type"),
                                 QStringLiteral("B")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    QString expected;
    QTextStream stream(&expected);
    writeCsv(stream, prepare(monday, u'B'));
    stream.flush();
    EXPECT_EQ(outcome.out, expected);
    EXPECT_EQ(outcome.out.count(u'\n'), 1 + 2);
}

TEST_F(PrepareCommand, ItemsPrintWhatSavingTheRunWouldWrite)
{
    insertRow(db(), QStringLiteral("Items"), {{QStringLiteral("Item_ID"), 1},
                                              {QStringLiteral("Meal_Item"), QStringLiteral("Hot Lunch")},
                                              {QStringLiteral("Number_Meals"), 1},
                                              {QStringLiteral("Number_Labels"), 1}});
    insertRow(db(), QStringLiteral("Items"), {{QStringLiteral("Item_ID"), 2},
                                              {QStringLiteral("Meal_Item"), QStringLiteral("Storm Pack")},
                                              {QStringLiteral("Number_Meals"), 5},
                                              {QStringLiteral("Confirmation_Required"), QStringLiteral("A")}});
    for (int item : {1, 2})
        insertRow(db(), QStringLiteral("Defdels"), {{QStringLiteral("Person_ID"), 0},
                                                    {QStringLiteral("Service_ID"), 1},
                                                    {QStringLiteral("Del_Day"), QStringLiteral("MON")},
                                                    {QStringLiteral("Item_ID"), item},
                                                    {QStringLiteral("Quantity"), 1},
                                                    {QStringLiteral("Sort_Order"), item}});
    const QStringList words = {QStringLiteral("--data"), data.path(), QStringLiteral("--user"), QStringLiteral("pat"),
                               QStringLiteral("prepare"), QStringLiteral("2024-03-11"), QStringLiteral("--items")};
    const auto expected = [&](GivenItemConfirmation answer) {
        prepare(monday);
        form().setItemConfirmation(&answer);
        QString text;
        QTextStream stream(&text);
        writeCsv(stream, runItemRows(form().FindRunItems(form().ConfirmDeliveryItems())));
        stream.flush();
        form().setItemConfirmation(nullptr);
        return text;
    };

    CommandResult outcome = run(words);
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, expected(GivenItemConfirmation::none()));
    EXPECT_TRUE(outcome.out.startsWith(QStringLiteral("Route_ID,Stop,Client_ID,Person_ID,Delivery_Type,Svcs_Used,"
                                                      "Items_From,Custom_Items,Number_Meals,Number_Labels,"
                                                      "Funding_Desc,Item_ID,Quantity,Sort_Order\n")));
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("R2,0,C001,1,OD,1,default,false,1,1,\"\",1,1,1\n")));
    outcome = run(words + QStringList{QStringLiteral("--confirm"), QStringLiteral("2")});
    ASSERT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, expected(GivenItemConfirmation::items({2})));
    EXPECT_TRUE(outcome.out.contains(QStringLiteral("R2,0,C001,1,OD,1,default,false,6,1,\"\",2,1,2\n")));

    outcome = run(words + QStringList{QStringLiteral("--confirm"), QStringLiteral("1")});
    EXPECT_NE(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.err.endsWith(QStringLiteral("Item 1 does not need confirmation for this run.\n")))
        << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, "");
    outcome = run(words + QStringList{QStringLiteral("--confirm"), QStringLiteral("some")});
    EXPECT_EQ(outcome.exitCode, 2);
    outcome = run(words.mid(0, 6) + QStringList{QStringLiteral("--confirm"), QStringLiteral("all")});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.err.contains(QStringLiteral("--confirm goes with --items.")));
}

TEST_F(PrepareCommand, RefusesWhatTheDialogRefuses)
{
    db().execute(QStringLiteral("Update Staff set Active = False"));
    CommandResult outcome = run({QStringLiteral("--data"), data.path(), QStringLiteral("--user"), QStringLiteral("pat"),
                           QStringLiteral("prepare"), QStringLiteral("2024-03-11")});
    EXPECT_NE(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err, "That User ID is inactivated.\n");
    EXPECT_EQ(outcome.out, "");
    outcome = run({QStringLiteral("--data"), data.path(), QStringLiteral("--user"), QStringLiteral("Pat"),
                   QStringLiteral("prepare"), QStringLiteral("2024-03-11")});
    EXPECT_EQ(outcome.err, "That User ID could not be located! Please try again...\n");
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from History")).value(0, 0).toInt(), 0);

    outcome = run({QStringLiteral("--data"), data.path() + QStringLiteral("/missing"), QStringLiteral("--user"),
                   QStringLiteral("keeperin"), QStringLiteral("prepare"), QStringLiteral("2024-03-11")});
    EXPECT_NE(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.err.endsWith(QStringLiteral("does not appear to be valid. Kettlebrook will now terminate...\n")));
}

} // namespace
