#pragma once

#include <QDialog>

class QCalendarWidget;

namespace kb {
struct DateChoice;
}

namespace kb::ui {

// A small modal dialog asking for one date: the choice's caption, its
// prompt and a calendar on the proposed date. OK writes the calendar's date
// back into the choice; a double click on a day is OK.
class DateChoiceDialog : public QDialog
{
    Q_OBJECT

public:
    DateChoiceDialog(DateChoice& choice, QWidget* parent = nullptr);

    QCalendarWidget* calendar() const { return m_calendar; }
    void accept() override;

private:
    DateChoice& m_choice;
    QCalendarWidget* m_calendar;
};

} // namespace kb::ui
