#include "households/PendingClientEdit.h"

#include "UserInterface.h"
#include "dataset/DataSet.h"

namespace kb {

bool PendingClientEdit::isEditing(const DataSet& clients)
{
    return clients.state() == DataSet::State::Edit || clients.state() == DataSet::State::Insert;
}

bool PendingClientEdit::settleBeforeScreen(DataSet& clients, UserInterface& ui, const QString& question)
{
    if (!isEditing(clients)) return true;
    switch (ui.question(question, Buttons::YesNoCancel)) {
    case Answer::Yes:
        clients.post();
        return true;
    case Answer::No:
        clients.cancel();
        return true;
    default:
        return false;
    }
}

bool PendingClientEdit::saveBeforeChange(DataSet& clients, UserInterface& ui, const QString& question)
{
    if (!isEditing(clients)) return true;
    if (ui.question(question, Buttons::YesNo) != Answer::Yes) return false;
    clients.post();
    return true;
}

} // namespace kb
