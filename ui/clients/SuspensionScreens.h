#pragma once

namespace kb::ui {

class MainWindow;

// The client window's suspension commands (add, edit, delete on the
// Suspensions page) and the two status utilities of the Utilities menu.
void registerSuspensionScreens(MainWindow& window);

} // namespace kb::ui
