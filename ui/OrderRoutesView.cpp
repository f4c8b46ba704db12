#include "OrderRoutesView.h"

#include "GridExportDialog.h"
#include "MappingOptionsDialog.h"
#include "OrderRoutesModel.h"
#include "OrderRoutesStatements.h"
#include "RouteChoiceDialog.h"
#include "StopDelegate.h"
#include "StopValueDialog.h"
#include "TFormMapPointOptionsOrderRoutes.h"
#include "TFormOrderRoutes.h"
#include "UserInterface.h"
#include "routes/MapWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace kb::ui {

namespace {

// Asks which end of the route stays where it is.
bool askOptimiseOptions(QWidget* parent, RouteOptimiserOptions& options)
{
    QDialog dialog(parent);
    dialog.setWindowTitle(QStringLiteral("Optimise Route"));
    auto* first = new QCheckBox(QStringLiteral("Keep the first stop first"), &dialog);
    auto* last = new QCheckBox(QStringLiteral("Keep the last stop last"), &dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QStringLiteral("Put the clients with coordinates in the order of the shortest "
                                                "drive.\nClients at one address stay together."),
                                 &dialog));
    layout->addWidget(first);
    layout->addWidget(last);
    layout->addWidget(buttons);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    options.fixFirst = first->isChecked();
    options.fixLast = last->isChecked();
    return true;
}

} // namespace

OrderRoutesView::OrderRoutesView(TFormOrderRoutes& presenter, Database& db, const SessionState& session,
                                 UserInterface& ui, QWidget* parent)
    : QDialog(parent),
      m_presenter(presenter),
      m_db(db),
      m_session(session),
      m_ui(ui),
      m_model(new OrderRoutesModel(presenter, this)),
      m_routes(new QComboBox(this)),
      m_days(new QComboBox(this)),
      m_active(new QCheckBox(QStringLiteral("Active Clients Only"), this)),
      m_grid(new QTableView(this)),
      m_includeEpisodics(new QAction(QStringLiteral("Apply route changes to future Episodic/Scheduled Deliveries"), this))
{
    setWindowTitle(TFormOrderRoutes::caption());
    setObjectName(QStringLiteral("FormOrderRoutes"));
    resize(1280, 700);
    m_routes->addItems(m_presenter.routeEntries());
    m_routes->setMinimumContentsLength(24);
    m_days->addItems(OrderRoutesStatements::dayTexts());
    m_includeEpisodics->setCheckable(true);

    auto* top = new QHBoxLayout;
    top->addWidget(new QLabel(QStringLiteral("Route:"), this));
    top->addWidget(m_routes);
    top->addWidget(new QLabel(QStringLiteral("Day:"), this));
    top->addWidget(m_days);
    top->addWidget(m_active);

    auto* commands = new QGridLayout;
    const auto add = [&](OrderRoutesAction action, const QString& text, const QKeySequence& key, int row, int column) {
        addCommand(action, text, key);
        commands->addWidget(m_buttons[action], row, column);
    };
    add(OrderRoutesAction::Retrieve, QStringLiteral("Retrieve"), QKeySequence(QStringLiteral("Ctrl+R")), 0, 0);
    add(OrderRoutesAction::MoveUp, QStringLiteral("Move Up"), QKeySequence(QStringLiteral("Ctrl+U")), 0, 1);
    add(OrderRoutesAction::MoveDown, QStringLiteral("Move Down"), QKeySequence(QStringLiteral("Ctrl+D")), 0, 2);
    add(OrderRoutesAction::Optimise, QStringLiteral("Optimise"), QKeySequence(QStringLiteral("Ctrl+O")), 0, 3);
    add(OrderRoutesAction::SendToMapping, QStringLiteral("Send to Mapping"), QKeySequence(QStringLiteral("Ctrl+M")), 0, 4);
    add(OrderRoutesAction::ResetStops, QStringLiteral("Reset stops of selected clients"),
        QKeySequence(QStringLiteral("Ctrl+S")), 1, 0);
    // Ctrl+R belongs to Retrieve, so this command is reached by its button and menu.
    add(OrderRoutesAction::ResetRoutes, QStringLiteral("Reset routes of selected clients"), QKeySequence(), 1, 1);
    add(OrderRoutesAction::IncrementStops, QStringLiteral("Increment stops of selected clients"),
        QKeySequence(QStringLiteral("Ctrl+I")), 1, 2);
    add(OrderRoutesAction::PrintListing, QStringLiteral("Print Listing"), QKeySequence(QStringLiteral("Ctrl+P")), 1, 3);
    add(OrderRoutesAction::ExportData, QStringLiteral("Export Data"), QKeySequence(QStringLiteral("Ctrl+E")), 1, 4);
    add(OrderRoutesAction::ViewClientAddressInfo, QStringLiteral("View Client Address Info"),
        QKeySequence(QStringLiteral("Ctrl+V")), 1, 5);

    m_grid->setModel(m_model);
    m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    m_grid->setItemDelegateForColumn(1, new StopDelegate(m_grid));
    m_grid->setWordWrap(false);
    m_grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_grid->verticalHeader()->setDefaultSectionSize(m_grid->fontMetrics().height() + 6);
    m_grid->horizontalHeader()->setSectionsClickable(true);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);

    auto* routing = new QLabel(QStringLiteral("Routing: Route and Stop can be typed into"), this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(commands);
    layout->addWidget(routing);
    layout->addWidget(m_grid, 1);

    connect(m_routes, &QComboBox::currentTextChanged, &m_presenter, &TFormOrderRoutes::setRouteEntry);
    connect(m_days, &QComboBox::currentIndexChanged, &m_presenter, &TFormOrderRoutes::setDayIndex);
    connect(m_active, &QCheckBox::toggled, &m_presenter, &TFormOrderRoutes::setActiveOnly);
    connect(m_includeEpisodics, &QAction::toggled, &m_presenter, &TFormOrderRoutes::setIncludeEpisodics);
    connect(&m_presenter, &TFormOrderRoutes::changed, this, &OrderRoutesView::showState);
    // The user may change the route's order on the map before it is read back.
    m_presenter.setMapPause([this](const QString& text) { MapWindow::waitWithMapInUse(this, text); });
    connect(m_grid->horizontalHeader(), &QHeaderView::sectionClicked, this,
            [this](int section) { m_presenter.sortByColumn(m_model->field(section)); });
    connect(m_grid, &QWidget::customContextMenuRequested, this, [this](const QPoint& at) {
        QMenu menu(this);
        menu.addAction(m_includeEpisodics);
        menu.addSeparator();
        for (const auto& [action, item] : m_actions)
            if (action != OrderRoutesAction::Retrieve)
                menu.addAction(item);
        menu.exec(m_grid->viewport()->mapToGlobal(at));
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &OrderRoutesView::showRows);
    connect(m_grid->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (m_showing)
            return;
        QList<int> rows;
        for (const QModelIndex& index : m_grid->selectionModel()->selectedRows())
            rows << index.row();
        m_presenter.setSelection(rows);
    });
    connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (!m_showing && current.isValid())
                    m_presenter.setCurrentPosition(current.row());
            });

    showState();
}

OrderRoutesView::~OrderRoutesView() = default;

void OrderRoutesView::addCommand(OrderRoutesAction action, const QString& text, const QKeySequence& key)
{
    auto* button = new QPushButton(text, this);
    auto* item = new QAction(text, this);
    if (!key.isEmpty()) {
        item->setShortcut(key);
        item->setShortcutContext(Qt::WindowShortcut);
        addAction(item);
        button->setToolTip(key.toString(QKeySequence::NativeText));
    }
    connect(button, &QPushButton::clicked, this, [this, action] { run(action); });
    connect(item, &QAction::triggered, this, [this, action] { run(action); });
    m_buttons[action] = button;
    m_actions[action] = item;
}

void OrderRoutesView::run(OrderRoutesAction action)
{
    if (!m_presenter.isEnabled(action))
        return;
    try {
        switch (action) {
        case OrderRoutesAction::Retrieve: m_presenter.ActionRetrieve(); break;
        case OrderRoutesAction::MoveUp: m_presenter.ActionMoveUp(); break;
        case OrderRoutesAction::MoveDown: m_presenter.ActionMoveDown(); break;
        case OrderRoutesAction::ResetStops: {
            StopValueDialog dialog(StopValueChoice::resetStops(), this);
            if (dialog.exec() == QDialog::Accepted)
                m_presenter.ActionResetStops(dialog.value());
            break;
        }
        case OrderRoutesAction::IncrementStops: {
            StopValueDialog dialog(StopValueChoice::incrementStops(), this);
            if (dialog.exec() == QDialog::Accepted)
                m_presenter.ActionIncrementStops(dialog.value());
            break;
        }
        case OrderRoutesAction::ResetRoutes: {
            RouteChoiceDialog dialog(m_presenter.routeEntries(), this);
            if (dialog.exec() == QDialog::Accepted)
                m_presenter.ActionResetRoutes(dialog.routeEntry());
            break;
        }
        case OrderRoutesAction::Optimise: {
            RouteOptimiserOptions options;
            if (askOptimiseOptions(this, options))
                m_presenter.ActionOptimise(options);
            break;
        }
        case OrderRoutesAction::SendToMapping: {
            TFormMapPointOptionsOrderRoutes options(m_db, m_session, m_ui);
            MappingOptionsDialog dialog(options, this);
            if (dialog.exec() == QDialog::Accepted)
                m_presenter.ActionSendToMapping(options.options());
            break;
        }
        case OrderRoutesAction::PrintListing: m_presenter.ActionPrintListing(); break;
        case OrderRoutesAction::ExportData: {
            GridExportDialog dialog(this);
            if (dialog.exec() == QDialog::Accepted)
                m_presenter.ActionExportData(dialog.options());
            break;
        }
        case OrderRoutesAction::ViewClientAddressInfo: m_presenter.ActionViewClientAddressInfo(); break;
        }
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
}

void OrderRoutesView::showState()
{
    m_showing = true;
    if (m_routes->currentText() != m_presenter.routeEntry())
        m_routes->setCurrentText(m_presenter.routeEntry());
    if (m_days->currentIndex() != m_presenter.dayIndex())
        m_days->setCurrentIndex(m_presenter.dayIndex());
    m_active->setChecked(m_presenter.activeOnly());
    m_includeEpisodics->setChecked(m_presenter.includeEpisodics());
    for (const auto& [action, button] : m_buttons) {
        button->setEnabled(m_presenter.isEnabled(action));
        m_actions[action]->setEnabled(m_presenter.isEnabled(action));
    }
    m_showing = false;
}

void OrderRoutesView::showRows()
{
    m_showing = true;
    // The rows may have moved: the grid follows the presenter's current row and selection.
    const int current = m_presenter.currentPosition();
    if (current >= 0)
        m_grid->selectionModel()->setCurrentIndex(m_model->index(current, 0), QItemSelectionModel::NoUpdate);
    for (int row : m_presenter.selectedPositions())
        m_grid->selectionModel()->select(m_model->index(row, 0),
                                         QItemSelectionModel::Select | QItemSelectionModel::Rows);
    if (current >= 0)
        m_grid->scrollTo(m_model->index(current, 0));
    m_grid->resizeColumnsToContents();
    m_showing = false;
}

void OrderRoutesView::done(int result)
{
    try {
        m_presenter.FormClose();
    } catch (const std::exception& e) {
        m_ui.error(QString::fromUtf8(e.what()));
    }
    QDialog::done(result);
}

} // namespace kb::ui
