#include "outcomes/BatchMissedDeliveriesView.h"

#include "missed/TFormBatchAddMissedDeliveries.h"
#include "outcomes/ClientSearchBar.h"

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
      m_weekday(new QLabel(this)),
      m_searchBar(new ClientSearchBar(TFormBatchAddMissedDeliveries::searchChoices(),
                                      QStringLiteral("Excused"), this)),
      m_scanner(new QCheckBox(QStringLiteral("Client selection is via scanner"), this)),
      m_list(new QTableWidget(0, ColumnCount, this)),
      m_remove(new QPushButton(QStringLiteral("Remove"), this)),
      m_record(new QPushButton(QStringLiteral("Record Missed Deliveries"), this))
{
    setWindowTitle(TFormBatchAddMissedDeliveries::caption());
    setObjectName(QStringLiteral("TFormBatchAddMissedDeliveries"));
    m_date->setCalendarPopup(true);
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
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_remove);
    buttons->addStretch();
    buttons->addWidget(m_record);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(dateRow);
    layout->addWidget(m_searchBar);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_date, &QDateEdit::dateChanged, this, [this](const QDate& d) { m_presenter.setDate(d); });
    connect(m_searchBar->searchBy(), &QComboBox::currentIndexChanged, this,
            [this](int index) { m_presenter.setSearchIndex(index); });
    connect(searchBox(), &QLineEdit::textEdited, this,
            [this](const QString& t) { m_presenter.setSearchText(t); });
    connect(searchBox(), &QLineEdit::returnPressed, this, [this] { m_presenter.ActionAddToList(); });
    connect(m_searchBar->checkBox(), &QCheckBox::toggled, this,
            [this](bool on) { m_presenter.setExcused(on); });
    connect(m_scanner, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setScannerMode(on); });
    connect(addButton(), &QPushButton::clicked, this, [this] { m_presenter.ActionAddToList(); });
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
    connect(&presenter, &TFormBatchAddMissedDeliveries::focusSearch, m_searchBar,
            &ClientSearchBar::focusSearch);
    showState();
}

QLineEdit* BatchMissedDeliveriesView::searchBox() const
{
    return m_searchBar->searchBox();
}

QPushButton* BatchMissedDeliveriesView::addButton() const
{
    return m_searchBar->addButton();
}

void BatchMissedDeliveriesView::showState()
{
    m_weekday->setText(m_presenter.weekdayName());
    m_searchBar->showState(m_presenter.scannerMode(), m_presenter.searchIndex(), m_presenter.searchText(),
                           m_presenter.excused());
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
