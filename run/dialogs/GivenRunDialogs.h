#pragma once

#include "dialogs/RunDialogs.h"

#include <QDate>

#include <functional>
#include <optional>

namespace kb {

// Answers decided beforehand, for a headless command or a test: the date a
// date dialog gets (none: Cancel), and what is done with the special meals
// dialog and the Copy dialog. By default the special meals dialog is closed
// with OK when it shows a date's stored setup and with Cancel when
// it shows only the proposal of a date without one.
class GivenRunDialogs final : public RunDialogs
{
public:
    std::optional<QDate> date;
    std::function<bool(TFormSetSpecialMeals&)> specialMeals;
    std::function<void(TFormCopySpecialMeals&)> copy;

    bool chooseDate(DateChoice& choice) override;
    bool setSpecialMeals(TFormSetSpecialMeals& form) override;
    void copySpecialMeals(TFormCopySpecialMeals& form) override;
};

} // namespace kb
