#include "selection/OriginDataSet.h"

namespace kb {

int OriginDataSet::position(const QString& name) const
{
    const auto it = m_positions.constFind(name);
    if (it != m_positions.constEnd())
        return *it;
    const int column = m_rows.columnIndex(name);
    m_positions.insert(name, column);
    return column;
}

const QVariant& OriginDataSet::value(const QString& name) const
{
    static const QVariant null;
    const int column = position(name);
    return column < 0 ? null : m_rows.value(m_current, column);
}

} // namespace kb
