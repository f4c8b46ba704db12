#pragma once

#include <QAbstractTableModel>

namespace kb {

class TFormOrderRoutes;

// The grid of "Order Stops within Routes" over its presenter, in the order of
// the current index. Route and Stop can be typed into; what is typed stays a
// pending edit of the row until the row is left.
class OrderRoutesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit OrderRoutesModel(TFormOrderRoutes& form, QObject* parent = nullptr);

    // The field a column shows, for sorting by its title.
    QString field(int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

private:
    TFormOrderRoutes& m_form;
};

} // namespace kb
