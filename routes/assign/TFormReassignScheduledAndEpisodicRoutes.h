#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace kb {

class Database;

// "Reassign Routes of Future Deliveries": moves a client's dated deliveries
// from today on, on the checked weekdays, to one route. Only the route
// changes; stops stay, and fulfilled rows are moved too.
class TFormReassignScheduledAndEpisodicRoutes
{
public:
    TFormReassignScheduledAndEpisodicRoutes(Database& db, qint64 personId, QString clientDeliveryType);

    static QString caption() { return QStringLiteral("Reassign Routes of Future Deliveries"); }
    // "Default route for " and the client's name, and that route's code.
    QString defaultRouteCaption() const { return QStringLiteral("Default route for ") + m_clientName; }
    QString defaultRoute() const { return m_defaultRoute; }
    // "Day-Specific Routes" are shown for an ongoing client only; the route
    // of Monday 0 ... Sunday 6, empty where the day has none of its own.
    bool showsDayRoutes() const { return m_scheduleType == QLatin1String("S"); }
    QString dayRoute(int day) const { return m_dayRoutes[size_t(day)]; }
    // The route list: code, " - ", description.
    const QStringList& routeEntries() const { return m_routes; }
    QString routeEntry() const { return m_routeEntry; }
    void setRouteEntry(const QString& entry) { m_routeEntry = entry; }

    // Monday 0 ... Sunday 6.
    bool dayChecked(int day) const { return m_days[size_t(day)]; }
    void setDayChecked(int day, bool on) { m_days[size_t(day)] = on; }
    // The pop-up menu.
    void uncheckAllDays();
    void checkAllDays();
    void checkAllWeekdays();
    void checkWeekendDays();
    void reverseCheckmarks();

    bool okEnabled() const;
    // The statement for the checked days (Monday is 1, Sunday 7).
    QString statement() const;
    // OK: runs it; the number of dated deliveries moved.
    qint64 apply();

private:
    Database& m_db;
    qint64 m_personId;
    QString m_scheduleType;
    QStringList m_routes;
    QString m_routeEntry;
    QString m_clientName;
    QString m_defaultRoute;
    std::array<QString, 7> m_dayRoutes;
    std::array<bool, 7> m_days{};
};

} // namespace kb
