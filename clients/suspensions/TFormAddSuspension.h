#pragma once

#include <QDate>
#include <QString>

namespace kb {

class DataSet;
class SettingsFile;

// "Service Suspension": edits the dates, reason and author of the current
// row of QuerySuspends. Two views show the same range: the Dates view, the
// stop date (first day without delivery) and the resume date (first day
// with delivery again), and the Calendar view, a selection of the days
// without delivery, from the stop date to the day before the resume date.
// The view in use is kept in the per-user Kettbrk.ini.
class TFormAddSuspension
{
public:
    enum class View { Calendar, Dates };

    // Reads the row's values and the view last used (userSettings may be null).
    TFormAddSuspension(DataSet& suspends, SettingsFile* userSettings);

    static QString caption() { return QStringLiteral("Service Suspension"); }
    static QString datesHeading() { return QStringLiteral("Enter the Suspension dates:"); }
    static QString calendarHeading()
    {
        return QStringLiteral("Click and drag over the dates for the Suspension");
    }
    static QString stopLabel() { return QStringLiteral("Date on which deliveries should stop:"); }
    static QString resumeLabel() { return QStringLiteral("Date on which deliveries should resume:"); }
    static QString reasonLabel() { return QStringLiteral("Reason for Suspension"); }
    static QString userLabel() { return QStringLiteral("Suspension Entered By:"); }
    static QString calendarMenuText() { return QStringLiteral("View as Calendar"); }
    static QString datesMenuText() { return QStringLiteral("View as Dates"); }
    // The longest calendar selection, in days.
    static constexpr int MaxSelectionDays = 365;

    View view() const { return m_view; }
    void setView(View view) { m_view = view; }

    // The Dates view. A stop date after the resume date moves the resume
    // date to the day after it; a resume date before the stop date moves
    // the stop date to the day before it.
    QDate stopDate() const { return m_stop; }
    QDate resumeDate() const { return m_resume; }
    void setStopDate(const QDate& date);
    void setResumeDate(const QDate& date);

    // The Calendar view: the first and last day without delivery. A
    // selection longer than MaxSelectionDays is cut to that length.
    QDate selectionStart() const { return m_stop; }
    QDate selectionEnd() const { return m_resume.addDays(-1); }
    void setSelection(const QDate& first, const QDate& last);

    QString reason() const { return m_reason; }
    void setReason(const QString& reason) { m_reason = reason; }
    QString user() const { return m_user; }
    void setUser(const QString& user) { m_user = user; }

    // Closing, by OK or Cancel: the values go to the row, and the view to
    // the settings file.
    void close();

private:
    DataSet& m_suspends;
    SettingsFile* m_settings;
    View m_view = View::Calendar;
    QDate m_stop;
    QDate m_resume;
    QString m_reason;
    QString m_user;
};

} // namespace kb
