#include "store/ResultSet.h"

#include "store/DbError.h"

namespace kb {

int ResultSet::columnIndex(QStringView name) const
{
    for (size_t i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
    return -1;
}

const QVariant& ResultSet::value(qsizetype row, QStringView column) const
{
    const int index = columnIndex(column);
    if (index < 0)
        throw DbError(DbErrorCode::UnknownName, QStringLiteral("The result has no column %1").arg(column));
    return m_rows[row][index];
}

} // namespace kb
