#pragma once

#include "MessageError.h"
#include "UserInterface.h"
#include "store/DbError.h"

namespace kb {

// Runs one command of a screen: a failure is shown as its text and the
// screen stays usable (whatever the work wrote in its transaction is rolled
// back by then). True when the work ran to its end.
template <typename Work> bool showingFailure(UserInterface& ui, Work&& work)
{
    try {
        work();
        return true;
    } catch (const MessageError& e) {
        ui.error(e.message());
    } catch (const DbError& e) {
        ui.error(e.message());
    }
    return false;
}

} // namespace kb
