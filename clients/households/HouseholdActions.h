#pragma once

#include "store/Database.h"

#include <QList>
#include <QString>

namespace kb {

class Clock;
class DataSet;
class RecordServices;
class UserInterface;
struct SessionState;

// What the household screens do to the data, apart from any screen:
// households made and deleted, people added, removed and moved. A client
// belongs to at most one household; Clients.Household_ID and the
// Household_Members rows change together in each of these. The client's
// own Household_ID is set through the Clients set that carries the client
// rules, so its save is a save like any other; the rows of other clients
// are changed by plain statements.
//
// None opens a transaction: a caller that wants all or nothing (a
// headless command) runs them inside one.
class HouseholdActions
{
public:
    struct Member
    {
        qint64 recordId = 0;
        qint64 personId = 0;
        QString name; // first and last name
        QString role;
        bool head = false;
    };

    // clients: the shared Clients set with the client rules; its current
    // row is "the current client".
    HouseholdActions(RecordServices& services, UserInterface& ui, const SessionState& session,
                     const Clock& clock, DataSet& clients);

    // The name a new household is offered: the client's last name, a
    // blank and first address line, trimmed; "New Household" when blank.
    static QString suggestedName(const QString& lastName, const QString& address1);
    QString suggestedName() const;
    static QString alreadyMemberText()
    {
        return QStringLiteral(
            "This person is already a member of a household.\n\rRemove them from their current "
            "household before attempting to add them to a new household.");
    }
    static QString notCreatedText()
    {
        return QStringLiteral(
            "There was a problem creating or locating the Household, \r\ntherefore the member "
            "was not added to it.");
    }
    static QString deleteQuestion()
    {
        return QStringLiteral("Delete the selected household and all associated member information?");
    }

    // Inserts a household and finds it again to learn its number; throws
    // MessageError(notCreatedText()) when it cannot be found.
    qint64 createHousehold(const QString& name);
    // Whether the household exists; its name in name.
    bool householdExists(qint64 householdId, QString* name = nullptr) const;
    QList<Member> members(qint64 householdId) const;

    // Adds the current client to the household with a role and whether they
    // head it (the wizard): refused, and told, for a client already in a
    // household. A pending edit of the client is posted first. False when
    // refused.
    bool addCurrentClient(qint64 householdId, const QString& role, bool head);
    // The same from the households list ("Add Person to"), whose member row
    // carries no role and no head mark yet.
    bool addCurrentClient(qint64 householdId);
    // Takes the current client out of their household (the member row
    // deleted, Household_ID cleared). False when not in one.
    bool removeCurrentClient();
    // Moves the current client from their household to another one: out
    // of the first, into the second with the role given. False, nothing
    // changed, when the client is in no household or already in that one.
    bool moveCurrentClient(qint64 householdId, const QString& role = {}, bool head = false);
    // The household, its members' rows and every member's Household_ID,
    // including clients not shown.
    void deleteHousehold(qint64 householdId);

private:
    // The current client's row read again after a statement changed it.
    void rereadClient(qint64 personId);
    // The client's row is taken for the rest of the caller's transaction
    // and read as it stands: two workstations putting one client into a
    // household at once then go one after the other, and the second sees
    // the first's household and is refused.
    void claimCurrentClient();
    // The checks and the member row of both ways of adding; false when refused.
    bool insertCurrentMember(qint64 householdId, const QString& statement, const Params& values);

    RecordServices& m_services;
    UserInterface& m_ui;
    const SessionState& m_session;
    const Clock& m_clock;
    DataSet& m_clients;
};

} // namespace kb
