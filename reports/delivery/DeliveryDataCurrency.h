#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

#include <optional>

namespace kb {
class Clock;
class Database;
class UserInterface;
} // namespace kb

namespace kb::reports {

class RunPreparation;
struct StaffReportPreferences;

// Whether a date's delivery data is current: has its run been saved, and
// how long ago. The check reads the History rows each save leaves behind
// and, as the user's Staff row asks, offers to prepare and save the date
// again before a report runs on it.
class DeliveryDataCurrency
{
public:
    DeliveryDataCurrency(Database& db, const Clock& clock, UserInterface& ui);

    // The time of the date's last save; none when it was never saved.
    std::optional<QDateTime> lastSave(const QDate& date);

    // The question to ask for a date saved at `saved` (none: never saved),
    // or an empty text when the preference asks nothing now.
    QString question(const QDate& date, const std::optional<QDateTime>& saved,
                     const QString& prepareDataPrompt) const;

    // The whole check before a report: one date is checked, a range only
    // told that it cannot be; on Yes the preparation runs, shown or not as
    // the preferences say. A failure of the preparation is shown and the
    // report goes on.
    void check(const QDate& from, const QDate& to, const StaffReportPreferences& preferences,
               RunPreparation& preparation);

    static QString dateText(const QDate& date);

private:
    Database& m_db;
    const Clock& m_clock;
    UserInterface& m_ui;
};

} // namespace kb::reports
