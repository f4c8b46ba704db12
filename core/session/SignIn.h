#pragma once

#include "MessageError.h"

#include <QString>

namespace kb {

class Database;
struct SessionState;

// The user a typed User ID stands for.
struct SignedInUser
{
    QString userName;    // as typed
    QString fullName;    // Staff_Name
    int staffId = 0;     // Staff_ID, -1 for the built-in administrator
    QString accessLevel; // Access_Level
    QString dsortOrder;  // the user's own client index, empty when none
};

// A User ID that may not sign in; the message says why and the user may try
// again.
class SignInRefused : public MessageError
{
public:
    using MessageError::MessageError;
};

// The sign-in rules, shared by the sign-in dialog and the headless commands.
namespace SignIn {

// The name that signs in as the administrator whether or not Staff has it.
inline const QString builtInUser = QStringLiteral("keeperin");
inline const QString builtInFullName = QStringLiteral("System Administrator");

// Looks the typed text up as Staff.User_ID, exactly and with case
// significant. Throws SignInRefused with the reason, or StartupError when
// Staff cannot be read ("Unable to open the User table! ...").
SignedInUser lookUp(Database& db, const QString& typed);

// After a good look-up: copies the user into the session, writes the
// sign-in row to History and checks the access level against "AWRO"
// (StartupError for any other value), then makes the session refuse what
// the level does not allow. The user's own client index, when set,
// replaces Config.DSORT_ORDER.
void complete(Database& db, SessionState& session, const SignedInUser& user);

// Writes the sign-out row to History.
void recordSignOut(Database& db, const SessionState& session);

} // namespace SignIn

} // namespace kb
