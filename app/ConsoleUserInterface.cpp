#include "ConsoleUserInterface.h"

namespace kb::app {

Answer ConsoleUserInterface::question(const QString& text, Buttons buttons)
{
    const Answer answer = buttons == Buttons::OkCancel ? Answer::Cancel : Answer::No;
    m_err << text << (answer == Answer::No ? " [No]" : " [Cancel]") << '\n';
    return answer;
}

} // namespace kb::app
