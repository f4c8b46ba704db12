#pragma once

#include "specialmeals/SpecialMealsSetup.h"

#include <QDate>
#include <QList>
#include <QObject>

namespace kb {

class Database;
class UserInterface;

// "Copy Special Meal Restrictions": the setup on the screen
// (twenty values) copied to a list of destination dates picked on a
// calendar. A date that already has a setup keeps it. The list
// lives in the private table MemTableDestinationDates for as long as the
// dialog is open.
class TFormCopySpecialMeals : public QObject
{
    Q_OBJECT

public:
    struct Destination
    {
        qint64 recordId = 0;
        QDate date;
        bool deletionCandidate = false;
    };

    // values: what is copied; source: the date they belong to.
    TFormCopySpecialMeals(Database& db, UserInterface& ui, const SpecialMealsSetup& values,
                          const QDate& source, QObject* parent = nullptr);
    ~TFormCopySpecialMeals() override;

    static QString caption() { return QStringLiteral("Copy Special Meal Restrictions"); }

    // The calendar: it opens on the source date, or today when that is
    // before 1 January 1900.
    const QDate& calendarDate() const { return m_calendarDate; }
    void setCalendarDate(const QDate& date);
    // The dates of the list, shown in bold on the calendar.
    QList<QDate> boldDates() const;

    // The list, in date order.
    const QList<Destination>& destinations() const { return m_destinations; }
    void setDeletionCandidate(int row, bool candidate);

    // "Add Selected Date" (also a double click on the calendar): a date
    // already in the list is told and dropped.
    void ActionAddSelectedDate();
    // "Delete Checked": the rows marked for deletion go.
    void ActionDeleteSelectedDate();
    // Copies the values to each date of the list, after asking.
    void ActionCopyToSelectedDates();

signals:
    void changed();

private:
    void reload();

    Database& m_db;
    UserInterface& m_ui;
    SpecialMealsSetup m_values;
    QDate m_source;
    QDate m_calendarDate;
    QList<Destination> m_destinations;
};

} // namespace kb
