#pragma once

#include "dataset/DataSet.h"

namespace kb {

// The rows of a statement with :Name parameters. Asked to be live, the
// result can be edited and posted when it selects from one stored table
// without grouping, distinct or union: the rows' identities are then
// fetched with them, and each plain column edits its stored column, while
// computed columns stay read-only. Any other result is read-only.
//
// After a post the row is fetched again through the statement itself,
// restricted to that row; a row that no longer matches leaves the result
// and the set stands on the next row.
class QueryDataSet : public DataSet
{
public:
    explicit QueryDataSet(Database& database, QString sql = {});

    const QString& sql() const { return m_sql; }
    void setSql(const QString& sql);
    void setParam(const QString& name, const QVariant& value);
    QVariant param(const QString& name) const;
    const Params& params() const { return m_params; }
    void clearParams() { m_params.clear(); }

    bool requestLive() const { return m_requestLive; }
    void setRequestLive(bool live);
    // Whether the open result can be edited.
    bool isLive() const { return m_live; }

    // Runs a text that returns no rows; tells how many rows it changed.
    qint64 execSql();

protected:
    ResultSet fetchAll() override;
    ResultSet fetchRow(qint64 rowId) override;
    QString sourceTable() const override { return m_live ? m_table : QString(); }
    QString sourceColumn(int column, const ResultSet& result) const override;

private:
    // Decides whether the text can be live and makes the texts that fetch
    // the rows with their identities and one row by its identity.
    void analyse();
    Params boundParams() const;

    QString m_sql;
    Params m_params;
    bool m_requestLive = false;
    bool m_analysed = false;
    bool m_live = false;
    QString m_table;
    QString m_fetchText;
    QString m_rowText;
    QStringList m_columns; // the stored column behind each fetched column, or empty
};

} // namespace kb
