#include "clientwindow/DataSetTableModel.h"

#include "catalogue/ColumnLabels.h"
#include "dataset/DataSet.h"

#include <QDate>
#include <QDateTime>

namespace kb::ui {

namespace {

// Row keys and links that mean nothing to a reader.
bool isKey(const QString& field)
{
    const QString f = field.toUpper();
    return f == QLatin1String("RECORDID") || f == QLatin1String("RECORD_ID") ||
           f == QLatin1String("PERSON_ID") || f == QLatin1String("CLIENT_ID") ||
           f == QLatin1String("APP_ID") || f == QLatin1String("INDIV_ID") ||
           f.endsWith(QLatin1String("USE_ID")) || f == QLatin1String("NOTE_ID") ||
           f == QLatin1String("ALERT_ID");
}

} // namespace

DataSetTableModel::DataSetTableModel(QObject* parent) : QAbstractTableModel(parent) {}

void DataSetTableModel::setDataSet(DataSet* set, QList<Column> columns)
{
    m_set = set;
    m_given = std::move(columns);
    reload();
}

void DataSetTableModel::reload()
{
    beginResetModel();
    m_columns.clear();
    m_fieldIndexes.clear();
    m_rows = 0;
    if (m_set && m_set->isActive()) {
        if (!m_given.isEmpty()) {
            for (const Column& c : m_given) {
                const int index = m_set->fieldIndex(c.field);
                if (index < 0) continue;
                m_columns.append(c);
                m_fieldIndexes.append(index);
            }
        } else {
            for (int i = 0; i < m_set->fieldCount(); ++i) {
                const QString name = m_set->field(i).name;
                if (isKey(name)) continue;
                m_columns.append({name, plainColumnLabel(name)});
                m_fieldIndexes.append(i);
            }
        }
        m_rows = m_set->recordCount();
    } else {
        m_columns = m_given;
    }
    endResetModel();
}

int DataSetTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int DataSetTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QString DataSetTableModel::displayText(const QVariant& value)
{
    if (value.isNull()) return {};
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("Yes") : QString();
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("MM/dd/yyyy"));
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("MM/dd/yyyy hh:mm"));
    default:
        return value.toString().trimmed();
    }
}

QVariant DataSetTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || !m_set || !m_set->isActive() || index.row() >= m_rows ||
        index.column() >= m_fieldIndexes.size())
        return {};
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    return displayText(m_set->fieldValueAt(index.row(), m_fieldIndexes[index.column()]));
}

QVariant DataSetTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
        section < m_columns.size())
        return m_columns[section].title;
    return {};
}

} // namespace kb::ui
