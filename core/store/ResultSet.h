#pragma once

#include "sql/Translation.h"

#include <QVariant>

#include <vector>

namespace kb {

// The rows a statement returned, with the name and type of every column.
class ResultSet
{
public:
    ResultSet() = default;
    explicit ResultSet(std::vector<sql::OutputColumn> columns) : m_columns(std::move(columns)) {}

    int columnCount() const { return int(m_columns.size()); }
    qsizetype rowCount() const { return m_rows.size(); }
    bool isEmpty() const { return m_rows.empty(); }
    const std::vector<sql::OutputColumn>& columns() const { return m_columns; }
    const QString& columnName(int column) const { return m_columns[column].name; }
    FieldType columnType(int column) const { return m_columns[column].type; }
    // -1 when no column has that name (matched without regard to case).
    int columnIndex(QStringView name) const;

    const QVariant& value(qsizetype row, int column) const { return m_rows[row][column]; }
    // Throws DbError(UnknownName) for a column the result does not have.
    const QVariant& value(qsizetype row, QStringView column) const;
    const QVariantList& row(qsizetype row) const { return m_rows[row]; }

    void appendRow(QVariantList row) { m_rows.push_back(std::move(row)); }

    // For statements that return no rows: how many rows they changed.
    qint64 rowsAffected() const { return m_rowsAffected; }
    void setRowsAffected(qint64 n) { m_rowsAffected = n; }
    bool hasRows() const { return m_hasRows; }
    void setHasRows(bool hasRows) { m_hasRows = hasRows; }

private:
    std::vector<sql::OutputColumn> m_columns;
    std::vector<QVariantList> m_rows;
    qint64 m_rowsAffected = 0;
    bool m_hasRows = false;
};

} // namespace kb
