#pragma once

#include "store/Database.h"

#include <QStringList>
#include <QVariant>

namespace kb::demo {

// One insert statement into a table, made ready once and run for every row:
// each column gets a named parameter of its own name, and the values of a
// row come in the order of the columns. Rows are sent in batches, which a
// database server takes many times faster than one round trip per row; the
// last batch goes when the table is done with (unless a failure is already
// unwinding, which discards the whole transaction anyway).
class DemoTable
{
public:
    DemoTable(Database& db, const QString& table, const QStringList& columns);
    ~DemoTable() noexcept(false);
    DemoTable(const DemoTable&) = delete;
    DemoTable& operator=(const DemoTable&) = delete;

    void insert(const QVariantList& values);
    void flush();
    int rows() const { return m_rows; }

private:
    QStringList m_columns;
    Query m_query;
    std::vector<Params> m_pending;
    int m_rows = 0;
    int m_uncaught = 0;
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
