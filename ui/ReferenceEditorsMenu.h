#pragma once

#include <QString>

class QMenu;
class QWidget;

namespace kb {
class RecordServices;
}

namespace kb::ui {

// Fills the "Table Maintenance" submenu of the main window's Edit menu with
// one entry per code table screen; each entry opens that screen modally
// over parent.
void addReferenceEditorsMenu(QMenu* menu, RecordServices& services, QWidget* parent);

// Opens one code table screen by its form name, modally; false when there
// is no such screen or its table cannot be opened.
bool showReferenceEditor(const QString& formName, RecordServices& services, QWidget* parent);

} // namespace kb::ui
