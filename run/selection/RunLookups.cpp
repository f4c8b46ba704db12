#include "selection/RunLookups.h"

#include "store/Database.h"

namespace kb {

void RunLookups::load(Database& db, const QDate& date)
{
    const ResultSet config =
        db.execute(QStringLiteral("Select ENABLE_ALTERNATE_ADDRESSES, SUSPEND_SCHEDULED_DELIVERIES from Config"));
    m_enableAlternateAddresses = !config.isEmpty() && config.value(0, 0).toBool();
    m_suspendScheduledDeliveries = !config.isEmpty() && config.value(0, 1).toBool();

    m_services.clear();
    const ResultSet services = db.execute(QStringLiteral("Select Service_ID, Service_Desc from Services"));
    for (qsizetype r = 0; r < services.rowCount(); ++r)
        if (!m_services.contains(services.value(r, 0).toLongLong()))
            m_services.insert(services.value(r, 0).toLongLong(), services.value(r, 1).toString());

    m_households.clear();
    const ResultSet households = db.execute(QStringLiteral("Select Household_ID, Household_Name from Households"));
    for (qsizetype r = 0; r < households.rowCount(); ++r)
        m_households.insert(households.value(r, 0).toLongLong(), households.value(r, 1));

    if (m_enableAlternateAddresses)
        m_overrides.load(db, date);
    else
        m_overrides.clear();
}

QString RunLookups::serviceName(qint64 serviceId) const
{
    return m_services.value(serviceId, QStringLiteral("Unknown"));
}

QVariant RunLookups::householdName(qint64 householdId) const { return m_households.value(householdId); }

} // namespace kb
