#pragma once

#include <QAbstractTableModel>
#include <QList>
#include <QString>

namespace kb {
class DataSet;
}

namespace kb::ui {

// A read-only grid over any data set, reading the rows the view paints.
// Columns are given (field and title) or taken from the set's fields, the
// row keys left out, each titled in plain words.
class DataSetTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct Column
    {
        QString field;
        QString title;
    };

    explicit DataSetTableModel(QObject* parent = nullptr);

    // The set to show, or none; columns empty: the set's own fields.
    void setDataSet(DataSet* set, QList<Column> columns = {});
    DataSet* dataSet() const { return m_set; }
    // The set was opened, closed or moved to another master row.
    void reload();
    const QList<Column>& columns() const { return m_columns; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // How a value is shown in the grids: dates as MM/dd/yyyy, booleans as Yes or nothing.
    static QString displayText(const QVariant& value);

private:
    DataSet* m_set = nullptr;
    QList<Column> m_given;
    QList<Column> m_columns;
    QList<int> m_fieldIndexes;
    int m_rows = 0;
};

} // namespace kb::ui
