#include "clientwindow/PageGridModel.h"

#include "dataset/DataSet.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDoubleSpinBox>
#include <QLineEdit>

namespace kb::ui {

namespace {

using K = PageCellKind;

} // namespace

PageGridModel::PageGridModel(PageGridEditing& editing, QString grid, QObject* parent)
    : DataSetTableModel(parent), m_editing(editing), m_grid(std::move(grid))
{
    connect(this, &QAbstractItemModel::modelReset, this, [this] { m_shownRows = rowCount(); });
}

PageCell PageGridModel::cellAt(int column) const
{
    if (column < 0 || column >= columns().size()) return {};
    return PageGridEditing::cell(m_grid, columns()[column].field);
}

void PageGridModel::sync()
{
    const int rows = rowCount();
    if (rows != m_shownRows || columnCount() == 0) {
        reload();
        m_shownRows = rows;
        return;
    }
    if (rows > 0) emit dataChanged(index(0, 0), index(rows - 1, columnCount() - 1));
}

int PageGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || columnCount() == 0 ? 0 : m_editing.rowCount(m_grid);
}

Qt::ItemFlags PageGridModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = DataSetTableModel::flags(index);
    if (!index.isValid()) return f;
    const PageCell cell = cellAt(index.column());
    if (!m_editing.isEditable(m_grid, index.row(), columns()[index.column()].field)) return f;
    return cell.kind == K::Check ? f | Qt::ItemIsUserCheckable : f | Qt::ItemIsEditable;
}

QVariant PageGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const PageCell cell = cellAt(index.column());
    const QString& column = columns()[index.column()].field;
    if (cell.kind == K::Check) {
        if (role == Qt::CheckStateRole)
            return m_editing.editValue(m_grid, index.row(), column).toBool() ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::DisplayRole) return {};
    }
    if (role == Qt::EditRole && cell.kind != K::ReadOnly)
        return m_editing.editValue(m_grid, index.row(), column);
    if (role == Qt::TextAlignmentRole && cell.kind == K::Money)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::DisplayRole && cell.kind == K::Money) {
        const QVariant value = m_editing.editValue(m_grid, index.row(), column);
        return value.isNull() ? QString() : QString::number(value.toDouble(), 'f', 2);
    }
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return displayText(m_editing.shownValue(m_grid, index.row(), column));
    return {};
}

bool PageGridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid()) return false;
    const PageCell cell = cellAt(index.column());
    QVariant typed = value;
    if (cell.kind == K::Check) {
        if (role != Qt::CheckStateRole) return false;
        typed = value.toInt() == Qt::Checked;
    } else if (role != Qt::EditRole) {
        return false;
    }
    const bool done = m_editing.setCell(m_grid, index.row(), columns()[index.column()].field, typed);
    sync();
    return done;
}

PageGridDelegate::PageGridDelegate(PageGridEditing& editing, PageGridModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_editing(editing), m_model(model)
{
}

QWidget* PageGridDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                        const QModelIndex& index) const
{
    const PageCell cell = m_model.cellAt(index.column());
    switch (cell.kind) {
    case K::Date: {
        auto* date = new QDateEdit(parent);
        date->setCalendarPopup(true);
        date->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
        return date;
    }
    case K::Choice: {
        auto* list = new QComboBox(parent);
        for (const ClientListEntry& e :
             m_editing.choices(m_model.grid(), m_model.columns()[index.column()].field))
            list->addItem(e.text, e.value);
        // A choice is made at once: the row takes it without a further key.
        connect(list, &QComboBox::activated, this, [this, list] {
            auto* self = const_cast<PageGridDelegate*>(this);
            emit self->commitData(list);
            emit self->closeEditor(list);
        });
        return list;
    }
    case K::Money: {
        auto* money = new QDoubleSpinBox(parent);
        money->setRange(0, 99999.99);
        money->setDecimals(2);
        money->setButtonSymbols(QAbstractSpinBox::NoButtons);
        return money;
    }
    case K::Text:
        return QStyledItemDelegate::createEditor(parent, option, index);
    case K::Check:
    case K::ReadOnly:
        break;
    }
    return nullptr;
}

void PageGridDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    const QVariant value = index.data(Qt::EditRole);
    if (auto* date = qobject_cast<QDateEdit*>(editor)) {
        date->setDate(value.toDate().isValid() ? value.toDate() : m_editing.today());
    } else if (auto* list = qobject_cast<QComboBox*>(editor)) {
        int found = 0;
        for (int i = 0; i < list->count(); ++i)
            if (!value.isNull() && list->itemData(i).toString().trimmed() == value.toString().trimmed())
                found = i;
        list->setCurrentIndex(found);
    } else if (auto* money = qobject_cast<QDoubleSpinBox*>(editor)) {
        money->setValue(value.toDouble());
        money->selectAll();
    } else {
        QStyledItemDelegate::setEditorData(editor, index);
    }
}

void PageGridDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                    const QModelIndex& index) const
{
    if (auto* date = qobject_cast<QDateEdit*>(editor))
        model->setData(index, date->date(), Qt::EditRole);
    else if (auto* list = qobject_cast<QComboBox*>(editor))
        model->setData(index, list->currentData(), Qt::EditRole);
    else if (auto* money = qobject_cast<QDoubleSpinBox*>(editor))
        model->setData(index, money->value(), Qt::EditRole);
    else
        QStyledItemDelegate::setModelData(editor, model, index);
}

} // namespace kb::ui
