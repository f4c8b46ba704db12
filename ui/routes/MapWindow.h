#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include <memory>

class QLabel;
class QListWidget;
class QPushButton;

namespace kb {
class Database;
class SettingsFile;
namespace map {
class LocalMapServer;
class MapServer;
} // namespace map
} // namespace kb

namespace kb::ui {

class MapCanvas;

// "Kettlebrook Map": the window of our own map server. What the mapping
// runs put on the server (pins, a route of waypoints, its calculated
// length) shows here as it happens; the route planner pane lists the
// waypoints in route order, and there the user may change that order (Move
// Up, Move Down, or dragging a stop) while a screen waits to read it back;
// a start or end location stays where it is. The window stays open after a
// run, for the user to look around, and closing it only hides it.
class MapWindow : public QWidget
{
    Q_OBJECT

public:
    explicit MapWindow(std::shared_ptr<map::LocalMapServer> server, QWidget* parent = nullptr);
    ~MapWindow() override;

    static QString caption() { return QStringLiteral("Kettlebrook Map"); }

    // The desktop's one map, made on first use over the agency's address
    // lookup. It becomes a window of `owner` (a modal screen's windows stay
    // usable beside it) and, when that screen is a dialog that finishes,
    // goes back to the dialog's own parent so it outlives the screen.
    static std::shared_ptr<map::MapServer> desktopServer(Database& db, SettingsFile& settings,
                                                         QWidget* owner);
    static MapWindow* desktopWindow();

    map::LocalMapServer& server() { return *m_server; }
    MapCanvas* canvas() const { return m_canvas; }
    QListWidget* waypointList() const { return m_waypoints; }
    QLabel* status() const { return m_status; }
    QPushButton* moveUpButton() const { return m_moveUp; }
    QPushButton* moveDownButton() const { return m_moveDown; }
    // The message of waitWithMapInUse while it is up.
    QMessageBox* waitingMessage() const { return m_waiting.data(); }

    // Shows `text` with an OK button and returns when the user presses it.
    // The message holds every other window as a modal message does, but the
    // desktop's map stays usable beside it: the user can look at the route
    // and change its order before saying it is ready.
    static void waitWithMapInUse(QWidget* parent, const QString& text);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Brings the window up to what the server now holds.
    void serverChanged();
    void attachTo(QWidget* owner);
    // Moves the selected waypoint one place; `by` is -1 or 1.
    void moveSelected(int by);
    // A stop dragged in the list goes to the same place on the route.
    void waypointDragged(int from, int to);
    void showMoveButtons();

    std::shared_ptr<map::LocalMapServer> m_server;
    MapCanvas* m_canvas;
    QWidget* m_pane;
    QListWidget* m_waypoints;
    QLabel* m_status;
    QPushButton* m_zoomRoute;
    QPushButton* m_zoomPins;
    QPushButton* m_moveUp;
    QPushButton* m_moveDown;
    bool m_filling = false;
    bool m_routeShown = false;
    QElapsedTimer m_sincePaint;
    // The dialog the window belongs to until that dialog finishes.
    QPointer<QDialog> m_heldBy;
    // The message a screen waits on while the user works on the map.
    QPointer<QMessageBox> m_waiting;
};

} // namespace kb::ui
