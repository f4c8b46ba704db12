#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <array>

namespace kb {

class DataSet;

// "Alternate Routes": a client's route and stop for each weekday, over the
// client's row (put into edit on opening). A day's route can be chosen when
// the agency serves that day and no live alternate address holds the day's
// route; its stop when the route is chosen. Closing empties the stop of every
// day without a route; Cancel puts back the fourteen values as they were.
// Whether the row is posted stays with the client window.
class TFormAltRoutes
{
public:
    explicit TFormAltRoutes(DataSet& client);

    static QString caption() { return QStringLiteral("Alternate Routes"); }
    // Route list entries: code, description and type.
    QStringList routeChoices() const;

    // Monday 0 ... Sunday 6.
    bool routeEnabled(int day) const { return m_servedDay[size_t(day)] && !m_overridden[size_t(day)]; }
    bool stopEnabled(int day) const { return routeEnabled(day) && !route(day).trimmed().isEmpty(); }
    // The marker "Address Override" is shown for such a day.
    bool hasAddressOverride(int day) const { return m_overridden[size_t(day)]; }
    QString route(int day) const;
    QVariant stop(int day) const;
    void setRoute(int day, const QString& routeEntry);
    // A negative stop becomes 0.
    void setStop(int day, const QVariant& stop);

    // After the address overrides screen: the live overrides are read again.
    void refreshOverrides();
    void close(bool ok);

private:
    DataSet& m_client;
    std::array<bool, 7> m_servedDay{};
    std::array<bool, 7> m_overridden{};
    QStringList m_copied; // the fourteen columns as text
};

// The client window's "Clear Routes" and "Clear Stops": the seven weekday
// columns emptied, the default route and stop and dated deliveries untouched.
void clearWeekdayRoutes(DataSet& client);
void clearWeekdayStops(DataSet& client);

} // namespace kb
