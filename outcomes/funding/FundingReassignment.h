#pragma once

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace kb {

class Database;

// Changes the funding stamp of one client's deliveries of one service in a
// date range, and of his default events of that service on those days, to
// another funding source or to none. Meal counts, credits and prices stay
// as the run left them. Unlike a plain run of three statements, the whole
// change is one transaction: a failure part way leaves no delivery
// restamped without its events and its History row.
class FundingReassignment
{
public:
    struct Selection
    {
        qint64 personId = 0;
        qint64 serviceId = 0;
        QString serviceText; // the service as the list shows it, before the "["
        QDate start;         // both bounds included
        QDate end;
        std::optional<QString> fundCd; // none: remove the funding
    };

    // A delivery that was restamped, as it stood before.
    struct Moved
    {
        qint64 delivId = 0;
        QDate date;
        QString oldFunding;
    };

    struct Result
    {
        std::vector<Moved> deliveries;
        qint64 events = 0;
    };

    static QString question()
    {
        return QStringLiteral("Assign the funding source for this\r\nclient, service and time range?");
    }
    static QString done() { return QStringLiteral("Successfully completed reassigning the funding source."); }
    // The History text: "Assigned funding XYZ to Meals, 3/1/2024-3/31/2024"
    // or "Removed funding source from Meals, ...".
    static QString historyEvent(const Selection& selection);

    // Runs the change and writes the History row under user, also when no
    // delivery matched; throws after rolling everything back.
    static Result run(Database& db, const Selection& selection, const QString& user);
};

} // namespace kb
