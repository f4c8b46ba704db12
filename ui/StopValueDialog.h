#pragma once

#include "StopValueChoice.h"

#include <QDialog>

class QDialogButtonBox;
class QSpinBox;

namespace kb::ui {

// "Select a Stop Value" and "Increment/Decrement Stops": one number for the
// selected clients, OK enabled as the choice says.
class StopValueDialog : public QDialog
{
    Q_OBJECT

public:
    StopValueDialog(const StopValueChoice& choice, QWidget* parent = nullptr);
    int value() const;

private:
    StopValueChoice m_choice;
    QSpinBox* m_value;
    QDialogButtonBox* m_buttons;
};

} // namespace kb::ui
