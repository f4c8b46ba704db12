#include "specialmeals/DateChoiceDialog.h"

#include "dialogs/DateChoice.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace kb::ui {

DateChoiceDialog::DateChoiceDialog(DateChoice& choice, QWidget* parent)
    : QDialog(parent), m_choice(choice), m_calendar(new QCalendarWidget(this))
{
    setWindowTitle(choice.caption);
    m_calendar->setGridVisible(true);
    if (choice.date.isValid()) m_calendar->setSelectedDate(choice.date);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(choice.prompt, this));
    layout->addWidget(m_calendar);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &DateChoiceDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_calendar, &QCalendarWidget::activated, this, &DateChoiceDialog::accept);
}

void DateChoiceDialog::accept()
{
    m_choice.date = m_calendar->selectedDate();
    QDialog::accept();
}

} // namespace kb::ui
