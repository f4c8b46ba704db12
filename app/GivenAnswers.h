#pragma once

#include "UserInterface.h"

#include <QHash>
#include <QString>

namespace kb::app {

// The user interface of a command whose options answer some of its
// questions themselves (--household answers whether the household shares a
// suspension; the delete command answers its own confirmation): those
// questions get the given answer, told on the error stream like any other,
// and everything else goes to the command's console.
class GivenAnswers final : public kb::UserInterface
{
public:
    explicit GivenAnswers(kb::UserInterface& console) : m_console(console) {}

    void give(const QString& question, Answer answer) { m_given.insert(question, answer); }

    void information(const QString& text) override { m_console.information(text); }
    void warning(const QString& text) override { m_console.warning(text); }
    void error(const QString& text) override { m_console.error(text); }
    Answer question(const QString& text, Buttons buttons) override
    {
        const auto given = m_given.constFind(text);
        if (given == m_given.constEnd()) return m_console.question(text, buttons);
        m_console.information(text +
                              (*given == Answer::Yes ? QStringLiteral(" [Yes]") : QStringLiteral(" [No]")));
        return *given;
    }
    void progressStart(const QString& text) override { m_console.progressStart(text); }
    void progressStep(int percent) override { m_console.progressStep(percent); }
    void progressEnd() override { m_console.progressEnd(); }
    void setBusy(bool busy) override { m_console.setBusy(busy); }

private:
    kb::UserInterface& m_console;
    QHash<QString, Answer> m_given;
};

} // namespace kb::app
