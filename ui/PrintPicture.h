#pragma once

class QWidget;

namespace kb::ui {

// Prints a window as it stands, fitted to the page, after the print dialog;
// false when the user cancelled or the printer failed.
bool printPicture(QWidget& window, bool landscape = false);

} // namespace kb::ui
