#pragma once

#include "store/Database.h"

#include <vector>

namespace kb {

// One statement run for many sets of values: the sets are queued and sent
// in batches (one round trip per batch on a server), in the order they were
// added. Run it inside the caller's transaction; flush() sends the rest.
class BatchedStatement
{
public:
    BatchedStatement(Database& db, const QString& text, size_t batchRows = 1000);

    void add(Params values);
    // Throws DbError as the statement does.
    void flush();
    // Drops what is queued and not yet sent.
    void discard() { m_pending.clear(); }
    qint64 rowsSent() const { return m_sent; }

private:
    Query m_query;
    size_t m_batchRows;
    std::vector<Params> m_pending;
    qint64 m_sent = 0;
};

} // namespace kb
