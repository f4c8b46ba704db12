#pragma once

namespace kb::ui {

class MainWindow;

// The client window's household commands: the wizard, the members, the
// households list, and the jump to the head of the household.
void registerHouseholdScreens(MainWindow& window);

} // namespace kb::ui
