#pragma once

// A client's Suspensions page as the tests drive it: the live
// QuerySuspends set over one person with the suspension rules on it, and
// the editor whose form the test fills in.

#include "dataset/QueryDataSet.h"
#include "records/RecordServices.h"
#include "suspensions/SuspensionEditor.h"
#include "suspensions/SuspensionRules.h"
#include "suspensions/TFormAddSuspension.h"

#include <optional>

namespace kb::test {

struct SuspensionDesk
{
    SuspensionDesk(RecordServices& services, UserInterface& ui, const SessionState& session,
                   const Clock& clock, DataSet& clients)
        : suspends(
              services.db(),
              QStringLiteral("select * from Suspends where Person_ID = :Person_ID order by Stop_Dt desc")),
          rules(services, session, clock, clients), editor(services, ui, session, clock, clients, suspends)
    {
        suspends.setRequestLive(true);
        services.installErrorHooks(suspends);
        rules.attach(suspends);
        editor.setShowForm([this](TFormAddSuspension& form) {
            if (stop) form.setStopDate(*stop);
            if (resume) form.setResumeDate(*resume);
            if (reason) form.setReason(*reason);
            return ok;
        });
    }
    ~SuspensionDesk()
    {
        suspends.close();
        rules.detach();
    }

    // The suspensions of the client the Clients set stands on.
    void openFor(const QVariant& personId)
    {
        suspends.close();
        suspends.setParam(QStringLiteral("Person_ID"), personId);
        suspends.open();
    }
    bool add(const QDate& from, const QDate& to, const QString& why = {})
    {
        stop = from;
        resume = to;
        reason = why;
        return editor.EditHolds(SuspensionEditor::Mode::Add);
    }
    bool change(const QDate& from, const QDate& to)
    {
        stop = from;
        resume = to;
        reason.reset();
        return editor.EditHolds(SuspensionEditor::Mode::Edit);
    }

    QueryDataSet suspends;
    SuspensionRules rules;
    SuspensionEditor editor;
    std::optional<QDate> stop;
    std::optional<QDate> resume;
    std::optional<QString> reason;
    bool ok = true;
};

} // namespace kb::test
