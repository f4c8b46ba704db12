#pragma once

#include "rules/ClientValues.h"

#include <QStringList>

namespace kb {

// What the client rules remember of delivery settings for the household
// question: a "current" set, the delivery columns of the client whose edit
// began last (kept while the same client is edited again), and a "prior"
// set, the columns of the client whose change the household was last told
// about, as saved. A household member edited right after another member
// was acted on is thereby left alone.
class HouseholdMemory
{
public:
    struct Set
    {
        bool held = false;
        qint64 personId = 0;
        qint64 householdId = 0;
        ClientValues values; // the delivery columns only
    };

    // The delivery columns: dates, status, type, service, frequency, the
    // seven weekdays, and the eight route and eight stop columns.
    static const QStringList& columns();
    // The columns that MigrateDeliveryInfo copies besides the weekdays.
    static const QStringList& routeColumns();

    // An edit begins: the current set takes the row when it holds another client.
    void editBegins(const ClientValues& row);
    // Whether a save of the client in the current set concerns the
    // household: the household differs from the prior one's, or both
    // household and person are the same.
    bool acts() const;
    // Whether the saved row differs from the current set in a delivery
    // column; floats compare exactly.
    bool differsFromCurrent(const ClientValues& saved) const;
    // The prior set takes the household and person of the current one and
    // the values as saved.
    void remember(const ClientValues& saved);

    const Set& current() const { return m_current; }
    const Set& prior() const { return m_prior; }

private:
    static ClientValues deliveryColumns(const ClientValues& row);

    Set m_current;
    Set m_prior;
};

} // namespace kb
