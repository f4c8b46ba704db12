#include "clientwindow/ClientListModel.h"

#include "dataset/DataSet.h"
#include "rules/ClientStatus.h"

namespace kb::ui {

const std::vector<ClientListModel::Column>& ClientListModel::columns()
{
    static const std::vector<Column> list = {
        {QStringLiteral("Name"),
         {QStringLiteral("LAST_NAME"), QStringLiteral("FIRST_NAME")},
         QStringLiteral("LAST_FIRST"),
         26},
        {QStringLiteral("Client ID"), {QStringLiteral("CLIENT_ID")}, QStringLiteral("CLIENT_ID"), 9},
        {QStringLiteral("Status"), {QStringLiteral("STATUS")}, QStringLiteral("STATUS"), 10},
        {QStringLiteral("Route"), {QStringLiteral("DEF_RTE")}, QStringLiteral("DEF_RTE"), 7},
        {QStringLiteral("Address"), {QStringLiteral("ADDRESS1")}, QStringLiteral("ADDRESS"), 24},
        {QStringLiteral("City"), {QStringLiteral("CITY")}, QString(), 14},
        {QStringLiteral("Phone"), {QStringLiteral("PHONE")}, QStringLiteral("PHONE"), 14},
    };
    return list;
}

int ClientListModel::columnOfIndex(const QString& index)
{
    for (size_t c = 0; c < columns().size(); ++c)
        if (!columns()[c].index.isEmpty() && columns()[c].index.compare(index, Qt::CaseInsensitive) == 0)
            return int(c);
    return -1;
}

ClientListModel::ClientListModel(DataSet& clients, QObject* parent)
    : QAbstractTableModel(parent), m_clients(clients)
{
    reload();
}

void ClientListModel::reload()
{
    beginResetModel();
    m_fieldIndexes.clear();
    for (const Column& column : columns()) {
        std::vector<int> indexes;
        for (const QString& field : column.fields)
            indexes.push_back(m_clients.isActive() ? m_clients.fieldIndex(field) : -1);
        m_fieldIndexes.push_back(indexes);
    }
    m_rows = m_clients.isActive() ? m_clients.recordCount() : 0;
    endResetModel();
}

void ClientListModel::rowChanged(int row)
{
    if (row >= 0 && row < m_rows)
        emit dataChanged(index(row, 0), index(row, columnCount() - 1), {Qt::DisplayRole});
}

int ClientListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int ClientListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(columns().size());
}

QVariant ClientListModel::data(const QModelIndex& index, int role) const
{
    if (role != Qt::DisplayRole || !index.isValid() || index.row() >= m_rows || !m_clients.isActive())
        return {};
    const std::vector<int>& fields = m_fieldIndexes[size_t(index.column())];
    if (fields.empty() || fields.front() < 0) return {};
    if (index.column() == 0) {
        const QString last = m_clients.fieldValueAt(index.row(), fields[0]).toString().trimmed();
        const QString first = fields.size() > 1 && fields[1] >= 0
                                  ? m_clients.fieldValueAt(index.row(), fields[1]).toString().trimmed()
                                  : QString();
        return first.isEmpty() ? last : (last.isEmpty() ? first : last + QStringLiteral(", ") + first);
    }
    const QString text = m_clients.fieldValueAt(index.row(), fields.front()).toString().trimmed();
    if (index.column() == 2) return client_status::word(text);
    return text;
}

QVariant ClientListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= int(columns().size())) return {};
    if (role == Qt::DisplayRole) return columns()[size_t(section)].title;
    if (role == Qt::ToolTipRole && !columns()[size_t(section)].index.isEmpty())
        return QStringLiteral("Click to list the clients in this order");
    return {};
}

} // namespace kb::ui
