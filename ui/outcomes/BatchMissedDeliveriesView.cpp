#include "outcomes/BatchMissedDeliveriesView.h"

#include "missed/TFormBatchAddMissedDeliveries.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

enum Column { ClientId, FirstName, MidName, LastName, Address, City, State, Excused, ColumnCount };

} // namespace

BatchMissedDeliveriesView::BatchMissedDeliveriesView(TFormBatchAddMissedDeliveries& presenter,
                                                     QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_date(new QDateEdit(presenter.date(), this)),
      m_weekday(new QLabel(this)), m_searchLabel(new QLabel(QStringLiteral("Search"), this)),
      m_searchBy(new QComboBox(this)), m_forLabel(new QLabel(QStringLiteral("for"), this)),
      m_search(new QLineEdit(this)), m_excused(new QCheckBox(QStringLiteral("Excused"), this)),
      m_scanner(new QCheckBox(QStringLiteral("Client selection is via scanner"), this)),
      m_list(new QTableWidget(0, ColumnCount, this)),
      m_add(new QPushButton(QStringLiteral("Add to List"), this)),
      m_remove(new QPushButton(QStringLiteral("Remove"), this)),
      m_record(new QPushButton(QStringLiteral("Record Missed Deliveries"), this))
{
    setWindowTitle(TFormBatchAddMissedDeliveries::caption());
    setObjectName(QStringLiteral("TFormBatchAddMissedDeliveries"));
    m_date->setCalendarPopup(true);
    m_searchBy->addItems(TFormBatchAddMissedDeliveries::searchChoices());
    m_list->setHorizontalHeaderLabels({QStringLiteral("Client ID"), QStringLiteral("First Name"),
                                       QStringLiteral("Middle Name"), QStringLiteral("Last Name"),
                                       QStringLiteral("Address"), QStringLiteral("City"),
                                       QStringLiteral("State"), QStringLiteral("Excused")});
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->horizontalHeader()->setStretchLastSection(true);

    auto* dateRow = new QHBoxLayout;
    dateRow->addWidget(new QLabel(QStringLiteral("Delivery Date:"), this));
    dateRow->addWidget(m_date);
    dateRow->addWidget(m_weekday);
    dateRow->addStretch();
    dateRow->addWidget(m_scanner);
    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(m_searchLabel);
    searchRow->addWidget(m_searchBy);
    searchRow->addWidget(m_forLabel);
    searchRow->addWidget(m_search, 1);
    searchRow->addWidget(m_excused);
    searchRow->addWidget(m_add);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_remove);
    buttons->addStretch();
    buttons->addWidget(m_record);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(dateRow);
    layout->addLayout(searchRow);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_date, &QDateEdit::dateChanged, this, [this](const QDate& d) { m_presenter.setDate(d); });
    connect(m_searchBy, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_presenter.setSearchIndex(index); });
    connect(m_search, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_presenter.setSearchText(t); });
    connect(m_search, &QLineEdit::returnPressed, this, [this] { m_presenter.ActionAddToList(); });
    connect(m_excused, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setExcused(on); });
    connect(m_scanner, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setScannerMode(on); });
    connect(m_add, &QPushButton::clicked, this, [this] { m_presenter.ActionAddToList(); });
    connect(m_remove, &QPushButton::clicked, this,
            [this] { m_presenter.ActionRemove(m_list->currentRow()); });
    connect(m_list, &QTableWidget::cellDoubleClicked, this,
            [this](int row, int) { m_presenter.ActionRemove(row); });
    connect(m_list, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        if (!m_filling && item->column() == Excused)
            m_presenter.setCandidateExcused(item->row(), item->checkState() == Qt::Checked);
    });
    connect(m_record, &QPushButton::clicked, this, [this] { m_presenter.ActionRecord(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(&presenter, &TFormBatchAddMissedDeliveries::stateChanged, this,
            &BatchMissedDeliveriesView::showState);
    connect(&presenter, &TFormBatchAddMissedDeliveries::focusSearch, this, [this] {
        m_search->clear();
        m_search->setFocus();
    });
    showState();
}

void BatchMissedDeliveriesView::showState()
{
    m_weekday->setText(m_presenter.weekdayName());
    const bool manual = !m_presenter.scannerMode();
    for (QWidget* w : {static_cast<QWidget*>(m_searchLabel), static_cast<QWidget*>(m_searchBy),
                       static_cast<QWidget*>(m_forLabel), static_cast<QWidget*>(m_excused)})
        w->setVisible(manual);
    {
        const QSignalBlocker block(m_searchBy);
        m_searchBy->setCurrentIndex(m_presenter.searchIndex());
    }
    if (m_search->text() != m_presenter.searchText()) m_search->setText(m_presenter.searchText());
    fillList();
    m_remove->setEnabled(!m_presenter.candidates().empty());
    m_record->setEnabled(m_presenter.mayRecord());
}

void BatchMissedDeliveriesView::fillList()
{
    m_filling = true;
    const auto& candidates = m_presenter.candidates();
    m_list->setRowCount(int(candidates.size()));
    for (int r = 0; r < int(candidates.size()); ++r) {
        const MissCandidate& c = candidates[size_t(r)];
        const QString texts[] = {c.client.clientId.toString(),
                                 c.client.firstName,
                                 c.midName,
                                 c.client.lastName,
                                 c.address1,
                                 c.city,
                                 c.state};
        for (int col = 0; col < Excused; ++col)
            m_list->setItem(r, col, new QTableWidgetItem(texts[col]));
        auto* excused = new QTableWidgetItem;
        excused->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        excused->setCheckState(c.excused ? Qt::Checked : Qt::Unchecked);
        m_list->setItem(r, Excused, excused);
    }
    m_list->resizeColumnsToContents();
    m_filling = false;
}

} // namespace kb::ui
