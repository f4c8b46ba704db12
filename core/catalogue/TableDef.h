#pragma once

#include "catalogue/FieldType.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace kb {

struct ColumnDef
{
    QString name;
    FieldType type = FieldType::Unknown;
    int width = 0;         // characters, for String columns
    bool required = false; // may not be null
};

struct IndexDef
{
    QString name;
    QStringList columns;
    bool unique = false;
    bool caseInsensitive = false;
    bool primary = false;
};

// One table of the catalogue: its columns in order and its indexes. Names are
// looked up without regard to case, since statements spell them freely.
class TableDef
{
public:
    TableDef() = default;
    explicit TableDef(QString name) : m_name(std::move(name)) {}

    const QString& name() const { return m_name; }
    const QList<ColumnDef>& columns() const { return m_columns; }
    const QList<IndexDef>& indexes() const { return m_indexes; }

    const ColumnDef* column(QStringView name) const;
    int columnIndex(QStringView name) const;
    const IndexDef* index(QStringView name) const;
    const IndexDef* primaryKey() const;
    // The autoinc column, if the table has one.
    const ColumnDef* autoIncColumn() const;

    // Builders, used by the catalogue declarations.
    TableDef& str(const QString& name, int width, bool required = false);
    TableDef& smallint(const QString& name, bool required = false);
    TableDef& integer(const QString& name, bool required = false);
    TableDef& flt(const QString& name);
    TableDef& currency(const QString& name);
    TableDef& boolean(const QString& name);
    TableDef& date(const QString& name);
    TableDef& datetime(const QString& name);
    TableDef& memo(const QString& name);
    TableDef& blob(const QString& name);
    TableDef& autoinc(const QString& name);
    TableDef& add(ColumnDef column);

    // `columns` is the engine's form: "LAST_NAME;FIRST_NAME".
    TableDef& primary(const QString& column);
    TableDef& index(const QString& name, const QString& columns);
    TableDef& uniqueIndex(const QString& name, const QString& columns);
    TableDef& nocaseIndex(const QString& name, const QString& columns);
    TableDef& uniqueNocaseIndex(const QString& name, const QString& columns);
    TableDef& addIndex(IndexDef index);

private:
    QString m_name;
    QList<ColumnDef> m_columns;
    QList<IndexDef> m_indexes;
};

} // namespace kb
