#pragma once

#include "clientwindow/DataSetTableModel.h"
#include "window/PageGridEditing.h"

#include <QStyledItemDelegate>

namespace kb::ui {

// A page grid of the client window typed into in its cells: what is typed
// goes to the presenter's cell editing, which puts it into the row; the
// grid only draws the row as it then stands. Boolean columns are check
// boxes; coded columns show their captions and edit their codes.
class PageGridModel : public DataSetTableModel
{
    Q_OBJECT

public:
    PageGridModel(PageGridEditing& editing, QString grid, QObject* parent = nullptr);

    const QString& grid() const { return m_grid; }
    PageCell cellAt(int column) const;
    // The rows were typed into, posted or cancelled: drawn again, read
    // again when their number changed.
    void sync();

    int rowCount(const QModelIndex& parent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

private:
    PageGridEditing& m_editing;
    QString m_grid;
    int m_shownRows = -1; // the rows the view was last told of
};

// The editors of a page grid's cells: a date editor for dates, a drop-down
// of the captions for coded columns, a money box for amounts.
class PageGridDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    PageGridDelegate(PageGridEditing& editing, PageGridModel& model, QObject* parent = nullptr);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    PageGridEditing& m_editing;
    PageGridModel& m_model;
};

} // namespace kb::ui
