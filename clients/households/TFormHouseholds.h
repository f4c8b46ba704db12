#pragma once

#include "households/HouseholdActions.h"

#include "dataset/QueryDataSet.h"

#include <QString>

#include <functional>

namespace kb {

class Clock;
class DataSet;
class RecordServices;
class UserInterface;
struct SessionState;

// "Households Maintenance": every household by name with the members of the
// one chosen; a new household named after the current client, the current
// client added to the chosen one, its members edited, or the household
// deleted with every member's link to it.
class TFormHouseholds
{
public:
    // clients: the client window's Clients set; its current row is the
    // client that "Add Person to" adds and "New Household" is named after.
    TFormHouseholds(RecordServices& services, UserInterface& ui, const SessionState& session,
                    const Clock& clock, DataSet& clients);

    static QString caption() { return QStringLiteral("Households Maintenance"); }
    static QString formName() { return QStringLiteral("TFormHouseholds"); }
    // QueryHouseholds.
    static QString householdsStatement();
    // QueryHouseholdMembers: the members of one household with their names.
    static QString membersStatement();
    static QString addQuestion()
    {
        return QStringLiteral(
            "Save your changes to the Client's information\r\nbefore adding them to the household?");
    }
    static QString deleteEditQuestion()
    {
        return QStringLiteral(
            "Save your changes to the Client's information\r\nbefore deleting this household?");
    }

    // Opens the lists, standing on the current client's household if any.
    void FormShow();
    void FormClose();

    QueryDataSet& households() { return m_households; }
    // FullName (first and last name), Role, Head_of_Household, Person_ID.
    QueryDataSet& members() { return m_members; }
    qint64 currentHousehold() const;
    QString currentHouseholdName() const;
    // Read-only and reports-only users look without changing anything.
    bool readOnly() const { return m_readOnly; }
    bool canChange() const { return !m_readOnly && currentHousehold() > 0; }

    // "Search For:": the first household whose name starts with the text.
    bool search(const QString& text);
    // Stands on a household; false when it is not in the list.
    bool locate(qint64 householdId);

    // "&New Household": posted at once, then chosen.
    qint64 ActionNewHousehold();
    // "&Add Person to": the current client into the chosen household, then
    // its members screen. False when refused or stopped.
    bool ActionAddPersonTo();
    // "&Edit Members" (or a double click on a member).
    void ActionEditMembers();
    // "&Delete Household". False when not confirmed.
    bool ActionDeleteHousehold();
    // A new name for the chosen household; an empty name is refused.
    bool renameHousehold(const QString& name);

    // Opens the members screen on a household, standing on a person.
    void setMembersScreen(std::function<void(qint64 householdId, qint64 personId)> open)
    {
        m_membersScreen = std::move(open);
    }

private:
    void readMembers();
    void refreshKeeping(qint64 householdId);
    qint64 currentPerson() const;

    RecordServices& m_services;
    UserInterface& m_ui;
    const Clock& m_clock;
    const SessionState& m_session;
    DataSet& m_clients;
    HouseholdActions m_actions;
    QueryDataSet m_households;
    QueryDataSet m_members;
    std::function<void(qint64, qint64)> m_membersScreen;
    bool m_readOnly = false;
};

} // namespace kb
