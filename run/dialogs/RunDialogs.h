#pragma once

namespace kb {

class TFormCopySpecialMeals;
class TFormSetSpecialMeals;
struct DateChoice;

// The dialogs the run's screens open over themselves: on the desktop
// modal windows over their presenters, in a test or a headless command
// answers decided beforehand.
class RunDialogs
{
public:
    virtual ~RunDialogs() = default;

    // A date on a calendar ("Repopulate the Grid", "Special Meals"); the
    // choice holds the answer. False for Cancel.
    virtual bool chooseDate(DateChoice& choice) = 0;
    // "Set Special Meal Qualifications" until it closes: true when closed
    // by an OK the form accepted, false for Cancel.
    virtual bool setSpecialMeals(TFormSetSpecialMeals& form) = 0;
    // "Copy Special Meal Restrictions", opened from the Copy button.
    virtual void copySpecialMeals(TFormCopySpecialMeals& form) = 0;
};

} // namespace kb
