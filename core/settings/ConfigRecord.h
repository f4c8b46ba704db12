#pragma once

#include <QHash>
#include <QString>
#include <QVariant>

namespace kb {

class DataSet;
class Database;

// The agency's settings, the one row of Config, as they stood when read.
// Code that needs a setting reads it here (or from the data module's Config
// data set) rather than with a select of its own; a Config without a row
// reads as all nulls.
class ConfigRecord
{
public:
    ConfigRecord() = default;
    static ConfigRecord read(Database& db);
    // The current row of an open Config data set.
    static ConfigRecord fromDataSet(const DataSet& config);

    // Throws DbError(UnknownName) for a column Config does not have.
    QVariant value(const QString& column) const;
    QString text(const QString& column) const { return value(column).toString(); }
    qint64 integer(const QString& column, qint64 fallback = 0) const;
    double number(const QString& column, double fallback = 0) const;
    bool flag(const QString& column) const { return value(column).toBool(); }

private:
    QHash<QString, QVariant> m_values; // by upper-case column name
};

// The rules of saving the Config row, on its data set's BeforePost: a
// service day left null becomes false, the label for clients without a
// delivery loses its quotes (it is put into statements as a text), and the
// row is stamped.
void ConfigBeforePost(DataSet& config);

} // namespace kb
