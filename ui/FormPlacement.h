#pragma once

#include <QString>

class QWidget;

namespace kb {
class SettingsFile;
}

namespace kb::ui {

// Puts a window where the user left it (the per-user Kettbrk.ini's
// Form_Positions) when that place is still on a screen.
void restoreFormPosition(QWidget& window, const SettingsFile& settings, const QString& formName);
// Remembers where the window is.
void saveFormPosition(const QWidget& window, SettingsFile& settings, const QString& formName);

} // namespace kb::ui
