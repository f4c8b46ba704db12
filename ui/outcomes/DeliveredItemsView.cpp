#include "outcomes/DeliveredItemsView.h"

#include "FormPlacement.h"
#include "records/TFormDeliveredItems.h"
#include "records/TFormDeliveries.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString Section = QStringLiteral("TFormDeliveredItems");

QString cellText(const QVariant& v)
{
    if (v.isNull()) return {};
    if (v.metaType().id() == QMetaType::QDate) return v.toDate().toString(QStringLiteral("MM/dd/yyyy"));
    return v.toString().trimmed();
}

} // namespace

DeliveredItemsView::DeliveredItemsView(TFormDeliveries& list, SettingsFile& settings, QWidget* parent)
    : QWidget(parent, Qt::Tool), m_list(list), m_presenter(list.deliveredItems()), m_settings(settings)
{
    setWindowTitle(TFormDeliveredItems::caption());
    const QStringList titles = TFormDeliveredItems::columnTitles();
    m_table = new QTableWidget(0, int(titles.size()));
    m_table->setHorizontalHeaderLabels(titles);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->horizontalHeader()->setStretchLastSection(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_table);
    m_presenter.follow(m_list);
    fill();
    m_table->resizeColumnsToContents();
    restoreColumnWidths(*m_table->horizontalHeader(), settings, Section, QStringLiteral("Columns"));
    keepPlacement(*this, settings, Section, QSize(640, 300));
}

DeliveredItemsView::~DeliveredItemsView()
{
    saveColumnWidths(*m_table->horizontalHeader(), m_settings, Section, QStringLiteral("Columns"));
}

void DeliveredItemsView::follow()
{
    // A closed window reads nothing; it catches up when shown again.
    if (!isVisible()) return;
    if (m_presenter.follow(m_list)) fill();
}

void DeliveredItemsView::fill()
{
    const ResultSet& items = m_presenter.items();
    const int columns = m_table->columnCount();
    m_table->clearContents();
    m_table->setRowCount(int(items.rowCount()));
    for (int r = 0; r < int(items.rowCount()); ++r)
        for (int c = 0; c < columns && c < items.columnCount(); ++c) {
            auto* item = new QTableWidgetItem(cellText(items.value(r, c)));
            if (c == 2 || c >= 4) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_table->setItem(r, c, item);
        }
}

} // namespace kb::ui
