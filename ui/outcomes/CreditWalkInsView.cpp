#include "outcomes/CreditWalkInsView.h"

#include "GridExportDialog.h"
#include "RunAction.h"
#include "outcomes/EpisodicClientInfoView.h"
#include "walkins/TFormCreditWalkIns.h"
#include "walkins/TFormViewEpisodicClientInfo.h"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace kb::ui {

CreditWalkInsView::CreditWalkInsView(TFormCreditWalkIns& presenter, QWidget* parent)
    : QDialog(parent), m_presenter(presenter), m_through(new QDateEdit(presenter.through(), this)),
      m_apply(new QPushButton(QStringLiteral("Apply Changes"), this)),
      m_save(new QPushButton(QStringLiteral("Save Data"), this)),
      m_export(new QPushButton(QStringLiteral("Export Data"), this)),
      m_listing(new QPushButton(QStringLiteral("Quick Clients Listing"), this)), m_grid(new QTableView(this)),
      m_count(new QLabel(this)), m_menu(new QMenu(this))
{
    setWindowTitle(TFormCreditWalkIns::caption());
    setObjectName(QStringLiteral("TFormCreditWalkIns"));
    presenter.FormShow();
    m_through->setCalendarPopup(true);
    m_grid->setModel(presenter.model());
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(TFormCreditWalkIns::datePrompt(), this));
    top->addWidget(m_through);
    top->addWidget(m_apply);
    top->addWidget(m_save);
    top->addStretch();
    top->addWidget(m_export);
    top->addWidget(m_listing);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_grid);
    layout->addWidget(m_count);

    m_deleteEvents = m_menu->addAction(QStringLiteral("Delete &episodic events of selected Client"));
    m_menu->addSeparator();
    m_exportAction = m_menu->addAction(QStringLiteral("Export Data"));
    m_listingAction = m_menu->addAction(QStringLiteral("Quick Clients Listing"));
    connect(m_deleteEvents, &QAction::triggered, this, &CreditWalkInsView::deleteEpisodicEvents);
    connect(m_exportAction, &QAction::triggered, this, &CreditWalkInsView::exportData);
    connect(m_listingAction, &QAction::triggered, this, [this] { m_presenter.ActionQuickClientsListing(); });
    connect(m_menu, &QMenu::aboutToShow, this, &CreditWalkInsView::updateMenu);
    connect(m_grid, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& at) { m_menu->popup(m_grid->viewport()->mapToGlobal(at)); });

    connect(m_through, &QDateEdit::dateChanged, this, [this](const QDate& d) { m_presenter.setThrough(d); });
    connect(m_apply, &QPushButton::clicked, this, [this] { m_presenter.ActionApplyChanges(); });
    connect(m_save, &QPushButton::clicked, this, [this] { m_presenter.ActionSaveData(); });
    connect(m_export, &QPushButton::clicked, this, &CreditWalkInsView::exportData);
    connect(m_listing, &QPushButton::clicked, this, [this] { m_presenter.ActionQuickClientsListing(); });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int section) {
        m_presenter.sortByTitle(m_presenter.model()->headerData(section, Qt::Horizontal).toString());
    });
    connect(&presenter, &TFormCreditWalkIns::stateChanged, this, &CreditWalkInsView::showState);
    connect(this, &QDialog::finished, this, [this] { m_presenter.FormClose(); });
    showState();
}

QMenu* CreditWalkInsView::popupMenu()
{
    updateMenu();
    return m_menu;
}

void CreditWalkInsView::updateMenu()
{
    m_deleteEvents->setEnabled(m_presenter.mayDeleteEpisodicEventsOf(m_grid->currentIndex().row()));
    m_exportAction->setEnabled(m_presenter.isEnabled(RunAction::ExportData));
    m_listingAction->setEnabled(m_presenter.isEnabled(RunAction::QuickClientsListing));
}

void CreditWalkInsView::showState()
{
    m_save->setEnabled(m_presenter.isEnabled(RunAction::SaveData));
    m_export->setEnabled(m_presenter.isEnabled(RunAction::ExportData));
    m_listing->setEnabled(m_presenter.isEnabled(RunAction::QuickClientsListing));
    m_count->setText(m_presenter.clientCountText());
    m_grid->resizeColumnsToContents();
}

std::vector<int> CreditWalkInsView::selectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex& index : m_grid->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void CreditWalkInsView::exportData()
{
    GridExportDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted) m_presenter.ActionExportData(dialog.options(), selectedRows());
}

void CreditWalkInsView::deleteEpisodicEvents()
{
    m_presenter.ActionDeleteEpisodicEvents(m_grid->currentIndex().row(),
                                           [this](TFormViewEpisodicClientInfo& info) {
                                               EpisodicClientInfoView view(info, this);
                                               return view.exec() == QDialog::Accepted;
                                           });
}

} // namespace kb::ui
