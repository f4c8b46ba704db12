#include "worktable/MemTableDeliveriesModel.h"

#include "store/DbError.h"
#include "UserInterface.h"

#include <cmath>

namespace kb {

namespace {

const QString routeField = QStringLiteral("Route_ID");
const QString stopField = QStringLiteral("Stop");

} // namespace

const QList<MemTableDeliveriesModel::GridColumn>& MemTableDeliveriesModel::gridColumns()
{
    static const QList<GridColumn> columns = {
        {routeField, QStringLiteral("Route")},
        {stopField, QStringLiteral("Stop")},
        {QStringLiteral("Address_Overridden"), QStringLiteral("Alt Addr")},
        {QStringLiteral("Delivery_Type"), QStringLiteral("Deliv Type")},
        {QStringLiteral("Services_Used_Named"), QStringLiteral("Service")},
        {QStringLiteral("Household_Name"), QStringLiteral("Household")},
        {QStringLiteral("Client_ID"), QStringLiteral("ID")},
        {QStringLiteral("Full_Name"), QStringLiteral("Client")},
        {QStringLiteral("Address1"), QStringLiteral("Address")},
        {QStringLiteral("City"), QStringLiteral("City")},
        {QStringLiteral("Diet_Restrictions_Named"), QStringLiteral("Diet")},
        {QStringLiteral("Latitude"), QStringLiteral("Latitude")},
        {QStringLiteral("Longitude"), QStringLiteral("Longitude")},
        {QStringLiteral("RecordID"), QStringLiteral("RecordID")},
    };
    return columns;
}

const QList<MemTableDeliveriesModel::GridColumn>& MemTableDeliveriesModel::datedGridColumns()
{
    static const QList<GridColumn> columns = [] {
        QList<GridColumn> c = gridColumns();
        c.prepend({QStringLiteral("Delivery_Date"), QStringLiteral("Date")});
        return c;
    }();
    return columns;
}

std::optional<DeliveriesIndex> MemTableDeliveriesModel::indexForTitle(const QString& title)
{
    static const QList<std::pair<QString, DeliveriesIndex>> byTitle = {
        {QStringLiteral("Client"), DeliveriesIndex::Last_Name},
        {QStringLiteral("Route"), DeliveriesIndex::RouteStopClient},
        {QStringLiteral("Stop"), DeliveriesIndex::RouteStopClient},
        {QStringLiteral("Diet"), DeliveriesIndex::Diet_Restrictions_Named},
        {QStringLiteral("Service"), DeliveriesIndex::Services_Used},
        {QStringLiteral("City"), DeliveriesIndex::City},
        {QStringLiteral("ID"), DeliveriesIndex::Client_ID},
        {QStringLiteral("Deliv Type"), DeliveriesIndex::Delivery_Type},
        {QStringLiteral("Household"), DeliveriesIndex::Household_Name},
    };
    for (const auto& [t, index] : byTitle)
        if (t == title)
            return index;
    return std::nullopt;
}

MemTableDeliveriesModel::MemTableDeliveriesModel(MemTableDeliveries& table, Database& db, UserInterface& ui,
                                                 QObject* parent)
    : QAbstractTableModel(parent), m_table(table), m_db(db), m_ui(ui), m_columns(gridColumns())
{
}

void MemTableDeliveriesModel::setColumns(const QList<GridColumn>& columns)
{
    m_columns = columns;
    refresh();
}

QStringList MemTableDeliveriesModel::titles() const
{
    QStringList t;
    for (const GridColumn& c : m_columns)
        t.append(c.title);
    return t;
}

QVariantList MemTableDeliveriesModel::shownValues(int row) const
{
    QVariantList values;
    for (int c = 0; c < m_columns.size(); ++c)
        values.append(m_positions.value(c, -1) < 0 ? QVariant() : cell(row, m_positions[c]));
    return values;
}

void MemTableDeliveriesModel::setIndex(DeliveriesIndex index)
{
    beginResetModel();
    m_index = index;
    // The grid's columns and the keys a row is found by; not the whole row.
    QStringList selected;
    for (const GridColumn& c : m_columns)
        if (!selected.contains(c.field)) selected.append(c.field);
    for (const QString& key : {QStringLiteral("RecordID"), QStringLiteral("Person_ID")})
        if (!selected.contains(key)) selected.append(key);
    m_rows = m_table.exists() ? m_table.select(index, selected) : ResultSet();
    m_edits.clear();
    m_positions.clear();
    for (const GridColumn& c : m_columns)
        m_positions.append(m_rows.columnIndex(c.field));
    m_recordIdPosition = m_rows.columnIndex(QStringLiteral("RecordID"));
    endResetModel();
}

void MemTableDeliveriesModel::detach()
{
    beginResetModel();
    m_rows = ResultSet();
    m_edits.clear();
    endResetModel();
}

QVariant MemTableDeliveriesModel::field(int row, const QString& name) const
{
    const int column = m_rows.columnIndex(name);
    if (row < 0 || row >= m_rows.rowCount() || column < 0)
        return {};
    return cell(row, column);
}

const QVariant& MemTableDeliveriesModel::cell(int row, int column) const
{
    if (!m_edits.isEmpty()) {
        const auto it = m_edits.constFind({row, column});
        if (it != m_edits.constEnd())
            return *it;
    }
    return m_rows.value(row, column);
}

int MemTableDeliveriesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.rowCount());
}

int MemTableDeliveriesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant MemTableDeliveriesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.rowCount() || m_positions.value(index.column(), -1) < 0)
        return {};
    const QVariant& value = cell(index.row(), m_positions[index.column()]);
    const bool flag = value.typeId() == QMetaType::Bool;
    if (flag && role == Qt::CheckStateRole)
        return value.toBool() ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::DisplayRole && !flag)
        return value;
    if (role == Qt::EditRole)
        return value;
    return {};
}

QVariant MemTableDeliveriesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= m_columns.size())
        return QAbstractTableModel::headerData(section, orientation, role);
    return m_columns[section].title;
}

Qt::ItemFlags MemTableDeliveriesModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() &&
        (m_columns[index.column()].field == routeField || m_columns[index.column()].field == stopField))
        f |= Qt::ItemIsEditable;
    return f;
}

bool MemTableDeliveriesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    const QString& field = m_columns[index.column()].field;
    QVariant stored;
    if (field == stopField) {
        bool ok = false;
        const double stop = value.toString().toDouble(&ok);
        if (!ok || stop < 0 || stop > 999)
            return false;
        stored = std::round(stop * 10) / 10; // the stop's one decimal place
    } else {
        const QString route = value.toString().trimmed();
        stored = route.isEmpty() ? QVariant() : QVariant(route.left(5));
    }
    if (!update(index.row(), field, stored))
        return false;
    m_edits.insert({index.row(), m_positions[index.column()]}, stored);
    emit dataChanged(index, index);
    emit edited();
    return true;
}

bool MemTableDeliveriesModel::update(int row, const QString& field, const QVariant& value)
{
    const QString text = QStringLiteral("Update MemTableDeliveries set %1 = :Value where RecordID = :RecordID").arg(field);
    const Params params = {{QStringLiteral("Value"), value},
                           {QStringLiteral("RecordID"), m_rows.value(row, m_recordIdPosition)}};
    for (;;) {
        try {
            m_db.execute(text, params);
            return true;
        } catch (const DbError& e) {
            // The reactions every data set of the system has to an edit that fails.
            switch (e.code()) {
            case DbErrorCode::RecordLocked:
            case DbErrorCode::TableLocked: {
                const QString what = e.code() == DbErrorCode::RecordLocked ? QStringLiteral("record")
                                                                           : QStringLiteral("table");
                if (m_ui.question(QStringLiteral("The %1 you are trying to edit is currently locked, do you want to "
                                                 "try to edit this record again?")
                                      .arg(what),
                                  Buttons::YesNo) == Answer::Yes)
                    continue;
                return false;
            }
            case DbErrorCode::ChangedSinceRead:
                m_ui.information(QStringLiteral("The record you are trying to edit has been modified since it was "
                                                "last retrieved, the record will now be refreshed"));
                continue;
            default:
                m_ui.error(e.message());
                return false;
            }
        }
    }
}

} // namespace kb
