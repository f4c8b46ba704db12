#include "CsvWriter.h"

#include "Csv.h"

namespace kb {

void CsvWriter::begin(const std::vector<sql::OutputColumn>& columns)
{
    QStringList names;
    names.reserve(qsizetype(columns.size()));
    for (const sql::OutputColumn& c : columns)
        names.append(c.name);
    writeCsvHeader(m_out, names);
}

void CsvWriter::row(const QVariantList& values)
{
    writeCsvRecord(m_out, values);
    ++m_rows;
}

} // namespace kb
