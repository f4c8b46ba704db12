#pragma once

#include <QString>

namespace kb {

// The buttons a question offers; the answer is one of them.
enum class Answer { Yes = 1, No = 2, Ok = 4, Cancel = 8 };

enum class Buttons { YesNo, YesNoCancel, OkCancel };

// How presenters talk to the person in front of them: messages, modal
// questions, progress and the wait cursor. Screens implement it with dialogs,
// headless commands with their error stream, tests with a script, so no rule
// ever needs a screen.
class UserInterface
{
public:
    virtual ~UserInterface() = default;

    virtual void information(const QString& text) = 0;
    virtual void warning(const QString& text) = 0;
    virtual void error(const QString& text) = 0;
    virtual Answer question(const QString& text, Buttons buttons) = 0;

    // The progress window: a text and a bar of 100 * done / all.
    virtual void progressStart(const QString& text) = 0;
    virtual void progressStep(int percent) = 0;
    virtual void progressEnd() = 0;

    // The wait cursor while long work blocks the window.
    virtual void setBusy(bool busy) = 0;

    // The program cannot go on: the user is told why and the program is
    // asked to end in order. The desktop leaves its event loop, so the
    // windows close and the session shuts down as on a normal exit. The
    // caller still stops its own work and returns; where nothing can end
    // (a headless command, a benchmark) the text is told as an error and
    // the caller's refusal ends the work.
    virtual void terminate(const QString& text) { error(text); }
};

// Shows the wait cursor for as long as it lives, also when an error unwinds.
class BusyGuard
{
public:
    explicit BusyGuard(UserInterface& ui) : m_ui(ui) { m_ui.setBusy(true); }
    ~BusyGuard() { m_ui.setBusy(false); }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

private:
    UserInterface& m_ui;
};

} // namespace kb
