#include "delivery/questions/TFormItemLimitation.h"

#include "delivery/ReportLimits.h"
#include "store/Database.h"

namespace kb::reports {

TFormItemLimitation::TFormItemLimitation(Database& db)
{
    const ResultSet items =
        db.execute(QStringLiteral("Select Meal_Item, Item_ID from Items order by Meal_Item"));
    for (qsizetype r = 0; r < items.rowCount(); ++r)
        m_entries << items.value(r, 0).toString() + QStringLiteral(" [") + items.value(r, 1).toString() +
                         u']';
}

bool TFormItemLimitation::chooseItem(int itemId)
{
    for (int i = 0; i < int(m_entries.size()); ++i) {
        if (ReportLimits::ExtractServiceID(m_entries[i]) == itemId) {
            m_choice = i;
            return true;
        }
    }
    return false;
}

std::optional<int> TFormItemLimitation::itemId() const
{
    if (m_choice < 0) return std::nullopt;
    return ReportLimits::ExtractServiceID(m_entries[m_choice]);
}

} // namespace kb::reports
