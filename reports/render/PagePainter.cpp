#include "render/PagePainter.h"

#include "MessageError.h"
#include "engine/ReportLayout.h"
#include "engine/TextMeasure.h"

#include <QFile>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cmath>

namespace kb::reports {

namespace {

// PDF coordinates fine enough that nothing is rounded visibly.
constexpr int PdfDpi = 1200;
// Above this resolution, bars are placed exactly; at or below it (label
// printers, office printers, the screen) each module takes a whole number
// of device pixels, so that every bar of the same width prints the same.
constexpr double SnapBelowDpi = 601;

// The fonts of the document's styles on one device, made once for all its
// pages: making a font and its metrics for every text would cost more than
// drawing it.
class Fonts
{
public:
    Fonts(const ReportDocument& document, QPaintDevice* device) : m_doc(document), m_device(device) {}

    struct Font
    {
        QFont font;
        QFontMetricsF metrics;
    };
    const Font& of(int style)
    {
        if (size_t(style) >= m_fonts.size())
            m_fonts.resize(m_doc.styles.size() > size_t(style) ? m_doc.styles.size() : size_t(style) + 1);
        auto& slot = m_fonts[size_t(style)];
        if (!slot) {
            const QFont font = fontFor(m_doc.styles[size_t(style)]);
            slot = std::make_unique<Font>(Font{font, QFontMetricsF(font, m_device)});
        }
        return *slot;
    }

private:
    const ReportDocument& m_doc;
    QPaintDevice* m_device;
    std::vector<std::unique_ptr<Font>> m_fonts;
};

class Painter
{
public:
    Painter(QPainter& painter, const ReportDocument& document, const Page& page, double dpiX, double dpiY,
            Fonts& fonts)
        : m_p(painter), m_doc(document), m_page(page), m_sx(dpiX / 72.0), m_sy(dpiY / 72.0), m_dpiX(dpiX),
          m_fonts(fonts)
    {
    }

    void items(const std::vector<Item>& items, QPointF origin)
    {
        for (const Item& item : items)
            std::visit([&](const auto& i) { draw(i, origin); }, item);
    }

private:
    QRectF device(const QRectF& r, QPointF origin) const
    {
        return QRectF((r.left() + origin.x()) * m_sx, (r.top() + origin.y()) * m_sy, r.width() * m_sx,
                      r.height() * m_sy);
    }
    QPointF device(QPointF p, QPointF origin) const
    {
        return QPointF((p.x() + origin.x()) * m_sx, (p.y() + origin.y()) * m_sy);
    }
    QPen pen(const QColor& color, double width) const
    {
        QPen p(color);
        // Never thinner than one device pixel, so hairlines show on paper.
        p.setWidthF(std::max(1.0, width * m_sx));
        p.setCapStyle(Qt::FlatCap);
        p.setJoinStyle(Qt::MiterJoin);
        return p;
    }

    void draw(const TextItem& t, QPointF origin)
    {
        const TextStyle& style = m_doc.styles[size_t(t.style)];
        const QRectF r = device(t.rect, origin);
        frame(r, style.fill, style.color, style.border);
        const Fonts::Font& f = m_fonts.of(t.style);
        setFont(t.style, f.font);
        setPen(style.color);
        const QFontMetricsF& metrics = f.metrics;
        const double inset = style.border > 0 || style.fill ? 1.5 * m_sx : 0;
        QStringList lines = t.lines;
        bool measured = !t.widths.empty();
        if (t.deferred) {
            QString text = resolveDeferred(m_doc, m_page, *t.deferred);
            text.replace(u'\n', u' ');
            lines = QStringList{metrics.elidedText(text, Qt::ElideRight, std::max(1.0, r.width() - 2 * inset))};
            measured = false;
        }
        const double lineHeight = metrics.lineSpacing();
        const double total = lineHeight * lines.size();
        double top = r.top();
        if (style.valign == VAlign::Middle)
            top += (r.height() - total) / 2;
        else if (style.valign == VAlign::Bottom)
            top += r.height() - total;
        for (qsizetype i = 0; i < lines.size(); ++i) {
            const QString& line = lines[i];
            if (line.isEmpty())
                continue;
            double x = r.left() + inset;
            if (style.align != HAlign::Left) {
                const double width = measured && size_t(i) < t.widths.size() ? t.widths[size_t(i)] * m_sx
                                                                             : metrics.horizontalAdvance(line);
                const double room = r.width() - 2 * inset;
                x += style.align == HAlign::Center ? (room - width) / 2 : room - width;
            }
            m_p.drawText(QPointF(x, top + metrics.ascent() + i * lineHeight), line);
        }
    }

    // The PDF writer notes every change of font and pen; texts in a row
    // often share both.
    void setFont(int style, const QFont& font)
    {
        if (style == m_fontStyle)
            return;
        m_p.setFont(font);
        m_fontStyle = style;
    }
    void setPen(const QColor& color)
    {
        if (m_textPen && color == m_penColor)
            return;
        m_p.setPen(color);
        m_penColor = color;
        m_textPen = true;
    }
    void setPen(const QPen& pen)
    {
        m_p.setPen(pen);
        m_textPen = false;
    }

    void draw(const LineItem& l, QPointF origin)
    {
        setPen(pen(l.color, l.width));
        m_p.drawLine(device(l.from, origin), device(l.to, origin));
    }

    // A box and a framed text alike: the fill, then the frame over it.
    void frame(const QRectF& r, const std::optional<QColor>& fill, const QColor& color, double width)
    {
        if (fill)
            m_p.fillRect(r, *fill);
        if (width > 0) {
            setPen(pen(color, width));
            m_p.setBrush(Qt::NoBrush);
            m_p.drawRect(r);
        }
    }

    void draw(const BoxItem& b, QPointF origin) { frame(device(b.rect, origin), b.fill, b.color, b.width); }

    void draw(const ImageItem& i, QPointF origin)
    {
        QRectF r = device(i.rect, origin);
        if (i.keepAspect && !i.image.isNull()) {
            const QSizeF size = QSizeF(i.image.size()).scaled(r.size(), Qt::KeepAspectRatio);
            r = QRectF(r.left() + (r.width() - size.width()) / 2, r.top() + (r.height() - size.height()) / 2,
                       size.width(), size.height());
        }
        m_p.setRenderHint(QPainter::SmoothPixmapTransform, true);
        m_p.drawImage(r, i.image);
    }

    void draw(const BarcodeItem& b, QPointF origin)
    {
        const BarcodeShape& shape = *b.shape;
        if (shape.bars.empty() || shape.size.isEmpty())
            return;
        QRectF r = device(b.rect, origin);
        const TextStyle& style = m_doc.styles[size_t(b.style)];
        const Fonts::Font& f = m_fonts.of(b.style);
        const QFontMetricsF& metrics = f.metrics;
        const double textHeight = shape.text.isEmpty() ? 0 : metrics.lineSpacing();
        QRectF bars(r.left(), r.top(), r.width(), std::max(1.0, r.height() - textHeight));

        double sx = bars.width() / shape.size.width();
        double sy = bars.height() / shape.size.height();
        if (shape.twoDimensional)
            sx = sy = std::min(sx, sy);
        const bool snap = m_dpiX < SnapBelowDpi;
        if (snap) {
            const double modulePixels = std::floor(shape.moduleWidth * sx + 1e-6);
            if (modulePixels >= 1) {
                sx = modulePixels / shape.moduleWidth;
                if (shape.twoDimensional)
                    sy = sx;
            }
        }
        const double width = shape.size.width() * sx;
        const double height = shape.size.height() * sy;
        double left = bars.left() + (bars.width() - width) / 2;
        double top = bars.top() + (shape.twoDimensional ? (bars.height() - height) / 2 : 0);
        if (snap) {
            left = std::round(left);
            top = std::round(top);
        }
        for (const QRectF& bar : shape.bars) {
            QRectF d(left + bar.left() * sx, top + bar.top() * sy, bar.width() * sx, bar.height() * sy);
            if (snap)
                d = QRectF(QPointF(std::round(d.left()), std::round(d.top())),
                           QPointF(std::round(d.right()), std::round(d.bottom())));
            m_p.fillRect(d, Qt::black);
        }
        if (!shape.text.isEmpty()) {
            setFont(b.style, f.font);
            setPen(style.color);
            const double textWidth = metrics.horizontalAdvance(shape.text);
            m_p.drawText(QPointF(r.left() + (r.width() - textWidth) / 2, top + height + metrics.ascent()),
                         shape.text);
        }
    }

    QPainter& m_p;
    const ReportDocument& m_doc;
    const Page& m_page;
    double m_sx;
    double m_sy;
    double m_dpiX;
    Fonts& m_fonts;
    int m_fontStyle = -1;
    bool m_textPen = false;
    QColor m_penColor;
};

void paintWith(QPainter& painter, const ReportDocument& document, int page, double dpiX, double dpiY, Fonts& fonts)
{
    if (page < 0 || page >= document.pageCount())
        return;
    const Page& p = document.pages[size_t(page)];
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    Painter drawer(painter, document, p, dpiX, dpiY, fonts);
    for (const Placement& placement : p.blocks)
        drawer.items(document.blocks[size_t(placement.block)].items, placement.at);
    drawer.items(p.items, QPointF(0, 0));
    painter.restore();
}

} // namespace

void paintPage(QPainter& painter, const ReportDocument& document, int page, double dpiX, double dpiY)
{
    Fonts fonts(document, painter.device());
    paintWith(painter, document, page, dpiX, dpiY, fonts);
}

QPageLayout pageLayoutOf(const ReportDocument& document)
{
    // A page size is given upright; the orientation turns it.
    const QSizeF upright(std::min(document.pageSize.width(), document.pageSize.height()),
                         std::max(document.pageSize.width(), document.pageSize.height()));
    const QPageSize size(upright, QPageSize::Point, QString(), QPageSize::FuzzyMatch);
    return QPageLayout(size,
                       document.pageSize.width() > document.pageSize.height() ? QPageLayout::Landscape
                                                                              : QPageLayout::Portrait,
                       QMarginsF(0, 0, 0, 0), QPageLayout::Point);
}

void paintPages(const ReportDocument& document, QPagedPaintDevice& device, int first, int last, int copies)
{
    first = std::max(0, first);
    last = std::min(last, document.pageCount() - 1);
    device.setPageLayout(pageLayoutOf(document));
    QPainter painter;
    if (!painter.begin(&device))
        throw MessageError(QStringLiteral("The report cannot be printed: the printer or file could not be opened."));
    const double dpiX = device.logicalDpiX();
    const double dpiY = device.logicalDpiY();
    Fonts fonts(document, &device);
    bool firstPage = true;
    for (int copy = 0; copy < std::max(1, copies); ++copy) {
        for (int page = first; page <= last; ++page) {
            if (!firstPage)
                device.newPage();
            firstPage = false;
            paintWith(painter, document, page, dpiX, dpiY, fonts);
        }
    }
    painter.end();
}

void writePdf(const ReportDocument& document, const QString& path)
{
    {
        QFile probe(path);
        if (!probe.open(QIODevice::WriteOnly))
            throw MessageError(QStringLiteral("Cannot write %1: %2").arg(path, probe.errorString()));
    }
    QPdfWriter writer(path);
    writer.setResolution(PdfDpi);
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("Kettlebrook"));
    if (document.pageCount() == 0) {
        // An empty report is still a valid file of one blank page.
        QPainter painter(&writer);
        return;
    }
    paintPages(document, writer, 0, document.pageCount() - 1);
}

QImage pageImage(const ReportDocument& document, int page, double dpi)
{
    // Fonts follow the image's whole-number resolution, so the page does too.
    const int dotsPerMeter = int(std::lround(std::clamp(dpi, 8.0, 2400.0) / 0.0254));
    QImage probe(1, 1, QImage::Format_RGB32);
    probe.setDotsPerMeterX(dotsPerMeter);
    const double exact = probe.logicalDpiX();
    const QSize size(int(std::ceil(document.pageSize.width() * exact / 72)),
                     int(std::ceil(document.pageSize.height() * exact / 72)));
    QImage image(size, QImage::Format_RGB32);
    image.setDotsPerMeterX(dotsPerMeter);
    image.setDotsPerMeterY(dotsPerMeter);
    image.fill(Qt::white);
    QPainter painter(&image);
    paintPage(painter, document, page, image.logicalDpiX(), image.logicalDpiY());
    return image;
}

} // namespace kb::reports
