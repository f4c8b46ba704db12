#include "reference/DietMaskWords.h"

#include "Database.h"

namespace kb {

DietMaskWords::DietMaskWords(Database& db)
{
    const ResultSet rows = db.execute(QStringLiteral("Select Diet_ID, Diet_Code from Diet"));
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const int bit = rows.value(r, 0).toInt() - 1;
        if (bit < 0 || bit > 62) continue;
        if (m_codes.size() <= bit) m_codes.resize(bit + 1);
        m_codes[bit] = rows.value(r, 1).toString();
    }
}

QString DietMaskWords::words(qint64 mask) const
{
    QStringList parts;
    for (qsizetype bit = 0; bit < m_codes.size(); ++bit)
        if (mask > 0 && (mask & (qint64(1) << bit))) parts.append(m_codes[bit]);
    return parts.join(QStringLiteral(" / "));
}

} // namespace kb
