#pragma once

#include <QDialog>
#include <QElapsedTimer>
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
// waypoints in route order. The window stays open after a run, for the user
// to look around, and closing it only hides it.
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

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Brings the window up to what the server now holds.
    void serverChanged();
    void attachTo(QWidget* owner);

    std::shared_ptr<map::LocalMapServer> m_server;
    MapCanvas* m_canvas;
    QWidget* m_pane;
    QListWidget* m_waypoints;
    QLabel* m_status;
    QPushButton* m_zoomRoute;
    QPushButton* m_zoomPins;
    bool m_routeShown = false;
    QElapsedTimer m_sincePaint;
    // The dialog the window belongs to until that dialog finishes.
    QPointer<QDialog> m_heldBy;
};

} // namespace kb::ui
