#pragma once

#include <QString>
#include <QVariant>

#include <functional>

namespace kb {

class Database;
class UserInterface;

// The rules of the route table (the "Add and Edit Routes" screen): a code is
// required, a changed code may not duplicate another and is carried over to
// the clients and dated deliveries that hold it, a route in use is not
// deleted, and the distribution center codes follow their locations.
class RouteRules
{
public:
    using Read = std::function<QVariant(const QString& column)>;
    using Write = std::function<void(const QString& column, const QVariant& value)>;

    // Before a post: false when the post is abandoned (the user has been
    // told). `original` reads the row as it was (empty for a new row).
    static bool beforePost(Database& db, UserInterface& ui, const Read& row, const Write& write, const Read& original);
    // The message that refuses deleting the route; empty when it is unused.
    static QString deleteRefusal(Database& db, const QString& routeId);
    // On closing the screen: every route's Dist_Center_Cd from its location.
    static void updateDistributionCenterCodes(Database& db);
};

} // namespace kb
