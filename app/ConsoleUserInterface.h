#pragma once

#include "CommandLine.h"
#include "UserInterface.h"

#include <QTextStream>

namespace kb::app {

// The user interface of a headless command: every message goes to the error
// stream, one line each; a question is printed with the answer it gets: Yes
// under --yes, No under --no, and otherwise the answer that changes the least
// (No, or Cancel where it is offered), since a command never goes on with
// what it was not told to do.
class ConsoleUserInterface final : public kb::UserInterface
{
public:
    explicit ConsoleUserInterface(QTextStream& err, AnswerPolicy answers = AnswerPolicy::Least)
        : m_err(err), m_answers(answers)
    {
    }

    void information(const QString& text) override { m_err << text << '\n'; }
    void warning(const QString& text) override { m_err << text << '\n'; }
    void error(const QString& text) override { m_err << text << '\n'; }
    Answer question(const QString& text, Buttons buttons) override;
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool) override {}

private:
    QTextStream& m_err;
    AnswerPolicy m_answers;
};

} // namespace kb::app
