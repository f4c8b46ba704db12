#include "specialmeals/QtRunDialogs.h"

#include "specialmeals/CopySpecialMealsView.h"
#include "specialmeals/DateChoiceDialog.h"
#include "specialmeals/SetSpecialMealsView.h"

namespace kb::ui {

bool QtRunDialogs::chooseDate(DateChoice& choice)
{
    DateChoiceDialog dialog(choice, m_parent);
    return dialog.exec() == QDialog::Accepted;
}

bool QtRunDialogs::setSpecialMeals(TFormSetSpecialMeals& form)
{
    SetSpecialMealsView view(form, m_parent);
    return view.exec() == QDialog::Accepted;
}

void QtRunDialogs::copySpecialMeals(TFormCopySpecialMeals& form)
{
    CopySpecialMealsView view(form, m_parent);
    view.exec();
}

} // namespace kb::ui
