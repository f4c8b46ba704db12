#pragma once

#include "clientwindow/DataSetTableModel.h"

namespace kb {
class TFormEditEpisodicDeliveries;
}

namespace kb::ui {

// The dated deliveries' grid: the working set's columns and, last, "Items",
// what each row brings in one line ("2 × Hot Meal, 1 × Milk") with the lines
// one under another in its tool tip. Standing items a row takes for want of
// its own are shown in italics.
class DatedGridModel : public DataSetTableModel
{
    Q_OBJECT

public:
    DatedGridModel(TFormEditEpisodicDeliveries& presenter, QObject* parent = nullptr);

    int itemsColumn() const { return DataSetTableModel::columnCount(); }

    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    TFormEditEpisodicDeliveries& m_presenter;
};

} // namespace kb::ui
