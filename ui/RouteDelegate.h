#pragma once

#include <QStyledItemDelegate>

namespace kb::ui {

// Edits a Route_ID by choosing from the routes, shown as ROUTE_ID and
// ROUTE_DESC.
class RouteDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    RouteDelegate(QList<std::pair<QString, QString>> routes, QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    QList<std::pair<QString, QString>> m_routes;
};

} // namespace kb::ui
