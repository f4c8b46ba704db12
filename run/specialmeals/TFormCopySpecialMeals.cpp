#include "specialmeals/TFormCopySpecialMeals.h"

#include "UserInterface.h"
#include "store/Database.h"
#include "store/DbError.h"

#include <QLocale>

namespace kb {

namespace {

QString shown(const QDate& date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

} // namespace

TFormCopySpecialMeals::TFormCopySpecialMeals(Database& db, UserInterface& ui, const SpecialMealsSetup& values,
                                             const QDate& source, QObject* parent)
    : QObject(parent), m_db(db), m_ui(ui), m_values(values), m_source(source)
{
    m_db.execute(QStringLiteral("Drop table if exists Memory MemTableDestinationDates"));
    m_db.execute(
        QStringLiteral("Create Table Memory MemTableDestinationDates (RecordID AutoInc, DestinationDate "
                       "Date, DeletionCandidate Boolean)"));
    m_db.execute(QStringLiteral(
        "Create Unique Index DestinationDate on Memory MemTableDestinationDates (DestinationDate)"));
    m_calendarDate = source.isValid() && source >= QDate(1900, 1, 1) ? source : m_db.clock().today();
}

TFormCopySpecialMeals::~TFormCopySpecialMeals()
{
    try {
        m_db.execute(QStringLiteral("Drop table if exists Memory MemTableDestinationDates"));
    } catch (const DbError&) {
        // The session drops its memory tables when it ends.
    }
}

void TFormCopySpecialMeals::setCalendarDate(const QDate& date)
{
    if (date == m_calendarDate) return;
    m_calendarDate = date;
    emit changed();
}

QList<QDate> TFormCopySpecialMeals::boldDates() const
{
    QList<QDate> dates;
    for (const Destination& d : m_destinations)
        dates << d.date;
    return dates;
}

void TFormCopySpecialMeals::reload()
{
    const ResultSet rows = m_db.execute(QStringLiteral(
        "Select RecordID, DestinationDate, DeletionCandidate from Memory MemTableDestinationDates order by "
        "DestinationDate"));
    m_destinations.clear();
    for (qsizetype r = 0; r < rows.rowCount(); ++r)
        m_destinations.append(
            {rows.value(r, 0).toLongLong(), rows.value(r, 1).toDate(), rows.value(r, 2).toBool()});
    emit changed();
}

void TFormCopySpecialMeals::setDeletionCandidate(int row, bool candidate)
{
    if (row < 0 || row >= m_destinations.size()) return;
    m_db.execute(
        QStringLiteral("Update Memory MemTableDestinationDates set DeletionCandidate = :Candidate where "
                       "RecordID = :RecordID"),
        {{QStringLiteral("Candidate"), candidate},
         {QStringLiteral("RecordID"), m_destinations[row].recordId}});
    m_destinations[row].deletionCandidate = candidate;
    emit changed();
}

void TFormCopySpecialMeals::ActionAddSelectedDate()
{
    if (!m_calendarDate.isValid()) return;
    try {
        m_db.execute(
            QStringLiteral("Insert into Memory MemTableDestinationDates (DestinationDate, DeletionCandidate) "
                           "values (:DestinationDate, False)"),
            {{QStringLiteral("DestinationDate"), m_calendarDate}});
    } catch (const DbError& e) {
        if (e.code() != DbErrorCode::DuplicateKey) throw;
        m_ui.warning(
            QStringLiteral("That date already exists in the list and can't be added more than once."));
    }
    reload();
}

void TFormCopySpecialMeals::ActionDeleteSelectedDate()
{
    m_db.execute(
        QStringLiteral("Delete from Memory MemTableDestinationDates where DeletionCandidate = True"));
    reload();
}

void TFormCopySpecialMeals::ActionCopyToSelectedDates()
{
    if (m_ui.question(QStringLiteral("Copy the current diet modifications to the selected dates?"),
                      Buttons::YesNo) != Answer::Yes)
        return;
    for (const Destination& d : m_destinations) {
        if (d.deletionCandidate &&
            m_ui.question(shown(d.date) +
                              QStringLiteral(" is marked for deletion, but has not yet been deleted. \r\n"
                                             "Create the record anyway?"),
                          Buttons::YesNo) != Answer::Yes)
            continue;
        const bool exists =
            !m_db.execute(QStringLiteral("select RecordID from special_meals where deliv_date = "
                                         ":Deliv_Date"),
                          {{QStringLiteral("Deliv_Date"), d.date}})
                 .isEmpty();
        if (exists) {
            // A setup already made for a date is never overwritten.
            m_ui.information(shown(d.date) +
                             QStringLiteral(" already exist. \r\nThat date will NOT have the current "
                                            "modifications copied to it!"));
            continue;
        }
        m_values.insert(m_db, d.date);
    }
    setCalendarDate(m_source.isValid() ? m_source : m_calendarDate);
}

} // namespace kb
