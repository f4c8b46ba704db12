// Sign-in: who may sign in, what each refusal says, and the History rows of
// signing in and out.

#include "store/DbError.h"
#include "InsertRow.h"
#include "ScriptedUserInterface.h"
#include "session/SessionState.h"
#include "session/SignIn.h"
#include "session/StartupError.h"
#include "session/TPasswordDlg.h"
#include "TempDataDir.h"

#include <gtest/gtest.h>

using namespace kb;
using namespace kb::test;

namespace {

class SignInRules : public ::testing::Test
{
protected:
    void SetUp() override
    {
        addStaff(10, QStringLiteral("pat"), QStringLiteral("Pat Tester"), QStringLiteral("W"), true);
        addStaff(11, QStringLiteral("gone"), QStringLiteral("Gone Person"), QStringLiteral("W"), false);
        addStaff(12, QStringLiteral("gone2"), QStringLiteral("Gone Blank"), QStringLiteral(" "), false);
        addStaff(13, QStringLiteral("new"), QStringLiteral("New Person"), QStringLiteral(" "), true);
        addStaff(14, QStringLiteral("new2"), QStringLiteral("Newer Person"), QVariant(), true);
        addStaff(15, QStringLiteral("odd"), QStringLiteral("Odd Level"), QStringLiteral("X"), true);
        addStaff(16, QStringLiteral("reader"), QStringLiteral("Rita Reader"), QStringLiteral("R"), true);
        db().execute(QStringLiteral("Update Staff set DSort_Order = 'CLIENT_ID' where User_ID = 'reader'"));
    }
    Database& db() { return data.db(); }
    void addStaff(int id, const QString& user, const QString& name, const QVariant& level, bool active)
    {
        insertRow(db(), QStringLiteral("Staff"), {{QStringLiteral("Staff_ID"), id},
                                                  {QStringLiteral("User_ID"), user},
                                                  {QStringLiteral("Staff_Name"), name},
                                                  {QStringLiteral("Access_Level"), level},
                                                  {QStringLiteral("Active"), active}});
    }
    QString refusal(const QString& typed)
    {
        try {
            SignIn::lookUp(db(), typed);
        } catch (const SignInRefused& e) {
            return e.message();
        }
        return QStringLiteral("(accepted)");
    }
    ResultSet history() { return db().execute(QStringLiteral("select * from History order by RecordID")); }

    TempDataDir data;
};

const QString notLocated = QStringLiteral("That User ID could not be located! Please try again...");

TEST_F(SignInRules, AcceptsActiveUsersWithALevelExactlyAsTyped)
{
    const SignedInUser user = SignIn::lookUp(db(), QStringLiteral("pat"));
    EXPECT_EQ(user.fullName, "Pat Tester");
    EXPECT_EQ(user.staffId, 10);
    EXPECT_EQ(user.accessLevel, "W");
    EXPECT_EQ(refusal(QStringLiteral("Pat")), notLocated);
    EXPECT_EQ(refusal(QStringLiteral("PAT")), notLocated);
    EXPECT_EQ(refusal(QStringLiteral("pat ")), notLocated);
    EXPECT_EQ(refusal(QStringLiteral("nobody")), notLocated);
}

TEST_F(SignInRules, RefusalsSayWhy)
{
    EXPECT_EQ(refusal(QStringLiteral("gone")), "That User ID is inactivated.");
    // Inactive and without a level: the inactivation is what is told.
    EXPECT_EQ(refusal(QStringLiteral("gone2")), "That User ID is inactivated.");
    EXPECT_EQ(refusal(QStringLiteral("new")), "That User ID has not yet had its access level set.");
    EXPECT_EQ(refusal(QStringLiteral("new2")), "That User ID has not yet had its access level set.");
}

TEST_F(SignInRules, TheBuiltInAdministratorNeedsNoRowButItsExactName)
{
    const SignedInUser admin = SignIn::lookUp(db(), QStringLiteral("keeperin"));
    EXPECT_EQ(admin.fullName, "System Administrator");
    EXPECT_EQ(admin.staffId, -1);
    EXPECT_EQ(admin.accessLevel, "W");
    EXPECT_EQ(refusal(QStringLiteral("Keeperin")), notLocated);
    EXPECT_EQ(refusal(QStringLiteral("KEEPERIN")), notLocated);
}

TEST_F(SignInRules, SigningInAndOutLeaveSystemRowsInHistory)
{
    SessionState session;
    session.clientIndex = QStringLiteral("LAST_FIRST");
    SignIn::complete(db(), session, SignIn::lookUp(db(), QStringLiteral("reader")));
    EXPECT_EQ(session.cUserName, "reader");
    EXPECT_EQ(session.userFullName, "Rita Reader");
    EXPECT_EQ(session.staffId, 16);
    EXPECT_EQ(session.accessLevel, "R");
    EXPECT_EQ(session.clientIndex, "CLIENT_ID"); // the user's own order wins
    data.clock().set(fixedNow().addSecs(3600));
    SignIn::recordSignOut(db(), session);

    const ResultSet rows = history();
    ASSERT_EQ(rows.rowCount(), 2);
    EXPECT_EQ(rows.value(0, u"Event").toString(), "Rita Reader logged into Kettlebrook");
    EXPECT_EQ(rows.value(1, u"Event").toString(), "Rita Reader logged out of Kettlebrook");
    for (int r = 0; r < 2; ++r) {
        EXPECT_EQ(rows.value(r, u"User").toString(), "Rita Reader");
        EXPECT_TRUE(rows.value(r, u"Person_ID").isNull());
        EXPECT_TRUE(rows.value(r, u"Client_ID").isNull());
        EXPECT_TRUE(rows.value(r, u"Event_Date").isNull());
    }
    EXPECT_EQ(rows.value(0, u"Tran_Date").toDateTime(), fixedNow());
    EXPECT_EQ(rows.value(1, u"Tran_Date").toDateTime(), fixedNow().addSecs(3600));
}

TEST_F(SignInRules, AnUnknownLevelEndsTheProgramAfterTheSignInRow)
{
    SessionState session;
    try {
        SignIn::complete(db(), session, SignIn::lookUp(db(), QStringLiteral("odd")));
        FAIL() << "an unknown level was accepted";
    } catch (const StartupError& e) {
        EXPECT_EQ(e.message(), "An unanticipated error has occurred... Kettlebrook will now terminate.");
    }
    EXPECT_EQ(history().rowCount(), 1);
}

TEST_F(SignInRules, AnUnreadableUserTableEndsTheProgram)
{
    db().deleteTable(QStringLiteral("Staff"));
    try {
        SignIn::lookUp(db(), QStringLiteral("pat"));
        FAIL() << "no failure";
    } catch (const StartupError& e) {
        EXPECT_EQ(e.message(), "Unable to open the User table! Terminating the application.");
    }
}

TEST_F(SignInRules, TheDialogClearsARefusedNameAndTellsWhy)
{
    SessionState session;
    ScriptedUserInterface ui;
    TPasswordDlg dialog(db(), session, ui);
    EXPECT_EQ(TPasswordDlg::caption(), "Please sign in...");
    EXPECT_EQ(TPasswordDlg::prompt(), "Enter your system user name:");
    EXPECT_FALSE(dialog.okEnabled());
    QStringList events;
    QObject::connect(&dialog, &TPasswordDlg::hideRequested, [&] { events << "hide"; });
    QObject::connect(&dialog, &TPasswordDlg::showRequested, [&] { events << "show"; });

    dialog.setUserName(QStringLiteral("gone"));
    EXPECT_TRUE(dialog.okEnabled());
    EXPECT_FALSE(dialog.accept());
    EXPECT_EQ(dialog.userName(), "");
    EXPECT_FALSE(dialog.okEnabled());
    EXPECT_EQ(events, (QStringList{"hide", "show"}));
    EXPECT_EQ(ui.texts(ScriptedUserInterface::Kind::Warning), QStringList{"That User ID is inactivated."});
    EXPECT_FALSE(session.signedIn());
    EXPECT_EQ(history().rowCount(), 0);

    dialog.setUserName(QStringLiteral("pat"));
    EXPECT_TRUE(dialog.accept());
    EXPECT_EQ(session.userFullName, "Pat Tester");
    EXPECT_EQ(history().rowCount(), 1);
}

} // namespace
