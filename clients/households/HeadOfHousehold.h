#pragma once

#include <QString>

namespace kb {

class ClientLocator;
class DataSet;
class Database;
class UserInterface;

// "Jump to Head of Household": from a member, the client window moves to
// the member marked as head of the same household.
class HeadOfHousehold
{
public:
    static QString filterNotice()
    {
        return QStringLiteral(
            "You have a filter active. In order to ensure locating the\r\nHead of Household, the filter will "
            "now be inactivated.");
    }
    static QString noHeadText()
    {
        return QStringLiteral("No Head of Household appears to be assigned to this household.");
    }
    static QString notInHouseholdText()
    {
        return QStringLiteral("This client is not a member of a household.");
    }
    static QString notFoundText()
    {
        return QStringLiteral("The Head of Household could not be located among the clients.");
    }

    // The head among the household's members other than the person; 0
    // when none is marked. With several heads, the one added first.
    static qint64 find(Database& db, qint64 householdId, qint64 personId);

    // Moves the client set to the head of the current client's household;
    // false, and told, when there is none or the client is in no household.
    static bool jump(Database& db, DataSet& clients, UserInterface& ui, ClientLocator& locator);
};

} // namespace kb
