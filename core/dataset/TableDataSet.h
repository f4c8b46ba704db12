#pragma once

#include "dataset/DataSet.h"

namespace kb {

// A table of the catalogue (or a memory table of the session) opened by
// name, every row and column, ordered by one of its indexes. While open the
// session holds the table shared, or alone with setExclusive(): an
// exclusive open fails with ExclusiveOpen (11013) while another session has
// the table open, and so does any open while another holds it exclusively.
class TableDataSet : public DataSet
{
public:
    explicit TableDataSet(Database& database, QString tableName = {});
    ~TableDataSet() override;

    const QString& tableName() const { return m_tableName; }
    void setTableName(const QString& tableName);
    // The index whose order the rows take; empty for the primary index, or
    // the order of insertion when there is none. An open set re-sorts and
    // stays on its row.
    const QString& indexName() const { return m_indexName; }
    void setIndexName(const QString& indexName);
    bool exclusive() const { return m_exclusive; }
    void setExclusive(bool exclusive);

    // COUNT(*) of the stored table, whatever the filter or master link shows.
    qint64 physicalRecordCount() override;

protected:
    ResultSet fetchAll() override;
    ResultSet fetchRow(qint64 rowId) override;
    QString sourceTable() const override { return m_tableName; }
    void acquire() override;
    void release() override;

private:
    const TableDef& definition() const;
    QString orderClause() const;
    void requireClosed(const char* what) const;

    QString m_tableName;
    QString m_indexName;
    bool m_exclusive = false;
    QString m_held; // the table whose open lock this set holds
};

} // namespace kb
