#pragma once

#include "worktable/MemTableDeliveries.h"

#include <QAbstractTableModel>
#include <QHash>

namespace kb {

class UserInterface;

// The run's grid over MemTableDeliveries, in the order of the current index.
// Only Route_ID and Stop can be edited; an edit goes straight to the working
// table. Switching the index selects the rows again in the new order.
class MemTableDeliveriesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct GridColumn
    {
        QString field;
        QString title;
    };
    // The grid's columns in their order, with their titles.
    static const QList<GridColumn>& gridColumns();
    // The same with each row's own date first ("Date"), for lists that
    // span several dates.
    static const QList<GridColumn>& datedGridColumns();
    // The index a column title sorts by, if any.
    static std::optional<DeliveriesIndex> indexForTitle(const QString& title);

    MemTableDeliveriesModel(MemTableDeliveries& table, Database& db, UserInterface& ui, QObject* parent = nullptr);

    // The columns this grid shows (gridColumns() unless set), in their order.
    const QList<GridColumn>& columns() const { return m_columns; }
    void setColumns(const QList<GridColumn>& columns);
    QStringList titles() const;
    // A row's values in the grid's columns, as shown (edits included).
    QVariantList shownValues(int row) const;

    DeliveriesIndex currentIndex() const { return m_index; }
    // Selects the rows again in the order of the index.
    void setIndex(DeliveriesIndex index);
    void refresh() { setIndex(m_index); }
    // Empties the grid while the working table fills.
    void detach();

    // A field of a row of the grid: a grid column or Person_ID.
    QVariant field(int row, const QString& name) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

signals:
    // A row was changed by the user.
    void edited();

private:
    bool update(int row, const QString& field, const QVariant& value);
    const QVariant& cell(int row, int column) const;

    MemTableDeliveries& m_table;
    Database& m_db;
    UserInterface& m_ui;
    QList<GridColumn> m_columns;
    DeliveriesIndex m_index = DeliveriesIndex::RouteStopClient;
    ResultSet m_rows;
    // Values the user changed since the rows were selected, by row and
    // result column; the working table already holds them.
    QHash<std::pair<int, int>, QVariant> m_edits;
    QList<int> m_positions; // result column of each grid column
    int m_recordIdPosition = -1;
};

} // namespace kb
