#pragma once

#include "dated/DatedClient.h"
#include "recurrence/RecurrenceGenerator.h"
#include "recurrence/RecurrenceWriter.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>

namespace kb {

class Database;
class UserInterface;

// "Auto-Create Episodic Deliveries" / "Auto-Create Scheduled Deliveries":
// a recurrence pattern turned into dated deliveries of one client. The
// screen's controls steer each other (changing a spin selects its radio, the
// range keeps its start before its end), the preview shows the dates the
// pattern makes as it is set, and OK writes them in one transaction after
// the user confirms. The pattern itself is never stored.
class TFormRecurrence
{
public:
    enum class Page { Daily, Weekly, Monthly };
    // What OK did: nothing yet (the pattern was refused, the screen stays),
    // the screen closed without rows (No), or the rows were made (the opener
    // reopens its list).
    enum class Outcome { Stayed, Closed, Created };

    TFormRecurrence(Database& db, UserInterface& ui, QString userName, DatedClient client);

    // "Episodic" or "Scheduled", from the opener; empty becomes "Unknown".
    void SetDeliveryType(const QString& text);
    QString caption() const;

    // The lists: entries carry their code after 19 blanks in square brackets.
    const QStringList& serviceEntries() const { return m_services; }
    const QStringList& routeEntries() const { return m_routes; }
    static QStringList limitEntries();
    static QStringList instanceEntries();
    static QStringList instanceKindEntries();
    // What stands between "[" and "]", trimmed.
    static QString entryCode(const QString& entry);

    // ---- the controls ----
    Page page() const { return m_page; }
    void setPage(Page page) { m_page = page; }
    const RecurrencePattern& pattern() const { return m_pattern; }

    void setDailyKind(RecurrencePattern::DailyKind kind) { m_pattern.dailyKind = kind; }
    void setEveryDays(int n);
    void setEveryWeeks(int n) { m_pattern.everyWeeks = n; }
    void setWeekday(int mondayFirst, bool on) { m_pattern.weekdays[size_t(mondayFirst)] = on; }
    void setMonthlyKind(RecurrencePattern::MonthlyKind kind) { m_pattern.monthlyKind = kind; }
    void setDayOfMonth(int d);
    void setEveryMonthsByDay(int m);
    void setInstance(int instance);
    void setInstanceKind(RecurrencePattern::InstanceKind kind);
    void setEveryMonthsByInstance(int m);
    void setStart(const QDate& date);
    void setEndKind(RecurrencePattern::End end) { m_pattern.end = end; }
    void setOccurrences(int n);
    void setEndDate(const QDate& date);

    int limitIndex() const { return int(m_limit); }
    void setLimitIndex(int index) { m_limit = RecurrenceLimit(index); }
    int serviceIndex() const { return m_serviceIndex; }
    void setServiceIndex(int index) { m_serviceIndex = index; }
    int routeIndex() const { return m_routeIndex; }
    void setRouteIndex(int index) { m_routeIndex = index; }

    bool okEnabled() const;

    // The pattern as it would run, from the current controls: the page's
    // form, the limit and the client's stop date.
    RecurrencePattern effectivePattern() const;
    // The dates OK would make, without writing anything; empty with a
    // refused pattern. The service's days that cannot be read give none.
    std::vector<GeneratedDelivery> preview() const;
    // Why the pattern cannot run, or empty.
    QString refusal() const { return effectivePattern().refusal(); }

    // OK: asks "Create the specified deliveries?", then makes the rows and
    // reports how many. A refused pattern is told and nothing happens.
    Outcome ActionOk();

private:
    qint64 selectedService() const;
    QString selectedRoute() const;

    Database& m_db;
    UserInterface& m_ui;
    QString m_userName;
    DatedClient m_client;
    QString m_deliveryType = QStringLiteral("Unknown");
    QStringList m_services;
    QStringList m_routes;
    Page m_page = Page::Daily;
    RecurrencePattern m_pattern;
    RecurrenceLimit m_limit = RecurrenceLimit::ServiceDays;
    int m_serviceIndex = -1;
    int m_routeIndex = 0;
};

} // namespace kb
