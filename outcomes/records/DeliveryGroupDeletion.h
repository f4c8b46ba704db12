#pragma once

#include <QDate>
#include <QString>

namespace kb {

class Database;

// Deleting every delivery of one date for one service, or for one client,
// with their items; the dated deliveries they fulfilled may be credited
// again. One transaction: either all of it or nothing.
class DeliveryGroupDeletion
{
public:
    // Which kinds go: the choice's first letter in "EWD".
    enum class Kinds { ExcludeWalkIns, All, WalkInsOnly };
    static QString kindsText(Kinds kinds);
    static Kinds kindsFromIndex(int index);

    struct Selection
    {
        QDate date;
        bool byClient = false;
        qint64 serviceId = 0; // by service; 0 is any service
        QString serviceName;  // by service, for History
        qint64 personId = 0;  // by client
        Kinds kinds = Kinds::ExcludeWalkIns;
    };

    struct Result
    {
        qint64 deliveries = 0;
        qint64 items = 0;
    };

    // What is told when nothing matched.
    static QString noneByService()
    {
        return QStringLiteral("There were no deliveries which matched those specifications!");
    }
    static QString noneByClient()
    {
        return QStringLiteral("The selected Client did not have any deliveries which matched \r\nthose "
                              "specifications!");
    }
    static QString commitFailed() { return QStringLiteral("Unable to commit the delete transaction."); }

    // The count of deliveries that match.
    static qint64 candidates(Database& db, const Selection& selection);
    // Deletes them and writes the one History row; throws the engine's
    // error after rolling back.
    static Result run(Database& db, const Selection& selection, const QString& user);
    static QString historyEvent(const Selection& selection);

private:
    // " and ..." conditions on Deliveri for the selection, with their values.
    static QString deliveriConditions(const Selection& selection);
};

} // namespace kb
