#pragma once

#include "households/HouseholdActions.h"
#include "households/RememberedRoles.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

class Clock;
class DataSet;
class RecordServices;
class SettingsFile;
class UserInterface;
struct SessionState;

// "Household Wizard": puts the current client into a household, a new one
// named after the client or one that exists, with a role and whether the
// client heads it. Nothing is written before Finish.
class TFormHouseholdWizard
{
public:
    enum class Step { Start, Choice, Name, Search, Role };
    enum class Choice { NewHousehold, ExistingHousehold };

    struct Household
    {
        qint64 id = 0;
        QString name;
    };

    TFormHouseholdWizard(RecordServices& services, UserInterface& ui, const SessionState& session,
                         const Clock& clock, DataSet& clients);

    static QString caption() { return QStringLiteral("Household Wizard"); }
    static QString formName() { return QStringLiteral("TFormHouseholdWizard"); }
    static QString startText()
    {
        return QStringLiteral("This wizard puts the current Client into a household: a new one, or one that "
                              "already exists.\n\nPress Next to begin.");
    }
    static QString choiceText() { return QStringLiteral("Which do you wish to do?"); }
    static QString newChoiceText()
    {
        return QStringLiteral("Create a &New Household and add the current Client to it");
    }
    static QString existingChoiceText()
    {
        return QStringLiteral("Add the current Client to an &Existing household");
    }
    static QString nameText()
    {
        return QStringLiteral("Edit the suggested name of the new Household, if desired:");
    }
    static QString searchText() { return QStringLiteral("Search for a Household named:"); }
    static QString roleText()
    {
        return QStringLiteral("What is the Household role of this household member?");
    }
    static QString headText()
    {
        return QStringLiteral("If this member is a Head of this household, put a checkmark in the box:");
    }
    static QString saveQuestion()
    {
        return QStringLiteral(
            "Save your changes to this Client before adding the Houseshold \r\ninformation?");
    }

    // Reads whether any household exists and the suggested name.
    void FormShow();

    Step step() const { return m_step; }
    bool canBack() const { return m_step != Step::Start; }
    bool canNext() const;
    bool canFinish() const { return m_step == Step::Role; }
    void next();
    void back();

    // The existing-household choice is offered only when one exists.
    bool existingOffered() const { return m_anyHousehold; }
    Choice choice() const { return m_choice; }
    void setChoice(Choice choice);

    const QString& name() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    // The households whose name starts with the text (all of them for an
    // empty text), by name, at most 200; the first one is chosen.
    const QList<Household>& found() const { return m_found; }
    void search(const QString& text);
    const QString& searchedFor() const { return m_searchText; }
    qint64 chosenHousehold() const { return m_chosen; }
    void choose(qint64 householdId) { m_chosen = householdId; }

    const QString& role() const { return m_role; }
    void setRole(const QString& role) { m_role = role.trimmed().left(50); }
    // The roles typed before, offered for the role; the role of a finished
    // wizard joins them, as on the members screen.
    const QStringList& roles() const { return m_roles.roles(); }
    void setSettings(SettingsFile* settings) { m_roles = RememberedRoles(settings); }
    bool head() const { return m_head; }
    void setHead(bool head) { m_head = head; }

    // Writes the household and the membership, in one transaction. False
    // when the user stops at the save question or the client is refused;
    // on a failure to make the household the user is told.
    bool Finish();
    // The household the client joined, after Finish.
    qint64 joinedHousehold() const { return m_joined; }

private:
    RecordServices& m_services;
    UserInterface& m_ui;
    DataSet& m_clients;
    HouseholdActions m_actions;
    Step m_step = Step::Start;
    Choice m_choice = Choice::NewHousehold;
    bool m_anyHousehold = false;
    QString m_name;
    QString m_searchText;
    QList<Household> m_found;
    qint64 m_chosen = 0;
    QString m_role;
    RememberedRoles m_roles;
    bool m_head = false;
    qint64 m_joined = 0;
};

} // namespace kb
