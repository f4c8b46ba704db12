#include "routes/MapWindow.h"

#include "FormPlacement.h"
#include "routes/MapCanvas.h"

#include "geocode/AgencyGeocoder.h"
#include "map/LocalMapServer.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

namespace kb::ui {

namespace {

QPointer<MapWindow> desktopMap;

QString kilometres(double metres)
{
    return QStringLiteral("%1 km").arg(metres / 1000.0, 0, 'f', 1);
}

QString duration(std::chrono::seconds time)
{
    const qint64 minutes = (time.count() + 30) / 60;
    if (minutes < 60) return QStringLiteral("%1 min").arg(minutes);
    return QStringLiteral("%1 h %2 min").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

} // namespace

MapWindow::MapWindow(std::shared_ptr<map::LocalMapServer> server, QWidget* parent)
    : QWidget(parent, Qt::Window), m_server(std::move(server)), m_canvas(new MapCanvas(*m_server, this)),
      m_pane(new QWidget(this)), m_waypoints(new QListWidget(m_pane)), m_status(new QLabel(this)),
      m_zoomRoute(new QPushButton(QStringLiteral("Zoom to Route"), this)),
      m_zoomPins(new QPushButton(QStringLiteral("Show All Pushpins"), this)),
      m_moveUp(new QPushButton(QStringLiteral("Move Up"), m_pane)),
      m_moveDown(new QPushButton(QStringLiteral("Move Down"), m_pane))
{
    setWindowTitle(caption());
    setObjectName(QStringLiteral("MapWindow"));
    m_waypoints->setObjectName(QStringLiteral("Waypoints"));
    m_zoomRoute->setAutoDefault(false);
    m_zoomPins->setAutoDefault(false);

    auto* paneLayout = new QVBoxLayout(m_pane);
    paneLayout->setContentsMargins(0, 0, 0, 0);
    paneLayout->addWidget(new QLabel(QStringLiteral("Route, in driving order:"), m_pane));
    paneLayout->addWidget(m_waypoints);
    auto* moves = new QHBoxLayout;
    moves->addWidget(m_moveUp);
    moves->addWidget(m_moveDown);
    paneLayout->addLayout(moves);
    auto* hint =
        new QLabel(QStringLiteral("Select a stop and move it, or drag it, to change the order."), m_pane);
    hint->setWordWrap(true);
    paneLayout->addWidget(hint);
    m_moveUp->setObjectName(QStringLiteral("MoveUp"));
    m_moveDown->setObjectName(QStringLiteral("MoveDown"));
    m_moveUp->setAutoDefault(false);
    m_moveDown->setAutoDefault(false);
    m_moveUp->setShortcut(QKeySequence(QStringLiteral("Ctrl+U")));
    m_moveDown->setShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
    m_waypoints->setSelectionMode(QAbstractItemView::SingleSelection);
    m_waypoints->setDragDropMode(QAbstractItemView::InternalMove);
    m_waypoints->setDefaultDropAction(Qt::MoveAction);

    auto* splitter = new QSplitter(this);
    splitter->addWidget(m_pane);
    splitter->addWidget(m_canvas);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({260, 900});

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(m_zoomRoute);
    bottom->addWidget(m_zoomPins);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(splitter, 1);
    layout->addLayout(bottom);

    connect(m_zoomRoute, &QPushButton::clicked, this, [this] { m_canvas->zoomToRoute(); });
    connect(m_zoomPins, &QPushButton::clicked, this, [this] { m_canvas->zoomToPins(); });
    connect(m_moveUp, &QPushButton::clicked, this, [this] { moveSelected(-1); });
    connect(m_moveDown, &QPushButton::clicked, this, [this] { moveSelected(1); });
    connect(m_waypoints, &QListWidget::currentRowChanged, this, [this] { showMoveButtons(); });
    connect(m_waypoints->model(), &QAbstractItemModel::rowsMoved, this,
            [this](const QModelIndex&, int start, int, const QModelIndex&, int row) {
                if (m_filling) return;
                const int to = row > start ? row - 1 : row;
                // The list is still in the middle of the drop: the route
                // follows once it is done.
                QTimer::singleShot(0, this, [this, start, to] { waypointDragged(start + 1, to + 1); });
            });
    m_server->setOnChanged([this] { serverChanged(); });
    resize(fittingSize(*this, QSize(1200, 760)));
    serverChanged();
}

MapWindow::~MapWindow()
{
    m_server->setOnChanged({});
}

std::shared_ptr<map::MapServer> MapWindow::desktopServer(Database& db, SettingsFile& settings, QWidget* owner)
{
    if (!desktopMap) {
        desktopMap = new MapWindow(std::make_shared<map::LocalMapServer>(agencyGeocoder(db)), owner);
        keepPlacement(*desktopMap, settings, QStringLiteral("MapWindow"), QSize(1200, 760));
    }
    desktopMap->attachTo(owner);
    return desktopMap->m_server;
}

MapWindow* MapWindow::desktopWindow()
{
    return desktopMap.data();
}

void MapWindow::attachTo(QWidget* owner)
{
    if (!owner) return;
    if (parentWidget() != owner) {
        const bool shown = isVisible();
        setParent(owner, Qt::Window);
        if (shown) show();
    }
    auto* dialog = qobject_cast<QDialog*>(owner);
    if (!dialog || dialog == m_heldBy) return;
    m_heldBy = dialog;
    connect(
        dialog, &QDialog::finished, this,
        [this, dialog] {
            m_heldBy = nullptr;
            if (parentWidget() != dialog) return;
            const bool visible = isVisible();
            setParent(dialog->parentWidget(), Qt::Window);
            if (visible) show();
        },
        Qt::SingleShotConnection);
}

void MapWindow::serverChanged()
{
    const map::LocalMapServer& s = *m_server;
    if (!s.isConnected()) {
        m_status->setText(QStringLiteral("The map is not in use."));
        return;
    }
    if (s.isVisible() && !isVisible()) {
        show();
        raise();
    } else if (!s.isVisible() && isVisible()) {
        hide();
    }
    m_pane->setVisible(s.paneState() == map::PaneState::RoutePlanner);

    const int current = m_waypoints->currentRow();
    m_filling = true;
    m_waypoints->clear();
    for (int i = 1; i <= s.waypointCount(); ++i) {
        auto* item = new QListWidgetItem(QStringLiteral("%1. %2").arg(i).arg(s.waypointName(i)), m_waypoints);
        if (s.isFixedWaypoint(i)) item->setFlags(item->flags() & ~Qt::ItemIsDragEnabled);
    }
    if (current >= 0 && current < m_waypoints->count()) m_waypoints->setCurrentRow(current);
    m_filling = false;
    showMoveButtons();

    QString text = QStringLiteral("%1 pushpins").arg(s.pushpins().size());
    if (s.pushpins().size() == 1) text = QStringLiteral("1 pushpin");
    if (s.waypointCount() > 0) text += QStringLiteral(", %1 stops on the route").arg(s.waypointCount());
    if (const auto summary = s.routeSummary())
        text += QStringLiteral(". Route: %1 in straight lines, about %2 by road, about %3 driving")
                    .arg(kilometres(summary->straightLineMetres), kilometres(summary->estimatedRoadMetres),
                         duration(summary->estimatedDrivingTime));
    m_status->setText(text);
    m_zoomRoute->setEnabled(s.waypointCount() > 0);
    m_zoomPins->setEnabled(!s.pushpins().empty());

    // A new map follows what is put on it, until the user moves it.
    if (s.pushpins().empty() && s.waypointCount() == 0) {
        m_canvas->resetUserMoved();
        m_routeShown = false;
    }
    if (s.isShowingRoute() && !m_routeShown) {
        m_routeShown = m_canvas->zoomToRoute();
    } else if (!m_canvas->userMoved() && !m_routeShown) {
        m_canvas->zoomToPins();
    }
    if (!s.isShowingRoute()) m_routeShown = false;

    // A run adds pins without going back to the event loop: paint now and
    // then so that the map fills as it goes.
    if (isVisible() && (!m_sincePaint.isValid() || m_sincePaint.elapsed() > 150)) {
        m_sincePaint.start();
        m_canvas->repaint();
    } else {
        m_canvas->update();
    }
}

void MapWindow::showMoveButtons()
{
    const int position = m_waypoints->currentRow() + 1;
    m_moveUp->setEnabled(position > 0 && m_server->canMoveWaypoint(position, position - 1));
    m_moveDown->setEnabled(position > 0 && m_server->canMoveWaypoint(position, position + 1));
}

void MapWindow::moveSelected(int by)
{
    const int position = m_waypoints->currentRow() + 1;
    if (!m_server->canMoveWaypoint(position, position + by)) return;
    m_server->moveWaypoint(position, position + by);
    m_waypoints->setCurrentRow(position + by - 1);
}

void MapWindow::waypointDragged(int from, int to)
{
    if (m_server->canMoveWaypoint(from, to)) {
        m_server->moveWaypoint(from, to);
        m_waypoints->setCurrentRow(to - 1);
    } else {
        // Dropped on a start or end: the list goes back to the route's order.
        serverChanged();
    }
}

void MapWindow::waitWithMapInUse(QWidget* parent, const QString& text)
{
    MapWindow* map = desktopMap.data();
    QWidget* screen = parent ? parent->window() : nullptr;
    // Without the map in sight, or with a map that is not the screen's own
    // window, an ordinary modal message does.
    const auto ownedByScreen = [&] {
        for (QWidget* w = map; w; w = w->parentWidget())
            if (w == screen) return true;
        return false;
    };
    if (!map || !map->isVisible() || !screen || !ownedByScreen()) {
        QMessageBox::information(parent, QApplication::applicationName(), text);
        return;
    }
    // The screen is held by disabling it rather than by a modal message, which
    // would hold the map too; the map, its own window, is enabled again. A
    // close of the screen in the meantime is refused.
    struct Hold : QObject
    {
        using QObject::QObject;
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() != QEvent::Close) return false;
            event->ignore();
            return true;
        }
    } hold(screen);
    screen->installEventFilter(&hold);
    const bool wasEnabled = screen->isEnabled();
    screen->setEnabled(false);
    map->setEnabled(true);

    // A window of the map's, so that it stands above the map and not under it.
    const QPointer<QMessageBox> box = new QMessageBox(
        QMessageBox::Information, QApplication::applicationName(), text, QMessageBox::Ok, map);
    box->setObjectName(QStringLiteral("MapReadyMessage"));
    map->m_waiting = box;
    QEventLoop loop;
    connect(box, &QDialog::finished, &loop, &QEventLoop::quit);
    connect(box, &QObject::destroyed, &loop, &QEventLoop::quit);
    box->show();
    box->raise();
    box->activateWindow();
    loop.exec();
    delete box.data();

    screen->removeEventFilter(&hold);
    screen->setEnabled(wasEnabled);
    if (desktopMap) desktopMap->raise();
}

void MapWindow::closeEvent(QCloseEvent* event)
{
    // The map keeps what it shows for the next look; closing only hides it.
    // Closing it while a screen waits for the user to be done with it is the
    // same as saying so.
    event->accept();
    if (m_waiting) m_waiting->done(QMessageBox::Ok);
    hide();
    if (m_server->isConnected()) m_server->setVisible(false);
}

} // namespace kb::ui
