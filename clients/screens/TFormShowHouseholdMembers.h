#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace kb {

class ClientRules;
class DataSet;

// The other members of a client's household, offered after a save that
// changed the client's delivery settings, so that the user can compare
// them and carry the change over to a member with Migrate.
class TFormShowHouseholdMembers
{
public:
    struct Member
    {
        qint64 personId = 0;
        QString clientId;
        QString name; // first and last name
        QString status;
        QDate startDate;
        QDate stopDate;
        QString frequency;
        QString route;
        QString service;
        QString days; // "MoWeFr"
    };

    // Reads the members of the household other than the person.
    TFormShowHouseholdMembers(ClientRules& rules, DataSet& clients, qint64 householdId, qint64 personId);

    static QString caption() { return QStringLiteral("Other Household Members"); }
    static QStringList columnTitles();
    // QueryHouseholdMembersExcludingCurrentMember.
    static QString membersStatement();

    const QList<Member>& members() const { return m_members; }
    int current() const { return m_current; }
    void setCurrent(int index);

    bool canMigrate() const;
    // Copies the delivery settings that the household was told about onto
    // the chosen member and saves the member through the client rules.
    // True when it was saved; the user is told either way.
    bool ActionMigrate();

    // Called when the list or the choice changed.
    void setOnChanged(std::function<void()> changed) { m_changed = std::move(changed); }

private:
    void read();

    ClientRules& m_rules;
    DataSet& m_clients;
    qint64 m_householdId;
    qint64 m_personId;
    QList<Member> m_members;
    int m_current = -1;
    std::function<void()> m_changed;
};

} // namespace kb
