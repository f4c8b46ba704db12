#pragma once

#include "dataset/QueryDataSet.h"
#include "session/AccessLevel.h"

#include <QString>

namespace kb {

class Clock;
class RecordServices;
class UserInterface;

// "List Memberships for " a client: the mailing and interest lists
// (Lists rows of reason "LST") the client is on, and those still
// available. What the screen offers follows the user's level: "W" and "A"
// everything, "R" looks without changing anything, "O" sees no lists.
class TFormListMembership
{
public:
    struct Client
    {
        qint64 personId = 0;
        QString clientId;
        QString name;
    };

    TFormListMembership(RecordServices& services, UserInterface& ui, const Clock& clock, QString userName,
                        QString accessLevel, Client client);

    QString caption() const { return QStringLiteral("List Memberships for ") + m_client.name; }
    static QString removeQuestion() { return QStringLiteral("Remove the client from this list?"); }
    static QString noListText()
    {
        return QStringLiteral(
            "There are either no lists defined or this client is a member of all available lists");
    }
    static QString badLevelText() { return AccessLevel::screenFaultText(); }

    // Opens the two lists as the level allows. False, after badLevelText(),
    // for a level outside "AWRO", with the program asked to end.
    bool FormShow();
    bool listsVisible() const { return m_level != QLatin1String("O"); }
    bool mayChange() const { return m_level == QLatin1String("W") || m_level == QLatin1String("A"); }

    // The lists the client is on (List_Name looked up beside List_ID), and
    // the ones the client is not on yet.
    QueryDataSet& members() { return m_members; }
    QueryDataSet& available() { return m_available; }

    // "Add Client to List": the available list at that 0-based place (the
    // first one when out of range) gets the client. False, with the message
    // when there is none left.
    bool AddClientToList(int availableRow);
    // "Remove Client From List": the membership at that place, after the question.
    bool RemoveClientFromList(int memberRow);
    // An edit of a membership's own fields (Invited, Confirmed), stamped
    // with its author and time.
    void setMemberValue(int memberRow, const QString& column, const QVariant& value);

private:
    void refreshLists();

    RecordServices& m_services;
    UserInterface& m_ui;
    const Clock& m_clock;
    QString m_userName;
    QString m_level;
    Client m_client;
    QueryDataSet m_members;
    QueryDataSet m_available;
};

} // namespace kb
