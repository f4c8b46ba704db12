#pragma once

#include "store/ResultSet.h"

#include <QHash>
#include <QString>
#include <QVariant>

namespace kb {

// The rows of a selection with a current row, read by column name, as the
// run copies them into its working table. Column positions are found once
// per name, not once per row.
class OriginDataSet
{
public:
    explicit OriginDataSet(ResultSet rows) : m_rows(std::move(rows)) {}

    qsizetype rowCount() const { return m_rows.rowCount(); }
    qsizetype currentRow() const { return m_current; }
    void setCurrentRow(qsizetype row) { m_current = row; }
    bool hasColumn(const QString& name) const { return position(name) >= 0; }

    // The current row's value; null when the selection has no such column.
    const QVariant& value(const QString& name) const;
    QString text(const QString& name) const { return value(name).toString(); }

private:
    int position(const QString& name) const;

    ResultSet m_rows;
    qsizetype m_current = 0;
    mutable QHash<QString, int> m_positions;
};

} // namespace kb
