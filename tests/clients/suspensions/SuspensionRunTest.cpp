// A suspension made through the suspension rules is what the next prepared
// run reads: the client is left out from the stop date up to the day before
// the resume date, and is back on the resume date.

#include "RunFixture.h"
#include "SuspensionDesk.h"

#include "dataset/TableDataSet.h"
#include "rules/ClientRules.h"

namespace kb::test {

namespace {

class SuspensionRun : public RunFixture, public ::testing::WithParamInterface<StoreKind>
{
protected:
    SuspensionRun() : RunFixture(GetParam()) {}
    void SetUp() override { KB_REQUIRE_STORE(GetParam()); }

    // The client window's part: the client rules on Clients, standing on the person.
    struct Window
    {
        Window(Database& db, ScriptedUserInterface& ui, SessionState& session, const Clock& clock, int person)
            : services(db, ui), rules(services, ui, clock, session), clients(db, QStringLiteral("Clients")),
              desk(services, ui, session, clock, clients)
        {
            rules.attach(clients);
            clients.open();
            EXPECT_TRUE(clients.locate(QStringLiteral("PERSON_ID"), person));
            desk.open();
        }
        ~Window()
        {
            clients.close();
            rules.detach();
        }
        RecordServices services;
        ClientRules rules;
        TableDataSet clients;
        SuspensionDesk desk;
    };
};

} // namespace

TEST_P(SuspensionRun, NextRunLeavesTheSuspendedDaysOut)
{
    addClient(1);
    addClient(2);
    {
        Window window(db(), ui, session, data.clock(), 1);
        // Monday up to Wednesday: Monday and Tuesday without delivery.
        ASSERT_TRUE(window.desk.add(monday, monday.addDays(2), QStringLiteral("Hospital")));
    }
    EXPECT_EQ(persons(prepare(monday)), QList<int>{2});
    EXPECT_EQ(persons(prepare(monday.addDays(1))), QList<int>{2});
    EXPECT_EQ(persons(prepare(monday.addDays(2))), (QList<int>{1, 2}));

    // An overlapping second suspension, Tuesday up to Friday, keeps the
    // client out through Thursday whatever the first one says.
    {
        Window window(db(), ui, session, data.clock(), 1);
        ASSERT_TRUE(window.desk.add(monday.addDays(1), monday.addDays(4)));
    }
    EXPECT_EQ(persons(prepare(monday)), QList<int>{2});
    EXPECT_EQ(persons(prepare(monday.addDays(2))), QList<int>{2});
    EXPECT_EQ(persons(prepare(monday.addDays(3))), QList<int>{2});
    EXPECT_EQ(persons(prepare(monday.addDays(4))), (QList<int>{1, 2}));

    // Deleted, the days are delivered again.
    {
        Window window(db(), ui, session, data.clock(), 1);
        ui.answerNext(Answer::Yes);
        ASSERT_TRUE(window.desk.editor.DeleteSuspension1Click()); // the latest stop date stands first
    }
    EXPECT_EQ(persons(prepare(monday.addDays(2))), (QList<int>{1, 2}));
    EXPECT_EQ(persons(prepare(monday)), QList<int>{2});
}

INSTANTIATE_TEST_SUITE_P(Stores, SuspensionRun, ::testing::Values(StoreKind::SQLite, StoreKind::PostgreSQL),
                         [](const ::testing::TestParamInfo<StoreKind>& info) {
                             return storeName(info.param);
                         });

} // namespace kb::test
