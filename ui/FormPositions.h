#pragma once

#include <QString>

class QWidget;

namespace kb::ui {

// Where a window stood and how large it was, kept per user in the
// "Form_Positions" section of Kettbrk.ini, one key per window named after
// its form. "Default" (or no key) leaves the window where Qt puts it.
class FormPositions
{
public:
    // The per-user ini file of a session's application data folder.
    static QString iniPath(const QString& appDataFolder);

    static void restore(QWidget& window, const QString& iniPath, const QString& form);
    static void save(const QWidget& window, const QString& iniPath, const QString& form);
};

} // namespace kb::ui
