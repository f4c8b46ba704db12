#pragma once

#include "store/RowSink.h"

#include <QTextStream>

namespace kb {

// Writes rows as the CSV of Csv.h as they arrive: the header at begin(),
// then one record per row.
class CsvWriter final : public RowSink
{
public:
    explicit CsvWriter(QTextStream& out) : m_out(out) {}

    void begin(const std::vector<sql::OutputColumn>& columns) override;
    void row(const QVariantList& values) override;
    qint64 rowsWritten() const { return m_rows; }

private:
    QTextStream& m_out;
    qint64 m_rows = 0;
};

} // namespace kb
