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
    const ResultSet diets =
        db.execute(QStringLiteral("Select DIET_DESC, DIET_CODE from Diet order by DIET_ID"));
    QStringList entries;
    for (qsizetype r = 0; r < diets.rowCount(); ++r) {
        m_descriptions << diets.value(r, 0).toString();
        m_codes << diets.value(r, 1).toString();
        entries << diets.value(r, 0).toString() + QStringLiteral(" - ") + diets.value(r, 1).toString();
    }
    m_diets.setEntries(entries);
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

bool TFormDeliveryDietCriteria::checkCode(const QString& code)
{
    for (int i = 0; i < int(m_codes.size()); ++i) {
        if (m_codes[i].compare(code.trimmed(), Qt::CaseInsensitive) == 0) {
            m_diets.setChecked(i, true);
            return true;
        }
    }
    return false;
}

QString TFormDeliveryDietCriteria::reportTitle() const
{
    QString title;
    for (int i = 0; i < int(m_descriptions.size()); ++i) {
        if (m_diets.isChecked(i)) title += m_descriptions[i] + u' ';
    }
    if (!m_matchAll && m_diets.checkedCount() > 1) title.prepend(QStringLiteral("One or more of: "));
    return title;
}

} // namespace kb::reports
