#pragma once

#include "DemoAgency.h"
#include "TFormRunPrepare.h"
#include "TempDataDir.h"
#include "confirmation/GivenItemConfirmation.h"
#include "session/SessionState.h"

#include <QDate>

namespace kb::test {

// A demo agency of 150 clients whose run of the date is saved, every item
// confirmed: the deliveries the outcome screens work on. False when the save
// was refused.
inline bool saveDemoRun(TempDataDir& data, const SessionState& session, UserInterface& ui, const QDate& date)
{
    DemoOptions options;
    options.clients = 150;
    generateDemoAgency(data.db(), options);
    TFormRunPrepare run(data.db(), session, ui);
    GivenItemConfirmation all = GivenItemConfirmation::all();
    run.setItemConfirmation(&all);
    run.FormShow();
    run.SetPrepareDate(date);
    run.ActionPrepare();
    const bool saved = run.ActionSaveData().has_value();
    run.FormClose();
    return saved;
}

} // namespace kb::test
