#pragma once

#include <QPointF>
#include <QRectF>
#include <QWidget>

namespace kb::map {
class LocalMapServer;
}

namespace kb::ui {

// The map itself: the pushpins and the route of our own map server drawn on
// a plain projected plane, with a grid of degrees, the pins' names and a
// scale bar. The wheel zooms about the pointer, dragging moves the map.
// It draws what the server holds and changes nothing in it.
class MapCanvas : public QWidget
{
    Q_OBJECT

public:
    explicit MapCanvas(const map::LocalMapServer& server, QWidget* parent = nullptr);

    // Shows the route's waypoints whole; false when there are none.
    bool zoomToRoute();
    // Shows every pushpin; false when there are none.
    bool zoomToPins();
    // Until the user moves the map, it follows what is added to it.
    bool userMoved() const { return m_userMoved; }
    void resetUserMoved() { m_userMoved = false; }

    // Pixels per unit of the projected square, and the point in the middle.
    double scale() const { return m_scale; }
    QPointF centre() const { return m_centre; }
    void zoomBy(double factor, const QPointF& about);

    QSize sizeHint() const override { return {900, 650}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointF toScreen(const QPointF& unit) const;
    QPointF toUnit(const QPointF& screen) const;
    bool fit(QRectF unitRect);
    void drawGrid(class QPainter& painter);
    void drawRoute(QPainter& painter);
    void drawPins(QPainter& painter);
    void drawScaleBar(QPainter& painter);

    const map::LocalMapServer& m_server;
    QPointF m_centre{0.5, 0.5};
    double m_scale = 1024.0;
    bool m_userMoved = false;
    bool m_dragging = false;
    QPointF m_dragFrom;
};

} // namespace kb::ui
