#include "OrderRoutesModel.h"

#include "OrderRoutesGrid.h"
#include "TFormOrderRoutes.h"

namespace kb {

namespace {

bool editable(const QString& field)
{
    return field == QLatin1String("Route") || field == QLatin1String("Stop");
}

} // namespace

OrderRoutesModel::OrderRoutesModel(TFormOrderRoutes& form, QObject* parent) : QAbstractTableModel(parent), m_form(form)
{
    // Any change may reorder the rows, so the whole grid is read again.
    connect(&m_form, &TFormOrderRoutes::changed, this, [this] {
        beginResetModel();
        endResetModel();
    });
}

QString OrderRoutesModel::field(int column) const { return orderRoutesGridColumns().value(column).field; }

int OrderRoutesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_form.rows().isOpen() ? 0 : m_form.rows().count();
}

int OrderRoutesModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(orderRoutesGridColumns().size());
}

QVariant OrderRoutesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        const QVariant v = orderRoutesGridValues(m_form.displayedRow(index.row())).value(index.column());
        if (role == Qt::DisplayRole && field(index.column()) == QLatin1String("Route_Day") &&
            v.toString().isEmpty())
            return QStringLiteral("Default");
        return v;
    }
    if (role == Qt::TextAlignmentRole && (field(index.column()) == QLatin1String("Stop") ||
                                          field(index.column()) == QLatin1String("Latitude") ||
                                          field(index.column()) == QLatin1String("Longitude")))
        return int(Qt::AlignRight | Qt::AlignVCenter);
    return {};
}

QVariant OrderRoutesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return orderRoutesGridColumns().value(section).title;
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags OrderRoutesModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() && editable(field(index.column())))
        f |= Qt::ItemIsEditable;
    return f;
}

bool OrderRoutesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || !editable(field(index.column())))
        return false;
    m_form.editField(index.row(), field(index.column()), value);
    return true;
}

} // namespace kb
