#pragma once

#include "dialogs/RunDialogs.h"

#include <QPointer>
#include <QWidget>

namespace kb::ui {

// The run's dialogs shown modally over the screen that asks.
class QtRunDialogs final : public RunDialogs
{
public:
    explicit QtRunDialogs(QWidget* parent = nullptr) : m_parent(parent) {}

    bool chooseDate(DateChoice& choice) override;
    bool setSpecialMeals(TFormSetSpecialMeals& form) override;
    void copySpecialMeals(TFormCopySpecialMeals& form) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace kb::ui
