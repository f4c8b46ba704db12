#include "delivery/questions/TFormClientItemsSortOrder.h"

#include "settings/SettingsFile.h"

namespace kb::reports {

TFormClientItemsSortOrder::TFormClientItemsSortOrder(SettingsFile* settings) : m_settings(settings)
{
    if (m_settings) setSortOrder(m_settings->readInteger(section(), QStringLiteral("ReportSortOrder"), 0));
}

TFormClientItemsSortOrder::~TFormClientItemsSortOrder()
{
    if (m_settings) m_settings->writeInteger(section(), QStringLiteral("ReportSortOrder"), m_sortOrder);
}

} // namespace kb::reports
