#include "clientwindow/MainWindow.h"

#include "FormPlacement.h"
#include "UserInterface.h"
#include "clientwindow/ClientFieldsView.h"
#include "clientwindow/ClientListModel.h"
#include "clientwindow/ScreenCommands.h"
#include "dataset/TableDataSet.h"
#include "session/TDataModule1.h"
#include "settings/SettingsFile.h"
#include "window/ClientCommands.h"
#include "window/ClientFieldLayout.h"
#include "window/ClientPages.h"
#include "window/TFormClients.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace kb::ui {

namespace {

const QString LayoutSection = QStringLiteral("ClientEdit");

QString menuText(const QString& caption)
{
    return QString(caption).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// Where the chosen sheet of a page is kept in the per-user ini file.
std::pair<QString, QString> sheetSetting(int page)
{
    if (page == client_page::HealthNutrition)
        return {QStringLiteral("HealthNutritionTab"), QStringLiteral("PageControlCounselingIndex")};
    if (page == client_page::CaseManagement)
        return {QStringLiteral("CaseManagementTab"), QStringLiteral("RzPageControlCaseManagement")};
    return {LayoutSection, QStringLiteral("SheetOfPage%1").arg(page)};
}

} // namespace

MainWindow::MainWindow(TFormClients& presenter, UserInterface& ui, QWidget* parent)
    : QMainWindow(parent), m_presenter(presenter), m_ui(ui)
{
    setWindowTitle(TFormClients::caption());
    setObjectName(QStringLiteral("TFormClients"));
    buildMenus();
    buildToolBar();
    buildCentre();
    buildStatusBar();
    registerScreenCommands(*this);
    keepPlacement(*this, module().userSettings(), TFormClients::formName(), QSize(1500, 940));

    connect(&m_presenter, &TFormClients::rowChanged, this, &MainWindow::showRow);
    connect(&m_presenter, &TFormClients::rowsChanged, this, &MainWindow::showRows);
    connect(&m_presenter, &TFormClients::stateChanged, this, &MainWindow::showStatus);
    connect(&m_presenter, &TFormClients::listsChanged, this, [this] {
        m_fields->refreshLists();
        applyTabs();
        showCommands();
    });
    connect(&m_presenter, &TFormClients::pageChanged, this, [this](int page) {
        const int tab = tabOfPage(page);
        if (tab >= 0 && m_notebook->currentIndex() != tab) {
            const QSignalBlocker block(m_notebook);
            m_notebook->setCurrentIndex(tab);
        }
        m_fields->reloadGrids();
    });
    connect(&m_presenter, &TFormClients::closeRequested, this, &QWidget::close);
    m_fields->refreshLists();
    showRows();
    showRow();
    showStatus();
    menuBar()->setEnabled(false);
    findChild<QToolBar*>(QStringLiteral("Navigator"))->hide();
}

MainWindow::~MainWindow()
{
    // What a plug-in put in its menu goes before its module does.
    if (QMenu* plugIns = m_menus.value(QStringLiteral("Plug-Ins"))) plugIns->clear();
    m_plugIns.unload();
}

TDataModule1& MainWindow::module()
{
    return m_presenter.module();
}

void MainWindow::buildMenus()
{
    // The top menus in their order; a submenu takes its place among its
    // parent's commands when its first command comes.
    const auto menuOf = [this](const QString& path, const auto& self) -> QMenu* {
        if (QMenu* menu = m_menus.value(path)) return menu;
        for (const ClientMenuInfo& info : clientMenus()) {
            if (info.path != path) continue;
            const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
            QMenu* menu = slash < 0 ? menuBar()->addMenu(info.caption)
                                    : self(path.left(slash), self)->addMenu(info.caption);
            menu->setObjectName(path);
            menu->setToolTipsVisible(true);
            m_menus.insert(path, menu);
            return menu;
        }
        return nullptr;
    };
    for (const ClientMenuInfo& info : clientMenus())
        if (!info.path.contains(QLatin1Char('/'))) menuOf(info.path, menuOf);
    for (const ClientCommandInfo& info : clientCommands()) {
        auto* action = new QAction(menuText(info.caption), this);
        action->setObjectName(info.id);
        if (!info.shortcut.isEmpty()) {
            action->setShortcut(QKeySequence(info.shortcut));
            action->setShortcutContext(Qt::WindowShortcut);
        }
        const QString id = info.id;
        connect(action, &QAction::triggered, this, [this, id] { m_presenter.run(id); });
        if (QMenu* menu = info.menu.isEmpty() ? nullptr : menuOf(info.menu, menuOf)) {
            // The Edit menu keeps the four moves together, then the rest.
            menu->addAction(action);
            if (id == QLatin1String("ActionLastClient") || id == QLatin1String("ActionRefreshLists") ||
                id == QLatin1String("ActionCustomFilter") ||
                id == QLatin1String("ActionDeliveryReportMessages"))
                menu->addSeparator();
        } else {
            addAction(action); // the shortcut works anywhere in the window
        }
        m_actions.insert(id, action);
    }
    // Shown once a plug-in has put something in it.
    m_menus.value(QStringLiteral("Plug-Ins"))->menuAction()->setVisible(false);
    // The table maintenance menu opens with the agency's settings.
    if (QMenu* maintenance = m_menus.value(QStringLiteral("Edit/Table Maintenance")))
        maintenance->insertSeparator(maintenance->actions().value(1));
    // Keys of the client itself: Ctrl+S finds a client, Ctrl+E edits the one shown.
    auto* find = new QShortcut(QKeySequence(QStringLiteral("Ctrl+S")), this);
    connect(find, &QShortcut::activated, this, [this] {
        m_search->setFocus();
        m_search->selectAll();
    });
    auto* edit = new QShortcut(QKeySequence(QStringLiteral("Ctrl+E")), this);
    connect(edit, &QShortcut::activated, this, [this] { m_presenter.edit(); });
}

void MainWindow::buildToolBar()
{
    QToolBar* bar = addToolBar(QStringLiteral("Navigator"));
    bar->setObjectName(QStringLiteral("Navigator"));
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    struct Button
    {
        const char* name;
        const char* text;
        QStyle::StandardPixmap icon;
        const char* tip;
        std::function<void()> run;
    };
    const Button buttons[] = {
        {"First", "First", QStyle::SP_MediaSkipBackward, "First client", [this] { m_presenter.first(); }},
        {"Prior", "Prior", QStyle::SP_ArrowLeft, "Prior client", [this] { m_presenter.prior(); }},
        {"Next", "Next", QStyle::SP_ArrowRight, "Next client", [this] { m_presenter.next(); }},
        {"Last", "Last", QStyle::SP_MediaSkipForward, "Last client", [this] { m_presenter.last(); }},
        {"Edit", "Edit", QStyle::SP_FileDialogDetailedView, "Change this client (Ctrl+E)",
         [this] { m_presenter.edit(); }},
        {"Post", "Post", QStyle::SP_DialogSaveButton, "Save the changes to this client",
         [this] { m_presenter.post(); }},
        {"Cancel", "Cancel", QStyle::SP_DialogCancelButton, "Undo the changes to this client",
         [this] { m_presenter.cancel(); }},
    };
    for (const Button& b : buttons) {
        auto* button = new QToolButton(bar);
        button->setObjectName(QString::fromLatin1(b.name));
        button->setText(QString::fromLatin1(b.text));
        button->setIcon(style()->standardIcon(b.icon));
        button->setToolTip(QString::fromLatin1(b.tip));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        connect(button, &QToolButton::clicked, this, b.run);
        bar->addWidget(button);
        m_navigator.insert(button->objectName(), button);
        if (QLatin1String(b.name) == QLatin1String("Last")) bar->addSeparator();
    }
    bar->addSeparator();
    auto* label = new QLabel(QStringLiteral(" Search For: "), bar);
    bar->addWidget(label);
    m_search = new QLineEdit(bar);
    m_search->setObjectName(QStringLiteral("SearchFor"));
    m_search->setPlaceholderText(QStringLiteral("Type to find a client (Ctrl+S)"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(220);
    label->setBuddy(m_search);
    bar->addWidget(m_search);
    bar->addWidget(new QLabel(QStringLiteral(" in "), bar));
    m_index = new QComboBox(bar);
    m_index->setObjectName(QStringLiteral("KeyList"));
    m_index->setToolTip(QStringLiteral("The order of the clients, and what the search looks at"));
    for (const QString& index : m_presenter.indexNames())
        m_index->addItem(TFormClients::indexCaption(index), index);
    m_index->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    bar->addWidget(m_index);
    bar->addSeparator();
    auto* filter = new QToolButton(bar);
    filter->setObjectName(QStringLiteral("StatusFilterButton"));
    filter->setText(QStringLiteral("Status Filter"));
    filter->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
    filter->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(filter, &QToolButton::clicked, this, [this] { m_presenter.run(client_command::StatusFilter); });
    bar->addWidget(filter);
    m_navigator.insert(filter->objectName(), filter);

    connect(m_search, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (m_presenter.search(text)) selectCurrentRow();
    });
    connect(m_search, &QLineEdit::returnPressed, this, [this] { m_list->setFocus(); });
    connect(m_index, &QComboBox::activated, this, [this](int i) {
        m_search->clear();
        m_presenter.setIndexName(m_index->itemData(i).toString());
    });
}

void MainWindow::buildCentre()
{
    m_fields = new ClientFieldsView(m_presenter, module().userSettings(), this);

    m_list = new QTableView(this);
    m_list->setObjectName(QStringLiteral("ClientList"));
    m_model = new ClientListModel(m_presenter.clients(), m_list);
    m_list->setModel(m_model);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setAlternatingRowColors(true);
    m_list->setWordWrap(false);
    m_list->verticalHeader()->hide();
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(m_list->fontMetrics().height() + 6);
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->horizontalHeader()->setSectionsClickable(true);
    m_list->horizontalHeader()->setStretchLastSection(true);
    const int charWidth = m_list->fontMetrics().averageCharWidth();
    for (size_t c = 0; c < ClientListModel::columns().size(); ++c)
        m_list->setColumnWidth(int(c), ClientListModel::columns()[c].characters * charWidth + 12);
    restoreColumnWidths(*m_list->horizontalHeader(), module().userSettings(), LayoutSection,
                        QStringLiteral("ClientList"));
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_selecting || !current.isValid()) return;
                if (!m_presenter.moveTo(current.row()))
                    selectCurrentRow(); // the row could not be left: back to it
            });
    connect(m_list->horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        const QString index = ClientListModel::columns()[size_t(column)].index;
        if (index.isEmpty()) return;
        m_search->clear();
        m_presenter.setIndexName(index);
    });

    m_header = new QWidget(this);
    m_header->setObjectName(QStringLiteral("ClientHeader"));
    auto* headerLayout = new QVBoxLayout(m_header);
    headerLayout->setContentsMargins(0, 0, 0, 0);
    m_popUp = new QLabel(m_header);
    m_popUp->setObjectName(QStringLiteral("ClientPopUp"));
    m_popUp->setWordWrap(true);
    m_popUp->setStyleSheet(QStringLiteral(
        "QLabel { background: #fff4c2; border: 1px solid #e0c050; border-radius: 3px; padding: 4px; }"));
    m_popUp->hide();
    headerLayout->addWidget(m_popUp);
    auto* groups = new QHBoxLayout;
    for (const ClientFieldGroup& group : clientFieldGroups()) {
        if (group.page != -1) continue;
        QGroupBox* box = m_fields->buildGroup(group, m_header);
        if (group.caption == QLatin1String("Address")) {
            m_addressTabs = new QTabBar(box);
            m_addressTabs->setObjectName(QStringLiteral("AddressTabs"));
            m_addressTabs->addTab(QStringLiteral("Alternate Address"));
            m_addressTabs->addTab(QStringLiteral("Home Address"));
            m_addressTabs->setDrawBase(false);
            m_addressTabs->hide();
            static_cast<QVBoxLayout*>(box->layout())->insertWidget(0, m_addressTabs);
            connect(m_addressTabs, &QTabBar::currentChanged, this, [this](int tab) {
                m_fields->setAlternate(tab == 0 && m_presenter.alternateAddressShown());
            });
        }
        groups->addWidget(box, group.caption == QLatin1String("Address") ? 5 : 4);
    }
    headerLayout->addLayout(groups);
    for (const ClientCommandInfo& info : clientCommands())
        if (info.menu.isEmpty()) m_header->addAction(m_actions.value(info.id));
    m_header->setContextMenuPolicy(Qt::ActionsContextMenu);

    m_notebook = new QTabWidget(this);
    m_notebook->setObjectName(QStringLiteral("Notebook"));
    m_notebook->setUsesScrollButtons(true);
    m_notebook->setStyleSheet(QStringLiteral("QTabBar::tab { padding: 4px 8px; }"));
    for (int page = 0; page < client_page::Count; ++page)
        m_notebook->addTab(buildPage(page), clientPage(page).caption);
    connect(m_notebook, &QTabWidget::currentChanged, this, [this](int tab) {
        if (tab >= 0) m_presenter.changePage(tab);
    });

    auto* top = new QSplitter(Qt::Horizontal, this);
    top->setObjectName(QStringLiteral("TopSplitter"));
    top->addWidget(m_list);
    top->addWidget(m_header);
    top->setStretchFactor(0, 2);
    top->setStretchFactor(1, 3);
    top->setChildrenCollapsible(false);
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setObjectName(QStringLiteral("MainSplitter"));
    m_splitter->addWidget(top);
    m_splitter->addWidget(m_notebook);
    m_splitter->setStretchFactor(0, 2);
    m_splitter->setStretchFactor(1, 3);
    m_splitter->setChildrenCollapsible(false);
    top->setSizes({420, 860});
    m_splitter->setSizes({300, 600});
    restoreSplitter(*top, module().userSettings(), LayoutSection, QStringLiteral("TopSplitterPercent"));
    restoreSplitter(*m_splitter, module().userSettings(), LayoutSection,
                    QStringLiteral("MainSplitterPercent"));
    setCentralWidget(m_splitter);
    // Nobody sees a client before signing in.
    m_splitter->hide();
}

QWidget* MainWindow::buildPage(int page)
{
    const ClientPageInfo& info = clientPage(page);
    // The groups of each sheet, in layout order.
    // The groups of a sheet: field groups stacked in two columns, each
    // taking the shorter one, then the grids across the whole width.
    auto fill = [&](const QString& sheet, QWidget* holder) {
        auto* sheetLayout = new QVBoxLayout(holder);
        auto* columns = new QHBoxLayout;
        QVBoxLayout* column[2] = {new QVBoxLayout, new QVBoxLayout};
        int height[2] = {0, 0};
        columns->addLayout(column[0], 1);
        columns->addLayout(column[1], 1);
        sheetLayout->addLayout(columns);
        bool grids = false;
        for (const ClientFieldGroup& group : clientFieldGroups()) {
            if (group.page != page || group.sheet != sheet) continue;
            QGroupBox* box = m_fields->buildGroup(group, holder);
            // Fields of a grid's current row stand among the grids, in order.
            if (!group.row.isEmpty()) {
                sheetLayout->addWidget(box);
                continue;
            }
            if (!group.grid.isEmpty()) {
                sheetLayout->addWidget(box, 1);
                grids = true;
                continue;
            }
            const int side = height[1] < height[0] ? 1 : 0;
            column[side]->addWidget(box);
            height[side] += box->sizeHint().height();
        }
        column[0]->addStretch();
        column[1]->addStretch();
        if (page == client_page::Map) {
            auto* note =
                new QLabel(QStringLiteral("\"Get Map\" shows the client's address on a map in your web "
                                          "browser, through the mapping service of System Configuration."),
                           holder);
            note->setWordWrap(true);
            column[0]->insertWidget(1, note);
        }
        if (!grids) sheetLayout->addStretch();
    };
    auto scrolled = [](QWidget* content) {
        auto* area = new QScrollArea;
        area->setWidgetResizable(true);
        area->setFrameShape(QFrame::NoFrame);
        area->setWidget(content);
        return area;
    };
    if (info.sheets.isEmpty()) {
        auto* content = new QWidget;
        fill(QString(), content);
        return scrolled(content);
    }
    auto* sheets = new QTabWidget;
    sheets->setObjectName(info.caption + QStringLiteral(" Sheets"));
    for (const QString& sheet : info.sheets) {
        auto* content = new QWidget;
        fill(sheet, content);
        sheets->addTab(scrolled(content), sheet);
    }
    // The sheet last chosen opens again.
    const QString section = sheetSetting(page).first;
    const QString key = sheetSetting(page).second;
    sheets->setCurrentIndex(
        std::clamp(module().userSettings().readInteger(section, key, 0), 0, sheets->count() - 1));
    connect(sheets, &QTabWidget::currentChanged, this, [this, section, key](int index) {
        module().userSettings().writeInteger(section, key, index);
        m_fields->reloadGrids();
    });
    return sheets;
}

void MainWindow::buildStatusBar()
{
    for (int i = 0; i < 5; ++i) {
        auto* pane = new QLabel(this);
        pane->setObjectName(QStringLiteral("StatusPane%1").arg(i));
        pane->setContentsMargins(6, 0, 6, 0);
        if (i == 0)
            statusBar()->addWidget(pane, 1);
        else
            statusBar()->addPermanentWidget(pane);
        m_panes.append(pane);
    }
    m_panes[4]->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
}

QLabel* MainWindow::statusPane(int pane) const
{
    return m_panes.value(pane);
}

int MainWindow::tabOfPage(int page) const
{
    return page >= 0 && page < m_notebook->count() && m_notebook->isTabVisible(page) ? page : -1;
}

void MainWindow::applyTabs()
{
    const ClientTabs& tabs = m_presenter.tabs();
    for (int page = 0; page < m_notebook->count(); ++page) {
        m_notebook->setTabVisible(page, tabs.shown.isEmpty() || tabs.isShown(page));
        // The numbered captions are padded to one width; the tab keeps its own.
        m_notebook->setTabText(page, tabs.captions.value(page, clientPage(page).caption).trimmed());
    }
    if (m_presenter.currentPage() >= 0) {
        const QSignalBlocker block(m_notebook);
        m_notebook->setCurrentIndex(m_presenter.currentPage());
    }
}

void MainWindow::showUser()
{
    const bool clientArea = m_presenter.clientAreaVisible();
    m_splitter->setVisible(clientArea);
    menuBar()->setEnabled(true);
    if (QToolBar* bar = findChild<QToolBar*>(QStringLiteral("Navigator"))) bar->setVisible(clientArea);
    if (!clientArea) {
        auto* note = new QLabel(
            QStringLiteral("Your user name may run reports: choose one from the Reports menu."), this);
        note->setObjectName(QStringLiteral("ReportsOnlyNote"));
        note->setAlignment(Qt::AlignCenter);
        takeCentralWidget();
        m_splitter->setParent(this);
        m_splitter->hide();
        setCentralWidget(note);
    }
    const QString index = m_presenter.indexName();
    m_index->setCurrentIndex(std::max(0, m_index->findData(index, Qt::UserRole, Qt::MatchFixedString)));
    applyTabs();
    m_fields->refreshLists();
    showRows();
    showRow();
    showStatus();
}

void MainWindow::loadPlugIns(const QString& folder)
{
    m_plugIns.load(folder, this, m_menus.value(QStringLiteral("Plug-Ins")));
    if (!m_plugIns.failures().isEmpty())
        m_ui.warning(QStringLiteral("These plug-in modules could not be loaded and were passed over:\n") +
                     m_plugIns.failures().join(QLatin1Char('\n')));
    QMenu* menu = m_menus.value(QStringLiteral("Plug-Ins"));
    menu->menuAction()->setVisible(!menu->isEmpty());
}

void MainWindow::showCommands()
{
    for (auto it = m_actions.cbegin(); it != m_actions.cend(); ++it) {
        const TFormClients::CommandState state = m_presenter.commandState(it.key());
        QAction* action = it.value();
        action->setText(menuText(state.text));
        action->setVisible(state.visible);
        action->setEnabled(state.enabled);
        action->setToolTip(state.toolTip.isEmpty() ? state.text : state.toolTip);
        QFont font = action->font();
        font.setBold(state.bold);
        action->setFont(font);
    }
    for (const ClientMenuInfo& info : clientMenus()) {
        QMenu* menu = m_menus.value(info.path);
        if (info.path == QLatin1String("Plug-Ins")) continue;
        menu->menuAction()->setVisible(m_presenter.isMenuVisible(info.path));
        menu->setEnabled(m_presenter.isMenuEnabled(info.path));
    }
    m_fields->refreshButtons();
}

void MainWindow::showRow()
{
    const ClientControls& controls = m_presenter.controls();
    m_popUp->setVisible(controls.popUpShown);
    m_popUp->setText(QStringLiteral("<b>Pop-up note:</b> ") + controls.popUpNote.toHtmlEscaped());
    const bool alternate = m_presenter.alternateAddressShown();
    if (m_addressTabs->isVisible() != alternate ||
        (alternate && !m_fields->alternate() && m_addressTabs->currentIndex() == 0)) {
        const QSignalBlocker block(m_addressTabs);
        m_addressTabs->setVisible(alternate);
        m_addressTabs->setCurrentIndex(0);
        m_fields->setAlternate(alternate);
    }
    if (alternate) m_addressTabs->setTabToolTip(0, controls.alternateDirectionsCaption);
    m_fields->refresh();
    m_fields->reloadGrids();
    m_model->rowChanged(m_presenter.position());
    selectCurrentRow();
    showCommands();
    showStatus();
}

void MainWindow::showRows()
{
    m_model->reload();
    selectCurrentRow();
}

void MainWindow::selectCurrentRow()
{
    const int row = m_presenter.position();
    m_selecting = true;
    if (row >= 0 && row < m_model->rowCount()) {
        const QModelIndex index = m_model->index(row, 0);
        m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                             QItemSelectionModel::Rows);
        m_list->scrollTo(index, QAbstractItemView::EnsureVisible);
    } else {
        m_list->selectionModel()->clearSelection();
    }
    m_selecting = false;
}

void MainWindow::showStatus()
{
    m_panes[0]->setText(m_presenter.dataDirectoryText());
    m_panes[1]->setText(m_presenter.userText());
    m_panes[2]->setText(m_presenter.filterText());
    const int rows = m_presenter.rowCount();
    m_panes[3]->setText(
        m_presenter.recordStateText() +
        (rows > 0 ? QStringLiteral("  %1 of %2").arg(m_presenter.position() + 1).arg(rows) : QString()));
    m_panes[4]->setText(m_presenter.transactionText());
    m_panes[4]->setVisible(!m_presenter.transactionText().isEmpty());
    const bool editing = m_presenter.isEditing();
    const bool mayEdit = !m_presenter.fieldsReadOnly();
    m_navigator.value(QStringLiteral("Edit"))->setEnabled(mayEdit && !editing);
    m_navigator.value(QStringLiteral("Post"))->setEnabled(editing);
    m_navigator.value(QStringLiteral("Cancel"))->setEnabled(editing);
    for (const char* name : {"Edit", "Post", "Cancel"})
        m_navigator.value(QString::fromLatin1(name))->setVisible(mayEdit);
    const int position = m_presenter.position();
    m_navigator.value(QStringLiteral("First"))->setEnabled(rows > 0 && position > 0);
    m_navigator.value(QStringLiteral("Prior"))->setEnabled(rows > 0 && position > 0);
    m_navigator.value(QStringLiteral("Next"))->setEnabled(rows > 0 && position < rows - 1);
    m_navigator.value(QStringLiteral("Last"))->setEnabled(rows > 0 && position < rows - 1);
}

void MainWindow::saveLayouts()
{
    SettingsFile& settings = module().userSettings();
    saveColumnWidths(*m_list->horizontalHeader(), settings, LayoutSection, QStringLiteral("ClientList"));
    if (auto* top = findChild<QSplitter*>(QStringLiteral("TopSplitter")))
        saveSplitter(*top, settings, LayoutSection, QStringLiteral("TopSplitterPercent"));
    saveSplitter(*m_splitter, settings, LayoutSection, QStringLiteral("MainSplitterPercent"));
    m_fields->saveLayouts();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveLayouts();
    if (!m_presenter.closeQuery()) {
        event->ignore();
        return;
    }
    QMainWindow::closeEvent(event);
}

} // namespace kb::ui
