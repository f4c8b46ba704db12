// The household command end to end: the real executable on real data,
// adding people to households and moving them between households through
// the client rules, all or nothing, and refusing with nothing changed.

#include "ClientCommandFixture.h"
#include "RunCommand.h"

#include <QTemporaryDir>

namespace kb::test {

namespace {

class HouseholdCommand : public ClientCommandFixture
{
protected:
    void SetUp() override
    {
        ClientCommandFixture::SetUp();
        if (IsSkipped()) return;
        for (int person : {1, 2, 3, 4})
            addClient(person);
    }
    CommandResult run(const QStringList& words, const QString& user = QStringLiteral("userW"))
    {
        return runAs(user, QStringList{QStringLiteral("household")} + words);
    }
    // Everything the command may change, as one text: the households, the
    // member rows and every client's Household_ID.
    QString state()
    {
        QStringList lines;
        const auto dump = [&](const QString& sql) {
            const ResultSet rows = db().execute(sql);
            for (qsizetype r = 0; r < rows.rowCount(); ++r) {
                QStringList cells;
                for (int c = 0; c < rows.columnCount(); ++c)
                    cells << (rows.value(r, c).isNull() ? QStringLiteral("-") : rows.value(r, c).toString());
                lines << cells.join(QLatin1Char('|'));
            }
            lines << QStringLiteral("--");
        };
        dump(QStringLiteral(
            "select Household_ID, Household_Name, User from Households order by Household_ID"));
        dump(QStringLiteral("select Household_ID, Person_ID, Role, Head_of_Household from Household_Members "
                            "order by RecordID"));
        dump(QStringLiteral("select Person_ID, Household_ID from Clients order by Person_ID"));
        return lines.join(QLatin1Char('\n'));
    }
    qint64 householdOf(int person) { return stored(person, QStringLiteral("Household_ID")).toLongLong(); }
    // The Household_ID of the first member row printed.
    static qint64 printedHousehold(const CommandResult& result)
    {
        const QStringList lines = result.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        return lines.size() > 1 ? lines[1].section(QLatin1Char(','), 0, 0).toLongLong() : 0;
    }
    // Runs a command that must refuse: its exit code, and nothing changed.
    void expectRefused(const QStringList& words, int exitCode, const QString& told,
                       const QString& user = QStringLiteral("userW"))
    {
        const QString before = state();
        const CommandResult result = run(words, user);
        EXPECT_EQ(result.exitCode, exitCode) << words.join(QLatin1Char(' ')).toStdString() << "\n"
                                             << result.err.toStdString();
        EXPECT_TRUE(result.err.contains(told)) << result.err.toStdString();
        EXPECT_EQ(state(), before) << words.join(QLatin1Char(' ')).toStdString();
    }

};

} // namespace

TEST_P(HouseholdCommand, AddsAndMovesPeopleBetweenHouseholds)
{
    // A new household named after the client, with the client heading it.
    const CommandResult made = run({QStringLiteral("new"), QStringLiteral("1"), QStringLiteral("--role"),
                                    QStringLiteral("Mother"), QStringLiteral("--head")});
    ASSERT_EQ(made.exitCode, 0) << made.err.toStdString();
    const qint64 first = printedHousehold(made);
    ASSERT_GT(first, 0);
    EXPECT_EQ(made.out, QStringLiteral("Household_ID,RecordID,Person_ID,Name,Role,Head_of_Household\n"
                                       "%1,%2,1,First1 Last1,Mother,true\n")
                            .arg(first)
                            .arg(db().execute(QStringLiteral("select RecordID from Household_Members"))
                                     .value(0, 0)
                                     .toLongLong()));
    EXPECT_EQ(
        db().execute(QStringLiteral("select Household_Name, User from Households")).value(0, 0).toString(),
        QStringLiteral("Last1 12 Elm Street"));
    EXPECT_EQ(householdOf(1), first);

    // A person in no household is added to it.
    const CommandResult added = run({QStringLiteral("add"), QStringLiteral("2"), QString::number(first)});
    ASSERT_EQ(added.exitCode, 0) << added.err.toStdString();
    EXPECT_EQ(added.out.count(QLatin1Char('\n')), 3);
    EXPECT_TRUE(added.out.contains(QStringLiteral(",2,First2 Last2,,false\n")));
    EXPECT_EQ(householdOf(2), first);

    const CommandResult other = run({QStringLiteral("new"), QStringLiteral("3"), QStringLiteral("--name"),
                                     QStringLiteral("Cole on Oak")});
    ASSERT_EQ(other.exitCode, 0) << other.err.toStdString();
    const qint64 second = printedHousehold(other);
    ASSERT_NE(second, first);

    // Moving takes the person out of one household and into the other.
    const CommandResult moved = run({QStringLiteral("move"), QStringLiteral("2"), QString::number(second),
                                     QStringLiteral("--role"), QStringLiteral("Lodger")});
    ASSERT_EQ(moved.exitCode, 0) << moved.err.toStdString();
    EXPECT_TRUE(moved.out.contains(QStringLiteral(",2,First2 Last2,Lodger,false\n")));
    EXPECT_EQ(householdOf(2), second);
    EXPECT_EQ(db().execute(QStringLiteral("select count(*) from Household_Members where Person_ID = 2"))
                  .value(0, 0)
                  .toInt(),
              1);
    const CommandResult listed = run({QStringLiteral("members"), QString::number(first)});
    ASSERT_EQ(listed.exitCode, 0);
    EXPECT_EQ(listed.out.count(QLatin1Char('\n')), 2); // the header and person 1

    // Out of the household, then the household deleted with every member's link.
    ASSERT_EQ(run({QStringLiteral("remove"), QStringLiteral("3")}).exitCode, 0);
    EXPECT_EQ(householdOf(3), 0);
    const CommandResult deleted = run({QStringLiteral("delete"), QString::number(second)});
    ASSERT_EQ(deleted.exitCode, 0) << deleted.err.toStdString();
    EXPECT_EQ(deleted.out, QStringLiteral("Household_ID\n%1\n").arg(second));
    EXPECT_EQ(householdOf(2), 0);
    EXPECT_EQ(householdOf(1), first);
}

TEST_P(HouseholdCommand, RefusesWithNothingChanged)
{
    ASSERT_EQ(run({QStringLiteral("new"), QStringLiteral("1")}).exitCode, 0);
    const qint64 first = householdOf(1);
    ASSERT_EQ(
        run({QStringLiteral("new"), QStringLiteral("2"), QStringLiteral("--name"), QStringLiteral("Two")})
            .exitCode,
        0);
    const qint64 second = householdOf(2);
    const QString h1 = QString::number(first);
    const QString h2 = QString::number(second);

    // Bad words: exit 2.
    expectRefused({QStringLiteral("join"), QStringLiteral("1")}, 2, QStringLiteral("household"));
    expectRefused({QStringLiteral("add"), QStringLiteral("3")}, 2, QStringLiteral("Usage"));
    expectRefused({QStringLiteral("add"), QStringLiteral("x"), h1}, 2, QStringLiteral("PERSON_ID"));
    expectRefused({QStringLiteral("new"), QStringLiteral("3"), QStringLiteral("--name"), QString(51, u'n')},
                  2, QStringLiteral("50"));

    // A person in a household is not added to another, nor made a new one.
    expectRefused({QStringLiteral("add"), QStringLiteral("1"), h2}, 1,
                  QStringLiteral("already a member of a household"));
    expectRefused({QStringLiteral("new"), QStringLiteral("1")}, 1,
                  QStringLiteral("already a member of a household"));
    // Moving needs a household to leave, and another one to go to.
    expectRefused({QStringLiteral("move"), QStringLiteral("3"), h1}, 1, QStringLiteral("in no household"));
    expectRefused({QStringLiteral("move"), QStringLiteral("1"), h1}, 1,
                  QStringLiteral("already in that household"));
    expectRefused({QStringLiteral("move"), QStringLiteral("1"), QStringLiteral("999")}, 1,
                  QStringLiteral("No household has Household_ID 999"));
    expectRefused({QStringLiteral("remove"), QStringLiteral("3")}, 1, QStringLiteral("in no household"));
    expectRefused({QStringLiteral("add"), QStringLiteral("77"), h1}, 1, QStringLiteral("77"));

    // A read-only user changes nothing.
    expectRefused({QStringLiteral("move"), QStringLiteral("1"), h2}, 1, QStringLiteral("read-only"),
                  QStringLiteral("userR"));
    expectRefused({QStringLiteral("add"), QStringLiteral("3"), h2}, 1, QStringLiteral("read-only"),
                  QStringLiteral("userR"));
    expectRefused({QStringLiteral("delete"), h1}, 1, QStringLiteral("read-only"), QStringLiteral("userR"));
    // Reading the members is allowed.
    EXPECT_EQ(run({QStringLiteral("members"), h1}, QStringLiteral("userR")).exitCode, 0);
}

INSTANTIATE_TEST_SUITE_P(Stores, HouseholdCommand,
                         ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL), storeParamName);

} // namespace kb::test
