#include "ConsoleUserInterface.h"

namespace kb::app {

Answer ConsoleUserInterface::question(const QString& text, Buttons buttons)
{
    Answer answer = Answer::No;
    switch (m_answers) {
    case AnswerPolicy::Yes:
        answer = buttons == Buttons::OkCancel ? Answer::Ok : Answer::Yes;
        break;
    case AnswerPolicy::No:
        answer = buttons == Buttons::OkCancel ? Answer::Cancel : Answer::No;
        break;
    case AnswerPolicy::Least:
        answer = buttons == Buttons::YesNo ? Answer::No : Answer::Cancel;
        break;
    }
    static const char* const words[] = {"", "Yes", "No", "", "Ok", "", "", "", "Cancel"};
    m_err << text << " [" << words[int(answer)] << "]\n";
    return answer;
}

} // namespace kb::app
