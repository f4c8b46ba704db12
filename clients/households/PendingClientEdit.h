#pragma once

#include <QString>

namespace kb {

class DataSet;
class UserInterface;

// A client being edited when a household screen or command begins. The
// household work writes Clients.Household_ID by statement, so an edit left
// open would later save its stale copy over it: the edit is settled first.
class PendingClientEdit
{
public:
    static QString beforeWizardQuestion()
    {
        return QStringLiteral("Save your edits to the Client before\r\nstarting the Household Wizard?");
    }
    static QString beforeMembersQuestion()
    {
        return QStringLiteral("Save your edits to the Client \r\nbefore editing the Household?");
    }
    static QString beforeHouseholdsQuestion()
    {
        return QStringLiteral("Save your edits to the Client \r\nbefore displaying the Households?");
    }

    // The client window's household commands: Yes saves the client, No
    // abandons the edit, Cancel leaves the command (false). Nothing is
    // asked, and true returned, when the client is not being edited.
    static bool settleBeforeScreen(DataSet& clients, UserInterface& ui, const QString& question);
    // Inside the household screens: Yes saves the client and goes on; No
    // leaves the command with the edit as it was (false).
    static bool saveBeforeChange(DataSet& clients, UserInterface& ui, const QString& question);

    static bool isEditing(const DataSet& clients);
};

} // namespace kb
