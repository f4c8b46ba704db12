#include "reference/TFormDietCombinations.h"

#include "store/Database.h"
#include "UserInterface.h"
#include "DietCodes.h"

namespace kb {

TFormDietCombinations::TFormDietCombinations(Database& db, UserInterface& ui)
    : m_db(db), m_ui(ui), m_caption(QStringLiteral("Missing Diet Combinations"))
{
    const QStringList dietCodes = loadDietCodes(db);
    const ResultSet rows =
        db.execute(QStringLiteral("select distinct Diet_Restr from Clients where Diet_Restr not in ( "
                                  "select Diet_Restr from Cold_Bag_Usage ) order by Diet_Restr"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const QVariant mask = rows.value(r, 0);
        m_combinations.append({mask, ConvertDietCode(mask.toLongLong(), dietCodes), false});
    }
}

void TFormDietCombinations::setChecked(int index, bool checked)
{
    if (index >= 0 && index < m_combinations.size()) m_combinations[index].checked = checked;
}

void TFormDietCombinations::createChecked()
{
    std::vector<Params> rows;
    for (const Combination& c : m_combinations)
        if (c.checked)
            rows.push_back({{QStringLiteral("Diet_Restr"), c.mask.isNull() ? QVariant(0) : c.mask}});
    if (!rows.empty())
        m_db.query(QStringLiteral("Insert into Cold_Bag_Usage (Diet_Restr) values (:Diet_Restr)"))
            .execBatch(rows);
    m_ui.information(QStringLiteral("Finished creating records for the missing diet combinations."));
}

} // namespace kb
