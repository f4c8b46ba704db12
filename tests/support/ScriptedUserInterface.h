#pragma once

#include "UserInterface.h"

#include <QList>
#include <QString>

#include <functional>

namespace kb::test {

// A user who answers questions from a script and remembers every message,
// so tests can check what a person would have been told.
class ScriptedUserInterface final : public UserInterface
{
public:
    enum class Kind { Information, Warning, Error, Question };
    struct Message
    {
        Kind kind;
        QString text;
    };

    // Answers for the coming questions, in order; without one a question is
    // answered No.
    void answerNext(Answer answer) { m_answers.append(answer); }

    const QList<Message>& messages() const { return m_messages; }
    QStringList texts(Kind kind) const;
    void clear()
    {
        m_messages.clear();
        m_terminations = 0;
    }
    int busyDepth() const { return m_busy; }

    // What the user does while an information message is up, before
    // pressing OK (looking at and changing something in another window).
    void whileInformed(std::function<void(const QString&)> act) { m_whileInformed = std::move(act); }

    void information(const QString& text) override
    {
        m_messages.append({Kind::Information, text});
        if (m_whileInformed) m_whileInformed(text);
    }
    void warning(const QString& text) override { m_messages.append({Kind::Warning, text}); }
    void error(const QString& text) override { m_messages.append({Kind::Error, text}); }
    Answer question(const QString& text, Buttons buttons) override;
    void progressStart(const QString&) override {}
    void progressStep(int) override {}
    void progressEnd() override {}
    void setBusy(bool busy) override { m_busy += busy ? 1 : -1; }
    // The text is kept as an error; the request to end is counted.
    void terminate(const QString& text) override
    {
        error(text);
        ++m_terminations;
    }
    int terminationRequests() const { return m_terminations; }

private:
    QList<Answer> m_answers;
    QList<Message> m_messages;
    int m_busy = 0;
    std::function<void(const QString&)> m_whileInformed;
    int m_terminations = 0;
};

} // namespace kb::test
