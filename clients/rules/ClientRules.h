#pragma once

#include "dataset/DataSet.h"
#include "rules/ClientValues.h"
#include "rules/HouseholdMemory.h"

#include <QString>

#include <array>
#include <functional>
#include <vector>

namespace kb {

class AlternateAddressEditor;
class ClientDialogs;
class Clock;
class QueryDataSet;
class RecordServices;
class UserInterface;
struct SessionState;

// The rules of a Clients row. They hang on the hooks of a Clients data set
// (attach), so every screen, batch and command that saves a client through
// that set goes through them:
//
//   before insert   forgets the row the last edit began with
//   after edit      remembers the row as the edit found it (after the row
//                   lock, so it is the row as stored, also when another
//                   workstation saved it meanwhile) and the household's
//                   delivery settings; takes the filter off for the time
//                   of the edit, keeping the position, so a change cannot
//                   make the row vanish
//   before post     the alternate address, the birth date, the question
//                   before an inactive client becomes active, and the
//                   delivery type of the service
//   after post      the consequences of the save: the stored on-post
//                   statement, History, dated deliveries, dates, the
//                   reactivation screen, the household question, and the
//                   filter back on
//   before cancel   cancels the alternate address; after cancel the filter
//                   goes back on
//   before scroll   asks to save an alternate address in edit
//   calculate       CalcSuspended and CalcSuspendedText
//
// A refused post throws kb::Abort after telling the user; the set stays in
// edit with the user's values. The after-post steps edit the row
// themselves with the edit, post and cancel hooks taken off, and put them
// back in every case. A step that fails ends the after-post work: the
// error leaves post() (the row itself is saved), and no History row claims
// a change of the row that was not saved. Inside a transaction of the
// caller's, everything the steps write belongs to it, so a caller can make
// a save all or nothing.
class ClientRules
{
public:
    ClientRules(RecordServices& services, UserInterface& ui, const Clock& clock, const SessionState& session);
    ~ClientRules();
    ClientRules(const ClientRules&) = delete;
    ClientRules& operator=(const ClientRules&) = delete;

    // Hangs the rules on a Clients data set (a table, or a live query of
    // whole Clients rows). A closed set gets the calculated fields; an open
    // one must have them already. The hooks that were there are called
    // after the rules' own and come back at detach().
    void attach(DataSet& clients);
    void detach();
    DataSet* clients() const { return m_clients; }

    // Adds CalcSuspended and CalcSuspendedText to a closed Clients data set.
    static void addCalculatedFields(DataSet& clients);

    // The screens that a save opens; without them the household list and
    // the reactivation screen are passed over.
    void setDialogs(ClientDialogs* dialogs) { m_dialogs = dialogs; }
    ClientDialogs* dialogs() const { return m_dialogs; }
    // The client window's alternate address, when one is being shown.
    void setAlternateAddress(AlternateAddressEditor* editor) { m_alternateAddress = editor; }
    // Called after the rules deleted dated deliveries of the client, so that
    // open screens of them read them again.
    void setOnDatedDeliveriesChanged(std::function<void()> changed)
    {
        m_datedDeliveriesChanged = std::move(changed);
    }
    const std::function<void()>& datedDeliveriesChanged() const { return m_datedDeliveriesChanged; }

    // Carries the delivery settings remembered from the household member
    // saved last onto the current row of the Clients set, and posts it
    // through these rules. On failure the edit is cancelled and the error
    // passed on.
    void MigrateDeliveryInfo();

    const HouseholdMemory& householdMemory() const { return m_household; }

    RecordServices& services() const { return m_services; }
    UserInterface& ui() const { return m_ui; }
    const Clock& clock() const { return m_clock; }
    const SessionState& session() const { return m_session; }

private:
    void beforeInsert(DataSet& clients);
    void afterEdit(DataSet& clients);
    void beforePost(DataSet& clients);
    void afterPost(DataSet& clients);
    void beforeCancel(DataSet& clients);
    void afterCancel(DataSet& clients);
    void beforeScroll(DataSet& clients);
    void calculate(DataSet& clients);
    DataSet::ErrorAction postError(DataSet& clients, const DbError& error);

    void checkServiceFrequency(DataSet& clients);
    // The household question after a save, and the list of the others.
    void householdStep(DataSet& clients, const ClientValues& saved);
    void restoreFilter(DataSet& clients, bool takenOff);
    bool onInternet() const;

    RecordServices& m_services;
    UserInterface& m_ui;
    const Clock& m_clock;
    const SessionState& m_session;
    ClientDialogs* m_dialogs = nullptr;
    AlternateAddressEditor* m_alternateAddress = nullptr;
    std::function<void()> m_datedDeliveriesChanged;

    DataSet* m_clients = nullptr;
    std::vector<DataSet::Hook> m_attachedHooks;
    std::array<DataSet::HookFunction, DataSet::HookCount> m_previous;
    DataSet::ErrorHookFunction m_previousPostError;

    // The row as the edit found it; empty for a new row.
    ClientValues m_old;
    // Whether the filter was taken off when the edit began.
    bool m_filterTakenOff = false;
    HouseholdMemory m_household;
};

} // namespace kb
