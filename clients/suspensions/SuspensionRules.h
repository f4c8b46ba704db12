#pragma once

#include "dataset/DataSet.h"

#include <QDate>
#include <QString>

#include <array>
#include <vector>

namespace kb {

class Clock;
class Database;
class RecordServices;
struct SessionState;

// The rules of a Suspends row, hung on the hooks of a live QuerySuspends
// data set (the client window's Suspensions page, or a command's own set
// over one person):
//
//   after insert   the new row's defaults: the current client's Person_ID
//                  and Client_ID, a stop tomorrow and a resume the day
//                  after, Valid, Tran_Type "SUSP", the user, today
//   before post    Last_Updated becomes now
//   before delete  the History row "Suspension (stop-resume) deleted."
//
// A row covers the dates from Stop_Dt up to the day before Resume_Dt: the
// stop date is the first day without delivery and the resume date the
// first day with delivery again; the daily run leaves a client out on
// every date a row covers.
class SuspensionRules
{
public:
    // clients: the set whose current row is the client the suspensions belong to.
    SuspensionRules(RecordServices& services, const SessionState& session, const Clock& clock,
                    DataSet& clients);
    ~SuspensionRules();
    SuspensionRules(const SuspensionRules&) = delete;
    SuspensionRules& operator=(const SuspensionRules&) = delete;

    // The hooks that were there are called after the rules' own and come
    // back at detach().
    void attach(DataSet& suspends);
    void detach();

    DataSet& clients() const { return m_clients; }

    static QString transactionType() { return QStringLiteral("SUSP"); }
    // "Suspension (3/11/2024-3/13/2024) deleted."
    static QString deletionEvent(const QDate& stop, const QDate& resume);
    // Writes that History row for a person.
    static void writeDeletionHistory(Database& db, const QString& user, const QVariant& personId,
                                     const QVariant& clientId, const QDate& stop, const QDate& resume);

private:
    void afterInsert(DataSet& suspends);
    void beforePost(DataSet& suspends);
    void beforeDelete(DataSet& suspends);

    RecordServices& m_services;
    const SessionState& m_session;
    const Clock& m_clock;
    DataSet& m_clients;
    DataSet* m_suspends = nullptr;
    std::array<DataSet::HookFunction, 3> m_previous;
};

} // namespace kb
