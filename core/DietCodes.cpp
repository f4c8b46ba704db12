#include "DietCodes.h"

#include "store/Database.h"

namespace kb {

QStringList loadDietCodes(Database& db)
{
    const ResultSet rows = db.execute(QStringLiteral("Select Diet_ID, Diet_Code from Diet"));
    QStringList codes(rows.rowCount());
    for (qsizetype r = 0; r < rows.rowCount(); ++r) {
        const qint64 index = rows.value(r, 0).toLongLong() - 1;
        if (index >= 0 && index < codes.size())
            codes[index] = rows.value(r, 1).toString();
    }
    return codes;
}

QString ConvertDietCode(qint64 mask, const QStringList& aDietCodes, const QString& separator)
{
    if (mask <= 0)
        return {};
    QStringList parts;
    for (qsizetype bit = 0; bit < aDietCodes.size() && bit < 63; ++bit)
        if (mask & (qint64(1) << bit))
            parts.append(aDietCodes[bit]);
    return parts.join(separator);
}

} // namespace kb
