#include "routes/MapCanvas.h"

#include "map/LocalMapServer.h"
#include "map/MapProjection.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

namespace kb::ui {

namespace {

using map::MapProjection;

// A single place is shown with about this much of the map around it.
constexpr double smallestFitUnits = 0.0004;
constexpr double minScale = 256.0;
constexpr double maxScale = 256.0 * 1048576.0;

const QColor Land(0xf3, 0xf0, 0xe8);
const QColor GridLine(0xd9, 0xd4, 0xc7);
const QColor GridText(0x8c, 0x86, 0x78);
const QColor RouteLine(0x2a, 0x6f, 0xdb);
const QColor ClientPin(0xd6, 0x3a, 0x2f);
const QColor FirstPin(0x2e, 0x8b, 0x3e);
const QColor LastPin(0x3b, 0x3f, 0x58);

// A step of degrees between grid lines that leaves them about 120 pixels apart.
double gridStep(double degreesPer120Pixels)
{
    const double steps[] = {0.0005, 0.001, 0.002, 0.005, 0.01, 0.02, 0.05, 0.1,
                            0.2,    0.5,   1,     2,     5,    10,   15,   30};
    for (double s : steps)
        if (s >= degreesPer120Pixels) return s;
    return 30;
}

} // namespace

MapCanvas::MapCanvas(const map::LocalMapServer& server, QWidget* parent) : QWidget(parent), m_server(server)
{
    setObjectName(QStringLiteral("MapCanvas"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(320, 240);
    setCursor(Qt::OpenHandCursor);
}

QPointF MapCanvas::toScreen(const QPointF& unit) const
{
    return (unit - m_centre) * m_scale + QPointF(width() / 2.0, height() / 2.0);
}

QPointF MapCanvas::toUnit(const QPointF& screen) const
{
    return (screen - QPointF(width() / 2.0, height() / 2.0)) / m_scale + m_centre;
}

bool MapCanvas::fit(QRectF unitRect)
{
    if (unitRect.isNull() && unitRect.topLeft().isNull()) return false;
    const QPointF middle = unitRect.center();
    const double w = std::max(unitRect.width(), smallestFitUnits);
    const double h = std::max(unitRect.height(), smallestFitUnits);
    m_centre = middle;
    // A margin around the places so that the pins and their names fit.
    m_scale = std::clamp(std::min((width() - 80) / w, (height() - 80) / h), minScale, maxScale);
    update();
    return true;
}

bool MapCanvas::zoomToRoute()
{
    if (!m_server.isConnected() || m_server.waypointCount() == 0) return false;
    std::vector<map::Location> places;
    for (int i = 1; i <= m_server.waypointCount(); ++i)
        places.push_back(m_server.waypointLocation(i));
    return fit(MapProjection::bounds(places));
}

bool MapCanvas::zoomToPins()
{
    std::vector<map::Location> places;
    for (const auto& pin : m_server.pushpins())
        places.push_back(pin->location());
    if (places.empty()) return false;
    return fit(MapProjection::bounds(places));
}

void MapCanvas::zoomBy(double factor, const QPointF& about)
{
    const QPointF fixed = toUnit(about);
    m_scale = std::clamp(m_scale * factor, minScale, maxScale);
    // The point under the pointer stays under it.
    m_centre = fixed - (about - QPointF(width() / 2.0, height() / 2.0)) / m_scale;
    m_userMoved = true;
    update();
}

void MapCanvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Land);
    drawGrid(painter);
    drawRoute(painter);
    drawPins(painter);
    drawScaleBar(painter);
    if (m_server.pushpins().empty()) {
        painter.setPen(GridText);
        painter.drawText(rect(), Qt::AlignCenter, QStringLiteral("Nothing is on the map yet."));
    }
}

void MapCanvas::drawGrid(QPainter& painter)
{
    const map::Location topLeft = MapProjection::unproject(toUnit(QPointF(0, 0)));
    const map::Location bottomRight = MapProjection::unproject(toUnit(QPointF(width(), height())));
    const double degreesPer120 =
        std::abs(bottomRight.longitude - topLeft.longitude) * 120.0 / std::max(1, width());
    const double step = gridStep(degreesPer120);
    const int decimals = step >= 1 ? 0 : int(std::ceil(-std::log10(step)));
    painter.setPen(QPen(GridLine, 1));
    QFont small = font();
    small.setPointSizeF(font().pointSizeF() * 0.8);
    painter.setFont(small);
    for (double lon = std::ceil(topLeft.longitude / step) * step; lon <= bottomRight.longitude; lon += step) {
        const double x = toScreen(MapProjection::project({0, lon})).x();
        painter.setPen(QPen(GridLine, 1));
        painter.drawLine(QPointF(x, 0), QPointF(x, height()));
        painter.setPen(GridText);
        painter.drawText(QPointF(x + 3, height() - 4), QStringLiteral("%1°").arg(lon, 0, 'f', decimals));
    }
    for (double lat = std::ceil(bottomRight.latitude / step) * step; lat <= topLeft.latitude; lat += step) {
        const double y = toScreen(MapProjection::project({lat, 0})).y();
        painter.setPen(QPen(GridLine, 1));
        painter.drawLine(QPointF(0, y), QPointF(width(), y));
        painter.setPen(GridText);
        painter.drawText(QPointF(3, y - 3), QStringLiteral("%1°").arg(lat, 0, 'f', decimals));
    }
    painter.setFont(font());
}

void MapCanvas::drawRoute(QPainter& painter)
{
    if (!m_server.isConnected() || m_server.waypointCount() < 2 || !m_server.routeSummary()) return;
    QPainterPath path;
    for (int i = 1; i <= m_server.waypointCount(); ++i) {
        const QPointF p = toScreen(MapProjection::project(m_server.waypointLocation(i)));
        if (i == 1)
            path.moveTo(p);
        else
            path.lineTo(p);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::white, 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
    painter.setPen(QPen(RouteLine, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(path);
}

void MapCanvas::drawPins(QPainter& painter)
{
    if (!m_server.isConnected()) return;
    // Each pin's place on the route, by name and place: a waypoint keeps
    // its pin's name, and the start and end may share both.
    std::multimap<QString, int> positions;
    const int count = m_server.waypointCount();
    for (int i = 1; i <= count; ++i)
        positions.emplace(m_server.waypointName(i), i);

    struct Marker
    {
        QPointF at;
        QString number;
        QString label;
        QColor colour;
    };
    std::vector<Marker> markers;
    for (const auto& pin : m_server.pushpins()) {
        Marker m{toScreen(MapProjection::project(pin->location())), {}, pin->name(), ClientPin};
        QStringList numbers;
        auto [from, to] = positions.equal_range(pin->name());
        for (auto it = from; it != to;) {
            const map::Location at = m_server.waypointLocation(it->second);
            if (at.latitude == pin->location().latitude && at.longitude == pin->location().longitude) {
                numbers << QString::number(it->second);
                if (it->second == 1)
                    m.colour = FirstPin;
                else if (it->second == count && m.colour != FirstPin)
                    m.colour = LastPin;
                it = positions.erase(it);
            } else {
                ++it;
            }
        }
        m.number = numbers.join(QLatin1Char('/'));
        markers.push_back(m);
    }

    const QFontMetrics metrics(font());
    std::vector<QRectF> taken;
    for (const Marker& m : markers) {
        const double r = m.number.size() > 2 ? 13 : 10;
        taken.push_back(QRectF(m.at - QPointF(r, r), QSizeF(2 * r, 2 * r)));
    }
    // The names first, where they do not cover a marker or another name.
    for (const Marker& m : markers) {
        const QRectF box = QRectF(metrics.boundingRect(m.label)).adjusted(-3, -1, 3, 1);
        QRectF at(m.at + QPointF(14, -box.height() / 2), box.size());
        // Near the right edge the name goes to the left of its pin.
        if (at.right() > width()) at.moveRight(m.at.x() - 14);
        if (!rect().intersects(at.toAlignedRect())) continue;
        bool free = true;
        for (const QRectF& t : taken)
            if (t.intersects(at)) {
                free = false;
                break;
            }
        if (!free) continue;
        taken.push_back(at);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(255, 255, 255, 215));
        painter.drawRoundedRect(at, 3, 3);
        painter.setPen(Qt::black);
        painter.drawText(at, Qt::AlignCenter, m.label);
    }
    QFont bold = font();
    bold.setBold(true);
    bold.setPointSizeF(font().pointSizeF() * 0.85);
    painter.setFont(bold);
    for (const Marker& m : markers) {
        const double r = m.number.size() > 2 ? 13 : 10;
        painter.setPen(QPen(Qt::white, 2));
        painter.setBrush(m.colour);
        painter.drawEllipse(m.at, r, r);
        painter.setPen(Qt::white);
        if (!m.number.isEmpty())
            painter.drawText(QRectF(m.at - QPointF(r, r), QSizeF(2 * r, 2 * r)), Qt::AlignCenter, m.number);
    }
    painter.setFont(font());
}

void MapCanvas::drawScaleBar(QPainter& painter)
{
    const double latitude = MapProjection::unproject(m_centre).latitude;
    const double metresPerPixel = MapProjection::metresPerUnit(latitude) / m_scale;
    const double metres = MapProjection::scaleBarMetres(150.0 * metresPerPixel);
    const double pixels = metres / metresPerPixel;
    const QPointF start(16, height() - 24);
    const QString text = MapProjection::scaleBarText(metres);
    const QFontMetrics metrics(font());
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 200));
    painter.drawRect(
        QRectF(start - QPointF(6, metrics.height() + 8), QSizeF(pixels + 12, metrics.height() + 16)));
    painter.setPen(QPen(Qt::black, 2));
    painter.drawLine(start, start + QPointF(pixels, 0));
    painter.drawLine(start, start - QPointF(0, 6));
    painter.drawLine(start + QPointF(pixels, 0), start + QPointF(pixels, -6));
    painter.drawText(start + QPointF(4, -6), text);
}

void MapCanvas::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / 120.0;
    if (steps != 0) zoomBy(std::pow(1.25, steps), event->position());
    event->accept();
}

void MapCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    m_dragging = true;
    m_dragFrom = event->position();
    setCursor(Qt::ClosedHandCursor);
}

void MapCanvas::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging) return;
    m_centre -= (event->position() - m_dragFrom) / m_scale;
    m_dragFrom = event->position();
    m_userMoved = true;
    update();
}

void MapCanvas::mouseReleaseEvent(QMouseEvent*)
{
    m_dragging = false;
    setCursor(Qt::OpenHandCursor);
}

void MapCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    zoomBy(2.0, event->position());
}

void MapCanvas::keyPressEvent(QKeyEvent* event)
{
    const QPointF middle(width() / 2.0, height() / 2.0);
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomBy(1.5, middle);
        break;
    case Qt::Key_Minus:
        zoomBy(1 / 1.5, middle);
        break;
    case Qt::Key_Left:
        m_centre.rx() -= 60 / m_scale;
        m_userMoved = true;
        update();
        break;
    case Qt::Key_Right:
        m_centre.rx() += 60 / m_scale;
        m_userMoved = true;
        update();
        break;
    case Qt::Key_Up:
        m_centre.ry() -= 60 / m_scale;
        m_userMoved = true;
        update();
        break;
    case Qt::Key_Down:
        m_centre.ry() += 60 / m_scale;
        m_userMoved = true;
        update();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace kb::ui
