#pragma once

#include <QDate>
#include <QString>

namespace kb {

class Database;
class UserInterface;

// "Shift Deliveries From One Date To Another": moves what a saved run wrote
// for one date (its Deliveri and MealCrdt rows, of every client) to another
// date, when a day's deliveries went out on a different day than planned.
// The planned EpisodicDeliveries rows are not touched.
class TFormAssignDeliveriesToNewDate
{
public:
    // userName: the signed-in user, written to History; today: the
    // session's clock. The dates start at yesterday and today, the usual
    // case of a day's run saved under the wrong date.
    TFormAssignDeliveriesToNewDate(Database& db, UserInterface& ui, QString userName, const QDate& today);

    static QString caption() { return QStringLiteral("Shift Deliveries From One Date To Another"); }

    void setOldDate(const QDate& date) { m_oldDate = date; }
    void setNewDate(const QDate& date) { m_newDate = date; }
    const QDate& oldDate() const { return m_oldDate; }
    const QDate& newDate() const { return m_newDate; }
    // The earliest date either picker accepts: older saved days are archive
    // territory and are not rewritten from here.
    QDate earliestDate() const { return m_today.addDays(-749); }

    // Both dates later than today minus 750 days, and different.
    bool okEnabled() const;
    // Counts the saved deliveries of the old date (telling the user when
    // there are none), asks, then shifts them in one transaction with a
    // History row, and reports. true when the screen closes having done it.
    bool ActionOK();
    // How many Deliveri rows the last ActionOK moved.
    qint64 shifted() const { return m_shifted; }

    // The shift itself, without questions: Deliveri (with its DOW) and
    // MealCrdt of oldDate go to newDate and History tells it, all or
    // nothing. Gives the number of Deliveri rows moved.
    static qint64 shift(Database& db, const QString& userName, const QDate& oldDate, const QDate& newDate);
    // Saved deliveries (Deliveri rows) on the date.
    static qint64 countOn(Database& db, const QDate& date);

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_userName;
    QDate m_today;
    QDate m_oldDate = m_today.addDays(-1);
    QDate m_newDate = m_today;
    qint64 m_shifted = 0;
};

} // namespace kb
