#include "ScriptedUserInterface.h"

#include <QStringList>

namespace kb::test {

QStringList ScriptedUserInterface::texts(Kind kind) const
{
    QStringList list;
    for (const Message& m : m_messages)
        if (m.kind == kind)
            list.append(m.text);
    return list;
}

Answer ScriptedUserInterface::question(const QString& text, Buttons)
{
    m_messages.append({Kind::Question, text});
    return m_answers.isEmpty() ? Answer::No : m_answers.takeFirst();
}

} // namespace kb::test
