#include "delivery/questions/TFormDeliveryDietCriteria.h"

#include "settings/SettingsFile.h"
#include "store/Database.h"

namespace kb::reports {

QStringList TFormDeliveryDietCriteria::sortOrders()
{
    return {QStringLiteral("Route / Stop"), QStringLiteral("Last Name, First Name"),
            QStringLiteral("Client ID"), QStringLiteral("Diet Description")};
}

TFormDeliveryDietCriteria::TFormDeliveryDietCriteria(Database& db, SettingsFile* settings)
    : m_settings(settings)
{
    m_diets.read(db);
    if (m_settings) {
        setSortOrder(m_settings->readInteger(section(), QStringLiteral("SortOrder"), 0));
        m_matchAll = m_settings->readString(section(), QStringLiteral("AnyOrAll"), QStringLiteral("Any")) ==
                     QLatin1String("All");
    }
}

TFormDeliveryDietCriteria::~TFormDeliveryDietCriteria()
{
    if (!m_settings) return;
    m_settings->writeInteger(section(), QStringLiteral("SortOrder"), m_sortOrder);
    m_settings->writeString(section(), QStringLiteral("AnyOrAll"),
                            m_matchAll ? QStringLiteral("All") : QStringLiteral("Any"));
}

void TFormDeliveryDietCriteria::setSortOrder(int index)
{
    m_sortOrder = index >= 0 && index < int(sortOrders().size()) ? index : 0;
}

QString TFormDeliveryDietCriteria::reportTitle() const
{
    QString title;
    for (int i = 0; i < int(descriptions().size()); ++i) {
        if (m_diets.isChecked(i)) title += descriptions()[i] + u' ';
    }
    if (!m_matchAll && m_diets.checkedCount() > 1) title.prepend(QStringLiteral("One or more of: "));
    return title;
}

} // namespace kb::reports
