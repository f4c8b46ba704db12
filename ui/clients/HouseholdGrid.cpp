#include "clients/HouseholdGrid.h"

#include "clientwindow/DataSetTableModel.h"
#include "dataset/DataSet.h"

#include <QHeaderView>
#include <QTableWidget>

namespace kb::ui {

QTableWidget* householdGrid(std::span<const HouseholdGridColumn> columns, const QString& name)
{
    auto* table = new QTableWidget(0, int(columns.size()));
    table->setObjectName(name);
    QStringList titles;
    for (const HouseholdGridColumn& c : columns)
        titles << QString::fromUtf16(c.title);
    table->setHorizontalHeaderLabels(titles);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    return table;
}

void fillHouseholdGrid(QTableWidget& table, DataSet& set, std::span<const HouseholdGridColumn> columns)
{
    const int stored = set.isActive() ? set.recordCount() : 0;
    const int rows = stored + (set.state() == DataSet::State::Insert ? 1 : 0);
    table.clearContents();
    table.setRowCount(rows);
    for (int c = 0; c < int(columns.size()); ++c) {
        const int index = set.isActive() ? set.fieldIndex(QString::fromUtf16(columns[size_t(c)].field)) : -1;
        for (int r = 0; r < rows; ++r) {
            const QVariant value = index < 0    ? QVariant()
                                   : r < stored ? set.fieldValueAt(r, index)
                                                : set.fieldValue(index);
            const QString text = value.metaType().id() == QMetaType::QDateTime
                                     ? value.toDateTime().toString(QStringLiteral("MM/dd/yyyy hh:mm AP"))
                                     : DataSetTableModel::displayText(value);
            table.setItem(r, c, new QTableWidgetItem(text));
        }
    }
    table.resizeColumnsToContents();
    if (rows > 0) table.selectRow(set.recNo() - 1);
}

} // namespace kb::ui
