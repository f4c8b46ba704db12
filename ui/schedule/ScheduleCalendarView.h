#pragma once

#include <QCalendarWidget>
#include <QDialog>
#include <QList>

class QLabel;

namespace kb {
class SettingsFile;
class TFormScheduleCalendar;
} // namespace kb

namespace kb::ui {

// One month of the delivery weeks, its possible delivery dates marked.
class MarkedCalendar : public QCalendarWidget
{
    Q_OBJECT

public:
    MarkedCalendar(const TFormScheduleCalendar& presenter, QWidget* parent);

protected:
    void paintCell(QPainter* painter, const QRect& rect, QDate date) const override;

private:
    const TFormScheduleCalendar& m_presenter;
};

// "Delivery Weeks": three months side by side under the client's name and
// the title of the frequency; "Print" prints the window.
class ScheduleCalendarView : public QDialog
{
    Q_OBJECT

public:
    ScheduleCalendarView(TFormScheduleCalendar& presenter, SettingsFile& settings, QWidget* parent = nullptr);

    const QList<MarkedCalendar*>& calendars() const { return m_calendars; }

private:
    void showFrom(int year, int month);
    void print();

    TFormScheduleCalendar& m_presenter;
    QList<MarkedCalendar*> m_calendars;
    bool m_moving = false;
};

} // namespace kb::ui
