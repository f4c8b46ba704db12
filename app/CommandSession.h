#pragma once

#include "CommandRegistry.h"
#include "ConsoleClientDialogs.h"
#include "ConsoleUserInterface.h"
#include "rules/ModuleClientRules.h"
#include "session/TDataModule1.h"

#include <memory>

namespace kb::app {

// A headless command's data session with a signed-in user: the same
// start-up and sign-in rules, messages and History rows as the desktop
// program. The settings store is read, and --data or --server win over it.
// The sign-out is written when the session ends. The module's Clients set
// carries the client rules, as on the desktop, with the screens a save
// opens told on the error stream.
class CommandSession
{
public:
    // Throws with the message the desktop would show: data not found, or
    // the user refused (then nothing is written).
    explicit CommandSession(CommandContext& context);
    ~CommandSession();

    TDataModule1& data() { return *m_data; }
    ClientRules& clientRules() { return *m_clientRules->rules(); }
    UserInterface& ui() { return m_ui; }
    // Ends the session: clean-up and the sign-out row.
    void close();

private:
    ConsoleUserInterface m_ui;
    ConsoleClientDialogs m_dialogs;
    std::unique_ptr<Clock> m_clock;
    std::unique_ptr<TDataModule1> m_data;
    // Destroyed before the module, whose Clients set it hangs on.
    std::unique_ptr<ModuleClientRules> m_clientRules;
};

} // namespace kb::app
