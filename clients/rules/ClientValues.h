#pragma once

#include <QDate>
#include <QHash>
#include <QString>
#include <QVariant>

namespace kb {

class DataSet;

// The stored values of one Clients row at one moment, by column name
// (without regard to case). The client rules keep two of them around a
// save: the row as it was when the edit began and the row as it was saved.
// Reading a column that is null gives the empty text, 0, false or no date.
class ClientValues
{
public:
    ClientValues() = default;

    // Every stored column of the current row of a Clients data set.
    static ClientValues read(const DataSet& clients);

    bool isEmpty() const { return m_values.isEmpty(); }
    QVariant value(const QString& column) const { return m_values.value(column.toUpper()); }
    void set(const QString& column, const QVariant& value) { m_values.insert(column.toUpper(), value); }

    QString text(const QString& column) const { return value(column).toString(); }
    qint64 integer(const QString& column) const { return value(column).toLongLong(); }
    double number(const QString& column) const { return value(column).toDouble(); }
    bool flag(const QString& column) const { return value(column).toBool(); }
    // No date for a null, and for a date before 1900, which a cleared date
    // control leaves behind.
    QDate date(const QString& column) const;

    // The delivery days as two-letter codes in week order, Monday first:
    // "MoWeFr"; empty when no day is set.
    QString days() const;
    // Whether two rows hold the same value in a column: both null, or equal.
    bool sameAs(const ClientValues& other, const QString& column) const;

private:
    QHash<QString, QVariant> m_values; // by upper-case column name
};

// The weekday columns of Clients in week order, Monday first.
const QStringList& weekdayColumns();

} // namespace kb
