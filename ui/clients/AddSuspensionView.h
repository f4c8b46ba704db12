#pragma once

#include <QDate>
#include <QDialog>

class QCalendarWidget;
class QDateEdit;
class QLabel;
class QLineEdit;
class QStackedWidget;

namespace kb {
class SettingsFile;
class TFormAddSuspension;
} // namespace kb

namespace kb::ui {

// "Service Suspension" over its presenter: the Calendar view (click the
// first day without delivery, shift-click the last; a double click is OK)
// or the Dates view (stop and resume dates), chosen in the context menu,
// with the reason and who entered it.
class AddSuspensionView : public QDialog
{
    Q_OBJECT

public:
    AddSuspensionView(TFormAddSuspension& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    QCalendarWidget* calendar() const { return m_calendar; }
    QDateEdit* stopEdit() const { return m_stop; }
    QDateEdit* resumeEdit() const { return m_resume; }
    void showView(int view); // TFormAddSuspension::View

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void calendarClicked(const QDate& date);
    void showValues();
    void paintSelection();

    TFormAddSuspension& m_presenter;
    QStackedWidget* m_pages;
    QLabel* m_heading;
    QCalendarWidget* m_calendar;
    QDateEdit* m_stop;
    QDateEdit* m_resume;
    QLineEdit* m_reason;
    QLineEdit* m_user;
    QDate m_painted[2];
    bool m_showing = false;
};

} // namespace kb::ui
