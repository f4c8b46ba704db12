#pragma once

#include "UserInterface.h"

#include <QString>
#include <QTextStream>

namespace kb::app {

// A command's user interface that also shows the progress window on the
// error stream: on a terminal one line rewritten in place ("Saving new
// data... 40%"), otherwise, when asked for, one line per text and per tenth
// done, so a script can follow a long save. Everything else goes to the
// command's own user interface.
class SaveProgress final : public UserInterface
{
public:
    // lines: show progress even when the stream is not a terminal.
    SaveProgress(UserInterface& inner, QTextStream& err, bool lines);
    ~SaveProgress() override;

    void information(const QString& text) override;
    void warning(const QString& text) override;
    void error(const QString& text) override;
    Answer question(const QString& text, Buttons buttons) override;
    void progressStart(const QString& text) override;
    void progressStep(int percent) override;
    void progressEnd() override;
    void setBusy(bool busy) override { m_inner.setBusy(busy); }

private:
    // Ends a line rewritten in place before a message takes the stream.
    void endLine();

    UserInterface& m_inner;
    QTextStream& m_err;
    bool m_terminal;
    bool m_lines;
    bool m_open = false; // a terminal line is being rewritten
    QString m_text;
    int m_shown = -1;
};

} // namespace kb::app
