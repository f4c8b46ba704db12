#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

namespace kb {

class Database;
class ItemStatements;

// What a save reads once before its rows: the highest delivery service
// (MaxServiceID), and for each delivery service (Service_Type "D") the meals
// and labels of its default list on the run's weekday and its default
// funding. A service without a value reads 0 or empty.
class RunDefaults
{
public:
    // The counts come from the Ongoing sums of `statements` with Person_ID 0,
    // so they obey the confirmation of the save.
    void load(Database& db, const ItemStatements& statements, const QString& dow);

    qint64 maxServiceId() const { return m_maxServiceId; }
    // A service the save can take: not empty, not below 0, not above
    // MaxServiceID.
    bool isValidService(const QVariant& svcsUsed) const;
    // "The Service ID for Person ID " + the person + " is not valid."
    static QString invalidServiceMessage(qint64 personId);

    qint64 meals(qint64 serviceId) const { return m_meals.value(serviceId); }
    qint64 labels(qint64 serviceId) const { return m_labels.value(serviceId); }
    // aDefaultFunding and aDefaultFundingDesc: the service's
    // Default_Funding_Source and that source's Fund_CD.
    qint64 funding(qint64 serviceId) const { return m_funding.value(serviceId); }
    QString fundingDesc(qint64 serviceId) const { return m_fundingDesc.value(serviceId); }

private:
    qint64 m_maxServiceId = 0;
    QHash<qint64, qint64> m_meals;
    QHash<qint64, qint64> m_labels;
    QHash<qint64, qint64> m_funding;
    QHash<qint64, QString> m_fundingDesc;
};

} // namespace kb
