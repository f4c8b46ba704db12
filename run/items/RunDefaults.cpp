#include "items/RunDefaults.h"

#include "itemstatements/ItemStatements.h"
#include "store/Database.h"

namespace kb {

void RunDefaults::load(Database& db, const ItemStatements& statements, const QString& dow)
{
    m_meals.clear();
    m_labels.clear();
    m_funding.clear();
    m_fundingDesc.clear();
    m_maxServiceId =
        db.execute(
              QStringLiteral("Select Max(Service_ID) as MaxServiceID from Services where Service_Type='D'"))
            .value(0, 0)
            .toLongLong();

    const ResultSet services = db.execute(
        QStringLiteral("Select Service_ID from Services where Service_Type = 'D' order by Service_ID"));
    for (qsizetype r = 0; r < services.rowCount(); ++r) {
        const qint64 service = services.value(r, 0).toLongLong();
        const Params values = {{QStringLiteral("person_id"), 0},
                               {QStringLiteral("del_day"), dow},
                               {QStringLiteral("svcs_used"), service}};
        m_meals.insert(service, statements.run(db, ItemQuery::GetOngoingNumberOfMeals, values)
                                    .value(0, QStringLiteral("Total_Meals"))
                                    .toLongLong());
        m_labels.insert(service, statements.run(db, ItemQuery::GetOngoingNumberOfLabels, values)
                                     .value(0, QStringLiteral("Total_Labels"))
                                     .toLongLong());
    }

    const ResultSet funding = db.execute(QStringLiteral(
        "Select Services.Service_ID, Services.Default_Funding_Source, FundSrcs.Fund_CD from Services, "
        "FundSrcs where (Services.Service_Type = 'D') and  (Services.Default_Funding_Source = "
        "FundSrcs.Fund_ID)"));
    for (qsizetype r = 0; r < funding.rowCount(); ++r) {
        const qint64 service = funding.value(r, 0).toLongLong();
        m_funding.insert(service, funding.value(r, 1).toLongLong());
        m_fundingDesc.insert(service, funding.value(r, 2).toString());
    }
}

bool RunDefaults::isValidService(const QVariant& svcsUsed) const
{
    if (svcsUsed.isNull()) return false;
    const qint64 service = svcsUsed.toLongLong();
    return service >= 0 && service <= m_maxServiceId;
}

QString RunDefaults::invalidServiceMessage(qint64 personId)
{
    return QStringLiteral("The Service ID for Person ID ") + QString::number(personId) +
           QStringLiteral(" is not valid.");
}

} // namespace kb
