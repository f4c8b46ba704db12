#pragma once

namespace kb::ui {

// True when the words after the program name hold no command word: only
// global options with their values and debug-logging switches.
bool isDesktopInvocation(int argc, char** argv);

// The desktop program: start-up, the sign-in dialog, the main window and its
// loop, and shutdown. Returns the process's exit code.
int runDesktopProgram(int argc, char** argv);

} // namespace kb::ui
