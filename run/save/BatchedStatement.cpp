#include "save/BatchedStatement.h"

namespace kb {

BatchedStatement::BatchedStatement(Database& db, const QString& text, size_t batchRows)
    : m_query(db.query(text)), m_batchRows(batchRows)
{
    m_pending.reserve(m_batchRows);
}

void BatchedStatement::add(Params values)
{
    m_pending.push_back(std::move(values));
    if (m_pending.size() >= m_batchRows) flush();
}

void BatchedStatement::flush()
{
    if (m_pending.empty()) return;
    std::vector<Params> rows;
    rows.swap(m_pending);
    m_pending.reserve(m_batchRows);
    m_query.execBatch(rows);
    m_sent += qint64(rows.size());
}

} // namespace kb
