#include "engine/TextMeasure.h"

#include <QTextLayout>

namespace kb::reports {

namespace {

constexpr double MeasureDpi = 1440;
constexpr double Scale = 72.0 / MeasureDpi; // device pixels to points
constexpr int MaxCachedWidths = 20000;

} // namespace

QFont fontFor(const TextStyle& style)
{
    QFont font(style.family);
    font.setPointSizeF(style.size);
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setUnderline(style.underline);
    // Glyph advances as designed, unrounded, so that widths measured for
    // layout hold on every device.
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(true);
    return font;
}

TextMeasure::TextMeasure() : m_device(8, 8, QImage::Format_RGB32)
{
    const int dotsPerMeter = int(std::lround(MeasureDpi / 0.0254));
    m_device.setDotsPerMeterX(dotsPerMeter);
    m_device.setDotsPerMeterY(dotsPerMeter);
}

TextMeasure::Metrics& TextMeasure::metricsFor(const TextStyle& style)
{
    if (m_lastStyle && *m_lastStyle == style)
        return *m_last;
    for (auto& [s, m] : m_metrics) {
        if (s == style) {
            m_lastStyle = &s;
            m_last = m.get();
            return *m;
        }
    }
    auto m = std::make_unique<Metrics>();
    m->font = fontFor(style);
    m->metrics = std::make_unique<QFontMetricsF>(m->font, &m_device);
    m_metrics.emplace_back(style, std::move(m));
    m_lastStyle = &m_metrics.back().first;
    m_last = m_metrics.back().second.get();
    return *m_last;
}

double TextMeasure::lineHeight(const TextStyle& style) { return metricsFor(style).metrics->lineSpacing() * Scale; }

double TextMeasure::ascent(const TextStyle& style) { return metricsFor(style).metrics->ascent() * Scale; }

double TextMeasure::width(const TextStyle& style, const QString& text)
{
    Metrics& m = metricsFor(style);
    const auto it = m.widths.constFind(text);
    if (it != m.widths.constEnd())
        return it.value();
    const double w = m.metrics->horizontalAdvance(text) * Scale;
    if (m.widths.size() < MaxCachedWidths && text.size() < 200)
        m.widths.insert(text, w);
    return w;
}

QString TextMeasure::elide(const TextStyle& style, const QString& text, double width)
{
    if (this->width(style, text) <= width + 0.01)
        return text;
    return metricsFor(style).metrics->elidedText(text, Qt::ElideRight, width / Scale);
}

QStringList TextMeasure::wrap(const TextStyle& style, const QString& text, double width)
{
    QStringList lines;
    Metrics& m = metricsFor(style);
    const QStringList paragraphs = text.split(u'\n');
    for (const QString& raw : paragraphs) {
        QString paragraph = raw;
        paragraph.remove(u'\r');
        if (this->width(style, paragraph) <= width + 0.01) {
            lines << paragraph;
        } else {
            QTextLayout layout(paragraph, m.font, &m_device);
            QTextOption option;
            option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
            layout.setTextOption(option);
            layout.beginLayout();
            for (;;) {
                QTextLine line = layout.createLine();
                if (!line.isValid())
                    break;
                line.setLineWidth(width / Scale);
                QString piece = paragraph.mid(line.textStart(), line.textLength());
                while (piece.endsWith(u' '))
                    piece.chop(1);
                lines << piece;
                if (lines.size() >= MaxLines)
                    break;
            }
            layout.endLayout();
        }
        if (lines.size() >= MaxLines)
            break;
    }
    return lines;
}

} // namespace kb::reports
