#include "clients/FundingSourcesView.h"

#include "dataset/QueryDataSet.h"
#include "funding/TFormEditFundingSources.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

enum Column { UnitColumn, AmountColumn };

} // namespace

FundingSourcesView::FundingSourcesView(TFormEditFundingSources& presenter, SettingsFile& settings,
                                       QWidget* parent)
    : EditBaseView(presenter.editor(), parent, &settings), m_funding(presenter),
      m_ratesButton(new QPushButton(presenter.ratesButtonText(), this)),
      m_ratesBox(new QGroupBox(QStringLiteral("Reimbursement Rates by Item"), this)),
      m_rates(new QTableWidget(0, 2, m_ratesBox))
{
    auto* box = new QVBoxLayout(m_ratesBox);
    m_rates->setHorizontalHeaderLabels({QStringLiteral("Item or Meal"), QStringLiteral("Rate")});
    m_rates->verticalHeader()->hide();
    m_rates->horizontalHeader()->setSectionResizeMode(UnitColumn, QHeaderView::Stretch);
    box->addWidget(m_rates);
    auto* buttons = new QHBoxLayout;
    auto* add = new QPushButton(QStringLiteral("Add Item"), m_ratesBox);
    auto* remove = new QPushButton(QStringLiteral("Delete Item"), m_ratesBox);
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    box->addLayout(buttons);
    if (auto* main = qobject_cast<QVBoxLayout*>(layout())) {
        main->addWidget(m_ratesButton, 0, Qt::AlignLeft);
        main->addWidget(m_ratesBox, 1);
    }
    connect(m_ratesButton, &QPushButton::clicked, this, [this] {
        m_funding.toggleRates();
        showRates();
    });
    connect(add, &QPushButton::clicked, this, [this] {
        m_funding.ActionAddItem();
        showRates();
    });
    connect(remove, &QPushButton::clicked, this, [this] {
        if (m_rates->currentRow() >= 0) m_funding.rates().setRecNo(m_rates->currentRow() + 1);
        m_funding.ActionDeleteItem();
        showRates();
    });
    connect(m_rates, &QTableWidget::cellChanged, this, &FundingSourcesView::rateEdited);
    m_funding.setOnRatesChanged([this] { showRates(); });
    // The billed party and the method of the source bring the item rates up or down.
    connect(this, &EditBaseView::stateShown, this,
            [this] { m_ratesBox->setVisible(m_funding.ratesShown() && m_funding.itemRatesVisible()); });
    showRates();
}

FundingSourcesView::~FundingSourcesView()
{
    m_funding.setOnRatesChanged({});
}

void FundingSourcesView::showRates()
{
    m_showing = true;
    m_ratesButton->setText(m_funding.ratesButtonText());
    m_ratesBox->setVisible(m_funding.ratesShown() && m_funding.itemRatesVisible());
    QueryDataSet& rates = m_funding.rates();
    const int rows = rates.isActive() ? rates.recordCount() : 0;
    m_rates->clearContents();
    m_rates->setRowCount(rows);
    const int unit = rates.fieldIndex(u"Unit");
    const int amount = rates.fieldIndex(u"Amount");
    for (int r = 0; r < rows; ++r) {
        auto* units = new QComboBox(m_rates);
        units->addItem(QString());
        for (const auto& choice : m_funding.unitChoices())
            units->addItem(choice.name, choice.unit);
        units->setCurrentIndex(
            std::max(0, units->findData(rates.fieldValueAt(r, unit).toString().trimmed())));
        connect(units, &QComboBox::currentIndexChanged, this, [this, units, r] {
            if (m_showing) return;
            m_funding.rates().setRecNo(r + 1);
            if (m_funding.setRateValue(QStringLiteral("Unit"), units->currentData())) m_funding.postRate();
        });
        m_rates->setCellWidget(r, UnitColumn, units);
        m_rates->setItem(
            r, AmountColumn,
            new QTableWidgetItem(QString::number(rates.fieldValueAt(r, amount).toDouble(), 'f', 2)));
    }
    m_showing = false;
}

void FundingSourcesView::rateEdited(int row, int column)
{
    if (m_showing || column != AmountColumn) return;
    m_funding.rates().setRecNo(row + 1);
    bool ok = false;
    const double value = m_rates->item(row, column)->text().toDouble(&ok);
    if (ok && m_funding.setRateValue(QStringLiteral("Amount"), value)) m_funding.postRate();
}

void FundingSourcesView::closeEvent(QCloseEvent* event)
{
    if (m_funding.close())
        EditBaseView::closeEvent(event);
    else
        event->ignore();
}

void FundingSourcesView::done(int result)
{
    if (m_funding.close()) EditBaseView::done(result);
}

} // namespace kb::ui
