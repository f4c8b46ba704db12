#include "DemoTable.h"

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
    : m_columns(columns), m_query(db.query(insertText(table, columns)))
{
}

void DemoTable::insert(const QVariantList& values)
{
    if (values.size() != m_columns.size())
        throw std::logic_error("demo agency: a row does not match its columns");
    for (qsizetype i = 0; i < values.size(); ++i)
        m_query.bind(m_columns[i], values[i]);
    m_query.execCommand();
    ++m_rows;
}

} // namespace kb::demo
