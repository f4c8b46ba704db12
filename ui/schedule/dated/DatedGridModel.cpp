#include "schedule/dated/DatedGridModel.h"

#include "dataset/QueryDataSet.h"
#include "dated/TFormEditEpisodicDeliveries.h"

#include <QBrush>
#include <QColor>
#include <QFont>

namespace kb::ui {

DatedGridModel::DatedGridModel(TFormEditEpisodicDeliveries& presenter, QObject* parent)
    : DataSetTableModel(parent), m_presenter(presenter)
{
}

int DatedGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : DataSetTableModel::columnCount() + 1;
}

QVariant DatedGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.column() != itemsColumn()) return DataSetTableModel::data(index, role);
    if (index.row() >= rowCount()) return {};
    const DatedRowItems& items = m_presenter.itemsAt(index.row());
    const bool own = items.level == ItemListLevel::Dated;
    switch (role) {
    case Qt::DisplayRole:
        return items.lines.empty() ? QStringLiteral("(none)") : items.summary();
    case Qt::ToolTipRole: {
        const int dateColumn = m_presenter.dataSet().fieldIndex(u"Deliv_Date");
        return items.details(m_presenter.dataSet().fieldValueAt(index.row(), dateColumn).toDate());
    }
    case Qt::FontRole:
        if (!own) {
            QFont font;
            font.setItalic(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        return own ? QVariant() : QVariant(QBrush(QColor(0x55, 0x55, 0x55)));
    default:
        return {};
    }
}

QVariant DatedGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && section == itemsColumn()) {
        if (role == Qt::DisplayRole) return QStringLiteral("Items");
        if (role == Qt::ToolTipRole)
            return QStringLiteral(
                "The delivery's own items; in italics, the standing items it takes for want of its own");
        return {};
    }
    return DataSetTableModel::headerData(section, orientation, role);
}

} // namespace kb::ui
