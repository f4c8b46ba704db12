#include "rules/HouseholdMemory.h"

namespace kb {

const QStringList& HouseholdMemory::routeColumns()
{
    static const QStringList columns = [] {
        QStringList list;
        static const char* const days[] = {"MON", "TUE", "WED", "THU", "FRI", "SAT", "SUN", "DEF"};
        for (const char* day : days)
            list.append(QString::fromLatin1(day) + QStringLiteral("_RTE"));
        for (const char* day : days)
            list.append(QString::fromLatin1(day) + QStringLiteral("_STOP"));
        return list;
    }();
    return columns;
}

const QStringList& HouseholdMemory::columns()
{
    static const QStringList columns =
        QStringList{QStringLiteral("START_DTE"), QStringLiteral("STOP_DTE"),
                    QStringLiteral("STATUS"),    QStringLiteral("DELIVERY_TYPE"),
                    QStringLiteral("SVCS_USED"), QStringLiteral("ONGOING_FREQUENCY")} +
        weekdayColumns() + routeColumns();
    return columns;
}

ClientValues HouseholdMemory::deliveryColumns(const ClientValues& row)
{
    ClientValues values;
    for (const QString& column : columns())
        values.set(column, row.value(column));
    return values;
}

void HouseholdMemory::editBegins(const ClientValues& row)
{
    const qint64 person = row.integer(QStringLiteral("PERSON_ID"));
    if (m_current.held && m_current.personId == person) return;
    m_current.held = true;
    m_current.personId = person;
    m_current.householdId = row.integer(QStringLiteral("HOUSEHOLD_ID"));
    m_current.values = deliveryColumns(row);
}

bool HouseholdMemory::acts() const
{
    return m_current.householdId != m_prior.householdId || m_current.personId == m_prior.personId;
}

bool HouseholdMemory::differsFromCurrent(const ClientValues& saved) const
{
    for (const QString& column : columns())
        if (!saved.sameAs(m_current.values, column)) return true;
    return false;
}

void HouseholdMemory::remember(const ClientValues& saved)
{
    m_prior.held = true;
    m_prior.personId = m_current.personId;
    m_prior.householdId = m_current.householdId;
    m_prior.values = deliveryColumns(saved);
}

} // namespace kb
