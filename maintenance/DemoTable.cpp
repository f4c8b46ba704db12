#include "DemoTable.h"

#include <exception>
#include <stdexcept>

namespace kb::demo {

namespace {

QString insertText(const QString& table, const QStringList& columns)
{
    QStringList names;
    names.reserve(columns.size());
    for (const QString& c : columns)
        names << QLatin1Char(':') + c;
    return QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
        .arg(table, columns.join(QStringLiteral(", ")), names.join(QStringLiteral(", ")));
}

} // namespace

DemoTable::DemoTable(Database& db, const QString& table, const QStringList& columns)
    : m_columns(columns), m_query(db.query(insertText(table, columns))), m_uncaught(std::uncaught_exceptions())
{
}

DemoTable::~DemoTable() noexcept(false)
{
    if (std::uncaught_exceptions() == m_uncaught)
        flush();
}

void DemoTable::insert(const QVariantList& values)
{
    constexpr size_t BatchRows = 2000;
    if (values.size() != m_columns.size())
        throw std::logic_error("demo agency: a row does not match its columns");
    Params row;
    row.reserve(values.size());
    for (qsizetype i = 0; i < values.size(); ++i)
        row.emplace_back(m_columns[i], values[i]);
    m_pending.push_back(std::move(row));
    ++m_rows;
    if (m_pending.size() >= BatchRows)
        flush();
}

void DemoTable::flush()
{
    if (m_pending.empty())
        return;
    std::vector<Params> rows;
    rows.swap(m_pending);
    m_query.execBatch(rows);
}

} // namespace kb::demo
