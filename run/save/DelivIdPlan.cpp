#include "save/DelivIdPlan.h"

#include "items/DeliveryItems.h"

namespace kb {

QString consolidatedDeliveryType(const QString& deliveryType)
{
    return deliveryType.left(1).toLower() + deliveryType.mid(1, 1);
}

DelivIdPlan DelivIdPlan::make(const std::vector<DeliveryItems>& rows, qint64 first, bool consolidate)
{
    DelivIdPlan plan;
    plan.m_first = first;
    plan.m_ids.reserve(rows.size());
    plan.m_consolidated.reserve(rows.size());
    qint64 iDeliv_ID = first;
    bool lConsolidated = false;
    for (size_t r = 0; r < rows.size(); ++r) {
        plan.m_ids.push_back(iDeliv_ID);
        plan.m_consolidated.push_back(lConsolidated);
        // Moving past the last row leaves the table on that row, so it is
        // compared with itself.
        const qint64 iMost_Recent_Person_ID = rows[r].delivery.personId;
        const qint64 next = rows[r + 1 < rows.size() ? r + 1 : r].delivery.personId;
        lConsolidated = consolidate && next == iMost_Recent_Person_ID;
        if (!lConsolidated) ++iDeliv_ID;
    }
    plan.m_afterLast = iDeliv_ID;
    return plan;
}

QString DelivIdPlan::deliveryType(size_t row, const QString& rowType) const
{
    return m_consolidated[row] ? consolidatedDeliveryType(rowType) : rowType;
}

} // namespace kb
