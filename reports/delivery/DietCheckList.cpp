#include "delivery/DietCheckList.h"

#include "store/Database.h"

namespace kb::reports {

void DietCheckList::read(Database& db)
{
    const ResultSet diets =
        db.execute(QStringLiteral("Select DIET_DESC, DIET_CODE from Diet order by DIET_ID"));
    m_descriptions.clear();
    m_codes.clear();
    QStringList list;
    for (qsizetype r = 0; r < diets.rowCount(); ++r) {
        m_descriptions << diets.value(r, 0).toString();
        m_codes << diets.value(r, 1).toString();
        list << diets.value(r, 0).toString() + QStringLiteral(" - ") + diets.value(r, 1).toString();
    }
    setEntries(list);
}

bool DietCheckList::checkCode(const QString& code)
{
    for (int i = 0; i < int(m_codes.size()); ++i) {
        if (m_codes[i].compare(code.trimmed(), Qt::CaseInsensitive) == 0) {
            setChecked(i, true);
            return true;
        }
    }
    return false;
}

} // namespace kb::reports
