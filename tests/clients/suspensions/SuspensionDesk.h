#pragma once

// A client's Suspensions page as the tests drive it: the live
// QuerySuspends set over one person with the suspension rules on it, and
// the editor whose form the test fills in.

#include "records/RecordServices.h"
#include "suspensions/ClientSuspensions.h"
#include "suspensions/TFormAddSuspension.h"

#include <optional>

namespace kb::test {

struct SuspensionDesk
{
    SuspensionDesk(RecordServices& services, UserInterface& ui, const SessionState& session,
                   const Clock& clock, DataSet& clients)
        : page(services, ui, session, clock, clients), suspends(page.suspends()), editor(page.editor())
    {
        editor.setShowForm([this](TFormAddSuspension& form) {
            if (stop) form.setStopDate(*stop);
            if (resume) form.setResumeDate(*resume);
            if (reason) form.setReason(*reason);
            return ok;
        });
    }

    // The suspensions of the client the Clients set stands on.
    void open() { page.open(); }
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

    ClientSuspensions page;
    QueryDataSet& suspends;
    SuspensionEditor& editor;
    std::optional<QDate> stop;
    std::optional<QDate> resume;
    std::optional<QString> reason;
    bool ok = true;
};

} // namespace kb::test
