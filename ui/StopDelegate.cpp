#include "StopDelegate.h"

#include <QDoubleSpinBox>

namespace kb::ui {

QWidget* StopDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* box = new QDoubleSpinBox(parent);
    box->setRange(0, 999);
    box->setSingleStep(1);
    box->setDecimals(1);
    return box;
}

void StopDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    static_cast<QDoubleSpinBox*>(editor)->setValue(index.data(Qt::EditRole).toDouble());
}

void StopDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    model->setData(index, static_cast<QDoubleSpinBox*>(editor)->value(), Qt::EditRole);
}

} // namespace kb::ui
