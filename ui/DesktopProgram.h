#pragma once

#include <QString>

namespace kb::ui {

// The options of the command line that the desktop program takes, already
// checked by the command-line parser.
struct DesktopOptions
{
    QString dataDir; // --data
    QString server;  // --server
    QString today;   // --today YYYY-MM-DD
};

// The desktop program: start-up, the sign-in dialog, the main window and its
// loop, and shutdown. Returns the process's exit code.
int runDesktopProgram(int argc, char** argv, const DesktopOptions& options);

} // namespace kb::ui
