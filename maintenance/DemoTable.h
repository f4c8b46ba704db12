#pragma once

#include "Database.h"

#include <QStringList>
#include <QVariant>

namespace kb::demo {

// One insert statement into a table, made ready once and run for every row:
// each column gets a named parameter of its own name, and the values of a
// row come in the order of the columns.
class DemoTable
{
public:
    DemoTable(Database& db, const QString& table, const QStringList& columns);
    void insert(const QVariantList& values);
    int rows() const { return m_rows; }

private:
    QStringList m_columns;
    Query m_query;
    int m_rows = 0;
};

// A null value for a column, as the engine takes it.
inline QVariant null()
{
    return QVariant();
}
// Empty text and dates that are not set are stored as null.
inline QVariant orNull(const QString& text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}
inline QVariant orNull(const QDate& date)
{
    return date.isValid() ? QVariant(date) : QVariant();
}
inline QVariant orNull(int number)
{
    return number == 0 ? QVariant() : QVariant(number);
}

} // namespace kb::demo
