#include "outcomes/RecentDeliveriesView.h"

#include "FormPlacement.h"
#include "outcomes/DeliveredItemsView.h"
#include "records/TFormCompDel.h"
#include "records/TFormDeliveries.h"
#include "rules/ClientHistoryTexts.h"
#include "settings/SettingsFile.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

const QString Section = QStringLiteral("TFormDeliveries");

QString cellText(const QVariant& v)
{
    if (v.isNull()) return {};
    if (v.metaType().id() == QMetaType::QDate) return v.toDate().toString(QStringLiteral("MM/dd/yyyy"));
    if (v.metaType().id() == QMetaType::Bool) return v.toBool() ? QStringLiteral("Yes") : QString();
    return v.toString().trimmed();
}

} // namespace

RecentDeliveriesView::RecentDeliveriesView(TFormDeliveries& presenter, SettingsFile& settings,
                                           QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_settings(settings)
{
    setWindowTitle(TFormDeliveries::caption());
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(TFormDeliveries::daysCaption()));
    m_days = new QSpinBox;
    m_days->setRange(TFormDeliveries::MinDays, TFormDeliveries::MaxDays);
    m_days->setValue(presenter.days());
    top->addWidget(m_days);
    top->addStretch();
    top->addWidget(new QLabel(QStringLiteral("Last Delivery:")));
    m_last = new QLabel;
    top->addWidget(m_last);

    m_table = new QTableWidget;
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->verticalHeader()->hide();
    QStringList titles;
    for (const auto& [column, title] : TFormDeliveries::shownColumns())
        titles << QString(title).replace(u'~', u'\n');
    m_table->setColumnCount(int(titles.size()));
    m_table->setHorizontalHeaderLabels(titles);

    auto* buttons = new QHBoxLayout;
    m_comp = new QPushButton(QStringLiteral("Comped Delivery"));
    m_reverse = new QPushButton(QStringLiteral("Reverse Comped Delivery"));
    m_delete = new QPushButton(QStringLiteral("Delete Delivery"));
    m_items = new QPushButton(QStringLiteral("Show Delivery Items"));
    m_refresh = new QPushButton(QStringLiteral("&Refresh"));
    auto* close = new QPushButton(QStringLiteral("Close"));
    for (QPushButton* b : {m_comp, m_reverse, m_delete, m_items, m_refresh})
        buttons->addWidget(b);
    buttons->addStretch();
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_table);
    layout->addLayout(buttons);

    m_presenter.setCompDialog([this](TFormCompDel& dialog) { return compDialog(dialog); });
    connect(m_days, &QSpinBox::valueChanged, this, [this](int days) {
        m_presenter.setDays(days);
        fill();
    });
    connect(m_table, &QTableWidget::currentCellChanged, this, [this](int row) {
        if (m_filling) return;
        m_presenter.setCurrentRow(row);
        showState();
        if (m_itemsView) m_itemsView->follow();
    });
    connect(m_comp, &QPushButton::clicked, this, [this] {
        if (m_presenter.ActionCompedDelivery()) fill();
    });
    connect(m_reverse, &QPushButton::clicked, this, [this] {
        if (m_presenter.ActionReverseCompedDelivery()) fill();
    });
    connect(m_delete, &QPushButton::clicked, this, [this] {
        if (m_presenter.ActionDeleteDelivery()) fill();
    });
    connect(m_items, &QPushButton::clicked, this, [this] { showItems(); });
    connect(m_refresh, &QPushButton::clicked, this, [this] {
        m_presenter.ActionRefresh();
        fill();
    });
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    fill();
    restoreColumnWidths(*m_table->horizontalHeader(), settings, Section, QStringLiteral("Columns"));
    keepPlacement(*this, settings, Section, QSize(1100, 520));
}

RecentDeliveriesView::~RecentDeliveriesView()
{
    saveColumnWidths(*m_table->horizontalHeader(), m_settings, Section, QStringLiteral("Columns"));
    m_presenter.FormClose();
}

void RecentDeliveriesView::fill()
{
    m_filling = true;
    const auto& columns = TFormDeliveries::shownColumns();
    const int rows = int(m_presenter.rows().rowCount());
    m_table->clearContents();
    m_table->setRowCount(rows);
    const QStringList codes = QStringList{QString()} + m_presenter.fundingCodes();
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < int(columns.size()); ++c) {
            const auto column = columns[c].first;
            if (column == TFormDeliveries::FundingDesc) {
                auto* combo = new QComboBox;
                combo->addItems(codes);
                combo->setCurrentText(cellText(m_presenter.value(r, column)));
                connect(combo, &QComboBox::currentTextChanged, this,
                        [this, r](const QString& code) { m_presenter.setFunding(r, code); });
                m_table->setCellWidget(r, c, combo);
                continue;
            }
            auto* item = new QTableWidgetItem(cellText(m_presenter.value(r, column)));
            item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(r, c, item);
        }
    m_table->resizeColumnsToContents();
    if (m_presenter.currentRow() >= 0) m_table->selectRow(m_presenter.currentRow());
    const QDate last = m_presenter.lastDelivery();
    m_last->setText(last.isValid() ? last.toString(QStringLiteral("MM/dd/yyyy")) : QString());
    m_filling = false;
    showState();
    if (m_itemsView) m_itemsView->follow();
}

void RecentDeliveriesView::showState()
{
    m_comp->setEnabled(m_presenter.canComp());
    m_reverse->setEnabled(m_presenter.canReverse());
    m_delete->setEnabled(m_presenter.canDelete());
    m_items->setEnabled(m_presenter.canDelete());
}

bool RecentDeliveriesView::compDialog(TFormCompDel& presenter)
{
    QDialog dialog(this);
    dialog.setWindowTitle(TFormCompDel::caption());
    auto* date = new QDateEdit(presenter.date());
    date->setDisplayFormat(QStringLiteral("MM/dd/yyyy"));
    date->setDateRange(presenter.date(), presenter.date());
    auto* reason = new QLineEdit;
    auto* by = new QLineEdit(presenter.recordedBy());
    auto* form = new QFormLayout(&dialog);
    form->addRow(QStringLiteral("Date:"), date);
    form->addRow(QStringLiteral("Reason"), reason);
    form->addRow(QStringLiteral("Recorded By"), by);
    auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    form->addRow(box);
    bool comped = false;
    connect(box, &QDialogButtonBox::accepted, &dialog, [&] {
        presenter.setReason(reason->text());
        presenter.setRecordedBy(by->text());
        if (presenter.ActionOK()) {
            comped = true;
            dialog.accept();
        }
    });
    connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    reason->setFocus();
    dialog.exec();
    return comped;
}

void RecentDeliveriesView::showItems()
{
    // One items window beside the list, left open while the user moves
    // through the deliveries.
    if (!m_itemsView) m_itemsView = new DeliveredItemsView(m_presenter, m_settings, this);
    m_itemsView->show();
    m_itemsView->raise();
    m_itemsView->follow();
}

} // namespace kb::ui
