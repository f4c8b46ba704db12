#include "schedule/SetEpisodicItemsView.h"

#include "dataset/QueryDataSet.h"
#include "items/TFormSetEpisodicItems.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

SetEpisodicItemsView::SetEpisodicItemsView(TFormSetEpisodicItems& presenter, SettingsFile& settings,
                                           QWidget* parent)
    : SetDefaultDeliveriesView(presenter, settings, parent), m_episodic(presenter),
      m_comparisonText(new QLabel(this)), m_comparison(new QTableWidget(0, 3, this))
{
    services()->setEnabled(false);
    // The delivery has one weekday: there is nothing to copy Monday to.
    if (QPushButton* dupe = button(QStringLiteral("Dupe Monday"))) dupe->hide();
    TFormSetEpisodicItems& p = presenter;
    addCommand(
        QStringLiteral("Clear Selected Day of All Items"), [&p] { p.ActionClear(); }, true);
    addCommand(QStringLiteral("Copy Selected Day from Defaults"), [&p] { p.ActionCopy(); });

    m_comparisonText->setWordWrap(true);
    m_comparison->setObjectName(QStringLiteral("Comparison"));
    m_comparison->setHorizontalHeaderLabels(
        {QStringLiteral("Quantity"), QStringLiteral("Item"), QStringLiteral("Order")});
    m_comparison->verticalHeader()->hide();
    m_comparison->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_comparison->setSelectionMode(QAbstractItemView::NoSelection);
    m_comparison->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_comparison->setMaximumHeight(m_comparison->fontMetrics().height() * 10);
    // Beneath the delivery's own list, above the commands.
    body()->insertWidget(body()->count() - 1, m_comparisonText);
    body()->insertWidget(body()->count() - 1, m_comparison);
    showComparison();
    showList(); // the commands added here take the list's state
}

void SetEpisodicItemsView::showComparison()
{
    m_comparisonText->setText(m_episodic.comparisonText());
    QueryDataSet& list = m_episodic.comparison();
    const int rows = list.isActive() ? list.recordCount() : 0;
    m_comparison->setRowCount(rows);
    const int quantity = list.fieldIndex(u"Quantity");
    const int item = list.fieldIndex(u"Item");
    const int order = list.fieldIndex(u"Sort_Order");
    for (int r = 0; r < rows; ++r) {
        m_comparison->setItem(r, 0, new QTableWidgetItem(list.fieldValueAt(r, quantity).toString()));
        m_comparison->setItem(r, 1, new QTableWidgetItem(list.fieldValueAt(r, item).toString()));
        m_comparison->setItem(r, 2, new QTableWidgetItem(list.fieldValueAt(r, order).toString()));
    }
    m_comparison->resizeColumnToContents(0);
    m_comparison->resizeColumnToContents(2);
}

} // namespace kb::ui
