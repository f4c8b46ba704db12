#pragma once

#include <QDate>
#include <QDialog>
#include <QList>

class QCalendarWidget;
class QListWidget;
class QPushButton;

namespace kb {
class TFormCopySpecialMeals;
}

namespace kb::ui {

// "Copy Special Meal Restrictions" over its presenter: the calendar with
// the chosen dates in bold, the list of destination dates whose check marks
// them for deletion, and the commands.
class CopySpecialMealsView : public QDialog
{
    Q_OBJECT

public:
    explicit CopySpecialMealsView(TFormCopySpecialMeals& presenter, QWidget* parent = nullptr);

    QCalendarWidget* calendar() const { return m_calendar; }
    QListWidget* destinations() const { return m_list; }
    // "Add Selected Date", "Delete Checked", "Copy to Selected Dates".
    QPushButton* commandButton(const QString& caption) const;

private:
    void showState();

    TFormCopySpecialMeals& m_presenter;
    QCalendarWidget* m_calendar;
    QListWidget* m_list;
    QList<QDate> m_bold;
    bool m_showing = false;
};

} // namespace kb::ui
