#pragma once

#include "missed/MissedClient.h"

#include <QDate>
#include <QString>

namespace kb {

class Database;
class UserInterface;
struct SessionState;

// "Record Missed Delivery": one miss of the current client. The calendar
// opens on today; a Stopped client's allows only today minus 3 to today
// plus 1. OK reads the date's status and either stays open (refused, or a
// question answered No) or records the miss and closes.
class TFormMissedDel
{
public:
    TFormMissedDel(Database& db, const SessionState& session, UserInterface& ui, MissedClient client);

    static QString caption() { return QStringLiteral("Record Missed Delivery"); }
    const MissedClient& client() const { return m_client; }

    QDate date() const { return m_date; }
    // Kept within the calendar's limits; false when the date was outside.
    bool setDate(const QDate& date);
    // Invalid when the calendar has no limit.
    QDate minDate() const { return m_min; }
    QDate maxDate() const { return m_max; }

    bool excused() const { return m_excused; }
    void setExcused(bool excused) { m_excused = excused; }
    // "Recorded By:", the signed-in staff member's name to begin with.
    const QString& recordedBy() const { return m_recordedBy; }
    void setRecordedBy(const QString& name) { m_recordedBy = name; }

    // OK (also a double click on a day): true when the miss was recorded and
    // the screen closes. Refused for users who may not change data.
    bool ActionOK();

private:
    Database& m_db;
    const SessionState& m_session;
    UserInterface& m_ui;
    MissedClient m_client;
    QDate m_date;
    QDate m_min;
    QDate m_max;
    bool m_excused = false;
    QString m_recordedBy;
};

} // namespace kb
