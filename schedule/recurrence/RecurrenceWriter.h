#pragma once

#include "dated/DatedClient.h"
#include "recurrence/RecurrenceGenerator.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace kb {

class Database;
class UserInterface;

// Which weekdays a generated delivery may fall on.
enum class RecurrenceLimit {
    ServiceDays, // "Delivery Days for the Service selected below": the service's and the agency's
    AgencyDays,  // "Any Agency Delivery Days": Config's day columns
    None,        // "No Limitation"
};

// The active days of a limit, from the day columns DMON ... DSUN; nothing
// when the limit is by service and the service cannot be read.
std::optional<WeekdayFlags> recurrenceActiveDays(Database& db, RecurrenceLimit limit, qint64 service);
// Told when the service of the limit cannot be read; the run then goes on
// with no active day.
QString serviceNotFoundText();

// The route entry that means the client's own route of each weekday.
inline const QString clientsRegularRoute = QStringLiteral("---");

// One generated row, as it will be written.
struct GeneratedDelivery
{
    QDate date;
    QString route;
    QVariant stop;
};

// Writes the dates of a recurrence as rows of EpisodicDeliveries for one
// client, all in one transaction: List_ID -1, Delivery_Type "D", the kind by
// the client's Delivery_Type, Created_By the user and " (AutoSched)". With
// the route "---" each row takes the client's route and stop of its weekday,
// or the default route and stop; with a named route that route and stop 0.
class RecurrenceWriter
{
public:
    RecurrenceWriter(Database& db, UserInterface& ui, QString userName);

    // The rows the dates would make, without writing: the preview.
    static std::vector<GeneratedDelivery> rows(const DatedClient& client, const std::vector<QDate>& dates,
                                               const QString& routeCode);

    // Writes the rows in one transaction and gives how many were written.
    // With keepGoing a row the store refuses is told with the engine's
    // message and the others are still written (the screen's way);
    // without it the first refusal throws and nothing is written.
    qint64 write(const DatedClient& client, const std::vector<QDate>& dates, qint64 service,
                 const QString& routeCode, bool keepGoing);

    // "Finished creating one Scheduled Delivery.", "Finished creating n
    // Scheduled Deliveries." or "Completed the process but no deliveries
    // were scheduled.", by the count of dates made.
    static QString finishedText(qint64 made);

private:
    Database& m_db;
    UserInterface& m_ui;
    QString m_userName;
};

} // namespace kb
