#pragma once

#include "dataset/QueryDataSet.h"
#include "households/RememberedRoles.h"
#include "session/AccessLevel.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

class ClientLocator;
class Clock;
class DataSet;
class RecordServices;
class SettingsFile;
class UserInterface;
struct SessionState;

// "Household Members": the members of one household, with their role and
// whether they head it. Members are added by choosing a person, removed,
// and the client window can be moved to one of them. Every saved member
// row sets the person's Clients.Household_ID, and a removal clears it, so
// that the two never disagree.
class TFormHouseholdMembers
{
public:
    // A person offered for a new member row.
    struct Candidate
    {
        qint64 personId = 0;
        QString clientId;
        QString text; // "Last, First  [Client_ID]  Address1"
        qint64 householdId = 0;
    };

    // clients: the client window's Clients set, told when its current
    // client joins or leaves. personId: the member to stand on at first.
    TFormHouseholdMembers(RecordServices& services, UserInterface& ui, const SessionState& session,
                          const Clock& clock, DataSet& clients, qint64 householdId, qint64 personId);

    static QString caption() { return QStringLiteral("Household Members"); }
    static QString formName() { return QStringLiteral("TFormHouseholdMembers"); }
    static QString membersStatement();
    static QString terminateText() { return AccessLevel::screenFaultText(); }
    static QString removeQuestion()
    {
        return QStringLiteral("Remove the selected individual from the household?");
    }
    static QString removeEditQuestion()
    {
        return QStringLiteral(
            "Save your changes to the Client's information\r\nbefore removing them from the household?");
    }
    static QString locateFilterNotice()
    {
        return QStringLiteral(
            "You have a filter currently active. The filter will now be turned \r\noff in order "
            "to locate the Household Member.");
    }
    static QString locateFailedText()
    {
        return QStringLiteral("Unable to locate the household member using the Person ID!");
    }
    static QString closeQuestion() { return QStringLiteral("Save your changes to the household member?"); }
    static QString alreadyHereText()
    {
        return QStringLiteral("This person is already a member of this household.");
    }

    // Checks the user's level and opens the members. False when the level
    // is none the program knows: the user is told and the program is asked
    // to end.
    bool FormShow();
    // A pending edit is asked about; member rows left without a person are
    // deleted. False when the user wants to stay (a refused save).
    bool FormClose();

    // "<Household_Name> household".
    QString windowCaption() const;
    qint64 householdId() const { return m_householdId; }
    // Read-only and reports-only users see the members without any command
    // that changes them.
    bool editingAllowed() const { return m_editing; }

    // RecordID, Household_ID, Person_ID, Role, Head_of_Household,
    // Last_Updated, and FullName and Client_ID of the person.
    QueryDataSet& members() { return m_members; }
    bool hasMember() const
    {
        return m_members.isActive() && (!m_members.isEmpty() || m_members.state() == DataSet::State::Insert);
    }
    bool isEditing() const;
    // Whether the person of the current row may still be chosen (a new row).
    bool personChoosable() const { return m_members.state() == DataSet::State::Insert; }

    // "&Add Member": a pending edit is posted and a new row begins.
    bool ActionAddMember();
    // People whose last name or Client_ID starts with the text, at most 100.
    QList<Candidate> findPeople(const QString& text) const;
    // The person of the new row.
    bool setPerson(qint64 personId);
    bool setRole(const QString& role);
    bool setHead(bool head);
    // Saves the current row through the member rules; false when refused.
    bool post();
    void cancel();
    // "&Remove Selected". False when not confirmed.
    bool ActionRemoveSelected();
    // "&Locate Selected Household Member": the client window moves there.
    bool ActionLocateSelected();

    // The roles typed before, most recent first; each saved row's role
    // joins them.
    const QStringList& roles() const { return m_roles.roles(); }
    void setSettings(SettingsFile* settings) { m_roles = RememberedRoles(settings); }
    void setLocator(ClientLocator* locator) { m_locator = locator; }

private:
    void beforePost(DataSet& set);
    void afterPost(DataSet& set);
    void readNames();
    void rereadClient(qint64 personId);
    qint64 currentClient() const;

    RecordServices& m_services;
    UserInterface& m_ui;
    const SessionState& m_session;
    const Clock& m_clock;
    DataSet& m_clients;
    qint64 m_householdId;
    qint64 m_startPerson;
    QString m_householdName;
    QueryDataSet m_members;
    QHash<qint64, QPair<QString, QString>> m_names; // Person_ID: full name, Client_ID
    RememberedRoles m_roles;
    ClientLocator* m_locator = nullptr;
    qint64 m_postedPerson = 0;
    bool m_editing = false;
};

} // namespace kb
