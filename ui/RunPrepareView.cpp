#include "RunPrepareView.h"

#include "GridExportDialog.h"
#include "RouteDelegate.h"
#include "StopDelegate.h"
#include "TFormRunPrepare.h"
#include "UserInterface.h"

#include <QComboBox>
#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace kb::ui {

RunPrepareView::RunPrepareView(TFormRunPrepare& presenter, UserInterface& ui, QWidget* parent)
    : QDialog(parent),
      m_presenter(presenter),
      m_ui(ui),
      m_date(new QDateEdit(this)),
      m_types(new QComboBox(this)),
      m_prepare(new QPushButton(QStringLiteral("Prepare!"), this)),
      m_save(new QPushButton(QStringLiteral("Save Data"), this)),
      m_printReport(new QPushButton(QStringLiteral("Print Report"), this)),
      m_populate(new QPushButton(QStringLiteral("Populate Grid With Previously Saved Deliveries"), this)),
      m_export(new QPushButton(QStringLiteral("Export Data"), this)),
      m_listing(new QPushButton(QStringLiteral("Quick Clients Listing"), this)),
      m_grid(new QTableView(this)),
      m_count(new QLabel(this)),
      m_user(new QLabel(this)),
      m_transaction(new QLabel(this)),
      m_itemConfirmation(this),
      m_dialogs(this)
{
    resize(1000, 600);
    m_date->setCalendarPopup(true);
    m_date->setDisplayFormat(TFormRunPrepare::datePickerFormat());
    m_date->setDate(m_presenter.prepareDate());
    m_types->addItems(TFormRunPrepare::deliveryTypeTexts());
    m_types->setCurrentIndex(m_presenter.deliveryTypeIndex());

    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(TFormRunPrepare::datePrompt(), this));
    top->addWidget(m_date);
    top->addWidget(m_types);
    top->addWidget(m_prepare);
    top->addStretch();
    auto* commands = new QHBoxLayout;
    for (QPushButton* button : {m_save, m_printReport, m_populate}) {
        button->setAutoDefault(false);
        commands->addWidget(button);
    }
    commands->addStretch();
    for (QPushButton* button : {m_export, m_listing}) {
        button->setAutoDefault(false);
        commands->addWidget(button);
    }

    m_grid->setModel(m_presenter.model());
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setItemDelegateForColumn(0, new RouteDelegate(m_presenter.routeChoices(), m_grid));
    m_grid->setItemDelegateForColumn(1, new StopDelegate(m_grid));
    m_grid->horizontalHeader()->setSectionsClickable(true);
    // One line per delivery: a route sheet is read down the rows.
    m_grid->setWordWrap(false);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);

    auto* status = new QHBoxLayout;
    status->addWidget(m_count);
    status->addStretch();
    status->addWidget(m_user);
    status->addWidget(m_transaction);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(commands);
    layout->addWidget(m_grid, 100);
    // Keeps the status line at the foot of the window while the grid is hidden.
    layout->addStretch(1);
    layout->addLayout(status);

    connect(m_date, &QDateEdit::dateChanged, &m_presenter, &TFormRunPrepare::SetPrepareDate);
    connect(m_types, &QComboBox::currentIndexChanged, &m_presenter, &TFormRunPrepare::setDeliveryTypeIndex);
    connect(m_prepare, &QPushButton::clicked, this, [this] {
        run(&TFormRunPrepare::ActionPrepare);
        fitColumns();
    });
    connect(m_save, &QPushButton::clicked, this, [this] { m_presenter.ActionSaveData(); });
    connect(m_printReport, &QPushButton::clicked, this, [this] { run(&TFormRunPrepare::ActionPrintReport); });
    connect(m_populate, &QPushButton::clicked, this, [this] {
        run(&TFormRunPrepare::ActionPopulateGridWithPreviouslySavedDeliveries);
        fitColumns();
    });
    connect(m_export, &QPushButton::clicked, this, [this] {
        GridExportDialog dialog(this);
        if (dialog.exec() != QDialog::Accepted) return;
        std::vector<int> rows;
        for (const QModelIndex& index : m_grid->selectionModel()->selectedRows())
            rows.push_back(index.row());
        std::sort(rows.begin(), rows.end());
        m_presenter.ActionExportData(dialog.options(), rows);
    });
    connect(m_listing, &QPushButton::clicked, this, [this] { m_presenter.ActionQuickClientsListing(); });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        m_presenter.sortByTitle(m_presenter.model()->headerData(section, Qt::Horizontal).toString());
    });
    connect(m_grid, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { m_presenter.showClientDetails(index.row()); });
    connect(&m_presenter, &TFormRunPrepare::stateChanged, this, &RunPrepareView::showState);

    m_presenter.setItemConfirmation(&m_itemConfirmation);
    m_presenter.setDialogs(&m_dialogs);
    m_presenter.FormShow();
    showState();
}

RunPrepareView::~RunPrepareView()
{
    m_presenter.setItemConfirmation(nullptr);
    m_presenter.setDialogs(nullptr);
    m_presenter.FormClose();
}

void RunPrepareView::showState()
{
    setWindowTitle(m_presenter.caption());
    m_prepare->setEnabled(m_presenter.isEnabled(RunAction::Prepare));
    m_save->setEnabled(m_presenter.isEnabled(RunAction::SaveData));
    m_populate->setEnabled(m_presenter.isEnabled(RunAction::PopulateGrid));
    m_export->setEnabled(m_presenter.isEnabled(RunAction::ExportData));
    m_listing->setEnabled(m_presenter.isEnabled(RunAction::QuickClientsListing));
    const bool reports = m_presenter.isEnabled(RunAction::PrintReport);
    m_printReport->setEnabled(reports);
    m_printReport->setToolTip(reports ? QString() : QStringLiteral("The delivery reports are not available yet."));
    m_grid->setVisible(m_presenter.gridVisible());
    m_count->setText(m_presenter.clientCountText());
    m_user->setText(m_presenter.userText());
    m_transaction->setText(m_presenter.transactionText());
    if (m_date->date() != m_presenter.prepareDate())
        m_date->setDate(m_presenter.prepareDate());
    if (m_types->currentIndex() != m_presenter.deliveryTypeIndex())
        m_types->setCurrentIndex(m_presenter.deliveryTypeIndex());
}

void RunPrepareView::fitColumns()
{
    // The rows in view decide the widths, so a long run costs no more.
    m_grid->resizeColumnsToContents();
}

void RunPrepareView::run(void (TFormRunPrepare::*action)())
{
    try {
        (m_presenter.*action)();
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
    // Names, services and addresses are read whole.
    m_grid->resizeColumnsToContents();
}

} // namespace kb::ui
