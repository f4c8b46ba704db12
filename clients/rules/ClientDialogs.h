#pragma once

namespace kb {

class TFormResetStartDate;
class TFormShowHouseholdMembers;

// The screens that a client's save opens, shown by whoever hosts the
// rules: dialogs on the desktop, the error stream of a headless command,
// a script in the tests. Each call returns when the screen is closed.
class ClientDialogs
{
public:
    virtual ~ClientDialogs() = default;
    // The other members of the household, with their Migrate command.
    virtual void showHouseholdMembers(TFormShowHouseholdMembers& form) = 0;
    // The start and recertification dates after a reactivation; true when
    // the user closed it with OK.
    virtual bool showResetStartDate(TFormResetStartDate& form) = 0;
};

} // namespace kb
