#pragma once

#include "ReportOutput.h"

#include <QGroupBox>

class QRadioButton;

namespace kb::ui {

// The screen-or-printer choice of the report option dialogs, the screen
// first. A machine without a printer always gets the screen, whatever was
// ticked, so a report is never sent nowhere.
class ReportDestinationGroup : public QGroupBox
{
    Q_OBJECT

public:
    explicit ReportDestinationGroup(const QString& title, QWidget* parent = nullptr);
    reports::ReportDestination destination() const;

private:
    QRadioButton* m_screen;
    QRadioButton* m_printer;
};

} // namespace kb::ui
