#include "QtClientDialogs.h"

#include "ResetStartDateView.h"
#include "ShowHouseholdMembersView.h"

namespace kb::ui {

void QtClientDialogs::showHouseholdMembers(TFormShowHouseholdMembers& form)
{
    ShowHouseholdMembersView view(form, m_settings, m_parent);
    view.exec();
}

bool QtClientDialogs::showResetStartDate(TFormResetStartDate& form)
{
    ResetStartDateView view(form, m_settings, m_parent);
    return view.exec() == QDialog::Accepted;
}

} // namespace kb::ui
