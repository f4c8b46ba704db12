#pragma once

#include <QDialog>

class QCalendarWidget;
class QCheckBox;
class QDateEdit;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kb {
class TFormExcuseMissedMeals;
class TFormMissedDel;
class TFormSummarizeMissedDeliveries;
} // namespace kb

namespace kb::ui {

// "Record Missed Delivery": the calendar (a double click on a day is OK),
// "Excused" and "Recorded By:". OK closes only when the miss was recorded.
class MissedDeliveryView : public QDialog
{
    Q_OBJECT

public:
    MissedDeliveryView(TFormMissedDel& presenter, QWidget* parent = nullptr);
    QCalendarWidget* calendar() const { return m_calendar; }

private:
    void ok();

    TFormMissedDel& m_presenter;
    QCalendarWidget* m_calendar;
    QCheckBox* m_excused;
    QLineEdit* m_recordedBy;
};

// "Excuse Missed Meals" and "Clear Missed Meals": the check list of the
// client's misses and the screen's command, which closes it.
class MissedMealsView : public QDialog
{
    Q_OBJECT

public:
    MissedMealsView(TFormExcuseMissedMeals& presenter, QWidget* parent = nullptr);
    QListWidget* list() const { return m_list; }
    QPushButton* actionButton() const { return m_action; }

private:
    TFormExcuseMissedMeals& m_presenter;
    QListWidget* m_list;
    QPushButton* m_action;
};

// "Summarize Clients' Missed Deliveries": the notice, the date and "Summarize".
class SummarizeMissedView : public QDialog
{
    Q_OBJECT

public:
    SummarizeMissedView(TFormSummarizeMissedDeliveries& presenter, QWidget* parent = nullptr);

private:
    TFormSummarizeMissedDeliveries& m_presenter;
    QDateEdit* m_since;
};

} // namespace kb::ui
