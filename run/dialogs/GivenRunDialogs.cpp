#include "dialogs/GivenRunDialogs.h"

#include "dialogs/DateChoice.h"
#include "specialmeals/TFormSetSpecialMeals.h"

namespace kb {

bool GivenRunDialogs::chooseDate(DateChoice& choice)
{
    if (!date) return false;
    choice.date = *date;
    return true;
}

bool GivenRunDialogs::setSpecialMeals(TFormSetSpecialMeals& form)
{
    if (specialMeals) return specialMeals(form);
    if (!form.isProposal() && form.accept()) return true;
    form.reject();
    return false;
}

void GivenRunDialogs::copySpecialMeals(TFormCopySpecialMeals& form)
{
    if (copy) copy(form);
}

} // namespace kb
