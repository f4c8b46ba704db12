#include "dated/TFormAssignDeliveriesToNewDate.h"

#include "UserInterface.h"
#include "defaults/Weekdays.h"
#include "records/History.h"
#include "store/Database.h"

#include <QLocale>

namespace kb {

namespace {

QString dateText(const QDate& date)
{
    return QLocale().toString(date, QLocale::ShortFormat);
}

// History's Event holds 50 characters, too few for two long dates after
// the count: the log gets the shortest numeric date in the locale's order.
QString historyDate(const QDate& date)
{
    const QLocale locale;
    const bool dayFirst = locale.dateFormat(QLocale::ShortFormat).startsWith(u'd');
    return locale.toString(date, dayFirst ? QStringLiteral("d/M/yy") : QStringLiteral("M/d/yy"));
}

} // namespace

TFormAssignDeliveriesToNewDate::TFormAssignDeliveriesToNewDate(Database& db, UserInterface& ui,
                                                               QString userName, const QDate& today)
    : m_db(db), m_ui(ui), m_userName(std::move(userName)), m_today(today)
{
}

bool TFormAssignDeliveriesToNewDate::okEnabled() const
{
    const QDate limit = m_today.addDays(-750);
    return m_oldDate.isValid() && m_newDate.isValid() && m_oldDate > limit && m_newDate > limit &&
           m_oldDate != m_newDate;
}

qint64 TFormAssignDeliveriesToNewDate::countOn(Database& db, const QDate& date)
{
    const ResultSet r = db.execute(
        QStringLiteral("Select Count(Deliv_Dt) as Counter from deliveri where deliv_Dt = :Deliv_Dt"),
        {{QStringLiteral("Deliv_Dt"), date}});
    return r.rowCount() > 0 ? r.value(0, 0).toLongLong() : 0;
}

qint64 TFormAssignDeliveriesToNewDate::shift(Database& db, const QString& userName, const QDate& oldDate,
                                             const QDate& newDate)
{
    // One transaction: a failure halfway would leave a day's deliveries
    // split between two dates, with their credits on the other one.
    TransactionGuard transaction(db);
    const ResultSet moved = db.execute(
        QStringLiteral(
            "Update Deliveri set Deliv_Dt = :NewDelivDate, DOW = :DOW where Deliv_Dt = :OldDelivDate"),
        {{QStringLiteral("NewDelivDate"), newDate},
         {QStringLiteral("DOW"), weekdayOf(newDate).code},
         {QStringLiteral("OldDelivDate"), oldDate}});
    db.execute(QStringLiteral("Update MealCrdt set Deliv_Dt = :NewDelivDate where Deliv_Dt = :OldDelivDate"),
               {{QStringLiteral("NewDelivDate"), newDate}, {QStringLiteral("OldDelivDate"), oldDate}});
    const qint64 count = moved.rowsAffected();
    // A system event: no client; it concerns the date the deliveries now have.
    QueryInsertHistory(db, userName,
                       {QVariant(), QVariant(),
                        QStringLiteral("Saved ") + QString::number(count) +
                            QStringLiteral(" deliv. by moving from ") + historyDate(oldDate) +
                            QStringLiteral(" to ") + historyDate(newDate),
                        newDate});
    transaction.commit();
    return count;
}

bool TFormAssignDeliveriesToNewDate::ActionOK()
{
    if (!okEnabled()) return false;
    const qint64 count = countOn(m_db, m_oldDate);
    if (count == 0) {
        m_ui.information(QStringLiteral("There are no deliveries that fall on ") + dateText(m_oldDate) +
                         QStringLiteral("."));
        return false;
    }
    const QString question = QStringLiteral("This will shift all ") + QString::number(count) +
                             QStringLiteral(" deliveries that fall on ") + dateText(m_oldDate) +
                             QStringLiteral(" to ") + dateText(m_newDate) + QStringLiteral(".\r\n") +
                             QStringLiteral("Proceed with shifting the deliveries?");
    if (m_ui.question(question, Buttons::YesNo) != Answer::Yes) return false;
    {
        BusyGuard busy(m_ui);
        m_shifted = shift(m_db, m_userName, m_oldDate, m_newDate);
    }
    m_ui.information(QString::number(m_shifted) + QStringLiteral(" deliveries successfully reassigned to ") +
                     dateText(m_newDate));
    return true;
}

} // namespace kb
