// The suspension and status commands end to end: the real executable on
// real data, through the same rules as the client window, all or nothing.

#include "ClientCommandFixture.h"
#include "ClientStatuses.h"
#include "RunCommand.h"

#include <QTemporaryDir>

namespace kb::test {

namespace {

class SuspensionCommands : public ClientCommandFixture
{
protected:
    CommandResult run(const QStringList& words, const QString& user = QStringLiteral("userW"))
    {
        return runAs(user, words);
    }
    int count(const QString& table)
    {
        return db().execute(QStringLiteral("select count(*) from ") + table).value(0, 0).toInt();
    }
    QString statuses() { return clientStatuses(db()); }

};

} // namespace

TEST_P(SuspensionCommands, SuspendListAndDeleteThroughTheRules)
{
    addClient(1, {{QStringLiteral("Household_ID"), 4},
                  {QStringLiteral("Contractual_Stop_Dte"), QDate(2024, 6, 30)},
                  {QStringLiteral("Stop_Dte"), QDate(2024, 6, 30)}});
    addClient(2, {{QStringLiteral("Household_ID"), 4}});
    for (int person : {1, 2})
        insertRow(db(), QStringLiteral("Household_Members"),
                  {{QStringLiteral("Household_ID"), 4}, {QStringLiteral("Person_ID"), person}});

    // Bad words change nothing and exit 2.
    EXPECT_EQ(run({QStringLiteral("suspend"), QStringLiteral("1"), QStringLiteral("--stop"),
                   QStringLiteral("2024-03-13"), QStringLiteral("--resume"), QStringLiteral("2024-03-11")})
                  .exitCode,
              2);
    EXPECT_EQ(run({QStringLiteral("suspend"), QStringLiteral("1"), QStringLiteral("--stop"),
                   QStringLiteral("2024-03-11")})
                  .exitCode,
              2);
    // A read-only user is refused, with nothing written.
    const CommandResult refused =
        run({QStringLiteral("suspend"), QStringLiteral("1"), QStringLiteral("--stop"),
             QStringLiteral("2024-03-11"), QStringLiteral("--resume"), QStringLiteral("2024-03-13")},
            QStringLiteral("userR"));
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("read-only"))) << refused.err.toStdString();
    EXPECT_EQ(count(QStringLiteral("Suspends")), 0);

    const CommandResult added =
        run({QStringLiteral("suspend"), QStringLiteral("1"), QStringLiteral("--stop"),
             QStringLiteral("2024-03-11"), QStringLiteral("--resume"), QStringLiteral("2024-03-13"),
             QStringLiteral("--reason"), QStringLiteral("Hospital"), QStringLiteral("--household"),
             QStringLiteral("--yes")});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    const QStringList lines = added.out.trimmed().split(QLatin1Char('\n'));
    ASSERT_EQ(lines.size(), 3) << added.out.toStdString(); // header, client 1 and client 2
    EXPECT_TRUE(lines[1].contains(QStringLiteral(",2024-03-11,2024-03-13,Hospital,Level W,")));
    EXPECT_EQ(stored(1, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 7, 2));

    const CommandResult listed = run({QStringLiteral("suspensions"), QStringLiteral("2")});
    ASSERT_EQ(listed.exitCode, 0);
    EXPECT_TRUE(
        listed.out.startsWith(QStringLiteral("RecordID,Person_ID,Client_ID,Group_ID,Stop_Dt,Resume_Dt")));
    EXPECT_EQ(listed.out.trimmed().split(QLatin1Char('\n')).size(), 2);

    // Deleting client 1's row: its contract days back, the household's row with it.
    const QString recordId = db().execute(QStringLiteral("select RecordID from Suspends where Person_ID = 1"))
                                 .value(0, 0)
                                 .toString();
    const CommandResult deleted =
        run({QStringLiteral("suspension"), QStringLiteral("delete"), recordId, QStringLiteral("--yes")});
    ASSERT_EQ(deleted.exitCode, 0) << deleted.err.toStdString();
    EXPECT_EQ(deleted.out.trimmed().split(QLatin1Char('\n')).size(), 3);
    EXPECT_EQ(count(QStringLiteral("Suspends")), 0);
    EXPECT_EQ(stored(1, QStringLiteral("Contractual_Stop_Dte")).toDate(), QDate(2024, 6, 30));
    EXPECT_EQ(run({QStringLiteral("suspension"), QStringLiteral("delete"), recordId}).exitCode, 1);
    EXPECT_EQ(run({QStringLiteral("suspensions"), QStringLiteral("99")}).exitCode, 1);
}

TEST_P(SuspensionCommands, StopAndInactivatePrintTheClientsTheyChanged)
{
    addClient(1, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 4)}});
    addClient(2, {{QStringLiteral("Stop_Dte"), QDate(2024, 3, 6)}});
    addClient(3, {{QStringLiteral("Stop_Dte"), QDate(2024, 1, 4)},
                  {QStringLiteral("Status"), QStringLiteral("S")}});
    setConfig(QStringLiteral("STOPPED2INACTIVE_DAYS"), 30);

    // A read-only user changes nothing.
    EXPECT_EQ(run({QStringLiteral("stop-clients")}, QStringLiteral("userR")).exitCode, 1);
    EXPECT_EQ(statuses(), QStringLiteral("AAS"));

    const CommandResult stopped = run({QStringLiteral("stop-clients")});
    ASSERT_EQ(stopped.exitCode, 0) << stopped.err.toStdString();
    EXPECT_EQ(stopped.out,
              QStringLiteral("Client_ID,Person_ID,First_Name,Last_Name,Stop_Dte,Old_Status,Status\n"
                             "1.0,1,First1,Last1,2024-03-04,A,S\n"));
    EXPECT_EQ(statuses(), QStringLiteral("SAS"));
    EXPECT_EQ(history(1), QStringList{QStringLiteral("Status changed from Active to Stopped.")});

    const CommandResult inactivated = run({QStringLiteral("inactivate-clients")});
    ASSERT_EQ(inactivated.exitCode, 0) << inactivated.err.toStdString();
    EXPECT_EQ(inactivated.out.trimmed().split(QLatin1Char('\n')).size(), 2); // client 3 only
    EXPECT_EQ(statuses(), QStringLiteral("SAI"));
    const CommandResult later =
        run({QStringLiteral("inactivate-clients"), QStringLiteral("--date"), QStringLiteral("2024-03-05")});
    ASSERT_EQ(later.exitCode, 0);
    EXPECT_EQ(statuses(), QStringLiteral("IAI"));
    EXPECT_EQ(
        run({QStringLiteral("stop-clients"), QStringLiteral("--date"), QStringLiteral("tomorrow")}).exitCode,
        2);
}

INSTANTIATE_TEST_SUITE_P(Stores, SuspensionCommands,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL), storeParamName);

} // namespace kb::test
