#pragma once

#include "MessageError.h"
#include "UserInterface.h"
#include "records/RecordServices.h"

namespace kb::ui {

// Runs one command of a household screen: a failure the user should read
// word for word is shown as it stands, and every other one as the record
// services show it. True when the command ran to its end.
template <typename Work> bool householdStep(RecordServices& services, UserInterface& ui, Work&& work)
{
    bool told = false;
    const bool done = services.guarded([&] {
        try {
            work();
        } catch (const MessageError& e) {
            told = true;
            ui.error(e.message());
        }
    });
    return done && !told;
}

} // namespace kb::ui
