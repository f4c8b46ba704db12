#include "dataset/TableDataSet.h"

#include "dataset/RecordLocks.h"

namespace kb {

TableDataSet::TableDataSet(Database& database, QString tableName)
    : DataSet(database), m_tableName(std::move(tableName))
{
}

TableDataSet::~TableDataSet()
{
    // The base class cannot reach release() once this part is gone.
    try {
        release();
    } catch (const DbError& e) {
        qWarning("Releasing table %s failed: %s", qPrintable(m_tableName), qPrintable(e.message()));
    }
}

void TableDataSet::requireClosed(const char* what) const
{
    if (isActive())
        throw DbError(DbErrorCode::Other,
                      QStringLiteral("Close the data set before changing its %1").arg(QString::fromLatin1(what)));
}

void TableDataSet::setTableName(const QString& tableName)
{
    requireClosed("table");
    m_tableName = tableName;
}

void TableDataSet::setExclusive(bool exclusive)
{
    requireClosed("exclusive access");
    m_exclusive = exclusive;
}

void TableDataSet::setIndexName(const QString& indexName)
{
    if (isActive())
        checkBrowseMode();
    const QString previous = m_indexName;
    m_indexName = indexName;
    if (!isActive())
        return;
    try {
        refresh();
    } catch (...) {
        m_indexName = previous;
        throw;
    }
}

const TableDef& TableDataSet::definition() const
{
    if (const TableDef* def = database().persistentTable(m_tableName))
        return *def;
    if (const TableDef* def = database().memoryTable(m_tableName))
        return *def;
    throw DbError(DbErrorCode::UnknownName, QStringLiteral("Table %1 does not exist").arg(m_tableName));
}

QString TableDataSet::orderClause() const
{
    const TableDef& def = definition();
    const IndexDef* index = m_indexName.isEmpty() ? def.primaryKey() : def.index(m_indexName);
    if (!index && !m_indexName.isEmpty())
        throw DbError(DbErrorCode::UnknownName,
                      QStringLiteral("Index %1 of table %2 does not exist").arg(m_indexName, def.name()));
    QStringList parts;
    if (index) {
        for (const QString& column : index->columns) {
            const ColumnDef* c = def.column(column);
            const bool nocase = index->caseInsensitive && c && isText(c->type);
            parts.append(nocase ? column + QStringLiteral(" nocase") : column);
        }
    }
    // Rows with equal keys keep the order they were added in.
    parts.append(QString::fromLatin1(sql::RowIdColumn));
    return QStringLiteral(" order by ") + parts.join(QLatin1String(", "));
}

ResultSet TableDataSet::fetchAll()
{
    const TableDef& def = definition();
    QString text = QStringLiteral("select KB_ROWID, * from %1").arg(def.name());
    Params params;
    if (hasMaster()) {
        text += QStringLiteral(" where %1 = :KbMaster").arg(detailField());
        params.emplace_back(QStringLiteral("KbMaster"), masterValue());
    }
    return database().execute(text + orderClause(), params);
}

ResultSet TableDataSet::fetchRow(qint64 rowId)
{
    QString text = QStringLiteral("select KB_ROWID, * from %1 where KB_ROWID = :KbRow").arg(definition().name());
    Params params{{QStringLiteral("KbRow"), rowId}};
    // A detail row whose key no longer matches its master is no longer shown.
    if (hasMaster()) {
        text += QStringLiteral(" and %1 = :KbMaster").arg(detailField());
        params.emplace_back(QStringLiteral("KbMaster"), masterValue());
    }
    return database().execute(text, params);
}

void TableDataSet::acquire()
{
    const QString name = definition().name();
    database().recordLocks().openTable(this, name, m_exclusive);
    m_held = name;
}

void TableDataSet::release()
{
    if (m_held.isEmpty())
        return;
    const QString name = m_held;
    m_held.clear();
    database().recordLocks().closeTable(this, name, m_exclusive);
}

qint64 TableDataSet::physicalRecordCount()
{
    return database().execute(QStringLiteral("select count(*) as N from %1").arg(definition().name())).value(0, 0).toLongLong();
}

} // namespace kb
