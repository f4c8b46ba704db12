#include "outcomes/BatchWalkInsView.h"

#include "outcomes/ClientSearchBar.h"
#include "walkins/TFormBatchAddWalkIns.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

enum Column {
    FirstName,
    LastName,
    Address,
    City,
    ServiceDate,
    Service,
    Route,
    DeliveryType,
    Complimentary,
    ColumnCount
};

} // namespace

BatchWalkInsView::BatchWalkInsView(TFormBatchAddWalkIns& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_date(new QDateEdit(presenter.date(), this)),
      m_weekday(new QLabel(this)), m_route(new QLineEdit(presenter.route(), this)),
      m_service(new QComboBox(this)), m_searchBar(new ClientSearchBar(TFormBatchAddWalkIns::searchChoices(),
                                                                      QStringLiteral("Complimentary"), this)),
      m_scanner(new QCheckBox(QStringLiteral("Client selection is via scanner"), this)),
      m_list(new QTableWidget(0, ColumnCount, this)),
      m_remove(new QPushButton(QStringLiteral("Remove"), this)),
      m_record(new QPushButton(QStringLiteral("Record Walk-Ins"), this))
{
    setWindowTitle(TFormBatchAddWalkIns::caption());
    setObjectName(QStringLiteral("TFormBatchAddWalkIns"));
    m_date->setCalendarPopup(true);
    m_route->setMaxLength(5);
    // The empty first entry leaves each client's own service.
    m_service->addItem(QString());
    m_service->addItems(presenter.serviceChoices());
    m_service->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_list->setHorizontalHeaderLabels(
        {QStringLiteral("First Name"), QStringLiteral("Last Name"), QStringLiteral("Address"),
         QStringLiteral("City"), QStringLiteral("Service Date"), QStringLiteral("Service"),
         QStringLiteral("Route/Center"), QStringLiteral("Delivery Type"), QStringLiteral("Complimentary")});
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->horizontalHeader()->setStretchLastSection(true);

    auto* defaults = new QFormLayout;
    auto* dateRow = new QHBoxLayout;
    dateRow->addWidget(m_date);
    dateRow->addWidget(m_weekday);
    dateRow->addStretch();
    dateRow->addWidget(m_scanner);
    defaults->addRow(QStringLiteral("Service Date:"), dateRow);
    defaults->addRow(QStringLiteral("Route/Center:"), m_route);
    defaults->addRow(QStringLiteral("Service:"), m_service);
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_remove);
    buttons->addStretch();
    buttons->addWidget(m_record);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(defaults);
    layout->addWidget(m_searchBar);
    layout->addWidget(m_list);
    layout->addLayout(buttons);

    connect(m_date, &QDateEdit::dateChanged, this, [this](const QDate& d) {
        if (!m_presenter.setDate(d)) m_date->setDate(m_presenter.date());
    });
    connect(m_route, &QLineEdit::textEdited, this, [this](const QString& t) { m_presenter.setRoute(t); });
    connect(m_service, &QComboBox::currentIndexChanged, this,
            [this](int index) { m_presenter.setServiceIndex(index - 1); });
    connect(searchBy(), &QComboBox::currentIndexChanged, this,
            [this](int index) { m_presenter.setSearchBy(ClientSearchBy(index)); });
    connect(searchBox(), &QLineEdit::textEdited, this,
            [this](const QString& t) { m_presenter.setSearchText(t); });
    connect(searchBox(), &QLineEdit::returnPressed, this, [this] { m_presenter.ActionAddToList(); });
    connect(complimentaryBox(), &QCheckBox::toggled, this,
            [this](bool on) { m_presenter.setComplimentary(on); });
    connect(m_scanner, &QCheckBox::toggled, this, [this](bool on) { m_presenter.setScannerMode(on); });
    connect(addButton(), &QPushButton::clicked, this, [this] { m_presenter.ActionAddToList(); });
    connect(m_remove, &QPushButton::clicked, this,
            [this] { m_presenter.ActionRemove(m_list->currentRow()); });
    connect(m_list, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
        // The editable cells take a double click as the start of an edit.
        if (!(m_list->item(row, column)->flags() & Qt::ItemIsEditable)) m_presenter.ActionRemove(row);
    });
    connect(m_list, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
        // The list is filled again once the edit has ended, not inside it.
        if (!m_filling) QTimer::singleShot(0, this, [this, row = item->row()] { lineEdited(row); });
    });
    connect(m_record, &QPushButton::clicked, this, [this] { m_presenter.ActionRecordWalkIns(); });
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(&presenter, &TFormBatchAddWalkIns::stateChanged, this, &BatchWalkInsView::showState);
    connect(&presenter, &TFormBatchAddWalkIns::beep, this, [] { QApplication::beep(); });
    connect(&presenter, &TFormBatchAddWalkIns::focusSearch, m_searchBar, &ClientSearchBar::focusSearch);
    showState();
}

QLineEdit* BatchWalkInsView::searchBox() const
{
    return m_searchBar->searchBox();
}

QComboBox* BatchWalkInsView::searchBy() const
{
    return m_searchBar->searchBy();
}

QCheckBox* BatchWalkInsView::complimentaryBox() const
{
    return m_searchBar->checkBox();
}

QPushButton* BatchWalkInsView::addButton() const
{
    return m_searchBar->addButton();
}

void BatchWalkInsView::done(int result)
{
    if (result == QDialog::Rejected && !m_presenter.FormCloseQuery()) return;
    QDialog::done(result);
}

void BatchWalkInsView::showState()
{
    m_weekday->setText(m_presenter.weekdayName());
    m_searchBar->showState(m_presenter.scannerMode(), int(m_presenter.searchBy()), m_presenter.searchText(),
                           m_presenter.complimentary());
    fillList();
    m_remove->setEnabled(!m_presenter.walkIns().empty());
    m_record->setEnabled(!m_presenter.walkIns().empty());
}

QString BatchWalkInsView::serviceText(qint64 service) const
{
    const QString key = QLatin1Char('[') + QString::number(service) + QLatin1Char(']');
    for (const QString& choice : m_presenter.serviceChoices())
        if (choice.endsWith(key)) return choice.chopped(key.size()).trimmed();
    return QString::number(service);
}

void BatchWalkInsView::fillList()
{
    m_filling = true;
    const auto& list = m_presenter.walkIns();
    m_list->setRowCount(int(list.size()));
    for (int r = 0; r < int(list.size()); ++r) {
        const WalkIn& w = list[size_t(r)];
        const auto fixed = [&](int col, const QString& text) {
            auto* item = new QTableWidgetItem(text);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            m_list->setItem(r, col, item);
        };
        fixed(FirstName, w.firstName);
        fixed(LastName, w.lastName);
        fixed(Address, w.address1);
        fixed(City, w.city);
        fixed(Service, serviceText(w.svcsUsed));
        auto* date = new QTableWidgetItem;
        date->setData(Qt::EditRole, w.delivDate);
        m_list->setItem(r, ServiceDate, date);
        m_list->setItem(r, Route, new QTableWidgetItem(w.defRte));
        m_list->setItem(r, DeliveryType, new QTableWidgetItem(w.deliveryType));
        auto* comp = new QTableWidgetItem;
        comp->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        comp->setCheckState(w.comp ? Qt::Checked : Qt::Unchecked);
        m_list->setItem(r, Complimentary, comp);
    }
    m_list->resizeColumnsToContents();
    m_filling = false;
}

void BatchWalkInsView::lineEdited(int row)
{
    if (row < 0 || row >= m_list->rowCount() || size_t(row) >= m_presenter.walkIns().size()) return;
    const WalkIn& w = m_presenter.walkIns()[size_t(row)];
    m_presenter.editLine(row, m_list->item(row, ServiceDate)->data(Qt::EditRole).toDate(), w.svcsUsed,
                         m_list->item(row, Route)->text(), m_list->item(row, DeliveryType)->text(),
                         m_list->item(row, Complimentary)->checkState() == Qt::Checked);
}

} // namespace kb::ui
