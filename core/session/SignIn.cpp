#include "session/SignIn.h"

#include "store/Database.h"
#include "store/DbError.h"
#include "records/History.h"
#include "session/SessionState.h"
#include "session/StartupError.h"

namespace kb::SignIn {

namespace {

// Engine comparisons of text may ignore case; the rule does not, so the
// candidates are narrowed here.
const QString lookUpText = QStringLiteral(
    "Select User_ID, Staff_Name, Staff_ID, Access_Level, Active, DSort_Order from Staff where User_ID = :User_ID");

} // namespace

SignedInUser lookUp(Database& db, const QString& typed)
{
    if (typed == builtInUser)
        return SignedInUser{typed, builtInFullName, -1, QStringLiteral("W"), {}};
    ResultSet rows;
    try {
        rows = db.execute(lookUpText, {{QStringLiteral("User_ID"), typed}});
    } catch (const DbError&) {
        throw StartupError(QStringLiteral("Unable to open the User table! Terminating the application."));
    }
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        if (rows.value(r, 0).toString() != typed)
            continue;
        const QString level = rows.value(r, 3).toString();
        if (!rows.value(r, 4).toBool())
            throw SignInRefused(QStringLiteral("That User ID is inactivated."));
        if (level.compare(QLatin1String(" ")) <= 0)
            throw SignInRefused(QStringLiteral("That User ID has not yet had its access level set."));
        return SignedInUser{typed, rows.value(r, 1).toString(), rows.value(r, 2).toInt(), level,
                            rows.value(r, 5).toString().trimmed()};
    }
    throw SignInRefused(QStringLiteral("That User ID could not be located! Please try again..."));
}

void complete(Database& db, SessionState& session, const SignedInUser& user)
{
    session.cUserName = user.userName;
    session.userFullName = user.fullName;
    session.staffId = user.staffId;
    session.accessLevel = user.accessLevel;
    QueryInsertHistory(db, user.fullName, HistoryEntry{{}, {}, user.fullName + QStringLiteral(" logged into Kettlebrook"), {}});
    if (!AccessLevel::isKnown(user.accessLevel))
        throw StartupError(QStringLiteral("An unanticipated error has occurred... Kettlebrook will now terminate."));
    AccessLevel::fromCode(user.accessLevel).applyTo(db);
    if (!user.dsortOrder.isEmpty())
        session.clientIndex = user.dsortOrder;
}

void recordSignOut(Database& db, const SessionState& session)
{
    // Every user leaves the sign-out row, whatever the level allows.
    const AccessExemption bookkeeping(db);
    QueryInsertHistory(db, session.userFullName,
                       HistoryEntry{{}, {}, session.userFullName + QStringLiteral(" logged out of Kettlebrook"), {}});
}

} // namespace kb::SignIn
