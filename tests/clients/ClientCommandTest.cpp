// The client commands end to end: the real executable on real data, its
// questions answered by --yes, --no or the answer that changes the least,
// and a refused save that changes nothing.

#include "ClientRulesFixture.h"
#include "RunCommand.h"

#include <QTemporaryDir>

using namespace kb;
using namespace kb::test;

namespace {

class ClientCommand : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        // The user's own settings and folders stay untouched by the program.
        qputenv("XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toLocal8Bit());
        qputenv("XDG_DATA_HOME", home.filePath(QStringLiteral("data")).toLocal8Bit());
        insertRow(db(), QStringLiteral("Staff"),
                  {{QStringLiteral("Staff_ID"), 3},
                   {QStringLiteral("User_ID"), QStringLiteral("pat")},
                   {QStringLiteral("Staff_Name"), QStringLiteral("Pat Tester")},
                   {QStringLiteral("Access_Level"), QStringLiteral("W")},
                   {QStringLiteral("Active"), true}});
        insertRow(db(), QStringLiteral("Staff"),
                  {{QStringLiteral("Staff_ID"), 4},
                   {QStringLiteral("User_ID"), QStringLiteral("rita")},
                   {QStringLiteral("Staff_Name"), QStringLiteral("Rita Reader")},
                   {QStringLiteral("Access_Level"), QStringLiteral("R")},
                   {QStringLiteral("Active"), true}});
    }
    CommandResult client(const QStringList& words, const QString& user = QStringLiteral("pat"))
    {
        return runKettlebrook(data->commandLocation() +
                              QStringList{QStringLiteral("--today"), QStringLiteral("2024-03-06"),
                                          QStringLiteral("--user"), user, QStringLiteral("client")} +
                              words);
    }
    int historyRows()
    {
        return db()
            .execute(QStringLiteral("select count(*) from History where Person_ID is not null"))
            .value(0, 0)
            .toInt();
    }
    int counter() { return db().execute(QStringLiteral("select PERSON_ID from IDNOS")).value(0, 0).toInt(); }

    QTemporaryDir home;
};

TEST_P(ClientCommand, ShowPrintsTheRowAsCsv)
{
    addClient(1, {{QStringLiteral("Last_Name"), QStringLiteral("Baker, Jr")}});
    const CommandResult shown = client({QStringLiteral("show"), QStringLiteral("1")});
    ASSERT_EQ(shown.exitCode, 0) << shown.err.toStdString();
    const QStringList lines = shown.out.split(u'\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QLatin1String("RecordID,PERSON_ID,CLIENT_ID,LAST_NAME,FIRST_NAME,")))
        << lines[0].toStdString();
    EXPECT_TRUE(lines[1].startsWith(QLatin1String("1,1,1.0,\"Baker, Jr\",First1,")))
        << lines[1].toStdString();
    EXPECT_TRUE(lines[1].contains(QLatin1String(",2024-01-02,"))) << "dates as YYYY-MM-DD";

    const CommandResult missing = client({QStringLiteral("show"), QStringLiteral("9")});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_TRUE(missing.err.contains(QLatin1String("No person has Person_ID 9.")))
        << missing.err.toStdString();
    EXPECT_EQ(client({QStringLiteral("show"), QStringLiteral("x")}).exitCode, 2);
    EXPECT_EQ(client({QStringLiteral("list")}).exitCode, 2);
}

TEST_P(ClientCommand, SetSavesThroughTheRulesAndTheirQuestionsGetTheAnswersGiven)
{
    setConfig(QStringLiteral("RECERT_WKS"), 0);
    addClient(1, {{QStringLiteral("Status"), QStringLiteral("I")}});
    // Without --yes the activation of an inactive client is answered No:
    // the status stays, the phone is saved.
    CommandResult least = client({QStringLiteral("set"), QStringLiteral("1"), QStringLiteral("STATUS=A"),
                                  QStringLiteral("PHONE=555-0100")});
    ASSERT_EQ(least.exitCode, 0) << least.err.toStdString();
    EXPECT_TRUE(least.err.contains(QLatin1String("Are you sure you want to do this? [No]")))
        << least.err.toStdString();
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "I");
    EXPECT_EQ(stored(1, QStringLiteral("Phone")).toString(), "555-0100");

    CommandResult yes = client(
        {QStringLiteral("set"), QStringLiteral("1"), QStringLiteral("STATUS=A"), QStringLiteral("--yes")});
    ASSERT_EQ(yes.exitCode, 0) << yes.err.toStdString();
    EXPECT_TRUE(yes.err.contains(QLatin1String("Please reset the Start Date for this client!")))
        << yes.err.toStdString();
    EXPECT_TRUE(yes.err.contains(QLatin1String("Reset Start Date: Meals Start Date: 1/2/2024 [Cancel]")))
        << yes.err.toStdString();
    EXPECT_EQ(stored(1, QStringLiteral("Status")).toString(), "A");
    EXPECT_EQ(history(1), QStringList{"Status changed from Inactive to Active."});
    const QString user =
        db().execute(QStringLiteral("select User from History where Person_ID = 1")).value(0, 0).toString();
    EXPECT_EQ(user, "Pat Tester");

    // A failing on-post statement of the agency's is passed over inside
    // the command's transaction too.
    insertRow(db(), QStringLiteral("Queries"),
              {{QStringLiteral("Query_Name"), QStringLiteral("EXECUTE_ON_POST")},
               {QStringLiteral("Query_Lines"), QStringLiteral("update NoSuchTable set X = :Person_ID")}});
    // Null, the empty text, a float and a date, each by its column's type.
    CommandResult typed = client({QStringLiteral("set"), QStringLiteral("1"), QStringLiteral("PHONE="),
                                  QStringLiteral("MID_NAME=\"\""), QStringLiteral("DEF_STOP=2.5"),
                                  QStringLiteral("DOB=1940-03-05"), QStringLiteral("Friday=true")});
    ASSERT_EQ(typed.exitCode, 0) << typed.err.toStdString();
    EXPECT_TRUE(stored(1, QStringLiteral("Phone")).isNull());
    EXPECT_EQ(stored(1, QStringLiteral("Mid_Name")).toString(), "");
    EXPECT_FALSE(stored(1, QStringLiteral("Mid_Name")).isNull());
    EXPECT_EQ(stored(1, QStringLiteral("Def_Stop")).toDouble(), 2.5);
    EXPECT_EQ(stored(1, QStringLiteral("DOB")).toDate(), QDate(1940, 3, 5));
}

TEST_P(ClientCommand, ARefusedSaveOrABadWordChangesNothing)
{
    addClient(1);
    const int idnos = counter();
    CommandResult future = client({QStringLiteral("set"), QStringLiteral("1"),
                                   QStringLiteral("DOB=2030-01-01"), QStringLiteral("PHONE=555-0199")});
    EXPECT_EQ(future.exitCode, 1);
    EXPECT_EQ(future.err, "You have entered a birth date that is in the future!\n");
    EXPECT_TRUE(stored(1, QStringLiteral("Phone")).isNull());

    CommandResult refusedNew =
        client({QStringLiteral("new"), QStringLiteral("LAST_NAME=Young"), QStringLiteral("DOB=2030-01-01")});
    EXPECT_EQ(refusedNew.exitCode, 1);
    EXPECT_EQ(refusedNew.out, "");
    EXPECT_EQ(counter(), idnos) << "the number taken for the refused person is given back";
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Clients")).value(0, 0).toInt(), 1);

    for (const QString& word :
         {QStringLiteral("NOPE=1"), QStringLiteral("DOB=06/03/2024"), QStringLiteral("SVCS_USED=two"),
          QStringLiteral("STOP_CODE=70000"), QStringLiteral("MONDAY=yes"),
          QStringLiteral("STATE=Connecticut"), QStringLiteral("PERSON_ID=5"), QStringLiteral("RecordID=5"),
          QStringLiteral("PHONE"), QStringLiteral("=1")}) {
        CommandResult bad =
            client({QStringLiteral("set"), QStringLiteral("1"), QStringLiteral("ZIP=06033"), word});
        EXPECT_EQ(bad.exitCode, 2) << word.toStdString();
        EXPECT_TRUE(bad.err.startsWith(QLatin1String("client: "))) << bad.err.toStdString();
    }
    EXPECT_TRUE(stored(1, QStringLiteral("Zip")).isNull());

    // A read-only user is refused by the session's one access check.
    CommandResult reader = client({QStringLiteral("set"), QStringLiteral("1"), QStringLiteral("ZIP=06033")},
                                  QStringLiteral("rita"));
    EXPECT_EQ(reader.exitCode, 1);
    EXPECT_TRUE(reader.err.contains(QLatin1String("You have read-only access: the data cannot be changed.")))
        << reader.err.toStdString();
    EXPECT_TRUE(stored(1, QStringLiteral("Zip")).isNull());
    EXPECT_EQ(historyRows(), 0);
}

TEST_P(ClientCommand, NewAddsAPersonWithTheDefaultsAndPrintsItsNumber)
{
    setConfig(QStringLiteral("DCITY"), QStringLiteral("Hartford"));
    setConfig(QStringLiteral("DSTATE"), QStringLiteral("CT"));
    const int before = counter();
    CommandResult made = client({QStringLiteral("new"), QStringLiteral("LAST_NAME=Young"),
                                 QStringLiteral("FIRST_NAME=Ada"), QStringLiteral("STATUS=W")});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    const int person = before + 1;
    EXPECT_EQ(made.out, QStringLiteral("Person_ID\n%1\n").arg(person));
    EXPECT_EQ(stored(person, QStringLiteral("Last_Name")).toString(), "Young");
    EXPECT_EQ(stored(person, QStringLiteral("City")).toString(), "Hartford");
    EXPECT_EQ(stored(person, QStringLiteral("Delivery_Type")).toString(), "O");
    EXPECT_EQ(stored(person, QStringLiteral("Ongoing_Frequency")).toString(), "A");
    EXPECT_EQ(stored(person, QStringLiteral("Add_Dte")).toDate(), today());
    EXPECT_EQ(history(person), (QStringList{"Added status of Wait List.", "Delivery type set to Ongoing"}));
}

INSTANTIATE_TEST_SUITE_P(Stores, ClientCommand, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace
