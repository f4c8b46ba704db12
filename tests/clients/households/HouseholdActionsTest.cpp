// Households made, joined, left, moved between and deleted, with
// Clients.Household_ID and Household_Members kept in step.

#include "ClientRulesFixture.h"

#include "households/HouseholdActions.h"

namespace kb::test {

namespace {

class Households : public ClientRulesFixture
{
protected:
    void SetUp() override
    {
        ClientRulesFixture::SetUp();
        if (IsSkipped()) return;
        actions =
            std::make_unique<HouseholdActions>(ws->services, ui(), ws->session, data->clock(), clients());
        clients().open();
    }
    void TearDown() override
    {
        actions.reset();
        ClientRulesFixture::TearDown();
    }
    void standOn(int personId)
    {
        if (!clients().locate(QStringLiteral("PERSON_ID"), personId)) clients().refresh();
        ASSERT_TRUE(clients().locate(QStringLiteral("PERSON_ID"), personId));
    }
    // "household:person,person" from Household_Members, and the Household_ID of each client.
    QString memberRows()
    {
        const ResultSet rows = db().execute(QStringLiteral(
            "select Household_ID, Person_ID from Household_Members order by Household_ID, Person_ID"));
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append(rows.value(r, 0).toString() + QLatin1Char(':') + rows.value(r, 1).toString());
        return list.join(QLatin1Char(' '));
    }
    QString clientHouseholds()
    {
        const ResultSet rows =
            db().execute(QStringLiteral("select Household_ID from Clients order by Person_ID"));
        QStringList list;
        for (qsizetype r = 0; r < rows.rowCount(); ++r)
            list.append(rows.value(r, 0).isNull() ? QStringLiteral("-") : rows.value(r, 0).toString());
        return list.join(QLatin1Char(' '));
    }

    std::unique_ptr<HouseholdActions> actions;
};

} // namespace

TEST_P(Households, SuggestedNames)
{
    EXPECT_EQ(HouseholdActions::suggestedName(QStringLiteral(" Baker "), QStringLiteral("12 Elm St ")),
              QStringLiteral("Baker 12 Elm St"));
    EXPECT_EQ(HouseholdActions::suggestedName({}, QStringLiteral("  ")), QStringLiteral("New Household"));
}

TEST_P(Households, JoinMoveLeaveAndDelete)
{
    for (int person : {1, 2, 3})
        addClient(person);
    clients().refresh();
    standOn(1);
    const qint64 first = actions->createHousehold(actions->suggestedName());
    ASSERT_GT(first, 0);
    QString name;
    ASSERT_TRUE(actions->householdExists(first, &name));
    EXPECT_EQ(name, QStringLiteral("Last1 12 Elm Street"));
    EXPECT_EQ(db().execute(QStringLiteral("select User from Households")).value(0, 0).toString(),
              QStringLiteral("Pat Tester"));
    ASSERT_TRUE(actions->addCurrentClient(first, QStringLiteral("Head"), true));
    standOn(2);
    ASSERT_TRUE(actions->addCurrentClient(first));
    const qint64 second = actions->createHousehold(QStringLiteral("Second"));
    standOn(3);
    ASSERT_TRUE(actions->addCurrentClient(second));
    EXPECT_EQ(clientHouseholds(), QStringLiteral("%1 %1 %2").arg(first).arg(second));

    // A member of one household is refused by another.
    standOn(2);
    EXPECT_FALSE(actions->addCurrentClient(second));
    EXPECT_EQ(told(), QStringList{HouseholdActions::alreadyMemberText()});

    // Moving takes the client out of one and into the other.
    ASSERT_TRUE(actions->moveCurrentClient(second, QStringLiteral("Lodger")));
    EXPECT_EQ(clientHouseholds(), QStringLiteral("%1 %2 %2").arg(first).arg(second));
    EXPECT_EQ(memberRows(), QStringLiteral("%1:1 %2:2 %2:3").arg(first).arg(second));
    EXPECT_EQ(clients().fieldValue(u"HOUSEHOLD_ID").toLongLong(), second);
    EXPECT_FALSE(actions->moveCurrentClient(second)); // already there
    const QList<HouseholdActions::Member> members = actions->members(second);
    ASSERT_EQ(members.size(), 2);
    EXPECT_EQ(members[1].role, QStringLiteral("Lodger"));
    EXPECT_EQ(members[1].name, QStringLiteral("First2 Last2"));

    // Leaving, then deleting the other household clears every member,
    // including the client not shown.
    standOn(1);
    ASSERT_TRUE(actions->removeCurrentClient());
    EXPECT_TRUE(clients().fieldValue(u"HOUSEHOLD_ID").isNull());
    EXPECT_FALSE(actions->removeCurrentClient());
    actions->deleteHousehold(second);
    EXPECT_EQ(clientHouseholds(), QStringLiteral("- - -"));
    EXPECT_EQ(memberRows(), QString());
    EXPECT_FALSE(actions->householdExists(second));
}

INSTANTIATE_TEST_SUITE_P(Stores, Households, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         storeParamName);

} // namespace kb::test
