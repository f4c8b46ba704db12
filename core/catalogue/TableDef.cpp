#include "catalogue/TableDef.h"

namespace kb {

const ColumnDef* TableDef::column(QStringView name) const
{
    const int i = columnIndex(name);
    return i < 0 ? nullptr : &m_columns[i];
}

int TableDef::columnIndex(QStringView name) const
{
    for (int i = 0; i < m_columns.size(); ++i)
        if (m_columns[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

const IndexDef* TableDef::index(QStringView name) const
{
    for (const IndexDef& idx : m_indexes)
        if (idx.name.compare(name, Qt::CaseInsensitive) == 0)
            return &idx;
    return nullptr;
}

const IndexDef* TableDef::primaryKey() const
{
    for (const IndexDef& idx : m_indexes)
        if (idx.primary)
            return &idx;
    return nullptr;
}

const ColumnDef* TableDef::autoIncColumn() const
{
    for (const ColumnDef& c : m_columns)
        if (c.type == FieldType::AutoInc)
            return &c;
    return nullptr;
}

TableDef& TableDef::add(ColumnDef column)
{
    m_columns.append(std::move(column));
    return *this;
}

TableDef& TableDef::str(const QString& name, int width, bool required)
{
    return add({name, FieldType::String, width, required});
}
TableDef& TableDef::smallint(const QString& name, bool required)
{
    return add({name, FieldType::SmallInt, 0, required});
}
TableDef& TableDef::integer(const QString& name, bool required)
{
    return add({name, FieldType::Int, 0, required});
}
TableDef& TableDef::flt(const QString& name) { return add({name, FieldType::Float}); }
TableDef& TableDef::currency(const QString& name) { return add({name, FieldType::Currency}); }
TableDef& TableDef::boolean(const QString& name) { return add({name, FieldType::Bool}); }
TableDef& TableDef::date(const QString& name) { return add({name, FieldType::Date}); }
TableDef& TableDef::datetime(const QString& name) { return add({name, FieldType::DateTime}); }
TableDef& TableDef::memo(const QString& name) { return add({name, FieldType::Memo}); }
TableDef& TableDef::blob(const QString& name) { return add({name, FieldType::Blob}); }
TableDef& TableDef::autoinc(const QString& name) { return add({name, FieldType::AutoInc, 0, true}); }

TableDef& TableDef::addIndex(IndexDef index)
{
    m_indexes.append(std::move(index));
    return *this;
}

TableDef& TableDef::primary(const QString& column)
{
    return addIndex({QStringLiteral("PRIMARY"), {column}, true, false, true});
}

TableDef& TableDef::index(const QString& name, const QString& columns)
{
    return addIndex({name, columns.split(u';'), false, false, false});
}

TableDef& TableDef::uniqueIndex(const QString& name, const QString& columns)
{
    return addIndex({name, columns.split(u';'), true, false, false});
}

TableDef& TableDef::nocaseIndex(const QString& name, const QString& columns)
{
    return addIndex({name, columns.split(u';'), false, true, false});
}

TableDef& TableDef::uniqueNocaseIndex(const QString& name, const QString& columns)
{
    return addIndex({name, columns.split(u';'), true, true, false});
}

} // namespace kb
