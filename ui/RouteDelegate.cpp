#include "RouteDelegate.h"

#include <QComboBox>

namespace kb::ui {

RouteDelegate::RouteDelegate(QList<std::pair<QString, QString>> routes, QObject* parent)
    : QStyledItemDelegate(parent), m_routes(std::move(routes))
{
}

QWidget* RouteDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* box = new QComboBox(parent);
    for (const auto& [id, desc] : m_routes)
        box->addItem(id + QStringLiteral("  ") + desc, id);
    return box;
}

void RouteDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    auto* box = static_cast<QComboBox*>(editor);
    box->setCurrentIndex(box->findData(index.data(Qt::EditRole).toString()));
}

void RouteDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto* box = static_cast<QComboBox*>(editor);
    if (box->currentIndex() >= 0)
        model->setData(index, box->currentData(), Qt::EditRole);
}

} // namespace kb::ui
