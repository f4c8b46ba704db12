#pragma once

#include "AddressOverrides.h"

#include <QHash>
#include <QString>

namespace kb {

class Database;

// What a run looks up for every row, read once per run instead of once per
// row: the agency settings that steer the selection, service names,
// household names and the address overrides of the date.
class RunLookups
{
public:
    void load(Database& db, const QDate& date);

    bool enableAlternateAddresses() const { return m_enableAlternateAddresses; }
    bool suspendScheduledDeliveries() const { return m_suspendScheduledDeliveries; }
    // Service_Desc, or "Unknown" when no service has that id.
    QString serviceName(qint64 serviceId) const;
    // Household_Name; null when no household has that id.
    QVariant householdName(qint64 householdId) const;
    const AddressOverrides& overrides() const { return m_overrides; }

private:
    bool m_enableAlternateAddresses = false;
    bool m_suspendScheduledDeliveries = false;
    QHash<qint64, QString> m_services;
    QHash<qint64, QVariant> m_households;
    AddressOverrides m_overrides;
};

} // namespace kb
