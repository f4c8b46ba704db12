#pragma once

#include "ClientLookup.h"
#include "funding/FundingReassignment.h"

#include <QDate>
#include <QStringList>

#include <vector>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Reassign Funding to Existing Events and Deliveries": restamps one
// client's deliveries of one service in a date range, and the default
// events of that service on those days, with another funding source or
// with none.
class TFormReassignFunding
{
public:
    TFormReassignFunding(Database& db, const SessionState& session, UserInterface& ui);

    static QString caption() { return QStringLiteral("Reassign Funding to Existing Events and Deliveries"); }
    static QString clientLookupTitle()
    {
        return QStringLiteral("Locate the Client whose funding is to be reassigned");
    }
    // The key of a list entry: the four characters after the first "[",
    // trimmed, cut at a "~" or "]" that leaves more than one character.
    static QString bracketKey(const QString& entry);

    // The look-up behind "Client:", titled clientLookupTitle().
    ClientLookup& clientLookup() { return m_clientLookup; }
    // "Service_Desc          [Service_ID]" for every service.
    const QStringList& services();
    // "Fund_Srce     [Fund_Cd]" for every funding source.
    const QStringList& fundingSources();

    void setClient(qint64 personId) { m_personId = personId; }
    void setService(const QString& entry) { m_service = entry; }
    void setStart(const QDate& date) { m_start = date; }
    void setEnd(const QDate& date) { m_end = date; }
    void setRemove(bool remove)
    {
        m_remove = remove;
        m_reassign = !remove;
    }
    void setReassign(bool reassign)
    {
        m_reassign = reassign;
        m_remove = !reassign;
    }
    void setFunding(const QString& entry) { m_funding = entry; }

    // A client, both dates after 01/01/2000, a service, and removal or a
    // chosen source. The order of the dates is not checked.
    bool okEnabled() const;
    // Asks, then restamps; true when the screen closes having done it.
    bool ActionOK();
    bool working() const { return m_working; }
    const FundingReassignment::Result& result() const { return m_result; }

private:
    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    ClientLookup m_clientLookup;
    QStringList m_services;
    QStringList m_fundingSources;
    qint64 m_personId = 0;
    QString m_service;
    QDate m_start;
    QDate m_end;
    bool m_remove = false;
    bool m_reassign = false;
    QString m_funding;
    bool m_working = false;
    FundingReassignment::Result m_result;
};

} // namespace kb
