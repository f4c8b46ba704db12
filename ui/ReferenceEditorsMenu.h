#pragma once

#include <QString>

class QWidget;

namespace kb {
class RecordServices;
class SettingsFile;
} // namespace kb

namespace kb::ui {

// Opens one code table screen by its form name, modally; false when there
// is no such screen or its table cannot be opened. With settings, the screen
// keeps its place and size in them.
bool showReferenceEditor(const QString& formName, RecordServices& services, QWidget* parent,
                         SettingsFile* settings = nullptr);

} // namespace kb::ui
